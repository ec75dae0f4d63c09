#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace plexoras {

/// Cuts 8-bit text into lines without copying it. CR, LF and CR LF each end a line.
///
/// "a\r\nb\n\nc" gives "a", "b", "", "c". A line end at the very end of the text opens no further line, and an empty
/// text has no line. The text must outlive the lines. Reading all lines takes time linear in the text.
class TextLines {
public:
  explicit TextLines(std::string_view text);

  /// The next line without its end, or nothing after the last one.
  std::optional<std::string_view> next();

  /// Whether every line has been given.
  bool at_end() const { return position_ == text_.size(); }

private:
  std::size_t find(char character) const;

  std::string_view text_;
  std::size_t position_ = 0;
  // Where the next CR and LF stand. They are searched for again only when they have been passed: a text that has
  // only one of the two would otherwise be searched to its end on every line.
  std::size_t next_cr_;
  std::size_t next_lf_;
};

}  // namespace plexoras
