#include "authoring/check/text_flow.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "authoring/check/template_walk.h"

namespace plexoras {
namespace {

using How = TemplateUse::How;
using Shown = TextFlow::Shown;

// Macros and sections lead on to others at most so far.
constexpr std::size_t deepest = 64;

// The sections that do the work of the macros HTML and SCRIPT, on the text in _VALUE.
struct Escaping {
  std::string_view file;
  std::string_view section;
  Shown shown;
};
constexpr Escaping escapings[] = {{"APPLET.DAT", "ESCAPED", Shown::Nothing},
                                  {"APPLET.DAT", "SCRIPTED", Shown::AsScript}};

}  // namespace

TextFlow::TextFlow(TemplateModel& model, std::string file, const std::set<std::string>& author_text,
                   const TextFlow* outer)
    : model_(model),
      file_(std::move(file)),
      outer_(outer),
      depth_(outer == nullptr ? 0 : outer->depth_ + 1),
      lines_left_(outer == nullptr ? TemplateWalk::most_lines : outer->lines_left_),
      held_(author_text),
      place_(outer == nullptr ? ScriptPlace::Outside : ScriptPlace::Same) {}

void TextFlow::open_condition(std::string settled, bool settles_first) {
  conditions_.push_back({.settled = std::move(settled), .settles_first = settles_first, .before = place_});
  held_.open_condition();
  ++version_;
}

void TextFlow::switch_branch() {
  Condition& condition = conditions_.back();
  condition.in_else = true;
  condition.behind_first = std::exchange(place_, condition.before);
  held_.switch_branch();
  ++version_;
}

void TextFlow::close_condition() {
  const Condition& condition = conditions_.back();
  place_ = either(place_, condition.in_else ? condition.behind_first : condition.before);
  conditions_.pop_back();
  held_.close_condition();
  ++version_;
}

void TextFlow::read(const TemplatePlace& line, const std::vector<TemplateUse>& uses, std::vector<Leak>& leaks) {
  const OutlineLine& present = *line.line;
  const bool is_directive = present.is_directive && present.directive.kind != DirectiveKind::Call;
  const bool is_macro = is_directive && present.directive.kind == DirectiveKind::Macro;
  const bool is_definition = is_macro || (is_directive && present.directive.kind == DirectiveKind::Define);
  if (lines_left_ > 0 && outer_ != nullptr) --lines_left_;
  if (is_directive && !is_definition) {
    if (present.directive.kind != DirectiveKind::Undefine) return;
    held_.set(std::string(present.argument()), false);
    ++version_;
    return;
  }
  std::vector<Leak> found;
  const Given given = given_by_text(present.text, uses, is_definition ? ScriptPlace::Same : place_, {}, line, found);
  if (is_definition) {
    define(present, given);
  } else {
    place_ = given.place;
  }
  // What a definition copies is told where that is shown.
  if (!is_definition || is_macro) leaks.insert(leaks.end(), found.begin(), found.end());
}

void TextFlow::end_section(const TemplateSection& section, ScriptPlace before) {
  places_behind_[&section] = place_ == before ? ScriptPlace::Same : place_;
}

void TextFlow::pass_section(const TemplateSection& section) {
  const auto known = places_behind_.find(&section);
  if (known != places_behind_.end()) place_ = then(place_, known->second);
}

bool TextFlow::is_settled(std::string_view name) const {
  return std::any_of(conditions_.begin(), conditions_.end(), [&](const Condition& condition) {
    return condition.settled == name && condition.settles_first != condition.in_else;
  });
}

bool TextFlow::is_typed(const std::string& name, const Typed& typed) const {
  if (typed.by_page) return is_author_text(name);
  return (typed.name && name == "_NAME") || (typed.value && name == "_VALUE");
}

std::set<std::string> TextFlow::names_of(const Typed& typed) const {
  std::set<std::string> names;
  if (typed.by_page) names = held_.names();
  if (typed.name) names.insert("_NAME");
  if (typed.value) names.insert("_VALUE");
  std::erase_if(names, [&](const std::string& name) { return !is_typed(name, typed); });
  return names;
}

// What a text gives that stands at `place`. Its references that show what is typed go to `leaks`.
TextFlow::Given TextFlow::given_by_text(std::string_view text, const std::vector<TemplateUse>& uses, ScriptPlace place,
                                        const Typed& typed, const TemplatePlace& line, std::vector<Leak>& leaks) {
  Given all{.shown = Shown::Nothing, .place = place};
  std::size_t passed = 0;
  for (const TemplateUse& use : uses) {
    const bool gives_text = use.how == How::Value || use.how == How::Call || use.how == How::Argument;
    if (!gives_text || use.reference.depth > 0) continue;
    const auto at = static_cast<std::size_t>(use.at - text.data());
    if (at > passed) all.place = then(all.place, place_behind_tags(text.substr(passed, at - passed)));
    passed = std::max(passed, at);
    const Given given = given_by(use, uses, typed);
    const bool is_safe_script = all.place == ScriptPlace::Inside || all.place == ScriptPlace::Either;
    const bool is_harmless = given.shown == Shown::Nothing || (given.shown == Shown::AsScript && is_safe_script);
    if (!is_harmless) {
      all.shown = std::max(all.shown, all.place == ScriptPlace::Outside ? Shown::AsItIs : given.shown);
      // Who makes use of the text may do so in a script element.
      if (given.shown == Shown::AsItIs || all.place == ScriptPlace::Outside) {
        leaks.push_back({use, {line.section, line.line, use.at}, given.shown});
      }
    }
    all.place = then(all.place, given.place);
  }
  all.place = then(all.place, place_behind_tags(text.substr(passed)));
  return all;
}

TextFlow::Given TextFlow::given_by(const TemplateUse& use, const std::vector<TemplateUse>& uses, const Typed& typed) {
  const OutlineReference& reference = use.reference;
  if (use.how == How::Call) return {Shown::Nothing, use.name.is_computed ? ScriptPlace::Same : place_of(use.name.text)};
  if (use.how == How::Value) {
    if (use.name.text.starts_with('[') && !use.name.is_computed) {
      Given given = given_by_section(use.name.text, typed);
      if (reference.kind == OutlineReference::Kind::Encoded) given.shown = Shown::Nothing;
      return given;
    }
    const bool is_encoded = reference.kind == OutlineReference::Kind::Encoded;
    return {is_encoded ? Shown::Nothing : value_of(use.name, reference.name, typed), place_of(use.name.text)};
  }
  // A macro makes something of the name that it is given, and of the value of that.
  const std::string_view argument = reference.argument;
  Typed given{.by_page = false, .value = value_of(use.name, argument, typed) == Shown::AsItIs};
  for (const TemplateUse& inner : uses) {
    const bool is_inside = use.name.is_computed && inner.how == How::Value &&
                           inner.reference.depth == reference.depth + 1 && !std::less<>()(inner.at, argument.data()) &&
                           std::less<>()(inner.at, argument.data() + argument.size());
    if (is_inside && inner.reference.kind != OutlineReference::Kind::Encoded) {
      given.name |= value_of(inner.name, inner.reference.name, typed) == Shown::AsItIs;
    }
  }
  return {given_by_macro(reference.name, given), ScriptPlace::Same};
}

// What the value of `name` is, which is `written` in the template.
TextFlow::Shown TextFlow::value_of(const TemplateName& name, std::string_view written, const Typed& typed) {
  if (written == "$(_NAME)") return is_typed("_VALUE", typed) ? Shown::AsItIs : Shown::Nothing;
  if (name.is_computed) return Shown::Nothing;
  if (name.text.starts_with('[')) return given_by_section(name.text, typed).shown;
  return is_typed(name.text, typed) ? Shown::AsItIs : Shown::Nothing;
}

TextFlow::Shown TextFlow::given_by_macro(std::string_view macro, const Typed& typed) {
  if (!typed.name && !typed.value) return Shown::Nothing;
  // A macro that calls itself adds nothing to what it gives.
  const auto [known, is_new] = macros_read_.try_emplace({std::string(macro), typed}, Shown::Nothing);
  if (!is_new || depth_ == deepest) return known->second;
  ++depth_;
  Shown shown = Shown::Nothing;
  for (const std::string_view body : bodies_of(known->first.first)) {
    if (lines_left_ == 0) break;
    --lines_left_;
    std::vector<Leak> leaks;
    shown = std::max(shown, given_by_text(body, uses_in(body), ScriptPlace::Same, typed, {}, leaks).shown);
  }
  --depth_;
  return known->second = shown;
}

TextFlow::Given TextFlow::given_by_section(const std::string& bracketed, const Typed& typed) {
  const std::set<std::string> names = names_of(typed);
  if (bracketed.size() < 2 || names.empty()) return {};
  const BracketedName name = parse_bracketed(bracketed);
  const std::string file(name.file.empty() ? std::string_view(file_) : name.file);
  for (const Escaping& escaping : escapings) {
    if (escaping.file != file || escaping.section != name.section) continue;
    return {names.contains("_VALUE") ? escaping.shown : Shown::Nothing};
  }
  const TemplateSection* const section = model_.find(file, name.section);
  if (section == nullptr || depth_ == deepest) return {};
  SectionRead& known = sections_read_[{section, typed}];
  if (known.version == version_) return known.given;
  known = {version_, {}};
  const std::size_t cost = names.size();
  if (lines_left_ <= cost) return {};
  lines_left_ -= cost;

  Findings told_elsewhere;
  TemplateWalk walk(model_, told_elsewhere, file, TemplateWalk::Purpose::Flow, {}, names, this);
  walk.walk(name.section);
  lines_left_ = walk.flow().lines_left_;
  const std::string variable(name.section);
  known.given = {walk.flow().is_author_text(variable) ? Shown::AsItIs : Shown::Nothing, walk.flow().place_of(variable)};
  return known.given;
}

void TextFlow::define(const OutlineLine& line, const Given& given) {
  const TemplateDefinition definition = definition_of(line);
  const bool is_macro = line.directive.kind == DirectiveKind::Macro;
  if (!definition.is_complete || (!is_macro && has_reference(definition.name))) return;
  const std::string name(definition.name);
  held_.set(name, !is_macro && given.shown != Shown::Nothing);
  ++version_;
  if (given.place != ScriptPlace::Same || place_of(name) != ScriptPlace::Same) {
    places_[name] = conditions_.empty() ? given.place : either(place_of(name), given.place);
  }
  if (!is_macro) return;
  macros_read_.clear();
  std::vector<std::string_view>& bodies = bodies_[name];
  if (conditions_.empty()) bodies.clear();
  bodies.push_back(definition.value);
}

ScriptPlace TextFlow::place_of(const std::string& name) const {
  const auto known = places_.find(name);
  if (known != places_.end()) return known->second;
  return outer_ == nullptr ? ScriptPlace::Same : outer_->place_of(name);
}

std::vector<std::string_view> TextFlow::bodies_of(const std::string& macro) const {
  const auto known = bodies_.find(macro);
  if (known != bodies_.end()) return known->second;
  return outer_ == nullptr ? std::vector<std::string_view>() : outer_->bodies_of(macro);
}

}  // namespace plexoras
