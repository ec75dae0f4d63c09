#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/automation.h"

namespace plexoras {

/// A place in a template file. Lines and columns count from 1, columns in bytes; the path is empty for text
/// that comes from no file.
struct SourceLocation {
  std::string path;
  std::string section;
  std::size_t line = 0;
  std::size_t column = 0;
};

/// A definition that a run over a section has made, or a line that is none: one that failed, or text.
struct Definition {
  std::string name;         ///< empty for a line that is no definition
  SourceLocation value;     ///< where its value or text begins; for a line that a macro made, the call's place
  std::string source_line;  ///< the line at `value`, as it stands in its file
  /// What is wrong with a line that failed, and has had no effect. Empty for a line of text.
  std::string failure = {};
};

/// What went wrong in a template, where, and which inclusions and macro calls led there.
struct Diagnostic {
  enum class Severity { Error, Warning };

  struct Note {
    SourceLocation where;
    std::string text;  ///< such as: in the expansion of macro "BOLD"
  };

  Severity severity = Severity::Error;
  RunTimeError number = RunTimeError::InvalidCall;
  std::string what;
  SourceLocation where;
  std::string source_line;  ///< the line at `where`, as it stands in its file
  std::vector<Note> notes;  ///< innermost first
};

/// "file:line:col: error: what", the source line, a caret under the column, and one "note:" line a frame.
/// Lines end in LF.
std::string to_text(const Diagnostic& diagnostic);

/// "file:line:col", or "file" alone where there is no line; text that comes from no file is "<text>".
std::string to_text(const SourceLocation& location);

}  // namespace plexoras
