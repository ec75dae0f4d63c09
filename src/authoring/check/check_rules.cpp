#include "authoring/check/check_rules.h"

#include <algorithm>
#include <iterator>

#include "template/diagnostic.h"

namespace plexoras {
namespace {

using enum CheckRule::Severity;
using enum CheckRule::Subject;

// The order is that of the documents: conditions, directives, names, text, sections, pages.
constexpr CheckRule rules[] = {
    {"unclosed-conditional", Error, Template, "A condition without #ENDIF",
     "It lasts to the end of the text: where it does not hold, everything behind it is missing. It is told at the line "
     "that opens it. Sections that are included count as part of the text, so one may open a condition that another "
     "closes.",
     "#IFDEF CAPTION\n<p>#(HTML CAPTION)</p>\n", "#IFDEF CAPTION\n<p>#(HTML CAPTION)</p>\n#ENDIF\n"},
    {"stray-endif", Error, Template, "An #ENDIF that closes nothing",
     "It does nothing by itself. Most often a condition is closed twice, and the lines between the two #ENDIF are not "
     "conditional as they were meant to be.",
     "#IFDEF CAPTION\n<p>#(HTML CAPTION)</p>\n#ENDIF\n#ENDIF\n", "#IFDEF CAPTION\n<p>#(HTML CAPTION)</p>\n#ENDIF\n"},
    {"stray-else", Error, Template, "An #ELSE outside any condition",
     "All the text behind it is left out, and no #ENDIF ends that.", "<p>Always</p>\n#ELSE\n<p>Never</p>\n",
     "#IFDEF X\n<p>With X</p>\n#ELSE\n<p>Without</p>\n#ENDIF\n"},
    {"second-else", Error, Template, "A condition with two #ELSE",
     "What follows the second one comes out where the condition holds, too, and never where it does not.",
     "#IFEQUAL A 1\none\n#ELSE\ntwo\n#ELSE\nthree\n#ENDIF\n",
     "#IFEQUAL A 1\none\n#ELSE\n#IFEQUAL A 2\ntwo\n#ELSE\nthree\n#ENDIF\n#ENDIF\n"},
    {"conditionals-too-deep", Error, Template, "More than 128 conditions inside each other",
     "The section stops there and gives nothing."},
    {"misspelled-directive", Error, Template, "A line that is nearly a directive",
     "What is no directive is a macro call, and a call of no macro comes out as text without its \"#\". A few "
     "directives are recognised by their beginning, so that \"#ELSEIF\" counts as #ELSE. Directives are upper-case.",
     "#IFDEFF CAPTION\n", "#IFDEF CAPTION\n"},
    {"incomplete-directive", Error, Template, "A directive that lacks a part",
     "A definition without a value or a comparison without a text stops the section, which then gives nothing. To "
     "empty "
     "a variable, write two quotation marks as its value.",
     "#DEFINE CAPTION\n", "#DEFINE CAPTION ''\n"},
    {"undefined-macro", Warning, Template, "A call of a macro that nothing defines",
     "The call comes out as text: without its \"#\" on a line of its own, without \"#\" and parentheses inside a line. "
     "A line of text cannot begin with \"#\"; put something in front, an element for instance. Only what a control "
     "reads is judged: macros of other sections may come from whoever includes them.",
     "[TEMPLATE]\n#MACRO BOLD <b>$(_VALUE)</b>\n#(BLOD NAME)\n",
     "[TEMPLATE]\n#MACRO BOLD <b>$(_VALUE)</b>\n"
     "<p>#(BOLD NAME)</p>\n"},
    {"undefined-variable", Warning, Template, "A variable that nothing defines",
     "It is empty, always. Often it is a matter of case. Custom properties are defined in section PROPERTY. A variable "
     "that #IFDEF or #IFUNDEF asks for may well be missing and is told only when its name is nearly that of another. "
     "In sections that no control reads, too, only such names are told: -D of \"plexoras expand\" may set the others.",
     "[PROPERTY]\n#DEFINE TITLE Notice\n[TEMPLATE]\n<a href=\"find?q=$(\\Title)\">\n",
     "[PROPERTY]\n#DEFINE TITLE Notice\n[TEMPLATE]\n<a href=\"find?q=$(\\TITLE)\">\n"},
    {"unused-macro", Warning, Template, "A macro that nothing calls",
     "Told of macros that section TEMPLATE, or what it includes from the same file, defines."},
    {"unused-variable", Warning, Template, "A variable that nothing uses",
     "Told of variables that section TEMPLATE, or what it includes from the same file, defines; a definition in "
     "PROPERTY, "
     "CONSTANT and the like is for others to use. A variable that is only defined anew, or taken away with #UNDEF, is "
     "not used."},
    {"runaway-reference", Error, Template, "A macro or variable that is made of itself",
     "Its expansion has no end: the section stops at the first use and gives nothing. A variable holds references "
     "where its definition escapes them. Only definitions that are surely there together are told.",
     "#MACRO ITEM <li>$(ITEM)</li>\n", "#MACRO ITEM <li>$(_VALUE)</li>\n"},
    {"bad-reference", Error, Template, "A reference that cannot be read",
     "A replacement of fewer than three parts, \"[\" alone, or %INC and %DEC of what is no whole number stop the "
     "section, which then gives nothing.",
     "$(\\QUERY,a)\n", "$(\\QUERY,a,b)\n"},
    {"unclosed-reference", Warning, Template, "A reference without \")\"",
     "It reaches to the end of the line, so that its name is all that follows. For a \"$(\" that belongs to the text, "
     "as in a script, write \"\\$(\".",
     "<p>$(TITLE</p>\n", "<p>$(TITLE)</p>\n"},
    {"unescaped-text", Warning, Template, "Text that an author types, put into the page as it is",
     "Quotation marks, tags and references in it would change the page. The custom properties, WIDTH, HEIGHT and "
     "APPLETID are such text, and so is what definitions, macros and sections may make of them. It is harmless behind "
     "the macro HTML of APPLET.DAT or $(\\NAME), and as a script behind the macro SCRIPT, inside a <script> element "
     "alone. A form that takes numbers alone is no guard, for \"plexoras set\" takes any text. Where a comparison has "
     "settled the value nothing is told.",
     "<p title=\"$(CAPTION)\">\n", "<p title=\"#(HTML CAPTION)\">\n"},
    {"empty-definition", Warning, Template, "A definition that stores nothing",
     "A definition without a value stores nothing where the variable is new, so the custom property or table entry is "
     "not declared. The first of two lines stores it, the second empties it.",
     "[PROPERTY]\n#DEFINE CAPTION ''\n", "[PROPERTY]\n#DEFINE CAPTION x\n#DEFINE CAPTION ''\n"},
    {"blank-in-name", Warning, Template, "A name that seems to hold blanks",
     "A name ends at the first blank, and the rest of it becomes part of the value. Use no-break blanks.",
     "[CONSTANT]\n#DEFINE DIAGRAMTYPE_Heat table 11\n", "[CONSTANT]\n#DEFINE DIAGRAMTYPE_Heat\u00a0table 11\n"},
    {"unreadable-form", Error, Template, "A line of a form that cannot be read",
     "The form shows an error in its place, and everything else. Told of section ADVANCED_SPEC and of the sections "
     "that "
     "DSPROGID names, in all branches of their conditions; a value that is built from what an author has set is left "
     "alone.",
     "[ADVANCED_SPEC]\n#DEFINE SIZE_SPEC 'Size:|integr|1..9'\n",
     "[ADVANCED_SPEC]\n#DEFINE SIZE_SPEC 'Size:|integer|1..9'\n"},
    {"undeclared-setting", Warning, Template, "A setting of a form that is not declared",
     "It has no default, and \"plexoras get\", \"set\" and \"describe\" do not know it until an author has set it in "
     "the form. "
     "Other hosts may lose what is set there, for a control asks them for what section PROPERTY declares.",
     "[PROPERTY]\n[ADVANCED_SPEC]\n#DEFINE SIZE_SPEC 'Size:|integer|1..9'\n[TEMPLATE]\n<hr>\n",
     "[PROPERTY]\n#DEFINE SIZE 5\n[ADVANCED_SPEC]\n#DEFINE SIZE_SPEC 'Size:|integer|1..9'\n[TEMPLATE]\n<hr>\n"},
    {"shared-script", Warning, Template, "Two events with one custom property",
     "The page \"Events\" shows them as two, but the script that is written for one replaces the other's, and readers' "
     "pages run it for both. Told of the table EVENTHANDLER in section CONSTANT.",
     "[CONSTANT]\n#DEFINE EVENTHANDLER_plexoras-select ONEVENT\n#DEFINE EVENTHANDLER_plexoras-error ONEVENT\n",
     "[CONSTANT]\n#DEFINE EVENTHANDLER_plexoras-select ONSELECT\n#DEFINE EVENTHANDLER_plexoras-error ONERROR\n"},
    {"dictionary-overflow", Error, Template, "More than 129 variables",
     "A section has room for 129 variables, the custom properties and what the control sets included. One more stops "
     "it, "
     "and it gives nothing. Only definitions that are certainly there together are counted."},
    {"dictionary-nearly-full", Warning, Template, "Almost 129 variables",
     "Four more at most will fit. Calls of macros need two, and the macro HTML four at a time."},
    {"missing-section", Error, Template, "An inclusion of a section that is not there",
     "It gives nothing. A name in brackets asks for a section, too, and so does DSPROGID where it names a form."},
    {"missing-file", Error, Template, "An inclusion from a file that is not there",
     "Readers get the comment <!-- ERROR: NO TEMPLATE FILE NAME-->. A file is looked for beside the one that is "
     "checked, "
     "then where controls look for it."},
    {"include-cycle", Error, Template, "A section that includes itself",
     "It has no end: the section stops and gives nothing. Inclusions that a condition may stop are not told, for that "
     "is "
     "how a template repeats something.",
     "[LIST]\n<li>\n#INCLUDE LIST\n", ""},
    {"not-a-section", Warning, Template, "A section's header with blanks around it",
     "It is a line of text of the section before it. A header stands alone on its line.", "[TEMPLATE] \n",
     "[TEMPLATE]\n"},
    {"text-outside-section", Warning, Template, "Lines before the first section",
     "They belong to no section, and nothing reads them. A comment begins with \";\".", "The notices\n[TEMPLATE]\n",
     "; The notices\n[TEMPLATE]\n"},
    {"unknown-rule", Warning, Template, "A comment that allows what no rule forbids",
     "It silences nothing. Told in templates and pages.", "; check: allow unusd-macro\n#MACRO LATER x\n",
     "; check: allow unused-macro\n#MACRO LATER x\n"},
    {"unreadable-page", Error, Page, "A control's mark that cannot be read",
     "The page is not published as long as one of its controls cannot be read, or the file itself."},
    {"duplicate-name", Error, Page, "Two controls of one name on a page",
     "Names tell the controls of a page apart, so the page is not published."},
    {"unknown-control", Error, Page, "A control of a type that is not known",
     "It cannot be edited or published; the page keeps the text that it has."},
    {"unloadable-control", Error, Page, "A control whose saved state it cannot take",
     "It cannot be edited or published; the page keeps the text that it has."},
    {"refused-style", Error, Page, "A style document that the chart refuses",
     "The chart cannot be loaded with it. The place inside the document is part of the message."},
    {"refused-contents", Error, Page, "A contents document that the chart refuses",
     "The chart is loaded without its data. The place inside the document is part of the message."},
    {"refused-menu", Error, Page, "A menu document that the menu builder refuses",
     "An entry may be one level deeper than the one before it, and a menu has 256 entries at most."},
    {"chart-in-paragraph", Warning, Page, "A chart in a paragraph",
     "A chart is a block: it is published with its data as a table, and a table ends the paragraph that it stands in "
     "and the chart's element with it. So readers have the table in sight behind the chart. Use a div or a figure for "
     "the p around the chart. A p without an end tag lasts to the next block or to the end of the element that it is "
     "in."},
    {"stale-picture", Warning, Page, "A picture that no longer shows its chart",
     "\"plexoras publish --snapshot\" puts a picture of the chart into the text for readers, with a stamp of the "
     "settings "
     "and data that it shows. These have changed since. Publish the page again."},
};

constexpr bool names_are_unique() {
  for (std::size_t i = 0; i < std::size(rules); ++i) {
    for (std::size_t j = i + 1; j < std::size(rules); ++j) {
      if (rules[i].name == rules[j].name) return false;
    }
  }
  return true;
}
static_assert(names_are_unique());

std::string indented(std::string_view lines) {
  std::string text;
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find('\n'), lines.size() - 1) + 1;
    text.append("    ").append(lines.substr(0, end));
    lines.remove_prefix(end);
  }
  return text;
}

