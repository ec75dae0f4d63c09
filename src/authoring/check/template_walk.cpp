#include "authoring/check/template_walk.h"

#include <algorithm>

#include "authoring/check/line_check.h"

namespace plexoras {
namespace {

// Past so many inclusions inside each other the engine stops, whatever they are.
constexpr std::size_t deepest_inclusion = 128;
constexpr std::size_t most_conditions = 128;
// Names that are built from references in more ways than this may be anything.
constexpr std::size_t most_beginnings = 100;
// From so many variables on there is little room left.
constexpr std::size_t nearly_full = Dictionary::capacity - 4;

}  // namespace

TemplateWalk::TemplateWalk(TemplateModel& model, Findings& findings, std::string file, Purpose purpose,
                           const std::set<std::string>& given, const std::set<std::string>& author_text,
                           const TextFlow* outer)
    : model_(model),
      findings_(findings),
      file_(std::move(file)),
      purpose_(purpose),
      flow_(model, file_, author_text, outer),
      stored_(given.begin(), given.end()) {}

void TemplateWalk::walk(std::string_view section) {
  const TemplateSection* const found = model_.find(file_, section);
  if (found == nullptr) return;
  if (!found->lines.empty()) {
    const OutlineLine& first = found->lines.front();
    count_stored({found, &first, first.text.data()}, {});
  }
  read(*found, true);
  if (lines_left_ == 0) return;
  if (knows_conditions_) tell_condition_faults();
  if (nearly_full_.line != nullptr && !told_of_overflow_) {
    findings_.add("dictionary-nearly-full", nearly_full_,
                  "there are " + std::to_string(nearly_full_count_) + " variables here, and " +
                      std::to_string(Dictionary::capacity) + " fit",
                  "take away with #UNDEF what is not needed any more");
  }
}

std::vector<const TemplateWalk::DefinitionMade*> TemplateWalk::definitions_of(std::string_view name) const {
  std::vector<const DefinitionMade*> found;
  const auto known = definitions_by_name_.find(std::string(name));
  if (known == definitions_by_name_.end()) return found;
  for (const std::size_t index : known->second) found.push_back(&definitions_[index]);
  return found;
}

bool TemplateWalk::may_define(std::string_view name) const {
  return definitions_by_name_.contains(std::string(name)) ||
         std::any_of(computed_beginnings_.begin(), computed_beginnings_.end(),
                     [&](const std::string& beginning) { return name.starts_with(beginning); });
}

void TemplateWalk::read(const TemplateSection& section, bool is_certain) {
  sections_.insert(&section);
  inclusions_.push_back({&section, open_.size(), is_certain});
  const ScriptPlace place_before = flow_.script_place();
  for (const OutlineLine& line : section.lines) {
    if (lines_left_ == 0) break;
    --lines_left_;
    read_line({&section, &line, line.text.data()});
  }
  inclusions_.pop_back();
  flow_.end_section(section, place_before);
}

void TemplateWalk::read_line(const TemplatePlace& line) {
  note_uses(line);
  if (!line.line->is_directive) return;
  check_directive(line, findings_);
  switch (line.line->directive.kind) {
    case DirectiveKind::Define:
    case DirectiveKind::Macro:
      return define(line);
    case DirectiveKind::Undefine:
      return undefine(line);
    case DirectiveKind::Include:
      return include(line);
    case DirectiveKind::Else:
      return switch_branch(line);
    case DirectiveKind::EndIf:
      return close_condition();
    case DirectiveKind::Halt:
    case DirectiveKind::Call:
      return;
    default:
      return open_condition(line);
  }
}

void TemplateWalk::undefine(const TemplatePlace& line) {
  const std::string name(line.line->argument());
  undefines_any_ |= has_reference(name);
  undefined_.insert(name);
  stored_.erase(name);
}

void TemplateWalk::open_condition(const TemplatePlace& line) {
  const DirectiveKind kind = line.line->directive.kind;
  const bool compares =
      kind == DirectiveKind::IfEqual || kind == DirectiveKind::IfNotEqual || kind == DirectiveKind::IfInside;
  std::string settled;
  if (compares) {
    const BlankSplit parts = split_at_open_blank(line.line->argument());
    // Compared with another variable it is as unknown as that.
    if (!has_reference(parts.first) && !has_reference(parts.rest)) settled = parts.first;
  }
  if (open_.size() == most_conditions) {
    findings_.add("conditionals-too-deep", line, "this condition stands in 128 others, and no more will go",
                  "move the inner ones into definitions that are made before");
    lines_left_ = 0;  // the engine reads no further, either
    return;
  }
  open_.push_back({.branch = ++branches_, .stored_before = stored_in_branches_.size()});
  flow_.open_condition(std::move(settled), kind != DirectiveKind::IfNotEqual);
}

void TemplateWalk::switch_branch(const TemplatePlace& line) {
  if (open_.empty()) {
    fits_together_ = false;
    return;
  }
  Condition& condition = open_.back();
  if (condition.else_line != nullptr) {
    second_elses_.emplace_back(line, condition.else_line);
    return;
  }
  condition.else_line = line.line;
  condition.branch = ++branches_;
  forget_branch();
  flow_.switch_branch();
}

void TemplateWalk::close_condition() {
  if (open_.empty()) {
    fits_together_ = false;
    return;
  }
  forget_branch();
  flow_.close_condition();
  open_.pop_back();
}

// A section may open a condition that another one closes, as long as all fits together where they are read. When it
// does not, each section is held to its own conditions: so what is wrong is told in the section that it is in.
void TemplateWalk::tell_condition_faults() {
  using Kind = ConditionFault::Kind;
  fits_together_ &= open_.empty();
  for (const auto& [place, first] : second_elses_) {
    findings_.add(
        "second-else", place,
        "this is the second #ELSE of one condition; the first stands in line " + std::to_string(first->place().line),
        "write a condition of its own in the #ELSE branch");
  }
  if (fits_together_) return;
  for (const TemplateSection* const section : sections_) {
    for (const ConditionFault& fault : section->condition_faults) {
      const OutlineLine& line = section->lines[fault.line];
      const TemplatePlace place{section, &line, line.text.data()};
      if (fault.kind == Kind::Unclosed) {
        findings_.add("unclosed-conditional", place, "this " + keyword_of(line) + " is never closed",
                      "put #ENDIF behind the last line that depends on it");
      } else if (fault.kind == Kind::StrayElse) {
        findings_.add("stray-else", place,
                      "this #ELSE stands outside any condition, so that all text behind it is left out",
                      "remove it, or put the condition in front that it belongs to");
      } else if (fault.kind == Kind::StrayEndIf) {
        findings_.add("stray-endif", place, "this #ENDIF closes nothing",
                      "remove it, or the #ENDIF before it that closes too early");
      }
    }
  }
}

// What one branch defines is not surely there behind it.
void TemplateWalk::forget_branch() {
  while (stored_in_branches_.size() > open_.back().stored_before) {
    stored_.erase(stored_in_branches_.back());
    stored_in_branches_.pop_back();
  }
}

void TemplateWalk::define(const TemplatePlace& line) {
  const TemplateDefinition definition = definition_of(*line.line);
  if (!definition.is_complete) return;
  TemplateName name(definition.name);
  if (line.line->directive.kind == DirectiveKind::Macro) name = {std::string(definition.name), false};
  const bool is_empty = definition.value.empty();
  if (is_empty && purpose_ == Purpose::Variables && !name.is_computed && !may_define(name.text) &&
      !stored_.contains(name.text)) {
    findings_.add("empty-definition", line, "this stores nothing, for " + in_quotes(name.text) + " is new",
                  "define it with any value in the line before, which declares it; then this empties it");
  }
  if (name.is_computed) {
    is_open_ended_ |= computed_beginnings_.size() >= most_beginnings;
    if (!is_open_ended_) computed_beginnings_.insert(name.text);
  } else if (!is_empty || may_define(name.text) || purpose_ != Purpose::Variables) {
    definitions_by_name_[name.text].push_back(definitions_.size());
  }
  const bool is_sure =
      !is_empty && (line.line->directive.kind == DirectiveKind::Macro || next_reference(definition.value, 0) != 0);
  if (!name.is_computed && is_sure) store(name.text, line);
  if (definition.value.starts_with('#') || definition.value.starts_with("$(")) line_makers_.insert(name.text);
  definitions_.push_back(
      {std::move(name), definition.value, line.line->directive.kind, line, open_.empty() ? 0 : open_.back().branch});
}

void TemplateWalk::store(const std::string& name, const TemplatePlace& line) {
  if (!stored_.insert(name).second) return;
  if (!open_.empty()) stored_in_branches_.push_back(name);
  count_stored(line, name);
}

// `newest` is the variable that has just come; empty at the beginning of the section.
void TemplateWalk::count_stored(const TemplatePlace& line, std::string_view newest) {
  const std::size_t count = stored_.size();
  if (count >= nearly_full && nearly_full_.line == nullptr) {
    nearly_full_ = line;
    nearly_full_count_ = count;
  }
  if (count > static_cast<std::size_t>(Dictionary::capacity) && !told_of_overflow_) {
    told_of_overflow_ = true;
    findings_.add("dictionary-overflow", line,
                  (newest.empty() ? "the section begins with " + std::to_string(count) + " variables"
                                  : in_quotes(newest) + " is variable " + std::to_string(count)) +
                      ", and " + std::to_string(Dictionary::capacity) + " fit",
                  newest.empty() ? "declare fewer custom properties"
                                 : "take away with #UNDEF what is not needed any more, or divide the section");
  }
}

void TemplateWalk::include(const TemplatePlace& line) {
  const std::string_view argument = line.line->argument();
  if (has_reference(argument)) {
    is_open_ended_ = true;
    return;
  }
  if (argument.empty()) return;
  const FromSplit from = split_at_from(argument);
  const std::string file(from.found ? from.after : std::string_view(file_));
  if (!model_.has_file(file)) {
    findings_.add("missing-file", {line.section, line.line, from.found ? from.after.data() : argument.data()},
                  "there is no template file " + in_quotes(file), "mend the name, or put the file beside this one");
    return;
  }
  if (from.before.empty()) return;  // the whole file as it stands
  const TemplateSection* const section = model_.find(file, from.before);
  if (section == nullptr) {
    findings_.add("missing-section", {line.section, line.line, argument.data()},
                  file + " has no section " + in_quotes(from.before) + model_.similar_section(file, from.before),
                  "mend the name; case counts");
    return;
  }

  const bool is_certain = open_.size() == inclusions_.back().conditions;
  const auto same = std::find_if(inclusions_.begin(), inclusions_.end(),
                                 [&](const Inclusion& inclusion) { return inclusion.section == section; });
  if (same != inclusions_.end()) {
    const bool has_no_end = is_certain && std::all_of(same + 1, inclusions_.end(),
                                                      [](const Inclusion& inclusion) { return inclusion.is_certain; });
    if (has_no_end) {
      findings_.add("include-cycle", line, "section " + in_quotes(section->name) + " includes itself without end",
                    "remove this line, or put it in a condition that comes to an end");
    }
    return;
  }
  const bool is_known = section->is_balanced && sections_.contains(section);
  if (is_known) flow_.pass_section(*section);
  if (is_known || inclusions_.size() >= deepest_inclusion) return;
  read(*section, is_certain);
}

void TemplateWalk::note_uses(const TemplatePlace& line) {
  std::vector<TemplateUse> uses = uses_of(*line.line);
  flow_.read(line, uses, leaks_);
  if (purpose_ == Purpose::Flow) return;
  for (TemplateUse& use : uses) {
    if (!use.is_line) check_reference(use, line, findings_);
    if (use.how == TemplateUse::How::Call && use.is_line) expand_line(use);
    const bool is_known_call = use.how == TemplateUse::How::Argument && !use.name.is_computed &&
                               definitions_by_name_.contains(std::string(use.reference.name));
    if (is_known_call) store("_NAME", line);
    if (use.name.text.starts_with('[')) {
      look_into_brackets(use, line);
      continue;
    }
    const TemplatePlace place{line.section, line.line, use.at};
    uses_.push_back({std::move(use), place});
  }
}

// A macro whose text begins with "#" makes lines that are read as directives.
void TemplateWalk::expand_line(const TemplateUse& use) {
  if (!line_makers_.contains(use.name.text)) return;
  knows_conditions_ = false;
  is_open_ended_ = true;
}

void TemplateWalk::look_into_brackets(const TemplateUse& use, const TemplatePlace& line) {
  if (use.name.is_computed || use.name.text.size() < 2) return;
  const BracketedName name = parse_bracketed(use.name.text);
  const TemplatePlace place{line.section, line.line, use.at};
  const std::string file(name.file.empty() ? std::string_view(file_) : name.file);
  // A macro may take what it is given for a text.
  const bool may_be_none = use.how == TemplateUse::How::Argument;
  if (!model_.has_file(file)) {
    if (may_be_none) return;
    findings_.add("missing-file", place, "there is no template file " + in_quotes(file),
                  "write [FILE FROM SECTION], and put the file beside this one");
    return;
  }
  const TemplateSection* const section = model_.find(file, name.section);
  if (section == nullptr) {
    // Where one is only asked for, it may be missing.
    if (may_be_none || use.how == TemplateUse::How::Optional) return;
    findings_.add("missing-section", place,
                  file + " has no section " + in_quotes(name.section) + model_.similar_section(file, name.section),
                  "mend the name; case counts");
    return;
  }
  const bool is_certain = open_.size() == inclusions_.back().conditions && use.how == TemplateUse::How::Value &&
                          line.line->directive.kind != DirectiveKind::Macro;
  const auto same = std::find_if(inclusions_.begin(), inclusions_.end(),
                                 [&](const Inclusion& inclusion) { return inclusion.section == section; });
  const bool has_no_end =
      is_certain && same == inclusions_.begin() && file == file_ &&
      std::all_of(same + 1, inclusions_.end(), [](const Inclusion& inclusion) { return inclusion.is_certain; });
  if (has_no_end) {
    findings_.add("include-cycle", place, "section " + in_quotes(section->name) + " is needed to make itself",
                  "put what the reference asks for into a section of its own");
  }
  if (!mention(*section) && !may_be_none && use.how != TemplateUse::How::Optional) {
    findings_.add("undefined-variable", place,
                  "section " + in_quotes(section->name) + " defines no variable " + in_quotes(section->name),
                  "a reference to a section gives the variable that is named like it");
  }
}

// Whether the section may define the variable that is named like it.
bool TemplateWalk::mention(const TemplateSection& section) {
  const auto [known, is_new] = mentioned_.emplace(&section, false);
  if (!is_new) return known->second;
  for (const OutlineLine& line : section.lines) {
    for (TemplateUse& use : uses_of(line)) mentions_.push_back(std::move(use.name));
    if (!line.is_directive) continue;
    const DirectiveKind kind = line.directive.kind;
    const bool is_definition = kind == DirectiveKind::Define || kind == DirectiveKind::Macro;
    // What an inclusion or a call brings is not known.
    known->second |= kind == DirectiveKind::Include || kind == DirectiveKind::Call ||
                     (is_definition && TemplateName(definition_of(line).name).may_be(section.name));
  }
  return known->second;
}

}  // namespace plexoras
