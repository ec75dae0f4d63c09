#include "authoring/check/form_check.h"

#include <optional>

#include "template/window_spec_line.h"

namespace plexoras {
namespace {

using DefinitionMade = TemplateWalk::DefinitionMade;
using Role = WindowSpecName::Role;

class FormCheck {
public:
  FormCheck(const TemplateWalk& form, const FormContext& context, Findings& findings)
      : form_(form), context_(context), findings_(findings) {
    take_constants(*context.constants);
    for (const DefinitionMade& made : form.definitions()) {
      const WindowSpecName name = parse_window_spec_name(made.name.text);
      knows_entries_ &= !made.name.is_computed;
      if (name.role != Role::Entry) continue;
      entries_.emplace(name.key);
      if (name.kind == WindowSpecEntry::Kind::Setting) settings_.emplace(name.key);
    }
    knows_entries_ &= !form.is_open_ended();
  }

  void check() {
    for (const DefinitionMade& made : form_.definitions()) {
      if (!made.name.is_computed) check_definition(made);
    }
    for (const TemplateSection* const section : form_.sections()) {
      for (const OutlineLine& line : section->lines) {
        const std::size_t first = line.is_directive ? std::string::npos : line.text.find_first_not_of(' ');
        if (first == std::string::npos || has_reference(line.text)) continue;
        tell({section, &line, line.text.data() + first}, std::string(text_in_window_spec), "begin it with #DEFINE");
      }
    }
  }

private:
  void take_constants(const TemplateWalk& constants) {
    knows_constants_ = !constants.is_open_ended();
    for (const DefinitionMade& made : constants.definitions()) {
      const bool has_room = constants_.Count() < Dictionary::capacity;
      knows_constants_ &= has_room && !made.name.is_computed;
      if (has_room) constants_.atPut(made.name.text, made.value);
    }
  }

  void check_definition(const DefinitionMade& made) {
    const WindowSpecName name = parse_window_spec_name(made.name.text);
    switch (name.role) {
      case Role::Helper:
        return;
      case Role::Misnamed:
        return tell_fault(at(made, 0), names_no_entry(made.name.text));
      case Role::Comment:
        if (knows_entries_ && !entries_.contains(std::string(name.key))) {
          tell(at(made, 0), comments_on_no_entry(name.key), "mend the name, or remove the line");
        }
        return;
      case Role::Entry:
        check_entry(made, name);
    }
  }

  void check_entry(const DefinitionMade& made, const WindowSpecName& name) {
    const bool is_setting = name.kind == WindowSpecEntry::Kind::Setting;
    if (is_setting && context_.knows_properties && !context_.properties.contains(std::string(name.key))) {
      findings_.add("undeclared-setting", made.place, "section PROPERTY does not declare " + in_quotes(name.key),
                    "define it there with its default, or mend the name");
    }
    const std::optional<std::string> value = written_out(made.value);
    if (!value) return;
    WindowSpecEntry entry;
    entry.kind = name.kind;
    std::size_t condition_at = 0;
    // Behind a helper the places are those of another text.
    const auto place_of = [&](std::size_t offset) {
      return at(made, value->compare(0, offset, made.value.substr(0, offset)) == 0 ? offset : 0);
    };
    try {
      read_window_spec_line(*value, constants_, entry, condition_at);
    } catch (const WindowSpecFault& fault) {
      if (!fault.lacks_table || knows_constants_) tell_fault(place_of(fault.offset), fault.what);
      return;
    }
    if (!entry.condition) return;
    const std::string& key = entry.condition->key;
    const bool may_be_there = !context_.knows_properties || !knows_entries_;
    if (may_be_there || settings_.contains(key) || context_.properties.contains(key)) return;
    tell(place_of(condition_at), depends_on_no_setting(key), "mend the name; case counts");
  }

  // The value with its helpers in it, or nothing where it hangs on something else.
  std::optional<std::string> written_out(std::string_view value) const {
    std::string text;
    std::size_t copied = 0;
    for (const OutlineReference& reference : references_in(value)) {
      const auto definitions = form_.definitions_of(reference.name);
      const bool is_helper = reference.kind == OutlineReference::Kind::Value && reference.is_closed &&
                             definitions.size() == 1 && !has_reference(definitions.front()->value) &&
                             !context_.properties.contains(std::string(reference.name));
      if (!is_helper) return std::nullopt;
      const auto end = static_cast<std::size_t>(reference.name.data() + reference.name.size() - value.data());
      text.append(value.substr(copied, reference.begin - copied)).append(definitions.front()->value);
      copied = value.find(')', end) + 1;
    }
    return text.append(value.substr(copied));
  }

  static TemplatePlace at(const DefinitionMade& made, std::size_t offset) {
    return {made.place.section, made.place.line, made.value.data() + offset};
  }

  // What is wrong says how to mend it behind a semicolon.
  void tell_fault(const TemplatePlace& place, const std::string& fault) {
    const std::size_t semicolon = fault.find("; ");
    tell(place, fault.substr(0, semicolon), semicolon == std::string::npos ? "" : fault.substr(semicolon + 2));
  }

  void tell(const TemplatePlace& place, std::string what, std::string mend) {
    findings_.add("unreadable-form", place, std::move(what), std::move(mend));
  }

  const TemplateWalk& form_;
  const FormContext& context_;
  Findings& findings_;
  std::set<std::string> entries_;  // the keys of all branches
  std::set<std::string> settings_;
  bool knows_entries_ = true;
  Dictionary constants_;
  bool knows_constants_ = true;
};

}  // namespace

void check_form(const TemplateWalk& form, const FormContext& context, Findings& findings) {
  FormCheck(form, context, findings).check();
}

}  // namespace plexoras