constexpr std::string_view document_opening =
    "# What `plexoras check` looks for\n"
    "\n"
    "`plexoras check PATH...` reads templates and pages, runs nothing and changes nothing. What it finds has a rule:\n"
    "\n"
    "```console\n"
    "$ plexoras check NOTICE.DAT\n"
    "NOTICE.DAT:4:1: error: this #IFDEF is never closed [unclosed-conditional]\n"
    "  #IFDEF TITLE\n"
    "  ^\n"
    "  put #ENDIF behind the last line that depends on it\n"
    "```\n"
    "\n"
    "`plexoras check --rules` lists the rules, `plexoras check --explain RULE` shows what stands here of one.\n"
    "\n"
    "A finding that is meant so is silenced by a comment directly above the line. Several rules stand with commas\n"
    "between them.\n"
    "\n"
    "```template\n"
    "; check: allow unused-variable\n"
    "#DEFINE _LATER 1\n"
    "```\n"
    "\n"
    "```html\n"
    "<!-- check: allow unknown-control -->\n"
    "<!--dtc Elsewhere.Control name=\"Map\"\n"
    "```\n";

std::string document_section(const CheckRule& rule) {
  std::string text = "\n### " + std::string(rule.name) + "\n\n";
  text.append(rule.summary).append(" (").append(severity_word(rule.severity)).append(").\n");
  text.append(rule.explanation).append("\n");
  if (!rule.wrong.empty()) text.append("\n```template\n").append(rule.wrong).append("```\n");
  if (!rule.right.empty()) text.append("\nMended:\n\n```template\n").append(rule.right).append("```\n");
  return text;
}

}  // namespace

