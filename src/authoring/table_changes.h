#pragma once

#include <cstddef>
#include <string>

#include "applet/contents_reader.h"

namespace plexoras {

/// What became different when one table took the place of another.
struct TableChanges {
  std::size_t rows_added = 0;
  std::size_t rows_removed = 0;
  std::size_t columns_added = 0;
  std::size_t columns_removed = 0;
  std::size_t cells_changed = 0;  ///< in rows and columns that both tables have
  bool labels_changed = false;    ///< of such rows and columns, or a title
  bool order_changed = false;     ///< such rows or columns stand in another order

  friend bool operator==(const TableChanges&, const TableChanges&) = default;
};

/// Compares two tables; they are equal exactly when nothing is different.
///
/// Rows are the same row when they have the same label, provided that every row of both tables has a label of its own
/// and one at least is in both; else when they have the same position. So it is with columns. Cells are compared
/// as text, and a cell that is missing at the end of a row differs from an empty one. Time: linear in the tables.
TableChanges compare_tables(const ContentsTable& before, const ContentsTable& after);

/// "+1 row, -2 columns, 5 cells changed", or "unchanged".
std::string to_text(const TableChanges& changes);

}  // namespace plexoras
