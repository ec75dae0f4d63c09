#include "authoring/check/template_check.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "authoring/check/endless_check.h"
#include "authoring/check/form_check.h"
#include "authoring/check/template_names.h"
#include "chart_control/diagram_dtc.h"
#include "chart_control/events_page.h"
#include "host/text_lines.h"

namespace plexoras {
namespace {

using Purpose = TemplateWalk::Purpose;

constexpr std::string_view page_section = "TEMPLATE";
constexpr std::string_view property_section = "PROPERTY";
constexpr std::string_view form_section = "ADVANCED_SPEC";
constexpr std::string_view list_section = "CONSTANT";
constexpr std::string_view menu_section = "MENUITEMS";
constexpr std::string_view choice_section = "DSPROGID";

// Sections that no control reads are read up to so many lines in all, however often they include each other.
constexpr std::size_t most_lines = 500000;

// What controls read a section for. The properties come first: the others know them.
struct ControlSection {
  std::string_view name;
  Purpose purpose;
};
constexpr ControlSection control_sections[] = {
    {property_section, Purpose::Variables}, {form_section, Purpose::Form},    {list_section, Purpose::Variables},
    {menu_section, Purpose::Variables},     {page_section, Purpose::Text},    {choice_section, Purpose::Variables},
    {".COMPANY", Purpose::Variables},       {".PRODUCT", Purpose::Variables}, {".VERSION", Purpose::Variables},
};

// What controls, and those who publish a page, set in section TEMPLATE, beside the custom properties.
struct BoundVariable {
  std::string_view name;
  bool is_author_text = false;  // an author can type it
  enum class There { Perhaps, InCharts, Always } there = There::Perhaps;
};
constexpr BoundVariable bound_variables[] = {{"WIDTH", true, BoundVariable::There::Always},
                                             {"HEIGHT", true, BoundVariable::There::Always},
                                             {"APPLETID", true, BoundVariable::There::Always},
                                             {"Visible"},
                                             {"XmlStyle", false, BoundVariable::There::InCharts},
                                             {"Contents"},
                                             {"COLSELECTION"},
                                             {"ROWSELECTION"},
                                             {"CUSTOMDAT"},
                                             {"DATATABLE"},
                                             {"SNAPSHOT"},
                                             {"DIAGRAMSCRIPT"}};

const ControlSection* find_control_section(std::string_view name) {
  const auto* const found = std::find_if(std::begin(control_sections), std::end(control_sections),
                                         [&](const ControlSection& section) { return section.name == name; });
  return found == std::end(control_sections) ? nullptr : found;
}

class TemplateCheck {
public:
  TemplateCheck(TemplateModel& model, std::string_view file, Findings& findings)
      : model_(model), file_(file), findings_(findings) {
    const std::vector<std::string>& names = model.section_names(file);
    context_.file = file_;
    context_.is_closed = std::find(names.begin(), names.end(), page_section) != names.end();
    knows_properties_ = context_.is_closed;
  }

  void check() {
    for (const ControlSection& section : control_sections) {
      if (model_.find(file_, section.name) != nullptr) check_control_section(section);
    }
    context_.is_closed = false;
    context_.is_page_text = false;
    check_other_sections();
  }

private:
  void check_control_section(const ControlSection& section) {
    const bool is_page_text = section.purpose == Purpose::Text;
    if (section.purpose == Purpose::Form) return check_form_section(file_, section.name);
    std::set<std::string> given = is_page_text ? properties_ : std::set<std::string>();
    if (is_page_text) {
      for (const BoundVariable& variable : bound_variables) {
        context_.known.emplace(variable.name);
        if (variable.is_author_text) author_text_.emplace(variable.name);
        using There = BoundVariable::There;
        const bool is_there = variable.there == There::Always ||
                              (variable.there == There::InCharts && file_ == DiagramDTC::template_file);
        if (is_there) given.emplace(variable.name);
      }
      // A chart's data are a custom property that the control escapes.
      author_text_.erase("Contents");
    }
    context_.is_page_text = is_page_text;
    const std::set<std::string> author_text = is_page_text ? author_text_ : std::set<std::string>();
    TemplateWalk walk(model_, findings_, file_, section.purpose, given, author_text);
    walk.walk(section.name);
    walked_.insert(walk.sections().begin(), walk.sections().end());
    if (section.name == property_section) take_properties(walk);
    if (section.name == list_section || section.name == menu_section) check_table(walk, section.name);
    if (section.name == list_section) check_events(walk);
    if (section.name == choice_section) check_choice(walk);
    check_names(model_, walk, context_, findings_);
    check_endless(walk, findings_);
  }

