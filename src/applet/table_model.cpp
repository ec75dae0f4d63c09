#include "applet/table_model.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "applet/compact_xml.h"
#include "contents/contents_document.h"
#include "host/automation.h"

namespace plexoras {
namespace {

using Index = TableModel::Index;

[[noreturn]] void no_such(std::string_view what, Index index, std::size_t count) {
  std::string there = "none";
  if (count == 1) there = "0 alone";
  if (count > 1) there = "0 to " + std::to_string(count - 1);
  throw AutomationError(RunTimeError::SubscriptOutOfRange,
                        "there is no " + std::string(what) + " " + std::to_string(index) + "; the table has " + there);
}

std::size_t checked(std::string_view what, Index index, std::size_t count) {
  if (index < 0 || static_cast<std::size_t>(index) >= count) no_such(what, index, count);
  return static_cast<std::size_t>(index);
}

// Where a new row or column goes.
std::size_t checked_place(std::string_view what, Index index, std::size_t count) {
  if (index == TableModel::none) return count;
  if (index < 0 || static_cast<std::size_t>(index) > count) {
    const std::string places = count == 0 ? "0" : "0 to " + std::to_string(count);
    throw AutomationError(RunTimeError::SubscriptOutOfRange, "a " + std::string(what) + " cannot be inserted at " +
                                                                 std::to_string(index) + "; the places are " + places +
                                                                 ", and -1 is behind all");
  }
  return static_cast<std::size_t>(index);
}

std::string text_of(double number) {
  if (!std::isfinite(number)) throw AutomationError(RunTimeError::Overflow, "a cell takes finite numbers alone");
  return Variant(number).to_text();
}

std::uint32_t last_of(const std::vector<std::string>& texts) { return static_cast<std::uint32_t>(texts.size() - 1); }

// The cells of a new row or column, their texts added to `texts`. Equal numbers that follow each other share one.
std::vector<std::uint32_t> new_cells(std::vector<std::string>& texts, std::span<const double> numbers,
                                     std::size_t count) {
  if (numbers.size() > count) {
    throw AutomationError(RunTimeError::InvalidCall, "the list has " + std::to_string(numbers.size()) +
                                                         " values where the table has room for " +
                                                         std::to_string(count));
  }
  std::vector<std::uint32_t> cells;
  cells.reserve(count);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i == 0 || numbers[i] != numbers[i - 1]) texts.push_back(text_of(numbers[i]));
    cells.push_back(last_of(texts));
  }
  if (cells.size() < count) {
    texts.emplace_back();
    cells.resize(count, last_of(texts));
  }
  return cells;
}

auto place_in(auto& list, std::size_t index) {
  return list.begin() + static_cast<typename std::remove_reference_t<decltype(list)>::difference_type>(index);
}

}  // namespace

TableModel::TableModel() : document_(empty_contents_document) {}

void TableModel::put_document(std::string document) {
  document_ = std::move(document);
  edited_ = false;
  grid_.reset();
  move_selection({});
}

void TableModel::put_document(std::string document, ContentsTable table) {
  Grid grid = grid_of(std::move(table));
  document_ = std::move(document);
  edited_ = false;
  grid_ = std::move(grid);
  move_selection({});
}

std::string TableModel::document(ContentsLayout layout) const {
  if (!edited_) return document_;
  const Grid& grid = read();
  const auto text = [&](std::size_t cell) -> std::string_view { return grid.texts[grid.cells[cell]]; };
  return write_contents(grid.labels, {grid.column_count, grid.cells.size(), text}, layout);
}

ContentsTable TableModel::table() const {
  const Grid& grid = read();
  ContentsTable table = grid.labels;
  table.values.reserve(grid.cells.size());
  for (const std::uint32_t cell : grid.cells) table.values.push_back(grid.texts[cell]);
  return table;
}