std::span<const CheckRule> check_rules() { return rules; }

const CheckRule* find_check_rule(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(rules), std::end(rules), [&](const CheckRule& rule) { return rule.name == name; });
  return found == std::end(rules) ? nullptr : found;
}

std::string_view severity_word(CheckRule::Severity severity) { return severity == Error ? "error" : "warning"; }

std::string explain(const CheckRule& rule) {
  std::string text(rule.name);
  text.append(" (").append(severity_word(rule.severity)).append(")\n");
  text.append(rule.summary).append(".\n\n").append(rule.explanation).append("\n");
  if (!rule.wrong.empty()) text += "\n" + indented(rule.wrong);
  if (!rule.right.empty()) text += "\nMended:\n\n" + indented(rule.right);
  const char* const comment = rule.subject == Template ? "; check: allow " : "<!-- check: allow ";
  text.append("\nSilenced by a comment directly above the line:\n\n    ").append(comment).append(rule.name);
  return text + (rule.subject == Template ? "\n" : " -->\n");
}

std::string check_rules_document() {
  std::string text(document_opening);
  for (const CheckRule::Subject subject : {Template, Page}) {
    text += subject == Template ? "\n## Templates\n" : "\n## Pages\n";
    for (const CheckRule& rule : rules) {
      if (rule.subject == subject) text += document_section(rule);
    }
  }
  return text;
}

std::string to_text(const Finding& finding) {
  using Severity = Diagnostic::Severity;
  const Diagnostic shown{.severity = finding.rule->severity == Error ? Severity::Error : Severity::Warning,
                         .what = finding.what + " [" + std::string(finding.rule->name) + "]",
                         .where = {.path = finding.path, .section = {}, .line = finding.line, .column = finding.column},
                         .source_line = finding.source_line,
                         .notes = {}};
  return to_text(shown) + (finding.mend.empty() ? "" : "  " + finding.mend + "\n");
}

}  // namespace plexoras
