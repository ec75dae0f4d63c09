#pragma once

#include <string_view>

namespace plexoras {

/// What a cell of a table seems to hold, in the ways that people write it.
enum class CellKind {
  Missing,  ///< nothing, or a sign for it such as "-" or "n/a"
  Number,   ///< 1234, -1.5, 1,5, 1 234.50, 12 %, $3, 1e-3
  Date,     ///< 2020-12-31, 31.12.2020, 12/2020, 2020-Q4, 12:30, and dates with times
  Text
};

/// The kind of `cell`, which is UTF-8; blanks around it do not count. What reads as a number is no date.
CellKind kind_of_cell(std::string_view cell);

}  // namespace plexoras
