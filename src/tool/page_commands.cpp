// new, get and set: the commands that work on the controls of one page.

#include <algorithm>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "authoring/chart_data.h"
#include "authoring/control_properties.h"
#include "host/atomic_file.h"
#include "host/headless_platform.h"
#include "host/text_lines.h"
#include "tool/commands.h"
#include "tool/data_import.h"
#include "tool/json_text.h"
#include "tool/page_target.h"

namespace plexoras {
namespace {

using Assignment = std::pair<std::string, std::string>;

std::string empty_page(std::string_view title) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + std::string(title) +
         "</title>\n</head>\n<body>\n</body>\n</html>\n";
}

bool exists(const std::string& path) {
  try {
    read_file(path);
    return true;
  } catch (const AutomationError& error) {
    if (error.number() == RunTimeError::FileNotFound) return false;
    throw;
  }
}

// Where a new control goes.
std::size_t insertion_place(const Page& page, const NewOptions& options) {
  const std::string& text = options.after.empty() ? options.before : options.after;
  if (text.empty()) return page.content_end();
  const std::size_t at = page.bytes().find(text);
  if (at == std::string::npos) {
    throw AutomationError(RunTimeError::InvalidCall, page.path() + ": \"" + text + "\" is not in this page");
  }
  return options.after.empty() ? at : at + text.size();
}

// The new control with line breaks so that it stands on lines of its own.
std::string with_own_lines(const Page& page, std::size_t at, std::string span) {
  const std::string& bytes = page.bytes();
  const std::string line_break(page.line_break());
  if (at > 0 && bytes[at - 1] != '\n') span.insert(0, line_break);
  if (at == bytes.size() || (bytes[at] != '\n' && bytes[at] != '\r')) span += line_break;
  return span;
}

// The page with a new control must hold that one and all others: a place inside a script, a tag, a comment
// or another control would lose them.
void check_new_control(const Page& before, const std::string& bytes, const ControlRecord& added) {
  try {
    const Page after = Page::parse(before.path(), bytes);
    const auto index = after.find(added.name);
    const bool is_there =
        index.has_value() && after.controls()[*index].record == added && !after.controls()[*index].span.in_comment;
    if (is_there && after.controls().size() > before.controls().size()) return;
  } catch (const PageError&) {
    // Its places are those of a page that nobody will see.
  }
  throw AutomationError(RunTimeError::InvalidCall,
                        before.path() +
                            ": a control cannot stand at that place: it is inside a script, a style sheet, "
                            "a tag, a comment or another control");
}

// `target` is for messages.
void assign(ControlProperties& properties, const std::vector<Assignment>& assignments,
            ControlProperties::NewKeys new_keys, const std::string& target) {
  try {
    for (const auto& [name, value] : assignments) properties.set(name, value, new_keys);
  } catch (const AutomationError& error) {
    throw AutomationError(error.number(), target + ": " + error.description());
  }
}

std::vector<Assignment> parse_assignments(const std::vector<std::string>& texts) {
  std::vector<Assignment> assignments;
  assignments.reserve(texts.size());
  for (const std::string& text : texts) assignments.push_back(parse_assignment(text));
  return assignments;
}

// PROPERTY=VALUE lines as `get` prints them.
std::vector<Assignment> read_assignments(const std::string& from) {
  const std::string text = from == "-" ? std::string(std::istreambuf_iterator<char>(std::cin), {}) : read_file(from);
  std::vector<Assignment> assignments;
  TextLines lines(text);
  for (std::size_t number = 1; const auto line = lines.next(); ++number) {
    if (line->empty()) continue;
    const auto refuse = [&](const char* what) { throw PageError({{from, {number, 1}, what}}); };
    const std::size_t equals = line->find('=');
    if (equals == std::string_view::npos || equals == 0) refuse("this line sets nothing; write PROPERTY=VALUE");
    const std::optional<std::string> plain = unescape_listing(line->substr(equals + 1));
    if (!plain) refuse("\"\\\" must be followed by \\, r, n or t; write \\\\ for a backslash");
    assignments.emplace_back(line->substr(0, equals), *plain);
  }
  return assignments;
}

// Data that a control was given, and the file that it remembers for them; null when there are none.
using GivenData = nlohmann::json;

// Gives the control the data of `file`, which it remembers when they can be read again.
GivenData take_data(LiveControl& control, const std::string& page, const std::string& file,
                    const ImportRequest& request, FileSystem& files, Console& console) {
  if (file.empty()) return {};
  FileImport import = import_file(file, request, files, console);
  give_data(control, import.data.document.take_text(), import.data.settings.format);
  std::optional<DataSource> source;
  if (file != "-" && can_be_read_again(file)) {
    source = DataSource{path_to_remember(page, file), import.data.settings};
  } else {
    console.say("the data cannot be read again from " + std::string(file == "-" ? "standard input" : file) +
                ", so that refresh passes this chart over");
  }
  remember_source(control.control(), source);
  GivenData data = to_json(import);
  data["source"] = source ? nlohmann::json(source->path) : nlohmann::json();
  return data;
}

// Writes the page with control `name` in its new state; `done` says what was done to it.
void save(const Page& page, const std::string& bytes, const std::string& name, const std::string& done,
          const GivenData& data, Console& console) {
  const bool is_dry = console.options().dry_run;
  defer_interrupts();  // a page is written whole or not at all, and nothing is left beside it
  const bool changes = is_dry ? bytes != page.bytes() : write_if_changed(page.path(), bytes);
  if (console.options().json) {
    nlohmann::json object{{"version", json_version},
                          {"page", page.path()},
                          {"control", name},
                          {"outcome", changes ? "written" : "unchanged"}};
    if (!data.is_null()) object["data"] = data;
    console.result(json_line(object));
    return;
  }
  const std::string sentence = "control \"" + name + "\"" + done;
  console.say(page.path() + ": " +
              (!changes ? "nothing to change"
               : is_dry ? "would be written (" + sentence + ")"
                        : sentence));
}

nlohmann::json properties_json(const std::vector<Assignment>& properties) {
  nlohmann::json object = nlohmann::json::object();
  for (const auto& [name, value] : properties) object[name] = value;
  return object;
}

std::vector<Assignment> wanted_properties(TemplateSession& session, LiveControl& control, const GetOptions& options) {
  const ControlProperties properties(control);
  std::vector<Assignment> wanted;
  if (options.changed) {
    LiveControl fresh = LiveControl::make_new(session, control.record().identifier, *control.site().name);
    wanted = properties.changes_from(ControlProperties(fresh));
    if (options.properties.empty()) return wanted;
    for (const std::string& name : options.properties) properties.get(name);  // raises for what is no property
    std::erase_if(wanted, [&](const Assignment& a) {
      return std::find(options.properties.begin(), options.properties.end(), a.first) == options.properties.end();
    });
    return wanted;
  }
  for (const std::string& name : options.properties.empty() ? properties.names() : options.properties) {
    wanted.emplace_back(name, properties.get(name));
  }
  return wanted;
}

}  // namespace