TableModel::Grid TableModel::grid_of(ContentsTable table) {
  Grid grid{.labels = std::move(table)};
  grid.column_count = grid.labels.column_count();
  grid.texts.swap(grid.labels.values);
  grid.cells.resize(grid.texts.size());
  std::iota(grid.cells.begin(), grid.cells.end(), std::uint32_t{0});
  return grid;
}

const TableModel::Grid& TableModel::read() const {
  if (!grid_) grid_ = grid_of(read_contents(document_));
  return *grid_;
}

// The grid for a change that is certain to be made.
TableModel::Grid& TableModel::edit() {
  read();
  edited_ = true;
  std::string().swap(document_);  // assigning an empty text would keep the memory
  return *grid_;
}

Index TableModel::row_count() const { return static_cast<Index>(read().labels.rows.size()); }

Index TableModel::column_count() const { return static_cast<Index>(read().column_count); }

std::size_t TableModel::row_at(Index index) const { return checked("row", index, read().labels.rows.size()); }

std::size_t TableModel::column_at(Index index) const { return checked("column", index, read().column_count); }

void TableModel::select(const Cell& cell) {
  if (cell.row != none) row_at(cell.row);
  if (cell.column != none) column_at(cell.column);
  move_selection(cell);
}

void TableModel::move_selection(const Cell& cell) {
  if (std::exchange(selection_, cell) == cell) return;
  // A handler may set another one.
  if (const auto event = on_selection_change) event();
}

void TableModel::keep_selection_inside() {
  move_selection({std::min(selection_.row, row_count() - 1), std::min(selection_.column, column_count() - 1)});
}

// Where the cell stands among all; behind them for one that a short row lacks.
std::size_t TableModel::place_of(Index row, Index column) const {
  return row_at(row) * read().column_count + column_at(column);
}

std::string_view TableModel::cell_text(Index row, Index column) const {
  const Grid& grid = read();
  const std::size_t place = place_of(row, column);
  return place < grid.cells.size() ? grid.texts[grid.cells[place]] : std::string_view();
}

std::optional<double> TableModel::cell_number(Index row, Index column) const {
  return number_of_text(cell_text(row, column));
}

void TableModel::set_cell(Index row, Index column, double number) {
  std::string text = text_of(number);
  if (cell_number(row, column) == number) return;
  const std::size_t place = place_of(row, column);
  if (place >= read().cells.size()) fill_short_rows();

  Grid& grid = edit();
  grid.texts.push_back(std::move(text));
  grid.cells[place] = last_of(grid.texts);
  drop_unused_texts();
}

std::string_view TableModel::row_label(Index row) const {
  const std::optional<std::string>& label = read().labels.rows[row_at(row)];
  return label ? *label : std::string_view();
}

std::string_view TableModel::column_label(Index column) const {
  const std::vector<std::string>& labels = read().labels.columns;
  const std::size_t index = column_at(column);
  return index < labels.size() ? labels[index] : std::string_view();
}

void TableModel::set_row_label(Index row, std::string label) {
  if (row_label(row) == label) return;
  edit().labels.rows[row_at(row)] = std::move(label);
}

void TableModel::set_column_label(Index column, std::string label) {
  if (column_label(column) == label) return;
  const std::size_t index = column_at(column);
  std::vector<std::string>& labels = edit().labels.columns;
  labels.resize(std::max(labels.size(), index + 1));
  labels[index] = std::move(label);
}

void TableModel::set_title(Title title, std::string text) {
  if (is_line_breaks(text)) text.clear();
  if (this->title(title) != text) edit().labels.*title = std::move(text);
}

