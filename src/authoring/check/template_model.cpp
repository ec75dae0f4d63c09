#include "authoring/check/template_model.h"

#include <algorithm>
#include <cassert>
#include <tuple>

#include "authoring/suggestion.h"

namespace plexoras {
namespace {

constexpr std::size_t npos = std::string_view::npos;

std::vector<ConditionFault> condition_faults(const std::vector<OutlineLine>& lines) {
  using Kind = ConditionFault::Kind;
  std::vector<std::size_t> open;
  std::vector<ConditionFault> faults;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!lines[i].is_directive) continue;
    const DirectiveKind kind = lines[i].directive.kind;
    if (opens_condition(kind)) {
      open.push_back(i);
    } else if (kind == DirectiveKind::Else && open.empty()) {
      faults.push_back({Kind::StrayElse, i});
    } else if (kind == DirectiveKind::EndIf && open.empty()) {
      faults.push_back({Kind::StrayEndIf, i});
    } else if (kind == DirectiveKind::EndIf) {
      open.pop_back();
    }
  }
  for (const std::size_t condition : open) faults.push_back({Kind::Unclosed, condition});
  return faults;
}

void add_references(std::string_view text, std::vector<TemplateUse>& uses) {
  using Kind = OutlineReference::Kind;
  for (const OutlineReference& reference : references_in(text)) {
    const char* const at = text.data() + reference.begin;
    const bool is_call = reference.kind == Kind::Call;
    uses.push_back(
        {is_call ? TemplateUse::How::Call : TemplateUse::How::Value, TemplateName(reference.name), at, reference});
    if (is_call && !reference.argument.empty()) {
      uses.push_back({TemplateUse::How::Argument, TemplateName(reference.argument), at, reference});
    }
  }
}

// A name that a directive asks about, as the engine evaluates it.
void add_test(std::string_view name, TemplateUse::How how, std::vector<TemplateUse>& uses) {
  if (name.empty()) return;
  const char* const at = name.data();
  if (name.starts_with('\\')) name = name.substr(1, std::min(name.find(','), name.size()) - 1);
  uses.push_back({how, TemplateName(name), at, {.name = name}});
}

}  // namespace

const TemplateSection* TemplateModel::find(std::string_view file, std::string_view section) {
  std::pair<std::string, std::string> key(file, section);
  const auto known = sections_.find(key);
  if (known != sections_.end()) return &known->second;
  if (!has_file(file) || !files_.has_section(file, section)) return nullptr;

  const SourceText source = files_.section(file, section);
  TemplateSection found{
      .file = key.first, .name = key.second, .path = {}, .lines = outline(source), .condition_faults = {}};
  if (source.marks != nullptr && !source.marks->empty()) found.path = source.marks->front().path;
  found.condition_faults = condition_faults(found.lines);
  found.is_balanced = found.condition_faults.empty();
  return &sections_.emplace(std::move(key), std::move(found)).first->second;
}

const std::vector<std::string>& TemplateModel::section_names(std::string_view file) {
  const auto known = names_.find(file);
  if (known != names_.end()) return known->second;
  const std::vector<std::string_view> names = files_.section_names(file);
  return names_.emplace(file, std::vector<std::string>(names.begin(), names.end())).first->second;
}

std::string TemplateModel::similar_section(std::string_view file, std::string_view name) {
  constexpr std::size_t most = 300;  // compared one by one
  const std::vector<std::string>& names = section_names(file);
  return names.size() > most ? std::string() : did_you_mean(name, names);
}

TemplateName::TemplateName(std::string_view written) {
  std::size_t first = next_reference(written, 0);
  while (first != npos && is_escaped(written, first)) first = next_reference(written, first + 2);
  is_computed = first != npos;
  text = written.substr(0, first);
}

std::vector<TemplateUse> uses_of(const OutlineLine& line) {
  std::vector<TemplateUse> uses;
  const std::string_view text = line.text;
  if (!line.is_directive) {
    add_references(text, uses);
    return uses;
  }
  const std::string_view argument = line.argument();
  switch (line.directive.kind) {
    case DirectiveKind::Call: {
      const BlankSplit call = split_at_open_blank(argument);
      const OutlineReference reference{
          .kind = OutlineReference::Kind::Call, .name = trimmed(call.first), .argument = call.rest};
      uses.push_back({TemplateUse::How::Call, TemplateName(reference.name), text.data(), reference, true});
      if (!call.rest.empty()) {
        uses.push_back({TemplateUse::How::Argument, TemplateName(call.rest), call.rest.data(), reference, true});
      }
      break;
    }
    case DirectiveKind::IfInside:
    case DirectiveKind::IfEqual:
    case DirectiveKind::IfNotEqual:
      add_test(split_at_open_blank(argument).first, TemplateUse::How::Test, uses);
      break;
    case DirectiveKind::IfDefined:
    case DirectiveKind::IfUndefined:
      add_test(argument, TemplateUse::How::Optional, uses);
      break;
    default:
      break;
  }
  add_references(argument, uses);
  return uses;
}

std::vector<TemplateUse> uses_in(std::string_view text) {
  std::vector<TemplateUse> uses;
  add_references(text, uses);
  return uses;
}

TemplateDefinition definition_of(const OutlineLine& line) {
  const std::string_view argument = line.argument();
  // A macro is divided as it stands.
  const bool is_macro = line.directive.kind == DirectiveKind::Macro;
  const BlankSplit split = is_macro ? split_at_blank(argument) : split_at_open_blank(argument);
  std::string_view value = split.rest;
  const bool is_quoted = value.starts_with('"') || value.starts_with('\'');
  const bool is_complete = split.found && !(is_quoted && value.size() == 1);
  if (is_quoted) value = value.substr(1, value.size() < 2 ? 0 : value.size() - 2);
  return {split.first, value, is_complete};
}

std::string in_quotes(std::string_view text) {
  constexpr std::size_t longest = 60;
  return "\"" + std::string(text.substr(0, longest)) + (text.size() > longest ? "..." : "") + "\"";
}

std::string keyword_of(const OutlineLine& line) { return std::string(trimmed(line.directive.keyword)); }

void Findings::add(std::string_view rule, const TemplatePlace& place, std::string what, std::string mend) {
  const CheckRule* const row = find_check_rule(rule);
  assert(row != nullptr);
  const LinePlace where = place.line->place(place.at);
  found_.push_back({row, place.section->path, where.line, where.column, std::move(what), std::move(mend),
                    place.line->places.front().line});
}

std::vector<Finding> Findings::take() {
  const auto key = [](const Finding& finding) {
    return std::tie(finding.path, finding.line, finding.column, finding.rule->name);
  };
  std::stable_sort(found_.begin(), found_.end(), [&](const Finding& a, const Finding& b) { return key(a) < key(b); });
  found_.erase(
      std::unique(found_.begin(), found_.end(), [&](const Finding& a, const Finding& b) { return key(a) == key(b); }),
      found_.end());
  return std::move(found_);
}

}  // namespace plexoras