int run_new(const NewOptions& options, HeadlessPlatform& host, Console& console) {
  SilentMessageBox silent;
  host.platform().message_box = &silent;
  if (!is_control_name(options.name)) {
    throw UsageError("\"" + options.name +
                     "\" cannot name a control; use a letter, then letters, digits, \".\", \"-\", \"_\" and \":\"");
  }
  if (!options.after.empty() && !options.before.empty()) throw UsageError("give --after or --before, not both");
  const std::vector<Assignment> assignments = parse_assignments(options.assignments);

  const bool is_new_page = !exists(options.page);
  const Page page = is_new_page ? Page::parse(options.page, empty_page(options.name)) : Page::read(options.page);
  refuse_published(page);
  if (page.find(options.name)) {
    throw AutomationError(RunTimeError::InvalidCall,
                          options.page + ": there is a control \"" + options.name + "\" already; give another --name");
  }
  TemplateSession session(host.platform());
  LiveControl control = LiveControl::make_new(session, options.control, options.name);
  refuse_broken_template(session.diagnostics, console);
  // Its sample data have no titles that an author has typed.
  if (!options.csv.empty()) ControlProperties(control).set("Contents", "");
  const GivenData data = take_data(control, options.page, options.csv, options.import, host.platform().files, console);
  ControlProperties properties(control);
  assign(properties, assignments, ControlProperties::NewKeys::Refuse, options.page + "#" + options.name);

  const ControlRecord record = control.record();
  const std::size_t at = insertion_place(page, options);
  Page::Edit edit(page);
  edit.insert(at, with_own_lines(page, at, Page::span_text(record, "", page.line_break())));
  const std::string bytes = edit.result();
  check_new_control(page, bytes, record);
  save(page, bytes, record.name, " added", data, console);
  return interrupted() ? exit_interrupted : exit_done;
}