void TableModel::fill_short_rows() {
  constexpr std::size_t always_filled_up = 4'000'000, times_what_is_there = 4;
  read();
  const std::size_t rows = grid_->labels.rows.size(), columns = grid_->column_count, present = grid_->cells.size();
  const std::size_t missing = rows * columns - present;
  if (missing == 0) return;
  if (missing > always_filled_up + times_what_is_there * (rows + columns + present)) {
    throw AutomationError(RunTimeError::OutOfStringSpace, "the table has " + std::to_string(rows) + " rows and " +
                                                              std::to_string(columns) + " columns, but values for " +
                                                              std::to_string(present) +
                                                              " cells alone; give every row its values first");
  }
  grid_->texts.emplace_back();
  grid_->cells.resize(present + missing, last_of(grid_->texts));
}

// Edits leave texts behind that no cell has any more. They go when there are as many of them as cells.
void TableModel::drop_unused_texts() {
  constexpr std::size_t not_worth_it = 1000;
  if (grid_->texts.size() < 2 * grid_->cells.size() + not_worth_it) return;
  grid_->texts = table().values;
  std::iota(grid_->cells.begin(), grid_->cells.end(), std::uint32_t{0});
}

void TableModel::insert_row(Index index, std::string label, std::span<const double> numbers) {
  const std::size_t row = checked_place("row", index, read().labels.rows.size());
  const std::vector<std::uint32_t> cells = new_cells(grid_->texts, numbers, grid_->column_count);
  fill_short_rows();

  Grid& grid = edit();
  grid.cells.insert(place_in(grid.cells, row * grid.column_count), cells.begin(), cells.end());
  grid.labels.rows.insert(place_in(grid.labels.rows, row),
                          label.empty() ? std::nullopt : std::optional(std::move(label)));
}

void TableModel::insert_column(Index index, std::string label, std::span<const double> numbers) {
  const std::size_t column = checked_place("column", index, read().column_count);
  const std::vector<std::uint32_t> new_column = new_cells(grid_->texts, numbers, grid_->labels.rows.size());
  fill_short_rows();

  Grid& grid = edit();
  std::vector<std::uint32_t> cells;
  cells.reserve(grid.cells.size() + new_column.size());
  auto next = grid.cells.cbegin();
  const auto take = [&](std::size_t count) {
    const auto end = next + static_cast<std::ptrdiff_t>(count);
    cells.insert(cells.end(), next, end);
    next = end;
  };
  for (const std::uint32_t cell : new_column) {
    take(column);
    cells.push_back(cell);
    take(grid.column_count - column);
  }
  grid.cells = std::move(cells);

  std::vector<std::string>& labels = grid.labels.columns;
  if (!label.empty()) labels.resize(std::max(labels.size(), column));
  if (column < labels.size() || !label.empty()) labels.insert(place_in(labels, column), std::move(label));
  ++grid.column_count;
}

void TableModel::delete_row(Index index) {
  if (index == none) return;
  const std::size_t row = row_at(index);
  fill_short_rows();

  Grid& grid = edit();
  const auto first = place_in(grid.cells, row * grid.column_count);
  grid.cells.erase(first, first + static_cast<std::ptrdiff_t>(grid.column_count));
  grid.labels.rows.erase(place_in(grid.labels.rows, row));
  drop_unused_texts();
  keep_selection_inside();
}

void TableModel::delete_column(Index index) {
  if (index == none) return;
  const std::size_t column = column_at(index);
  fill_short_rows();

  Grid& grid = edit();
  auto kept = grid.cells.begin();
  for (auto row = grid.cells.begin(); row != grid.cells.end();) {
    const auto gone = row + static_cast<std::ptrdiff_t>(column);
    const auto row_end = row + static_cast<std::ptrdiff_t>(grid.column_count);
    kept = std::copy(row, gone, kept);
    kept = std::copy(gone + 1, row_end, kept);
    row = row_end;
  }
  grid.cells.erase(kept, grid.cells.end());
  std::vector<std::string>& labels = grid.labels.columns;
  if (column < labels.size()) labels.erase(place_in(labels, column));
  --grid.column_count;
  drop_unused_texts();
  keep_selection_inside();
}

}  // namespace plexoras
