#include "host/automation.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

namespace plexoras {

namespace {

constexpr std::pair<RunTimeError, std::string_view> customary_descriptions[] = {
    {RunTimeError::InvalidCall, "Invalid procedure call or argument"},
    {RunTimeError::Overflow, "Overflow"},
    {RunTimeError::SubscriptOutOfRange, "Subscript out of range"},
    {RunTimeError::TypeMismatch, "Type mismatch"},
    {RunTimeError::OutOfStringSpace, "Out of string space"},
    {RunTimeError::OutOfStackSpace, "Out of stack space"},
    {RunTimeError::FileNotFound, "File not found"},
    {RunTimeError::PathFileAccess, "Path/File access error"},
    {RunTimeError::ObjectNotSet, "Object variable not set"},
    {RunTimeError::CannotCreateObject, "Component can't create object"},
    {RunTimeError::NoSuchMember, "Object doesn't support this property or method"},
    {RunTimeError::NoSuchAction, "Object doesn't support this action"},
};

constexpr std::string_view type_names[] = {"Nothing", "Integer", "Long",     "Double",
                                           "Boolean", "String",  "TextList", "Object"};

// Reals between these bounds are written without an exponent, as people write them.
constexpr double smallest_plain_real = 1e-5;
constexpr double largest_plain_real = 1e15;

[[noreturn]] void mismatch(ValueType from, ValueType to) {
  throw AutomationError(RunTimeError::TypeMismatch, "Type mismatch: " + std::string(type_name(from)) +
                                                        " cannot be read as " + std::string(type_name(to)));
}

[[noreturn]] void not_a(std::string_view wanted, std::string_view text) {
  constexpr std::size_t longest_quote = 60;
  std::string quote(text.substr(0, longest_quote));
  if (text.size() > longest_quote) quote += "...";
  throw AutomationError(RunTimeError::TypeMismatch, "Type mismatch: \"" + quote + "\" is not a " + std::string(wanted));
}

std::string_view without_outer_blanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

bool equal_in_any_case(std::string_view left, std::string_view lower_case_right) {
  return std::equal(left.begin(), left.end(), lower_case_right.begin(), lower_case_right.end(), [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == static_cast<unsigned char>(b);
  });
}

// Whether a well-formed number that no double can hold is too close to zero (and not too far from it).
// from_chars does not say; the decimal place of the first digit other than 0 does.
bool is_too_small(std::string_view number) {
  const std::size_t e = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, e);
  const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));

  std::int64_t exponent = 0;
  std::string_view exponent_text = number.substr(std::min(e + 1, number.size()));
  if (exponent_text.starts_with('+')) exponent_text.remove_prefix(1);
  const auto parsed = std::from_chars(exponent_text.data(), exponent_text.data() + exponent_text.size(), exponent);
  if (parsed.ec == std::errc::result_out_of_range) return exponent_text.starts_with('-');
  return exponent < first - point;
}

// The number that all of `text` is, or nothing. Independent of the program's locale.
std::optional<double> parsed_number(std::string_view text) {
  std::string_view number = without_outer_blanks(text);
  if (number.starts_with('+')) {
    number.remove_prefix(1);
    if (number.starts_with('-')) return std::nullopt;
  }
  // from_chars also reads "inf" and "nan", which are words here.
  if (number.find_first_not_of("0123456789.eE+-") != std::string_view::npos) return std::nullopt;

  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (end != number.data() + number.size() || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) {
    if (!is_too_small(number)) throw AutomationError(RunTimeError::Overflow);
    return 0.0;
  }
  return value;
}

double number_in(std::string_view text) {
  const std::optional<double> number = parsed_number(text);
  if (!number) not_a("number", text);
  return *number;
}

// The integer nearest to `value`, halves to even: that is nearbyint in the rounding mode every program starts in.
template <class Integer>
Integer rounded(double value) {
  const double whole = std::nearbyint(value);
  // Written so that NaN fails as well.
  if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max())) {
    throw AutomationError(RunTimeError::Overflow);
  }
  return static_cast<Integer>(whole);
}

std::string text_of(double value) {
  if (value == 0) return "0";  // also for the negative zero
  const double magnitude = std::abs(value);
  const bool plain = magnitude >= smallest_plain_real && magnitude < largest_plain_real;
  char digits[64];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), value,
                                 plain ? std::chars_format::fixed : std::chars_format::scientific);
  return {digits, end.ptr};
}

}  // namespace

std::string_view customary_description(RunTimeError number) {
  for (const auto& [known, description] : customary_descriptions) {
    if (known == number) return description;
  }
  return "Application-defined or object-defined error";
}

