#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "template/dictionary.h"
#include "template/template_session.h"

namespace plexoras {

/// Each byte but digits, ASCII letters and "." becomes "%" and two upper-case hexadecimal digits.
std::string UrlEncode(std::string_view text);

/// `text` without the blanks (code 32 alone) at its ends.
std::string_view trimmed(std::string_view text);

/// A text cut at its first blank, both halves trimmed. Without a blank `found` is false and `first` is all of it.
struct BlankSplit {
  std::string_view first;
  std::string_view rest;
  bool found = false;
};
BlankSplit split_at_blank(std::string_view text);

/// What a name with "FROM " in it asks for: the trimmed texts before and after the first "FROM ".
struct FromSplit {
  std::string_view before;
  std::string_view after;
  bool found = false;
};
FromSplit split_at_from(std::string_view text);

/// The next "$(" or "#(" at or behind `from`, escaped or not; npos when there is none.
std::size_t next_reference(std::string_view text, std::size_t from);
/// Whether a "\" stands before the reference at `at`, so that it stands for itself.
bool is_escaped(std::string_view text, std::size_t at);

/// Expands the references in template text against a set of variables.
///
///     $(NAME)      the variable's value         $(?NAME)       NAME="value", or nothing when it is empty
///     $(\NAME)     the value, URL-encoded       $(\NAME,a,b)   the value with every a replaced by b
///     $([NAME])    variable NAME of section NAME of the same file;  $([FILE FROM NAME]) of another file
///     #(NAME arg)  a macro or built-in call     \$( and \#(    stand for themselves
///
/// References nest, and values that hold references are expanded in turn. Failures raise `AutomationError`:
/// 9 for a replacement without three parts, 13 or 6 for an argument that is no 32-bit number, 28 and 14 for text
/// that never settles. Lives as long as the `IniSection` whose variables it reads.
class References {
public:
  /// `file_name` is the template file that bare bracketed names mean. All three outlive this object.
  References(TemplateSession& session, Dictionary& variables, const std::string& file_name)
      : session_(session), variables_(variables), file_name_(file_name) {}

  /// `ExpandReferences`, after which every "\$(" and "\#(" loses its backslash.
  std::string SubstituteLine(std::string_view text);
  /// `text` with its references replaced, again and again until a pass changes nothing.
  std::string ExpandReferences(std::string_view text);
  std::string EvaluateReference(std::string_view reference);
  /// A variable's value, or what a bracketed name finds in its section; empty when there is none.
  std::string Find(std::string_view name);
  bool isAbsent(std::string_view name);
  /// The expansion of "NAME ARG". A name that is neither macro nor built-in gives the call's own text.
  std::string CallMacro(std::string_view call);
  /// "%TODAY", "%LENGTH", "%INC", "%DEC"; the empty text for any other name.
  std::string CallBuiltin(std::string_view name, std::string_view argument);

private:
  friend class IniSection;
  friend class Preprocessor;

  // Begins a line of a run, or a call from outside one.
  void begin_line(std::string_view line);
  void open_request(std::string_view text);
  void note_position(const char* at);

  // Each of these appends its result to `out`, which must not be where its argument stands. `substitute` answers
  // whether there was a reference, escaped or not.
  bool substitute(std::string_view text, std::string& out);
  void settle(std::string_view text, std::string& out);
  void expand_once(std::string_view text, std::size_t first, std::string& out);
  void evaluate(std::string_view reference, std::string& out);
  void find(std::string_view name, std::string& out);
  void find_bracketed(std::string_view name, std::string& out);
  void call_macro(std::string_view call, std::string& out);

  TemplateSession& session_;
  Dictionary& variables_;
  const std::string& file_name_;
  std::size_t given_ = 0;  // bytes of the variables that came from outside, not from a template

  // For diagnostics: the line being expanded, the last reference met in it, and the macros whose bodies are being
  // expanded. They stay as they are when a failure unwinds, so that it can be told where it happened.
  std::string_view line_;
  const char* position_ = nullptr;
  std::vector<std::string> calls_;
};

}  // namespace plexoras
