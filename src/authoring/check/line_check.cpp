#include "authoring/check/line_check.h"

#include <charconv>

namespace plexoras {
namespace {

bool is_word_character(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool is_whole_number(std::string_view text) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && !text.starts_with('-');
}

// What a directive needs behind its keyword.
std::string_view form_of(DirectiveKind kind) {
  switch (kind) {
    case DirectiveKind::Include:
      return "#INCLUDE SECTION";
    case DirectiveKind::Define:
      return "#DEFINE NAME value";
    case DirectiveKind::Macro:
      return "#MACRO NAME text";
    case DirectiveKind::Undefine:
      return "#UNDEF NAME";
    case DirectiveKind::IfInside:
      return "#IFINSIDE NAME (one,two)";
    case DirectiveKind::IfEqual:
      return "#IFEQUAL NAME text";
    case DirectiveKind::IfNotEqual:
      return "#IFNEQUAL NAME text";
    case DirectiveKind::IfDefined:
      return "#IFDEF NAME";
    case DirectiveKind::IfUndefined:
      return "#IFUNDEF NAME";
    default:
      return {};
  }
}

// Words that count as a directive because they begin like one.
void check_keyword(const TemplatePlace& line, Findings& findings) {
  const std::string_view keyword = line.line->directive.keyword;
  const std::string_view rest = std::string_view(line.line->text).substr(keyword.size());
  if (line.line->directive.kind == DirectiveKind::Call || keyword.ends_with(' ') || rest.empty() ||
      !is_word_character(rest.front())) {
    return;
  }
  const std::string_view word = std::string_view(line.line->text).substr(0, line.line->text.find(' '));
  const bool is_else_if = word.starts_with("#ELSE");
  findings.add("misspelled-directive", line, in_quotes(word) + " counts as " + std::string(keyword),
               is_else_if ? "write a condition of its own in the #ELSE branch" : "write " + std::string(keyword));
}

void check_parts(const TemplatePlace& line, Findings& findings) {
  const DirectiveKind kind = line.line->directive.kind;
  const std::string_view form = form_of(kind);
  if (form.empty()) return;
  const std::string_view argument = line.line->argument();
  const bool is_definition = kind == DirectiveKind::Define || kind == DirectiveKind::Macro;
  const bool has_two = is_definition || kind == DirectiveKind::IfInside || kind == DirectiveKind::IfEqual ||
                       kind == DirectiveKind::IfNotEqual;
  if (has_two && !split_at_open_blank(argument).found) {
    // A reference may bring the missing part with it; a macro's are expanded later.
    if (has_reference(argument) && kind != DirectiveKind::Macro) return;
    findings.add("incomplete-directive", line, keyword_of(*line.line) + " needs more than this",
                 "write " + std::string(form) +
                     (is_definition ? "; to empty a variable: " + keyword_of(*line.line) + " NAME ''" : ""));
    return;
  }
  if (argument.empty()) {
    findings.add("incomplete-directive", line, keyword_of(*line.line) + " names nothing", "write " + std::string(form));
  }
  if (!is_definition) return;
  const TemplateDefinition definition = definition_of(*line.line);
  const bool is_quote_alone = !definition.is_complete;
  if (is_quote_alone) {
    findings.add("incomplete-directive", line, "the value is a quotation mark alone", "close the quotation");
  }
  if (definition.name.starts_with('"') || definition.name.starts_with('\'')) {
    findings.add("blank-in-name", {line.section, line.line, definition.name.data()},
                 "the name ends at the first blank, quotation marks or not: it is " + in_quotes(definition.name),
                 "write the name without quotation marks, and with no-break blanks where it needs blanks");
  }
}

}  // namespace

void check_directive(const TemplatePlace& line, Findings& findings) {
  check_keyword(line, findings);
  check_parts(line, findings);
}

void check_reference(const TemplateUse& use, const TemplatePlace& line, Findings& findings) {
  if (use.how != TemplateUse::How::Value && use.how != TemplateUse::How::Call) return;
  const OutlineReference& reference = use.reference;
  const TemplatePlace place{line.section, line.line, use.at};
  if (!reference.is_closed && reference.depth == 0) {
    findings.add("unclosed-reference", place, "this reference has no \")\" and reaches to the end of the line",
                 std::string("close it; for the characters themselves write \\") + *use.at + "(");
    return;
  }
  if (reference.kind == OutlineReference::Kind::Replaced && reference.parts < 3) {
    findings.add("bad-reference", place, "a replacement needs three parts", "write $(\\NAME,from,to)");
  } else if (reference.name == "[") {
    findings.add("bad-reference", place, "\"[\" alone names no section", "write [NAME]");
  } else if (use.how == TemplateUse::How::Call && (reference.name == "%INC" || reference.name == "%DEC") &&
             !has_reference(reference.argument) && !is_whole_number(reference.argument)) {
    findings.add("bad-reference", place,
                 std::string(reference.name) + " needs a whole number, not " + in_quotes(reference.argument),
                 "write a number, or a variable as $(NAME)");
  }
}

}  // namespace plexoras
