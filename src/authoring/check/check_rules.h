#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace plexoras {

/// Something that `plexoras check` looks for.
///
/// The rules are one table, for as long as the program runs: what is found refers to its row, and the list of rules,
/// their explanations and docs/check-rules.md are made of it.
struct CheckRule {
  enum class Severity { Error, Warning };
  enum class Subject { Template, Page };

  std::string_view name;
  Severity severity = Severity::Error;
  Subject subject = Subject::Template;
  std::string_view summary;      ///< one line without a full stop
  std::string_view explanation;  ///< what happens without mending, and how it is told apart from what is meant so
  std::string_view wrong = {};   ///< an example with the fault, lines ended by LF; may be empty
  std::string_view right = {};   ///< the same without it
};

std::span<const CheckRule> check_rules();
/// The rule of that name, or null.
const CheckRule* find_check_rule(std::string_view name);

/// "error" or "warning".
std::string_view severity_word(CheckRule::Severity severity);

/// The rule for a person at a terminal: what it means, and its example.
std::string explain(const CheckRule& rule);
/// docs/check-rules.md.
std::string check_rules_document();

/// Something that was found in a template or a page.
struct Finding {
  const CheckRule* rule = nullptr;
  std::string path = {};
  std::size_t line = 0;    ///< from 1; 0 where it concerns the whole file
  std::size_t column = 0;  ///< from 1, in bytes
  std::string what = {};
  std::string mend = {};         ///< how to mend it
  std::size_t first_line = 0;    ///< of the joined line or the control that it is in: a comment above it silences it
  std::string source_line = {};  ///< the line as it stands in the file
};

/// "file:line:col: error: what [rule]", the line with a caret under the column, and how to mend it. Lines end in LF.
std::string to_text(const Finding& finding);

}  // namespace plexoras
