#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "host/form.h"
#include "host/outcome.h"
#include "pages/pages_session.h"
#include "template/engine_fixture.h"

namespace plexoras {

/// What happened to the objects of one test, a line each, and what they are to refuse.
struct PageLog {
  /// What happened since the last call.
  std::string take() { return std::exchange(lines, {}); }

  std::string lines;
  std::set<std::string, std::less<>> failing;  ///< members of the chart that raise error 5 when they are put
};

/// An object that keeps what it is given and tells of every use: "get PieStyle", "put PieStyle Integer 2",
/// "call Refresh". What is done to an object that it gave out comes on the same line: "getDiagram.put PieStyle ...".
class LoggedObject : public AutomationObject {
public:
  explicit LoggedObject(PageLog& log) : log_(log) {}

  std::map<std::string, Variant, std::less<>> values;
  Variant otherwise;  ///< what members without a value read as; Nothing: they raise error 438

  Variant get(std::string_view member) override {
    if (!otherwise.is_nothing()) values.try_emplace(std::string(member), otherwise);
    const auto value = values.find(member);
    if (value != values.end() && value->second.type() == ValueType::Object) {
      log_.lines += std::string(member) + ".";
    } else {
      log_.lines += "get " + std::string(member) + "\n";
    }
    if (value == values.end()) no_such_member(member, "LoggedObject");
    return value->second;
  }

  void put(std::string_view member, const Variant& value) override {
    log_.lines +=
        "put " + std::string(member) + " " + std::string(type_name(value.type())) + " " + value.to_text() + "\n";
    if (log_.failing.contains(member)) throw AutomationError(RunTimeError::InvalidCall, "refused", "LoggedObject");
    values[std::string(member)] = value;
  }

  Variant call(std::string_view member, Arguments arguments) override {
    log_.lines += "call " + std::string(member);
    for (const Variant& argument : arguments) {
      const std::string text = argument.to_text();
      log_.lines += text.empty() ? " ''" : " " + text;
    }
    log_.lines += "\n";
    return answer(member, arguments);
  }

protected:
  virtual Variant answer(std::string_view member, Arguments) { return member.starts_with("get") ? fonts : Variant(); }

private:
  PageLog& log_;
  Variant fonts = StringList{"serif", "sans-serif"};
};

/// A dictionary that tells of its use.
class LoggedDictionary final : public LoggedObject {
public:
  using LoggedObject::LoggedObject;
  Dictionary entries;

protected:
  Variant answer(std::string_view member, Arguments arguments) override { return entries.call(member, arguments); }
};

/// The control that pages edit, with lookup tables and custom properties.
class LoggedControl final : public LoggedObject {
public:
  using LoggedObject::LoggedObject;
  std::map<std::string, std::shared_ptr<Dictionary>, std::less<>> tables;
  std::shared_ptr<LoggedDictionary> custom;

protected:
  Variant answer(std::string_view member, Arguments arguments) override {
    if (member == "GetLookupTable") return ObjectRef(tables.at(arguments[0].to_text()));
    if (member == "GetProperty") return custom->entries.atGet(arguments[0].to_text());
    return {};
  }
};

/// An author in front of a page: a control that shows a chart, and what the pages share.
///
/// The control and its chart keep values of their own, so that a test sees from which of them a page reads.
struct PageFixture {
  PageFixture() {
    control->custom = std::make_shared<LoggedDictionary>(log);
    control->values = {{"getDiagram", Variant(ObjectRef(chart))},
                       {"diagram", Variant(ObjectRef(chart))},
                       {"CustomProperties", Variant(ObjectRef(control->custom))},
                       {"templateFile", "T.DAT"}};
  }

  /// Gives the control a lookup table, "text=code text=code".
  void table(std::string_view name, std::string_view entries) {
    auto& table = control->tables[std::string(name)] = std::make_shared<Dictionary>();
    while (!entries.empty()) {
      const std::string_view entry = entries.substr(0, entries.find(' '));
      entries.remove_prefix(std::min(entries.size(), entry.size() + 1));
      const std::size_t equals = entry.find('=');
      table->atPut(entry.substr(0, equals), entry.substr(equals + 1));
    }
  }

  PageLog log;
  std::shared_ptr<LoggedObject> chart = std::make_shared<LoggedObject>(log);
  std::shared_ptr<LoggedControl> control = std::make_shared<LoggedControl>(log);
  FakePlatform host;
  TemplateSession templates{host.platform};
  PagesSession session{templates};
};

/// A log as tests write it: entries at line ends and semicolons, without the blanks around them.
inline std::string entries(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    std::string_view entry = text.substr(0, text.find_first_of(";\n"));
    text.remove_prefix(std::min(text.size(), entry.size() + 1));
    const std::size_t first = entry.find_first_not_of(' ');
    if (first == std::string_view::npos) continue;
    entry = entry.substr(first, entry.find_last_not_of(' ') + 1 - first);
    result += std::string(entry) + "\n";
  }
  return result;
}

/// What an author sees in the controls of a page, one a line: "txtAngle 12.5", "cbIsRotated 1", "cmbPieType Ring", and
/// of option buttons the selected ones alone. Controls that cannot be used stand in parentheses.
inline std::string seen(const ControlContainer& container) {
  std::string text;
  for (const auto& control : container.controls()) {
    if (const auto* frame = dynamic_cast<const Frame*>(control.get())) {
      text += seen(*frame);
      continue;
    }
    std::string value;
    if (const auto* check = dynamic_cast<const CheckBox*>(control.get())) value = " " + std::to_string(check->value());
    if (const auto* box = dynamic_cast<const TextBox*>(control.get())) value = " " + box->text();
    if (const auto* list = dynamic_cast<const ListBox*>(control.get())) value = " " + list->text();
    const auto* option = dynamic_cast<const OptionButton*>(control.get());
    if (value.empty() && (option == nullptr || !option->value())) continue;
    const std::string line = control->name() + value;
    text += control->is_usable() ? line + "\n" : "(" + line + ")\n";
  }
  return text;
}

}  // namespace plexoras
