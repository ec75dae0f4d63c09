#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "chart_control/chart_component.h"
#include "chart_control/chart_properties.h"
#include "host/automation.h"

namespace plexoras {

/// What happened to the fake components of one test, and what they are to refuse.
struct ComponentLog {
  /// What happened since the last call, a line each.
  std::string take() { return std::exchange(lines, {}); }

  void add(const std::string& line, std::string_view member) {
    lines += line + "\n";
    if (failing.contains(member)) {
      throw AutomationError(RunTimeError::InvalidCall, std::string(member) + " fails", "FakeComponent");
    }
  }

  std::string lines;
  std::set<std::string, std::less<>> failing;  ///< members that raise error 5
  ObjectRef event_sink;                        ///< the one that a component was given last
};

/// A chart component that keeps what it is given and tells of every use: "put FontSize Integer 12", "get FontName",
/// "call FormatXml True <xml>", "id 367". It takes contents that begin with "<xml>" and formats X as "F(X)".
class FakeComponent final : public AutomationObject {
public:
  explicit FakeComponent(ComponentLog& log) : log_(log) {
    for (const ForwardedProperty& row : forwarded_properties()) {
      values_.emplace(row.name, Variant().converted_to(row.type));
    }
    for (const std::string_view member : {"RowSelection", "ColSelection"}) values_[std::string(member)] = none_selected;
  }

  Variant get(std::string_view member) override {
    log_.add("get " + std::string(member), member);
    const auto value = values_.find(member);
    if (value == values_.end()) no_such_member(member, "FakeComponent");
    return value->second;
  }

  void put(std::string_view member, const Variant& value) override {
    const std::string type(type_name(value.type()));
    log_.add("put " + std::string(member) + " " + type + " " + value.to_text(), member);
    values_[std::string(member)] = value;
  }

  Variant call(std::string_view member, Arguments arguments) override {
    if (member == "setEventSink") {
      log_.event_sink = arguments[0].is_nothing() ? nullptr : arguments[0].to_object();
      if (log_.failing.contains(member)) throw AutomationError(RunTimeError::InvalidCall, "no events", "FakeComponent");
      return {};
    }
    std::string line = "call " + std::string(member);
    for (const Variant& argument : arguments) line += " " + argument.to_text();
    log_.add(line, member);
    if (member == "FormatXml") return "F(" + arguments[1].to_text() + ")";
    if (member == "isValidXmlContents") return arguments[0].to_text().starts_with("<xml>");
    if (member == "UseSampleContents") values_["XmlContents"] = "<xml>sample</xml>";
    return {};
  }

  Variant call_by_id(std::int32_t dispatch_id) override {
    log_.add("id " + std::to_string(dispatch_id), {});
    return {};
  }

private:
  static constexpr std::int16_t none_selected = -1;

  ComponentLog& log_;
  std::map<std::string, Variant, std::less<>> values_;
};

}  // namespace plexoras
