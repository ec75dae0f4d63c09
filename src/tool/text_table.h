#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plexoras {

/// A table for people to read on a terminal: aligned columns, and lines that end before they get too long.
///
///     TextTable table({.widest = {24, 20}});
///     table.add({"NAME", "VALUE", "CHOICES"});
///     console.result(table.text());
///
/// A cell stands on one line, line breaks in it as "\n". The last cell of a row has the rest of the line. What a column
/// or the line has no room for is cut, with "…" in its place. Characters count as UTF-8.
class TextTable {
public:
  struct Options {
    std::vector<std::size_t> widest = {};  ///< of each column but the last
    std::size_t line_width = 80;
  };

  explicit TextTable(Options options) : options_(std::move(options)) {}

  /// A row may have fewer cells than others; empty ones at its end do not count.
  void add(const std::vector<std::string>& cells);
  /// Each row as a line, without blanks at its end.
  std::string text() const;

private:
  Options options_;
  std::vector<std::vector<std::string>> rows_;
};

/// `text` in `width` characters: what is longer ends in "…".
std::string cut_to(std::string_view text, std::size_t width);

}  // namespace plexoras
