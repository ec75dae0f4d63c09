// page: a property page of a control, shown and played on from the command line.

#include <algorithm>
#include <nlohmann/json.hpp>

#include "authoring/control_properties.h"
#include "authoring/form_driver.h"
#include "authoring/page_text.h"
#include "authoring/property_pages.h"
#include "host/headless_platform.h"
#include "host/pending_settings.h"
#include "tool/commands.h"
#include "tool/form_text.h"
#include "tool/json_text.h"
#include "tool/page_action.h"
#include "tool/page_target.h"
#include "tool/scripted_author.h"
#include "tool/text_table.h"

namespace plexoras {
namespace {

nlohmann::json to_json(const ScriptedAuthor::Message& problem) {
  nlohmann::json object{{"severity", "error"}, {"message", problem.text}};
  if (!problem.action.empty()) object["action"] = problem.action;
  return object;
}

void list_pages(const LiveControl& control, Console& console, nlohmann::json& object) {
  TextTable table({.columns = {{.widest = 40}}});
  table.add({"PAGE", "CAPTION"});
  object["property_pages"] = nlohmann::json::array();
  for (const PropertyPageType* const type : PropertyPages::types_for(control)) {
    table.add({std::string(type->name), std::string(type->caption)});
    object["property_pages"].push_back({{"name", type->name}, {"caption", type->caption}});
  }
  if (!console.options().json) console.result(table.text());
}

// Writes the control as it is now; true when the page changes.
bool write_control(const Page& page, std::size_t index, LiveControl& control, const Console& console) {
  Page::Edit edit(page);
  edit.replace_record(index, control.record());
  const std::string bytes = edit.result();
  defer_interrupts();  // a page is written whole or not at all
  return console.options().dry_run ? bytes != page.bytes() : write_if_changed(page.path(), bytes);
}

// A text that an author gave to a box in which a property stands.
struct TypedValue {
  const PropertyRow& row;
  std::string text;
};

std::vector<TypedValue> typed_values(const PropertyPageType& type, const Form& form, const ScriptedAuthor& author) {
  std::vector<TypedValue> typed;
  if (type.properties == nullptr) return typed;
  for (const PropertyRow& row : type.properties()) {
    const auto set = author.values_set().find(std::string(row.control));
    if (set == author.values_set().end()) continue;
    const FormControl* const control = form.find(row.control);
    const auto* const list = dynamic_cast<const ListBox*>(control);
    // Of an entry its code is stored.
    const bool is_text = list != nullptr ? list->list_index() < 0 : dynamic_cast<const TextBox*>(control) != nullptr;
    if (is_text) typed.push_back({row, set->second});
  }
  return typed;
}

bool is_same(const TypedValue& typed, const std::string& stored) {
  if (typed.text == stored || typed.row.encoding == Encoding::Text) return typed.text == stored;
  bool same = false;
  ignoring_errors([&] { same = Variant(typed.text).to_double() == Variant(stored).to_double(); });
  return same;
}

// Boxes take any text, and pages store what they make of it: "abc" in a box for numbers is some number.
std::vector<std::string> stored_otherwise(const std::vector<TypedValue>& typed_values, LiveControl& control) {
  constexpr std::size_t enough = 60;
  std::vector<std::string> warnings;
  const ControlProperties properties(control);
  for (const TypedValue& typed : typed_values) {
    const std::string stored = properties.get(typed.row.property);
    if (is_same(typed, stored)) continue;
    warnings.push_back(std::string(typed.row.control) + ": \"" + cut_to(printable(typed.text), enough) +
                       "\" was stored as " + (stored.empty() ? "\"\"" : cut_to(printable(stored), enough)));
  }
  return warnings;
}

// A form built from a template says beside a setting what is wrong with it; applying would be refused.
bool shows_problem(const std::vector<ListedControl>& controls) {
  return std::ranges::any_of(controls, [](const ListedControl& control) {
    return control.visible &&
           ((control.kind == "Label" && control.name.ends_with("_PROBLEM")) || shows_problem(control.controls));
  });
}

/// A property page of a control, on which an author works. Lives for one command.
class PageWork {
public:
  /// Where the page belongs, and what it needs; all of it outlives this.
  struct Place {
    const Page& page;
    std::size_t index;  ///< of the control
    LiveControl& control;
    const PropertyPageType& type;
    PropertyPages& pages;
    PendingSettings& settings;
  };

