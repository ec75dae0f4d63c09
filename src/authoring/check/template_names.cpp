#include "authoring/check/template_names.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace plexoras {
namespace {

using How = TemplateUse::How;
using Kind = OutlineReference::Kind;
using DefinitionMade = TemplateWalk::DefinitionMade;
using UseMade = TemplateWalk::UseMade;

constexpr std::string_view built_ins[] = {"%TODAY", "%LENGTH", "%INC", "%DEC"};
constexpr std::string_view bound_by_calls[] = {"_NAME", "_VALUE"};
constexpr std::string_view directives[] = {"INCLUDE", "DEFINE",   "MACRO", "UNDEF",   "IFINSIDE", "IFEQUAL",
                                           "IFDEF",   "IFNEQUAL", "ELSE",  "IFUNDEF", "ENDIF",    "HALT"};

// What other languages call these.
struct ForeignWord {
  std::string_view word;
  std::string_view meant;
};
constexpr ForeignWord foreign_words[] = {
    {"IFNDEF", "IFUNDEF"},       {"IFNOTDEF", "IFUNDEF"}, {"IFNOTEQUAL", "IFNEQUAL"},
    {"UNDEFINE", "UNDEF"},       {"END", "ENDIF"},        {"FI", "ENDIF"},
    {"IF", "IFEQUAL or #IFDEF"}, {"ELIF", "ELSE"},        {"SET", "DEFINE"}};

template <class Range>
bool contains(const Range& range, std::string_view wanted) {
  return std::find(std::begin(range), std::end(range), wanted) != std::end(range);
}

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string upper(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](char c) { return upper(c); });
  return result;
}

// Whether one letter inserted, dropped, replaced or swapped with its neighbour makes one word the other. Digits are no
// slips: ITEM1 and ITEM2 are two names.
bool is_one_slip_apart(std::string_view a, std::string_view b) {
  if (a.size() < b.size()) std::swap(a, b);
  if (a.size() - b.size() > 1) return false;
  const auto at = static_cast<std::size_t>(std::mismatch(b.begin(), b.end(), a.begin()).first - b.begin());
  if (is_digit(a.substr(at).empty() ? ' ' : a[at]) || (at < b.size() && is_digit(b[at]))) return false;
  if (a.size() > b.size()) return a.substr(at + 1) == b.substr(at);
  if (at + 1 >= a.size() || a.substr(at + 1) == b.substr(at + 1)) return true;
  return a[at] == b[at + 1] && a[at + 1] == b[at] && a.substr(at + 2) == b.substr(at + 2);
}

// The directive that a call's name was probably meant to be, or the empty text.
std::string_view meant_directive(std::string_view name) {
  const std::string word = upper(name);
  for (const std::string_view directive : directives) {
    constexpr std::size_t shortest = 3;
    if (word == directive || (word.size() >= shortest && is_one_slip_apart(word, directive))) return directive;
  }
  for (const ForeignWord& foreign : foreign_words) {
    if (word == foreign.word) return foreign.meant;
  }
  return {};
}

class NameCheck {
public:
  NameCheck(TemplateModel& model, const TemplateWalk& walk, const NameContext& context, Findings& findings)
      : model_(model), walk_(walk), context_(context), findings_(findings) {
    for (const std::string& name : context.known) candidates_.push_back(name);
    std::unordered_set<std::string_view> seen;
    for (const DefinitionMade& made : walk.definitions()) {
      if (!made.name.is_computed && seen.insert(made.name.text).second) candidates_.push_back(made.name.text);
    }
    constexpr std::size_t most_candidates = 300;  // compared one by one
    if (candidates_.size() > most_candidates) candidates_.clear();
    for (const UseMade& made : walk.uses()) {
      if (made.use.how == How::Optional) optional_.insert(made.use.name.text);
    }
  }