  void check_form_section(const std::string& file, std::string_view section) {
    TemplateWalk form(model_, findings_, file, Purpose::Form, properties_);
    form.walk(section);
    walked_.insert(form.sections().begin(), form.sections().end());
    check_names(model_, form, context_, findings_);
    check_endless(form, findings_);

    Findings told_elsewhere;
    TemplateWalk constants(model_, told_elsewhere, file, Purpose::Variables);
    constants.walk(list_section);
    check_form(form, {.properties = declared_, .knows_properties = knows_properties_, .constants = &constants},
               findings_);
  }

  // The forms that stand in for the editor of contents: [SECTION], or [SECTION]:FILE.
  void check_choice(const TemplateWalk& walk) {
    std::set<std::pair<std::string, std::string>> seen;
    for (const TemplateWalk::DefinitionMade* const made : walk.definitions_of(choice_section)) {
      const std::string_view value = trimmed(made->value);
      if (has_reference(value) || !value.starts_with('[')) continue;
      const std::size_t end = value.find("]:");
      const bool names_file = end != std::string_view::npos;
      const std::string_view section =
          value.substr(1, names_file ? end - 1 : std::max<std::size_t>(value.size(), 2) - 2);
      const std::string file(names_file ? value.substr(end + 2) : std::string_view(file_));
      const TemplatePlace place{made->place.section, made->place.line, value.data()};
      if (!model_.has_file(file)) {
        findings_.add("missing-file", place, "there is no template file " + in_quotes(file),
                      "mend the name, or put the file beside this one");
      } else if (model_.find(file, section) == nullptr) {
        findings_.add("missing-section", place,
                      file + " has no section " + in_quotes(section) + model_.similar_section(file, section),
                      "write [SECTION], or [SECTION]:FILE; case counts");
      } else if (seen.emplace(file, section).second) {
        check_form_section(file, section);
      }
    }
  }

  // Two events that keep their scripts in one property. What stands in conditions may never meet.
  void check_events(const TemplateWalk& walk) {
    std::map<std::string_view, const TemplateWalk::DefinitionMade*> rows;  // the last of each name counts
    for (const TemplateWalk::DefinitionMade& made : walk.definitions()) {
      const bool is_row = made.name.text.starts_with(Events::handler_table) && !made.name.is_computed;
      if (is_row && !walk.may_undefine(made.name.text)) rows[made.name.text] = &made;
    }
    std::map<std::string_view, const TemplateWalk::DefinitionMade*> first_rows;  // of each property
    for (const TemplateWalk::DefinitionMade& made : walk.definitions()) {
      const auto row = rows.find(made.name.text);
      const bool counts = row != rows.end() && row->second == &made && made.branch == 0;
      if (!counts || made.value.empty() || has_reference(made.value)) continue;
      const auto [first, is_new] = first_rows.emplace(made.value, &made);
      if (is_new) continue;
      findings_.add("shared-script", {made.place.section, made.place.line, made.value.data()},
                    in_quotes(made.value) + " is already in use for " + in_quotes(first->second->name.text),
                    "give each event a custom property of its own");
    }
  }

  void take_properties(const TemplateWalk& walk) {
    for (const TemplateWalk::DefinitionMade& made : walk.definitions()) {
      knows_properties_ &= !made.name.is_computed;
      if (made.name.is_computed) continue;
      context_.known.insert(made.name.text);
      author_text_.insert(made.name.text);
      declared_.insert(made.name.text);
    }
    knows_properties_ &= !walk.is_open_ended();
    properties_.insert(walk.stored().begin(), walk.stored().end());
  }

