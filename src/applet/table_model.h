#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "applet/contents_reader.h"

namespace plexoras {

/// The data of one chart as a table that can be edited, together with the document that it came in.
///
///     TableModel table;
///     table.put_document("<xml><rows><row/></><cols></><data><value>1.10</><value>n/a</></></xml>");
///     table.set_cell(0, 1, 2.5);
///     table.document();  // <xml><rows><row/></><cols></><data><value>1.10</><value>2.5</></></xml>
///
/// The document is kept byte for byte while nothing is edited; the table is read from it when it is first needed, and
/// written anew when a document is asked for after an edit. An edit that changes nothing is none: putting the label
/// or title that is there, or the number that a cell has, keeps the document and the cell's text.
///
/// Rows and columns count from 0, and `none` is -1; error 9 for one that does not exist. Short rows (see
/// `ContentsTable`) are filled up with empty values before rows or columns come or go and before a cell that they lack
/// is set; error 14 where that would make a short document a huge table. Nothing changes when a function raises,
/// with two exceptions: what `on_selection_change` raises comes through behind the change, and where memory runs out
/// (`std::bad_alloc`) in the middle of an edit, the data are only good for being put anew. Each function takes time
/// linear in the table at most; those of a single cell or label take constant time once it is read, spread over many
/// edits.
class TableModel {
public:
  using Index = std::int32_t;
  static constexpr Index none = -1;

  /// A row and a column, each of which may be `none`.
  struct Cell {
    Index row = none;
    Index column = none;
    friend bool operator==(const Cell&, const Cell&) = default;
  };

  using Title = std::string ContentsTable::*;

  /// Holds `empty_contents_document`.
  TableModel();

  /// Called when another cell, or none, has become the selected one; the table can be used in it.
  std::function<void()> on_selection_change;

  /// Takes other data, with nothing selected. `document` must be one that `read_contents` takes.
  void put_document(std::string document);
  /// The same, with what `read_contents` has read of the document, so that it is not read again.
  void put_document(std::string document, ContentsTable table);
  /// The document as it was put; of edited data a new one in `layout`.
  std::string document(ContentsLayout layout = ContentsLayout::Compact) const;
  /// A copy of the data.
  ContentsTable table() const;

  Index row_count() const;
  /// Stays when the last row goes, until the data is put again.
  Index column_count() const;

  const Cell& selection() const { return selection_; }
  void select(const Cell& cell);

  /// The text of a cell as it is kept; empty for one that a short row lacks.
  std::string_view cell_text(Index row, Index column) const;
  /// The number that all of the cell's text is, or nothing.
  std::optional<double> cell_number(Index row, Index column) const;
  /// Error 6 when the number is not finite.
  void set_cell(Index row, Index column, double number);

  /// A label; empty where there is none.
  std::string_view row_label(Index row) const;
  std::string_view column_label(Index column) const;
  void set_row_label(Index row, std::string label);
  /// Unlabelled columns before this one get empty labels, since a document tells labels apart by their order alone.
  void set_column_label(Index column, std::string label);

  /// `title(&ContentsTable::row_title)`.
  const std::string& title(Title title) const { return read().labels.*title; }
  /// Line breaks alone are no title, see `ContentsWriter`.
  void set_title(Title title, std::string text);

  /// Puts a row before row `index`, or behind all for their count and for `none`. It has an empty value in each column
  /// for which `numbers` has none, and no label where `label` is empty. The selection keeps its place. Error 5 for
  /// more numbers than columns, error 6 for one that is not finite.
  void insert_row(Index index, std::string label, std::span<const double> numbers);
  /// The same for a column, with a number for each row.
  void insert_column(Index index, std::string label, std::span<const double> numbers);

  /// Takes a row out; nothing happens for `none`. The selection keeps its place, or moves up to the last row.
  void delete_row(Index index);
  void delete_column(Index index);

private:
  // The data behind the document. Cells are small numbers, so that moving millions of them is quick, and a new row or
  // column of equal values holds one text.
  struct Grid {
    ContentsTable labels = {};              // the titles and labels; no values
    std::size_t column_count = 0;           // see `ContentsTable`
    std::vector<std::string> texts = {};    // those of all cells, and some that have gone
    std::vector<std::uint32_t> cells = {};  // row after row: where in `texts` a cell's text stands
  };

  static Grid grid_of(ContentsTable table);
  const Grid& read() const;
  Grid& edit();
  std::size_t row_at(Index index) const;
  std::size_t column_at(Index index) const;
  std::size_t place_of(Index row, Index column) const;
  void fill_short_rows();
  void drop_unused_texts();
  void keep_selection_inside();
  void move_selection(const Cell& cell);

  std::string document_;  // as it was put; empty once the data has been edited
  bool edited_ = false;
  Cell selection_;
  mutable std::optional<Grid> grid_;  // once somebody has asked for it
};

}  // namespace plexoras
