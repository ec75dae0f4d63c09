#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace plexoras {

/// A chart's data as its contents document holds it. All texts are unescaped.
struct ContentsTable {
  std::string corner;                            ///< the text above the row labels, mostly empty
  std::vector<std::optional<std::string>> rows;  ///< one entry a row: its label, or nothing where it carries none
  std::vector<std::string> columns;              ///< the column labels; none when the columns carry no labels
  std::vector<std::string> values;               ///< all cells, row after row, with nothing between the rows

  /// How many columns the rows are cut into: one for each column label, and more where the values would not fit
  /// otherwise, so that no value is left over. A table without rows has its labelled columns.
  std::size_t column_count() const;

  /// The cells of row `row` (from 0): the next `column_count()` values, fewer where the values run out.
  std::span<const std::string> row_values(std::size_t row) const;

  friend bool operator==(const ContentsTable&, const ContentsTable&) = default;
};

/// Reads a contents document: every one that `ContentsWriter` makes, and `empty_contents_document`.
///
/// Between the tags line breaks may stand, each list may be self-closing, and an end tag may carry its
/// element's name. Error 5 with "line:column: what is wrong" for anything else.
ContentsTable read_contents(std::string_view document);

}  // namespace plexoras