  void check() {
    for (const UseMade& made : walk_.uses()) {
      check_defined(made);
    }
    for (const TextFlow::Leak& leak : walk_.leaks()) {
      if (context_.is_page_text) tell(leak);
    }
    if (context_.is_page_text && context_.is_closed) check_used();
  }

private:
  // What a macro does with the argument of its call.
  struct MacroReading {
    bool reads_name = false;
    bool reads_value = false;
  };

  bool is_known(std::string_view name) const {
    return contains(bound_by_calls, name) || context_.known.contains(std::string(name)) || walk_.may_define(name);
  }

  std::string similar_name(std::string_view name) const {
    constexpr std::size_t shortest = 5;
    const std::string wanted = upper(name);
    for (const std::string& candidate : candidates_) {
      if (upper(candidate) == wanted) return candidate;
    }
    for (const std::string& candidate : candidates_) {
      const bool is_long = name.size() >= shortest && candidate.size() >= shortest;
      if (is_long && is_one_slip_apart(upper(candidate), wanted)) return candidate;
    }
    return {};
  }

  void check_defined(const UseMade& made) {
    const TemplateName& name = made.use.name;
    if (name.is_computed || name.text.empty() || is_known(name.text)) return;
    if (made.use.how == How::Call) return check_called(made);
    if (walk_.is_open_ended() || (made.use.how == How::Argument && !is_surely_read(made.use))) return;
    const std::string similar = similar_name(name.text);
    const bool may_be_missing = !context_.is_closed || optional_.contains(name.text);
    if (may_be_missing && similar.empty()) return;
    findings_.add("undefined-variable", made.place, "nothing defines the variable " + in_quotes(name.text),
                  !similar.empty()        ? "did you mean " + in_quotes(similar) + "? Case counts"
                  : context_.is_page_text ? "declare it in section PROPERTY, or define it in front of this line"
                                          : "define it in front of this line");
  }

  void check_called(const UseMade& made) {
    const std::string& name = made.use.name.text;
    if (contains(built_ins, name)) return;
    const bool is_line = made.use.is_line;
    if (is_line && name.starts_with('(')) {
      findings_.add("undefined-macro", made.place, "a line cannot begin with \"#(\"; this one comes out as text",
                    "put something in front, an element for instance");
      return;
    }
    if (const std::string_view meant = meant_directive(name); is_line && !meant.empty()) {
      const bool is_itself = meant == name;
      findings_.add("misspelled-directive", made.place,
                    in_quotes("#" + name) + " is no directive" + (is_itself ? " without what belongs to it" : ""),
                    is_itself ? "write a blank and the rest behind #" + name : "write #" + std::string(meant));
      return;
    }
    if (walk_.is_open_ended()) return;
    const std::string similar = similar_name(name);
    if (!context_.is_closed && similar.empty()) return;
    findings_.add("undefined-macro", made.place, "nothing defines a macro " + in_quotes(name),
                  !similar.empty() ? "did you mean " + in_quotes(similar) + "? Case counts"
                  : is_line        ? "a line of text cannot begin with \"#\"; put something in front"
                                   : "define it with #MACRO, or include the section that does");
  }

  // Whether the call makes something of the value of the variable that it is given, and of nothing else.
  bool is_surely_read(const TemplateUse& use) {
    const std::string_view macro = use.reference.name;
    if (macro.starts_with('?')) return false;  // such a macro asks whether it is there
    const MacroReading reading = reading_of(macro);
    return reading.reads_value && !reading.reads_name;
  }

  MacroReading reading_of(std::string_view macro) {
    const auto known = readings_.find(std::string(macro));
    if (known != readings_.end()) return known->second;
    MacroReading reading;
    const auto note = [&](std::string_view name) {
      reading.reads_name |= name == "_NAME";
      reading.reads_value |= name == "_VALUE";
    };
    for (const DefinitionMade* made : walk_.definitions_of(macro)) {
      for (const TemplateUse& use : uses_of(*made->place.line)) {
        note(use.name.text);
        if (!use.name.text.starts_with('[') || use.name.is_computed) continue;
        const BracketedName name = parse_bracketed(use.name.text);
        const TemplateSection* const section =
            model_.find(name.file.empty() ? std::string_view(context_.file) : name.file, name.section);
        if (section == nullptr) continue;
        for (const OutlineLine& line : section->lines) {
          for (const TemplateUse& inner : uses_of(line)) note(inner.name.text);
        }
      }
    }
    return readings_.emplace(macro, reading).first->second;
  }

