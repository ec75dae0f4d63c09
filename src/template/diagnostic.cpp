#include "template/diagnostic.h"

namespace plexoras {

std::string to_text(const SourceLocation& location) {
  std::string text = location.path.empty() ? "<text>" : location.path;
  if (location.line > 0) text += ":" + std::to_string(location.line) + ":" + std::to_string(location.column);
  return text;
}

std::string to_text(const Diagnostic& diagnostic) {
  const char* const severity = diagnostic.severity == Diagnostic::Severity::Error ? ": error: " : ": warning: ";
  std::string text = to_text(diagnostic.where) + severity + diagnostic.what + "\n";
  if (diagnostic.where.line > 0) {
    // A long line is shown around its column alone.
    constexpr std::size_t widest = 160;
    const std::size_t column = diagnostic.where.column > 0 ? diagnostic.where.column - 1 : 0;
    const std::size_t from = column > widest ? column - widest / 2 : 0;
    const std::string shown = diagnostic.source_line.substr(
        from < diagnostic.source_line.size() ? from : diagnostic.source_line.size(), widest);
    std::string under;
    for (std::size_t i = 0; i < column - from; ++i) under += i < shown.size() && shown[i] == '\t' ? '\t' : ' ';
    text += "  " + shown + "\n  " + under + "^\n";
  }
  const std::vector<Diagnostic::Note>& notes = diagnostic.notes;
  for (std::size_t i = 0; i < notes.size();) {
    const std::string line = to_text(notes[i].where) + ": note: " + notes[i].text;
    std::size_t times = 1;
    while (i + times < notes.size() && to_text(notes[i + times].where) + ": note: " + notes[i + times].text == line) {
      ++times;
    }
    // Something that runs away does so in the same place over and over.
    text += line + (times > 1 ? " (" + std::to_string(times) + " times)\n" : "\n");
    i += times;
  }
  return text;
}

}  // namespace plexoras
