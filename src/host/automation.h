#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace plexoras {

/// The customary run-time errors that the library raises, by their numbers.
enum class RunTimeError : int {
  InvalidCall = 5,
  Overflow = 6,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  OutOfStringSpace = 14,
  OutOfStackSpace = 28,
  FileNotFound = 53,
  PathFileAccess = 75,
  ObjectNotSet = 91,
  CannotCreateObject = 429,
  NoSuchMember = 438,
  NoSuchAction = 445,
};

/// The customary text of an error ("Type mismatch" for 13).
std::string_view customary_description(RunTimeError number);

/// A failed call: what every member of the library raises, and what an embedder's objects should raise.
class AutomationError : public std::runtime_error {
public:
  /// `description` says what is wrong in the caller's terms; empty takes the customary text.
  /// `source` names the object that failed.
  explicit AutomationError(RunTimeError number, std::string description = {}, std::string source = {});

  RunTimeError number() const { return number_; }
  std::string description() const { return what(); }
  const std::string& source() const { return source_; }

private:
  RunTimeError number_;
  std::string source_;
};

class AutomationObject;
using ObjectRef = std::shared_ptr<AutomationObject>;
using StringList = std::vector<std::string>;

/// The type words of the interfaces: Integer is signed 16-bit, Long signed 32-bit.
/// The order is that of the alternatives in `Variant`.
enum class ValueType { Nothing, Integer, Long, Double, Boolean, String, TextList, Object };

/// "Integer", "Long", ... as the interfaces call them.
std::string_view type_name(ValueType type);

/// One value of an automation call, with its exact type.
///
/// Every conversion between the types is a member here. They follow the platform's rules: text reads
/// as a number when all of it (blanks around it aside) is one, else error 13; reals round to the
/// nearest integer, halves to even; a value outside the target's range is error 6; true is -1.
class Variant {
public:
  Variant() = default;
  Variant(std::int16_t value) : value_(value) {}
  Variant(std::int32_t value) : value_(value) {}
  Variant(double value) : value_(value) {}
  Variant(bool value) : value_(value) {}
  Variant(std::string value) : value_(std::move(value)) {}
  Variant(std::string_view value) : value_(std::string(value)) {}
  Variant(const char* value) : value_(std::string(value)) {}
  Variant(StringList value) : value_(std::move(value)) {}
  Variant(ObjectRef value) : value_(std::move(value)) {}

  ValueType type() const { return static_cast<ValueType>(value_.index()); }
  bool is_nothing() const { return type() == ValueType::Nothing; }

  std::int16_t to_integer() const;
  std::int32_t to_long() const;
  double to_double() const;
  /// Numbers other than 0 are true; text must be "True" or "False" in any case, or a number.
  bool to_boolean() const;
  /// Booleans give "True" and "False", nothing gives the empty text. A real gives the shortest digits that read back
  /// equal, with an exponent only below 0.00001 and from 1e+15 on ("100000", "2.5", "1e+20"); "inf" and "nan" read back
  /// as no number. A text list or an object is error 13.
  std::string to_text() const;
  const StringList& to_text_list() const;
  /// Error 91 when the value is no object or a null one.
  ObjectRef to_object() const;

  /// The same value as `type`; error 13 when the types have nothing to do with each other.
  Variant converted_to(ValueType type) const;

  friend bool operator==(const Variant&, const Variant&) = default;

private:
  std::variant<std::monostate, std::int16_t, std::int32_t, double, bool, std::string, StringList, ObjectRef> value_;
};

/// The number that `text` is by the rule of `Variant`; nothing when it is none, or one that no double can hold. Forms
/// take such text as 0: `number_of_text(txtValue.text()).value_or(0)`.
std::optional<double> number_of_text(std::string_view text);

using Arguments = std::span<const Variant>;

/// An object that is reached by member name alone, as late-bound callers do. Names are case-sensitive.
///
/// Held by `ObjectRef`; lives as long as somebody holds it.
class AutomationObject {
public:
  virtual ~AutomationObject() = default;

  /// Reads a property. Error 438 when there is none of that name.
  virtual Variant get(std::string_view member) = 0;
  /// Writes a property. Error 438 when there is none of that name or it is read-only.
  virtual void put(std::string_view member, const Variant& value) = 0;
  /// Calls a method. Error 438 when there is none of that name.
  virtual Variant call(std::string_view member, Arguments arguments = {}) = 0;
  /// Calls the method that has this dispatch identifier, without arguments.
  virtual Variant call_by_id(std::int32_t dispatch_id);

  /// `call(member, {first, second, ...})` for literal arguments.
  Variant call_with(std::string_view member, std::initializer_list<Variant> arguments) {
    return call(member, Arguments(arguments.begin(), arguments.size()));
  }
};

/// Runs one step whose failure is to be ignored.
template <class Step>
void ignoring_errors(Step step) {
  try {
    step();
  } catch (const std::exception&) {
    // The caller goes on with what it had before the step.
  }
}

/// Raises error 438 for `member`, with `source` as the object's name.
[[noreturn]] void no_such_member(std::string_view member, std::string_view source);

/// One row of an object's table of members. A null function means that the member cannot be used that way.
template <class Object>
struct Member {
  std::string_view name;
  Variant (*get)(Object&) = nullptr;
  void (*put)(Object&, const Variant&) = nullptr;
  Variant (*call)(Object&, Arguments) = nullptr;
  std::size_t arguments = 0;           ///< that a call must have
  std::size_t optional_arguments = 0;  ///< that it may have beside them
};

/// Raises error 5 for a call of `member` with the wrong number of arguments.
[[noreturn]] void wrong_argument_count(std::string_view member, std::size_t given, std::string_view source);

/// The row of `member` in `table`, or null.
template <class Object, std::size_t Count>
const Member<Object>* find_member(const Member<Object> (&table)[Count], std::string_view member) {
  for (const Member<Object>& row : table) {
    if (row.name == member) return &row;
  }
  return nullptr;
}

/// `AutomationObject::get`, `put` and `call` by way of a table; `source` names the object in errors.
template <class Object, std::size_t Count>
Variant get_member(Object& object, const Member<Object> (&table)[Count], std::string_view member,
                   std::string_view source) {
  const Member<Object>* const row = find_member(table, member);
  if (row == nullptr || row->get == nullptr) no_such_member(member, source);
  return row->get(object);
}

template <class Object, std::size_t Count>
void put_member(Object& object, const Member<Object> (&table)[Count], std::string_view member, const Variant& value,
                std::string_view source) {
  const Member<Object>* const row = find_member(table, member);
  if (row == nullptr || row->put == nullptr) no_such_member(member, source);
  row->put(object, value);
}

template <class Object, std::size_t Count>
Variant call_member(Object& object, const Member<Object> (&table)[Count], std::string_view member, Arguments arguments,
                    std::string_view source) {
  const Member<Object>* const row = find_member(table, member);
  if (row == nullptr || row->call == nullptr) no_such_member(member, source);
  if (arguments.size() < row->arguments || arguments.size() > row->arguments + row->optional_arguments) {
    wrong_argument_count(member, arguments.size(), source);
  }
  return row->call(object, arguments);
}

}  // namespace plexoras
