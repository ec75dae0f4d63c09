// page: a property page of a control, shown and played on from the command line.

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>

#include "authoring/form_driver.h"
#include "authoring/property_pages.h"
#include "host/headless_platform.h"
#include "tool/commands.h"
#include "tool/form_text.h"
#include "tool/json_text.h"
#include "tool/page_target.h"
#include "tool/scripted_author.h"
#include "tool/text_table.h"

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

TypedAction parse_action(const PageActionText& typed) {
  TypedAction parsed{.action = {.kind = typed.kind}, .text = typed.option + " " + typed.value};
  FormAction& action = parsed.action;
  const std::size_t equals = typed.value.find('=');
  switch (typed.kind) {
    case FormAction::Kind::Set:
    case FormAction::Kind::Key:
      if (equals == std::string::npos || equals == 0) {
        throw UsageError(typed.option + " takes CONTROL=VALUE, not \"" + typed.value + "\"");
      }
      action.control = typed.value.substr(0, equals);
      action.value = typed.value.substr(equals + 1);
      break;
    case FormAction::Kind::Click:
    case FormAction::Kind::Focus:
      action.control = typed.value;
      break;
    case FormAction::Kind::Call:
      parse_call(typed.value, action);
      break;
    case FormAction::Kind::ChooseFile:
      action.value = typed.value;
      break;
  }
  return parsed;
}

void list_pages(const Page& page, const ControlRecord& record, const LiveControl& control, Console& console) {
  TextTable table({.widest = {40}});
  table.add({"PAGE", "CAPTION"});
  nlohmann::json object{{"version", json_version},
                        {"page", page.path()},
                        {"control", record.name},
                        {"property_pages", nlohmann::json::array()}};
  for (const PropertyPageType* const type : PropertyPages::types_for(control)) {
    table.add({std::string(type->name), std::string(type->caption)});
    object["property_pages"].push_back({{"name", type->name}, {"caption", type->caption}});
  }
  console.result(console.options().json ? json_line(object) : table.text());
}

// Writes the control as it is now; true when the page changes.
bool write_control(const Page& page, std::size_t index, LiveControl& control, const Console& console) {
  Page::Edit edit(page);
  edit.replace_record(index, control.record());
  const std::string bytes = edit.result();
  defer_interrupts();  // a page is written whole or not at all
  return console.options().dry_run ? bytes != page.bytes() : write_if_changed(page.path(), bytes);
}

// What came of the actions.
struct Outcome {
  ListedForm form = {};
  bool edited = false;  // before applying
  bool still_edited = false;
  bool written = false;
};

Outcome play(PropertyPage& form, ScriptedAuthor& author, bool apply, const std::function<bool()>& write) {
  author.play(form);
  Outcome outcome{.edited = form.Changed};
  if (apply && form.Changed && author.messages().empty()) {
    form.apply();
    if (author.messages().empty()) outcome.written = write();
  }
  outcome.form = list_form(form);
  outcome.still_edited = form.Changed;
  return outcome;
}

std::string outcome_text(const Outcome& outcome, const ScriptedAuthor& author) {
  std::string text = form_text(outcome.form);
  if (const auto& dialog = author.unanswered()) {
    text += "\nThe dialog \"" + dialog->caption + "\":\n" + form_text(*dialog);
  }
  return text;
}

nlohmann::json outcome_json(const Outcome& outcome, const ScriptedAuthor& author) {
  nlohmann::json object{{"version", json_version},
                        {"changed", outcome.still_edited},
                        {"outcome", outcome.written ? "written" : "unchanged"},
                        {"messages", author.messages()},
                        {"form", to_json(outcome.form)}};
  if (author.unanswered()) object["dialog"] = to_json(*author.unanswered());
  return object;
}

// What became of the page on disk.
std::string outcome_sentence(const Outcome& outcome, bool failed, bool apply, bool is_dry) {
  if (failed) return "nothing was written";
  if (apply) return !outcome.written ? "nothing to change" : is_dry ? "would be written" : "written";
  return outcome.edited ? "nothing was written; --apply writes what has been changed" : "";
}

}  // namespace

int run_page(const PropertyPageOptions& options, HeadlessPlatform& host, Console& console) {
  std::vector<TypedAction> actions;
  for (const PageActionText& typed : options.actions) actions.push_back(parse_action(typed));
  if (options.property_page.empty() && (options.apply || !actions.empty())) {
    throw UsageError("name the property page to work on; plexoras page " + options.target + " lists them");
  }

  SilentMessageBox silent;
  host.platform().message_box = &silent;
  const PageTarget target = parse_page_target(options.target);
  const Page page = Page::read(target.page);
  const std::size_t index = find_control(page, target);
  const ControlRecord& record = page.controls()[index].record;
  TemplateSession session(host.platform());
  PropertyPages pages(session);
  LiveControl control = load_control(session, page, index);
  if (options.property_page.empty()) {
    list_pages(page, record, control, console);
    return exit_done;
  }
  const PropertyPageType& type = PropertyPages::find(options.property_page, control);
  if (options.apply) refuse_broken_template(session.diagnostics, console);

  ScriptedAuthor author(actions, console);
  host.platform().message_box = &author;
  host.platform().file_dialog = &author;
  host.platform().presenter = &author;
  const std::string what = page.path() + "#" + record.name + " " + std::string(type.name);
  Outcome outcome;
  try {
    const std::unique_ptr<PropertyPage> form = pages.open(type, control);
    outcome = play(*form, author, options.apply, [&] { return write_control(page, index, control, console); });
  } catch (const AutomationError& error) {
    tell(session.diagnostics, console);
    throw AutomationError(error.number(), what + ": " + error.description(), error.source());
  }

  tell(session.diagnostics, console);
  if (console.options().json) {
    nlohmann::json object = outcome_json(outcome, author);
    object["page"] = page.path();
    object["control"] = record.name;
    object["property_page"] = type.name;
    object["diagnostics"] = to_json(session.diagnostics);
    console.result(json_line(object));
  } else {
    console.result(outcome_text(outcome, author));
  }
  const bool failed = !author.messages().empty();
  const std::string sentence = outcome_sentence(outcome, failed, options.apply, console.options().dry_run);
  if (!sentence.empty()) console.say(what + ": " + sentence);
  if (interrupted()) return exit_interrupted;
  return failed ? exit_failed : exit_done;
}

}  // namespace plexoras