int run_get(const GetOptions& options, HeadlessPlatform& host, Console& console) {
  SilentMessageBox silent;
  host.platform().message_box = &silent;
  const PageTarget target = parse_page_target(options.target);
  const Page page = Page::read(target.page);
  TemplateSession session(host.platform());

  if (page.controls().empty()) refuse_published(page);
  // A page alone stands for all of its controls.
  std::vector<std::size_t> indices;
  if (target.name.empty() && page.controls().size() != 1 && options.properties.empty()) {
    for (std::size_t i = 0; i < page.controls().size(); ++i) indices.push_back(i);
  } else {
    indices.push_back(find_control(page, target));
  }

  nlohmann::json object{{"version", json_version}, {"page", page.path()}, {"controls", nlohmann::json::array()}};
  std::string text;
  for (const std::size_t index : indices) {
    LiveControl control = load_control(session, page, index);
    const ControlRecord& record = page.controls()[index].record;
    const std::vector<Assignment> wanted = wanted_properties(session, control, options);
    object["controls"].push_back({{"name", record.name},
                                  {"identifier", record.identifier},
                                  {"line", page.controls()[index].place.line},
                                  {"properties", properties_json(wanted)}});
    const std::string prefix = indices.size() > 1 ? record.name + "." : "";
    const bool is_bare = options.properties.size() == 1 && !options.changed;
    for (const auto& [name, value] : wanted) {
      text += is_bare ? value + "\n" : prefix + name + "=" + escape_listing(value) + "\n";
    }
  }
  object["diagnostics"] = to_json(session.diagnostics);
  tell(session.diagnostics, console);
  console.result(console.options().json ? json_line(object) : text);
  return exit_done;
}

int run_set(const SetOptions& options, HeadlessPlatform& host, Console& console) {
  SilentMessageBox silent;
  host.platform().message_box = &silent;
  if (options.from == "-" && options.csv == "-") throw UsageError("standard input is read once: --from or --csv");
  // What a control was read from may hold properties that no template declares.
  const std::vector<Assignment> copied =
      options.from.empty() ? std::vector<Assignment>() : read_assignments(options.from);
  const std::vector<Assignment> assignments = parse_assignments(options.assignments);
  if (copied.empty() && assignments.empty() && options.csv.empty()) {
    throw UsageError("nothing to set; write PROPERTY=VALUE, --csv FILE or --from FILE");
  }

  const PageTarget target = parse_page_target(options.target);
  const Page page = Page::read(target.page);
  const std::size_t index = find_control(page, target);
  TemplateSession session(host.platform());
  LiveControl control = load_control(session, page, index);
  refuse_broken_template(session.diagnostics, console);
  ControlProperties properties(control);
  assign(properties, copied, ControlProperties::NewKeys::Accept, options.target);
  const GivenData data = take_data(control, page.path(), options.csv, options.import, host.platform().files, console);
  assign(properties, assignments,
         options.custom ? ControlProperties::NewKeys::Accept : ControlProperties::NewKeys::Refuse, options.target);

  Page::Edit edit(page);
  const ControlRecord record = control.record();
  edit.replace_record(index, record);
  const std::string bytes = edit.result();
  Page::parse(page.path(), bytes);  // tells of a new name that is taken
  const std::size_t count = copied.size() + assignments.size();
  std::string done = data.is_null() ? "" : "data imported";
  if (count > 0 || data.is_null()) {
    done += (done.empty() ? "" : ", ") + std::to_string(count) + (count == 1 ? " property set" : " properties set");
  }
  save(page, bytes, record.name, ": " + done, data, console);
  return interrupted() ? exit_interrupted : exit_done;
}

}  // namespace plexoras
