#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "contents/contents_document.h"

namespace plexoras {

/// A chart's data as its contents document holds it. All texts are unescaped.
struct ContentsTable {
  std::string row_title;                         ///< what the row labels are: the text in the table's corner
  std::string column_title;                      ///< what the column labels are
  std::string value_title;                       ///< what the values are
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

/// The cells of a table that is kept in another form than `ContentsTable::values`.
struct ContentsCells {
  std::size_t column_count;                           ///< how many make a row
  std::size_t count;                                  ///< at most as many as the rows have room for
  std::function<std::string_view(std::size_t)> text;  ///< of each of them, row after row; it holds until the next call
};

/// The document of `cells` with the labels and titles of `labels`, whose values do not count.
std::string write_contents(const ContentsTable& labels, const ContentsCells& cells, ContentsLayout layout);

/// The document of `table`, as `ContentsWriter` makes it.
std::string write_contents(const ContentsTable& table, ContentsLayout layout = ContentsLayout::Compact);

}  // namespace plexoras
