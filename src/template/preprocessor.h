#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "template/directive.h"
#include "template/input_stack.h"
#include "template/references.h"
#include "template/template_session.h"

namespace plexoras {

/// One run over a section's text: obeys its directive lines, expands the references in its text lines, and
/// gives the text that comes out.
///
///     #IFDEF #IFUNDEF #IFEQUAL #IFNEQUAL #IFINSIDE ... #ELSE ... #ENDIF    conditions, up to 128 deep
///     #DEFINE NAME value   #MACRO NAME body   #UNDEF NAME                   variables
///     #INCLUDE SECTION [FROM FILE]                                          text of another section
///     #NAME argument                                                        a macro or built-in call
///     #HALT                                                                 stops for a look at the variables
///
/// A failure ends the run: a message box shows the last four lines read, the result is empty, and the variables
/// defined so far stay.
class Preprocessor {
public:
  /// All arguments outlive the run. `file_name` is what `#INCLUDE` without `FROM` reads.
  Preprocessor(TemplateSession& session, Dictionary& variables, References& references, const std::string& file_name)
      : session_(session), variables_(variables), references_(references), file_name_(file_name) {}
  Preprocessor(const Preprocessor&) = delete;
  Preprocessor& operator=(const Preprocessor&) = delete;

  /// Has every `#DEFINE` and `#MACRO` of the run noted in `to`, those with empty values stored, lines that fail noted
  /// and passed over, and lines of text noted; see `IniSection`. Null: none of this.
  void note_definitions(std::vector<Definition>* to) { definitions_ = to; }

  /// Has the run stop before its first line of text or macro call, as behind a `#HALT`.
  void step_from_start() { step_mode_ = true; }

  /// Runs over `source` and writes what comes out to `output`, which is left empty when the run fails. Whether it
  /// went well.
  bool run(SourceText source, std::string& output);

  /// What `line`, which begins with "#", is.
  static Directive directive_of(std::string_view line);

private:
  using Handler = void (Preprocessor::*)(std::string_view rest);
  struct DirectiveRow {
    DirectiveKind kind;
    std::string_view keyword;
    Handler handle;
  };
  static const DirectiveRow directives[];
  static const DirectiveRow* row_of(std::string_view line);

  // Slots 0 to 128 of the condition stack.
  static constexpr std::size_t levels = 129;

  void process();
  void skip_line(std::string_view line);
  bool read_line(std::string_view line);
  bool try_line(std::string_view line);
  void handle_line(std::string_view line);
  bool emit(std::string_view line);
  void call(std::string_view line);
  void note_text(std::string_view text, std::string_view line);

  void halt(std::string_view rest);
  void include(std::string_view rest);
  void define(std::string_view rest);
  void macro(std::string_view rest);
  void undefine(std::string_view rest);
  void if_inside(std::string_view rest);
  void if_equal(std::string_view rest);
  void if_not_equal(std::string_view rest);
  void if_defined(std::string_view rest);
  void if_undefined(std::string_view rest);
  void otherwise(std::string_view rest);
  void end_if(std::string_view rest);

  bool skipping() const { return skipping_[level_]; }
  void open_level(bool skip);
  void store(std::string_view argument, std::string_view rest, std::string_view form);
  bool value_differs(std::string_view rest, std::string_view keyword);
  void stop_for_step();
  bool ask_to_halt();
  void check_depth();
  void fail(const AutomationError& error);
  Diagnostic described(const AutomationError& error) const;
  Diagnostic described() const;

  TemplateSession& session_;
  Dictionary& variables_;
  References& references_;
  const std::string& file_name_;
  std::vector<Definition>* definitions_ = nullptr;

  Preprocessor* outer_ = nullptr;  // the run whose bracketed reference asked for this one
  std::optional<InputStack> input_;
  std::string* output_ = nullptr;
  std::array<bool, levels> skipping_ = {};
  std::size_t level_ = 0;
  bool step_mode_ = false;
  std::string argument_;   // a directive's argument, expanded
  std::string expansion_;  // a call's text
};

}  // namespace plexoras