AutomationError::AutomationError(RunTimeError number, std::string description, std::string source)
    : std::runtime_error(description.empty() ? std::string(customary_description(number)) : std::move(description)),
      number_(number),
      source_(std::move(source)) {}

std::string_view type_name(ValueType type) { return type_names[static_cast<std::size_t>(type)]; }

std::int16_t Variant::to_integer() const {
  if (const auto* value = std::get_if<std::int16_t>(&value_)) return *value;
  return rounded<std::int16_t>(to_double());
}

std::int32_t Variant::to_long() const {
  if (const auto* value = std::get_if<std::int32_t>(&value_)) return *value;
  return rounded<std::int32_t>(to_double());
}

double Variant::to_double() const {
  switch (type()) {
    case ValueType::Nothing:
      return 0;
    case ValueType::Integer:
      return std::get<std::int16_t>(value_);
    case ValueType::Long:
      return std::get<std::int32_t>(value_);
    case ValueType::Double:
      return std::get<double>(value_);
    case ValueType::Boolean:
      return std::get<bool>(value_) ? -1 : 0;
    case ValueType::String:
      return number_in(std::get<std::string>(value_));
    case ValueType::TextList:
    case ValueType::Object:
      break;
  }
  mismatch(type(), ValueType::Double);
}

bool Variant::to_boolean() const {
  switch (type()) {
    case ValueType::Boolean:
      return std::get<bool>(value_);
    case ValueType::String: {
      const std::string& text = std::get<std::string>(value_);
      const std::string_view word = without_outer_blanks(text);
      if (equal_in_any_case(word, "true")) return true;
      if (equal_in_any_case(word, "false")) return false;
      const std::optional<double> number = parsed_number(word);
      if (!number) not_a("Boolean", text);
      return *number != 0;
    }
    case ValueType::TextList:
    case ValueType::Object:
      mismatch(type(), ValueType::Boolean);
    default:
      return to_double() != 0;
  }
}

std::string Variant::to_text() const {
  switch (type()) {
    case ValueType::Nothing:
      return {};
    case ValueType::Integer:
      return std::to_string(std::get<std::int16_t>(value_));
    case ValueType::Long:
      return std::to_string(std::get<std::int32_t>(value_));
    case ValueType::Double:
      return text_of(std::get<double>(value_));
    case ValueType::Boolean:
      return std::get<bool>(value_) ? "True" : "False";
    case ValueType::String:
      return std::get<std::string>(value_);
    case ValueType::TextList:
    case ValueType::Object:
      break;
  }
  mismatch(type(), ValueType::String);
}

const StringList& Variant::to_text_list() const {
  if (const auto* list = std::get_if<StringList>(&value_)) return *list;
  mismatch(type(), ValueType::TextList);
}

ObjectRef Variant::to_object() const {
  const auto* object = std::get_if<ObjectRef>(&value_);
  if (object == nullptr || *object == nullptr) throw AutomationError(RunTimeError::ObjectNotSet);
  return *object;
}

Variant Variant::converted_to(ValueType target) const {
  if (target == type()) return *this;
  switch (target) {
    case ValueType::Nothing:
      break;
    case ValueType::Integer:
      return to_integer();
    case ValueType::Long:
      return to_long();
    case ValueType::Double:
      return to_double();
    case ValueType::Boolean:
      return to_boolean();
    case ValueType::String:
      return to_text();
    case ValueType::TextList:
      return to_text_list();
    case ValueType::Object:
      return to_object();
  }
  mismatch(type(), target);
}

std::optional<double> number_of_text(std::string_view text) {
  try {
    return parsed_number(text);
  } catch (const AutomationError&) {
    return std::nullopt;  // too large
  }
}

Variant AutomationObject::call_by_id(std::int32_t dispatch_id) {
  throw AutomationError(RunTimeError::NoSuchMember, std::string(customary_description(RunTimeError::NoSuchMember)) +
                                                        ": dispatch identifier " + std::to_string(dispatch_id));
}

void no_such_member(std::string_view member, std::string_view source) {
  throw AutomationError(
      RunTimeError::NoSuchMember,
      std::string(customary_description(RunTimeError::NoSuchMember)) + ": \"" + std::string(member) + "\"",
      std::string(source));
}

void wrong_argument_count(std::string_view member, std::size_t given, std::string_view source) {
  throw AutomationError(RunTimeError::InvalidCall,
                        std::string(member) + " cannot be called with " + std::to_string(given) + " arguments",
                        std::string(source));
}

}  // namespace plexoras