  void tell(const TextFlow::Leak& leak) {
    const OutlineReference& reference = leak.use.reference;
    const std::string name = in_quotes(leak.use.how == How::Argument ? reference.argument : reference.name);
    const std::string form = "#(HTML " + leak.use.name.text + ")";
    if (leak.shown == TextFlow::Shown::AsScript) {
      findings_.add("unescaped-text", leak.place,
                    "this makes a script of " + name + ", and stands in no <script> element",
                    "write <script> in front, or " + form + brings_html());
    } else if (leak.use.how == How::Argument) {
      findings_.add("unescaped-text", leak.place,
                    "macro " + in_quotes(reference.name) + " shows " + name + ", text that an author types, as it is",
                    "write #(HTML _VALUE) in the macro" + brings_html());
    } else if (reference.is_bracketed()) {
      findings_.add("unescaped-text", leak.place,
                    "section " + in_quotes(parse_bracketed(reference.name).section) +
                        " makes this of text that an author types; nothing escapes it",
                    "write #(HTML NAME) in the section" + brings_html());
    } else {
      findings_.add("unescaped-text", leak.place, name + " is text that an author types; nothing escapes it here",
                    "write " + (reference.kind == Kind::Attribute ? leak.use.name.text + "=\"" + form + "\"" : form) +
                        brings_html());
    }
  }

  std::string brings_html() const {
    return walk_.may_define("HTML") ? "" : ", and #INCLUDE HTML FROM APPLET.DAT at the beginning";
  }

  void check_used() {
    if (walk_.is_open_ended()) return;
    std::unordered_set<std::string_view> used;
    std::set<std::string_view> beginnings;
    const auto note = [&](const TemplateName& name) {
      if (name.is_computed) beginnings.insert(name.text);
      used.insert(name.text);
    };
    for (const UseMade& made : walk_.uses()) note(made.use.name);
    for (const TemplateName& name : walk_.mentions()) note(name);
    constexpr std::size_t most_beginnings = 100;
    if (beginnings.size() > most_beginnings) return;

    std::unordered_set<std::string_view> told;
    for (const DefinitionMade& made : walk_.definitions()) {
      const std::string& name = made.name.text;
      const bool is_judged = !made.name.is_computed && made.place.section->file == context_.file &&
                             !context_.known.contains(name) && !contains(bound_by_calls, name);
      if (!is_judged || used.contains(name) || !told.insert(name).second) continue;
      const bool may_be_used = std::any_of(beginnings.begin(), beginnings.end(),
                                           [&](std::string_view beginning) { return name.starts_with(beginning); });
      if (may_be_used) continue;
      const bool is_macro = made.kind == DirectiveKind::Macro;
      findings_.add(is_macro ? "unused-macro" : "unused-variable", made.place,
                    std::string(is_macro ? "nothing calls the macro " : "nothing uses the variable ") + in_quotes(name),
                    "remove it, or mend the name where it is meant");
    }
  }

  TemplateModel& model_;
  const TemplateWalk& walk_;
  const NameContext& context_;
  Findings& findings_;
  std::vector<std::string> candidates_;
  std::unordered_set<std::string> optional_;
  std::map<std::string, MacroReading> readings_;
};

}  // namespace

void check_names(TemplateModel& model, const TemplateWalk& walk, const NameContext& context, Findings& findings) {
  NameCheck(model, walk, context, findings).check();
}

}  // namespace plexoras
