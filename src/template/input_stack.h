#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "template/diagnostic.h"
#include "template/template_files.h"

namespace plexoras {

/// From byte `offset` of a line on, the bytes stand in their file from this place on.
struct LinePlace {
  std::size_t offset = 0;
  std::size_t line = 0;
  std::size_t column = 0;
};

/// The texts that a preprocessor is reading, one inside the other: what an inclusion or a macro call brings in is
/// pushed on top and read next, and the text below goes on when it is used up.
///
/// Lines end at CR LF; a CR alone is an ordinary character. A TAB reads as five blanks. A line that ends in "\"
/// goes on in the next one with nothing in between, across the end of a text too:
///
///     ab\ CR LF cd      is the line  abcd
///
/// The last four lines read are remembered as they stand in their texts, and each line knows where it came from.
class InputStack {
public:
  /// Begins with `text`, which must live as long as this object.
  explicit InputStack(const SourceText& text);

  /// Reads the next line into `line()`; false at the end of all texts.
  bool next();
  /// The line last read, without its line break: joined, its TABs replaced. Valid until the next call of `next`.
  std::string_view line() const { return line_; }

  /// Text from here on that consists of whole lines without a TAB, "\", "#" or "(", so that every line of it stands
  /// for itself, line breaks included. May be empty when there is such text. Reads it.
  std::string_view take_plain_lines();

  /// Takes `line`, which has no line break, as read: for a line that a macro made and that stands for itself.
  void pass_plain_line(std::string_view line);
  /// Pushes a section, which must live as long as this object.
  void push_section(const SourceText& text);
  /// Pushes a line that the call on the line `call` made; both are copied.
  void push_expansion(std::string_view text, std::string_view call);

  /// How many texts are open inside each other. One that is used up when it brings in another does not count.
  std::size_t depth() const { return used_; }
  /// True when the line last read used up its text.
  bool at_end_of_text() const { return inputs_[used_ - 1].position == inputs_[used_ - 1].text.size(); }

  /// The last four lines read, as they stand, each with its line break.
  std::string context() const;
  /// Where `at`, a place in `line()`, stands in its file. Lines made by a macro stand where it was called.
  SourceLocation location(const char* at) const;
  /// The places of `line()` in its file, by rising offset: one for the line itself, and one more behind each TAB and
  /// wherever it goes on in the next line. For a line that stands in a file.
  std::vector<LinePlace> places() const;
  /// The line of the file at `where`, a result of `location`, as it stands there.
  std::string source_line(const SourceLocation& where) const;
  /// The calls that led here, innermost first.
  std::vector<Diagnostic::Note> notes() const;

private:
  struct Input {
    std::string_view text;
    const std::vector<LineMark>* marks = nullptr;
    bool is_expansion = false;
    std::string owned;  // an expansion's text
    std::size_t position = 0;
    std::size_t line_start = 0;  // of the line last read from here
    std::string call;            // how the text below brought this one in: a macro call's line, or words
    mutable LineMark counted;    // the last place in it whose line was asked for: the next one is counted from there
    // Calls made by texts that were used up by making them, outermost first, and the line of the last of them.
    std::vector<Diagnostic::Note> finished_calls;
    std::string finished_line;
  };

  // What was read: one line, or several plain ones.
  struct Piece {
    std::string_view text;
    std::string copy;  // behind `text` when the text it was read from does not last
    bool several = false;
  };

  Input& push();
  static void open(Input& input, std::string_view call);
  void remember(std::string_view raw, bool lasts, bool several = false);
  std::string_view read_physical_line(Input& input);
  void join_continued_lines();
  static SourceLocation location_in(const Input& input);
  static std::size_t line_behind(const Input& input, std::size_t line, std::size_t offset);
  const Input* input_in_file() const;
  std::string_view raw_line() const { return pieces_[(piece_count_ - 1) % pieces_.size()].text; }

  std::deque<Input> inputs_;  // the first `used_` are open; the others keep their memory for reuse
  std::size_t used_ = 0;
  std::size_t line_input_ = 0;  // where the line last read began
  std::string_view line_;
  std::string line_buffer_;      // behind `line_` when it is not as it stands in its text
  std::array<Piece, 4> pieces_;  // the last ones read, a ring
  std::size_t piece_count_ = 0;
};

}  // namespace plexoras