  // An entry's name that holds a blank leaves its rest in the value: before a number in a list of the pages, before
  // "type:param" among the commands of the menu builder.
  void check_table(const TemplateWalk& walk, std::string_view section) {
    for (const TemplateWalk::DefinitionMade& made : walk.definitions()) {
      const std::size_t blank = made.value.rfind(' ');
      const bool is_quoted = made.value.data() != made.place.line->argument().data() &&
                             (made.value.data()[-1] == '\'' || made.value.data()[-1] == '"');
      const bool is_told = made.name.text.starts_with('"') || made.name.text.starts_with('\'');
      if (blank == std::string_view::npos || is_quoted || is_told) continue;
      const std::string_view last = made.value.substr(blank + 1);
      const bool is_number = !last.empty() && last.find_first_not_of("0123456789") == std::string_view::npos;
      const std::size_t colon = made.value.find(':');
      const bool is_late_command = colon != std::string_view::npos && made.value.find(' ') < colon;
      if (!(section == list_section ? is_number : is_late_command)) continue;
      findings_.add("blank-in-name", made.place,
                    "the name ends at its first blank; " + in_quotes(made.value) + " is the value",
                    "use no-break blanks in the name");
    }
  }

  // Sections that another one includes are read with it; the others may be asked for by anybody.
  void check_other_sections() {
    std::set<std::string> included;
    for (const std::string& name : model_.section_names(file_)) {
      const TemplateSection* const section = model_.find(file_, name);
      if (section == nullptr) continue;
      for (const OutlineLine& line : section->lines) {
        if (!line.is_directive || line.directive.kind != DirectiveKind::Include) continue;
        const FromSplit from = split_at_from(line.argument());
        const std::string_view target = from.found ? from.before : line.argument();
        if (target != name && (!from.found || from.after == file_)) included.emplace(target);
      }
    }
    for (const bool is_included : {false, true}) {
      for (const std::string& name : model_.section_names(file_)) {
        if (included.contains(name) == is_included) check_open_section(name);
      }
    }
  }

  void check_open_section(const std::string& name) {
    const TemplateSection* const section = model_.find(file_, name);
    if (section == nullptr || walked_.contains(section) || find_control_section(name) != nullptr) return;
    if (lines_read_ > most_lines) return;
    TemplateWalk walk(model_, findings_, file_, Purpose::Text);
    walk.walk(name);
    lines_read_ += walk.lines_read();
    walked_.insert(walk.sections().begin(), walk.sections().end());
    NameContext context{.file = file_};
    check_names(model_, walk, context, findings_);
    check_endless(walk, findings_);
  }

  TemplateModel& model_;
  std::string file_;
  Findings& findings_;
  NameContext context_;
  std::set<std::string> properties_;   // that are surely there
  std::set<std::string> author_text_;  // variables that an author types
  std::set<std::string> declared_;     // the properties of all branches
  bool knows_properties_ = false;      // whether those are all
  std::set<const TemplateSection*> walked_;
  std::size_t lines_read_ = 0;  // of sections that no control reads
};

// Headers that are none, and text that belongs to no section.
void check_file_lines(std::string_view path, std::string_view bytes, Findings& findings) {
  const auto add = [&](std::string_view rule, std::size_t line, std::size_t column, std::string what,
                       std::string mend) {
    findings.add({find_check_rule(rule), std::string(path), line, column, std::move(what), std::move(mend), line});
  };
  constexpr std::string_view upper_case = ".ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
  TextLines lines(bytes);
  bool in_section = false;
  bool told = false;
  for (std::size_t number = 1; const auto line = lines.next(); ++number) {
    if (kind_of_file_line(*line) == FileLine::Header) in_section = true;
    if (kind_of_file_line(*line) != FileLine::Body) continue;
    const std::size_t first = line->find_first_not_of(" \t");
    if (first == std::string_view::npos) continue;
    const std::string_view text = line->substr(first, line->find_last_not_of(" \t") + 1 - first);
    const bool is_bracketed = text.size() > 2 && text.front() == '[' && text.back() == ']';
    if (is_bracketed && text.substr(1, text.size() - 2).find_first_not_of(upper_case) == std::string_view::npos) {
      add("not-a-section", number, first + 1, "this is no header of a section, for there are blanks around it",
          "remove the blanks before \"[\" and behind \"]\"");
    } else if (!in_section && !told) {
      told = true;
      add("text-outside-section", number, first + 1, "this line belongs to no section, so nothing reads it",
          "put a header [NAME] in front, or make it a comment with \";\"");
    }
  }
}

}  // namespace

void check_template(TemplateModel& model, std::string_view file, std::string_view path, std::string_view bytes,
                    Findings& findings) {
  check_file_lines(path, bytes, findings);
  TemplateCheck(model, file, findings).check();
}

}  // namespace plexoras
