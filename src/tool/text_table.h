#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plexoras {

/// A table for people to read on a terminal: aligned columns, and lines that end before they get too long.
///
///     TextTable table({.columns = {{.widest = 24}, {.widest = 20}, {.lines = 3}}});
///     table.add({"NAME", "VALUE", "CHOICES"});
///     console.result(table.text());
///
/// A cell that is too long for its column goes on in the lines below, under itself, and ends in "…" where the column's
/// lines are used up. The last cell of a row has the rest of the line, or lines of its own where little is left of it.
/// Line breaks stand as "\n", and what a terminal would obey as "\x1B". Characters count as UTF-8.
class TextTable {
public:
  static constexpr std::size_t any = static_cast<std::size_t>(-1);

  struct Column {
    std::size_t widest = any;
    std::size_t lines = 1;
    std::string_view break_behind = " ";  ///< where a line may end; elsewhere only when there is no such place
  };

  struct Options {
    std::vector<Column> columns = {};  ///< those that are missing are as wide as what stands in them
    std::size_t line_width = 80;
  };

  explicit TextTable(const Options& options) : columns_(options.columns), line_width_(options.line_width) {}

  /// A row may have fewer cells than there are columns; empty ones at its end do not count.
  void add(const std::vector<std::string>& cells);
  /// The rows, without blanks at the ends of lines.
  std::string text() const;

private:
  void append_row(const std::vector<std::string>& row, const std::vector<std::size_t>& widths, std::string& text) const;

  std::vector<Column> columns_;
  std::size_t line_width_;
  std::vector<std::vector<std::string>> rows_;
};

/// `text` in `width` characters: what is longer ends in "…".
std::string cut_to(std::string_view text, std::size_t width);

}  // namespace plexoras
