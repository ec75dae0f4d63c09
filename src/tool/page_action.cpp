#include "tool/page_action.h"

#include <cstdint>
#include <nlohmann/json.hpp>

#include "tool/console.h"

namespace plexoras {
namespace {

Variant argument_of(const nlohmann::json& value, std::string_view text) {
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_string()) return value.get<std::string>();
  if (!value.is_number()) {
    throw UsageError("\"" + std::string(text) + "\": arguments are numbers, true, false and \"texts\", with commas");
  }
  const bool is_long = value.is_number_integer() && value >= INT32_MIN && value <= INT32_MAX;
  return is_long ? Variant(value.get<std::int32_t>()) : Variant(value.get<double>());
}

// "tbl.selectCell=1,2": a component's member and its arguments as JSON values.
void parse_call(std::string_view text, FormAction& action) {
  const std::size_t equals = text.find('=');
  const std::size_t dot = text.substr(0, equals).rfind('.');
  if (dot == std::string_view::npos || dot == 0) {
    throw UsageError("--call takes CONTROL.MEMBER=ARGUMENTS, not \"" + std::string(text) + "\"");
  }
  action.control = text.substr(0, dot);
  action.member = text.substr(0, equals).substr(dot + 1);
  if (equals == std::string_view::npos) return;
  const nlohmann::json list =
      nlohmann::json::parse("[" + std::string(text.substr(equals + 1)) + "]", nullptr, /*allow_exceptions=*/false);
  if (list.is_discarded()) argument_of(list, text);  // raises
  for (const nlohmann::json& value : list) action.arguments.push_back(argument_of(value, text));
}

}  // namespace

TypedAction parse_action(const PageActionText& typed) {
  TypedAction parsed{.action = {.kind = typed.kind}, .text = typed.option + " " + typed.value};
  FormAction& action = parsed.action;
  const std::size_t equals = typed.value.find('=');
  const auto refuse = [&](const std::string& form) {
    throw UsageError(typed.option + " takes " + form + ", not \"" + typed.value + "\"");
  };
  switch (typed.kind) {
    case FormAction::Kind::Set:
    case FormAction::Kind::Key:
      if (equals == std::string::npos || equals == 0) refuse("CONTROL=VALUE");
      action.control = typed.value.substr(0, equals);
      action.value = typed.value.substr(equals + 1);
      break;
    case FormAction::Kind::Click:
    case FormAction::Kind::Focus:
      if (typed.value.empty()) refuse("the name of a control");
      action.control = typed.value;
      break;
    case FormAction::Kind::Call:
      parse_call(typed.value, action);
      break;
    case FormAction::Kind::ChooseFile:
      if (typed.value.empty()) refuse("a path");
      action.value = typed.value;
      break;
  }
  return parsed;
}

}  // namespace plexoras
