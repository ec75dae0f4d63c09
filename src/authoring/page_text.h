#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/text_lines.h"

namespace plexoras {

/// A value as it stands in quotes in a page's comment: any bytes, on lines of a sensible length, and never a "--"
/// that could end the comment.
///
/// `&`, `<`, `>` and `"` are entities; control characters, the second of two hyphens and bytes that are no UTF-8 are
/// written by number, "&#10;". Behind a written line end stands a real one (`line_break`), so that a document of many
/// lines can be compared line by line; it means nothing itself.
std::string escape_state(std::string_view value, std::string_view line_break);

/// The reverse: line breaks are dropped, a number up to 255 is that byte, a larger one that character in UTF-8.
/// Nothing when an entity cannot be read; `bad` is then where it stands.
std::optional<std::string> unescape_state(std::string_view text, std::size_t* bad);

/// The line break that a page uses: that of its first line, "\n" when it has none.
std::string_view line_break_of(std::string_view page);

/// `text` with its CR LF line ends replaced by `line_break`.
std::string with_line_breaks(std::string_view text, std::string_view line_break);

/// A value on one line of a listing: backslash, CR, LF and TAB as "\\", "\r", "\n", "\t"; and back. The reverse gives
/// nothing for a backslash before any other character.
std::string escape_listing(std::string_view value);
std::optional<std::string> unescape_listing(std::string_view text);

/// `text` with what a terminal would obey made visible: line breaks and tabs as "\n", "\r" and "\t", other control
/// characters and bytes that may be such as "\x1B". For people: nothing turns it back.
std::string printable(std::string_view text);

/// A place in a text; both count from 1, columns in bytes.
struct TextPlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// Tells places in one text, in which CR, LF and CR LF each end a line. Asked for rising offsets it reads the text
/// once.
class PlaceFinder {
public:
  explicit PlaceFinder(std::string_view text) : text_(text), lines_(text) { advance(); }
  TextPlace place(std::size_t offset);

private:
  void advance();

  std::string_view text_;
  TextLines lines_;
  std::size_t line_ = 0;             // the present line, from 1
  std::size_t line_start_ = 0;       // where it starts
  std::size_t next_line_start_ = 0;  // where the one behind it starts; past the text when there is none
};

}  // namespace plexoras