  PageWork(const Place& place, const PropertyPageOptions& options, ScriptedAuthor& author, Console& console)
      : place_(place), options_(options), author_(author), console_(console) {}

  /// Plays the author's actions and applies the page where that was asked for; the exit status.
  int run();
  /// Shows people what came of it.
  void tell_result();
  /// The same for programs, as far as it went. After `run` has raised, too.
  void add_result(nlohmann::json& object) const;

private:
  void apply();
  void keep_settings();
  std::string outcome_sentence() const;

  Place place_;
  const PropertyPageOptions& options_;
  ScriptedAuthor& author_;
  Console& console_;
  std::unique_ptr<PropertyPage> form_;
  bool edited_ = false;  // before applying
  bool written_ = false;
  bool settings_written_ = false;
  std::vector<std::string> warnings_;
};

int PageWork::run() {
  form_ = place_.pages.open(place_.type, place_.control);
  author_.play(*form_);
  edited_ = form_->Changed;
  if (options_.apply && edited_ && author_.messages().empty()) apply();
  if (!author_.messages().empty()) return exit_failed;
  keep_settings();
  return interrupted() ? exit_interrupted : exit_done;
}

void PageWork::apply() {
  const std::vector<TypedValue> typed = typed_values(place_.type, *form_, author_);
  author_.begin("--apply");
  form_->apply();
  if (!author_.messages().empty()) return;
  // What is shown in the end is what the control has now, which may be other than what was typed.
  form_ = place_.pages.open(place_.type, place_.control);
  if (!author_.messages().empty()) return;
  warnings_ = stored_otherwise(typed, place_.control);
  written_ = write_control(place_.page, place_.index, place_.control, console_);
}

// Some buttons write settings at once, but nothing is kept of work that fails or is only tried.
void PageWork::keep_settings() {
  if (!place_.settings.is_changed()) return;
  try {
    if (!console_.options().dry_run) place_.settings.flush();
  } catch (const AutomationError& error) {
    const std::string what = written_ ? "the page was written, but the settings were not: " : "";
    throw AutomationError(error.number(), what + error.description(), error.source());
  }
  settings_written_ = true;
}

void PageWork::tell_result() {
  std::string text = form_text(list_form(*form_));
  if (const auto& dialog = author_.unanswered()) {
    text += "\nThe dialog \"" + dialog->caption + "\":\n" + form_text(*dialog);
  }
  console_.result(text);
  for (const std::string& warning : warnings_) {
    console_.problem("plexoras: warning: " + author_.page() + ": " + warning + "\n");
  }
  const std::string sentence = outcome_sentence();
  if (!sentence.empty()) console_.say(author_.page() + ": " + sentence);
  if (settings_written_) {
    console_.say(author_.page() + ": settings " + (console_.options().dry_run ? "would be written" : "written"));
  }
}

// What became of the page on disk.
std::string PageWork::outcome_sentence() const {
  if (!author_.messages().empty()) return "nothing was written";
  if (options_.apply)
    return !written_ ? "nothing to change" : console_.options().dry_run ? "would be written" : "written";
  if (!edited_) return {};
  const bool would_apply = !shows_problem(list_form(*form_).controls);
  return std::string("nothing was written") + (would_apply ? "; --apply would apply the page" : "");
}

void PageWork::add_result(nlohmann::json& object) const {
  if (form_ != nullptr) {
    object["form"] = to_json(list_form(*form_));
    object["changed"] = form_->Changed;
  }
  if (author_.unanswered()) object["dialog"] = to_json(*author_.unanswered());
  object["outcome"] = written_ ? "written" : "unchanged";
  object["settings"] = settings_written_ ? "written" : "unchanged";
  object["messages"] = nlohmann::json::array();
  for (const ScriptedAuthor::Message& message : author_.messages()) {
    object["messages"].push_back(message.text);
    object["problems"].push_back(to_json(message));
  }
  object["warnings"] = nlohmann::json::array();
  for (const std::string& warning : warnings_) {
    object["warnings"].push_back({{"severity", "warning"}, {"message", warning}});
  }
}

// Shows a property page, works on it, or lists the pages. What there is to say for programs goes into `object`, of
// which as much stands there when this raises as is known then.
int run_page_into(nlohmann::json& object, const PropertyPageOptions& options, const std::vector<TypedAction>& actions,
                  HeadlessPlatform& host, Console& console) {
  SilentMessageBox silent;
  PendingSettings settings(host.platform().settings);
  Platform platform{.settings = settings,
                    .files = host.platform().files,
                    .components = host.components(),
                    .short_date = host.platform().short_date,
                    .random = host.platform().random,
                    .message_box = &silent};
  const PageTarget target = parse_page_target(options.target);
  object["page"] = target.page;
  const Page page = Page::read(target.page);
  const std::size_t index = find_control(page, target);
  const std::string& name = page.controls()[index].record.name;
  object["control"] = name;
  TemplateSession session(platform);
  PropertyPages pages(session);
  LiveControl control = load_control(session, page, index);
  if (options.property_page.empty()) {
    list_pages(control, console, object);
    return exit_done;
  }
  const PropertyPageType& type = PropertyPages::find(options.property_page, control);
  object["property_page"] = type.name;
  if (options.apply) refuse_broken_template(session.diagnostics, console);

  ScriptedAuthor author(actions, page.path() + "#" + name + " " + std::string(type.name), console);
  platform.message_box = &author;
  platform.file_dialog = &author;
  platform.presenter = &author;
  PageWork work({page, index, control, type, pages, settings}, options, author, console);
  const auto tell_diagnostics = [&] {
    // What is wrong in the template has not stopped the work.
    const std::vector<Diagnostic> warnings = as_warnings(session.diagnostics);
    tell(warnings, console);
    object["diagnostics"] = to_json(warnings);
  };
  try {
    const int status = work.run();
    tell_diagnostics();
    work.add_result(object);
    if (!console.options().json) work.tell_result();
    return status;
  } catch (const AutomationError& error) {
    tell_diagnostics();
    work.add_result(object);
    object["problems"].push_back(to_json(ScriptedAuthor::Message{author.action(), error.description()}));
    throw AutomationError(error.number(), author.place() + error.description(), error.source());
  }
}

}  // namespace

int run_page(const PropertyPageOptions& options, HeadlessPlatform& host, Console& console) {
  std::vector<TypedAction> actions;
  for (const PageActionText& typed : options.actions) actions.push_back(parse_action(typed));
  if (options.property_page.empty() && (options.apply || !actions.empty())) {
    throw UsageError("name the property page to work on; plexoras page " + options.target + " lists them");
  }

  nlohmann::json object{{"version", json_version}, {"problems", nlohmann::json::array()}};
  if (!console.options().json) return run_page_into(object, options, actions, host, console);

  int status = exit_failed;
  nlohmann::json& problems = object["problems"];
  try {
    status = run_page_into(object, options, actions, host, console);
    if (status == exit_interrupted) problems.push_back(to_json(ScriptedAuthor::Message{{}, "interrupted"}));
  } catch (const PageError& error) {
    problems = to_json(std::span(error.problems()));
  } catch (const AutomationError& error) {
    if (problems.empty()) problems.push_back(to_json(ScriptedAuthor::Message{{}, error.description()}));
  }
  console.result(json_line(object));
  return status;
}

}  // namespace plexoras
