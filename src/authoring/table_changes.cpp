#include "authoring/table_changes.h"

#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace plexoras {
namespace {

// The labels along one side of a table; one that is not there is nothing.
using Labels = std::vector<std::optional<std::string_view>>;

Labels row_labels(const ContentsTable& table) { return {table.rows.begin(), table.rows.end()}; }

Labels column_labels(const ContentsTable& table) {
  Labels labels(table.columns.begin(), table.columns.end());
  labels.resize(table.column_count());
  return labels;
}

constexpr std::size_t none = static_cast<std::size_t>(-1);

// Which lines (rows, or columns) of two tables are the same.
struct Matching {
  std::vector<std::size_t> after_of;   // by line of the table before; `none` for one that is gone
  std::vector<std::size_t> before_of;  // by line of the table after; `none` for a new one
  std::size_t matched = 0;

  Matching(std::size_t before, std::size_t after) : after_of(before, none), before_of(after, none) {}

  void match(std::size_t before, std::size_t after) {
    after_of[before] = after;
    before_of[after] = before;
    ++matched;
  }
};

using Index = std::unordered_map<std::string_view, std::size_t>;

// Positions by label; nothing when a line has no label, or that of another one.
std::optional<Index> index_of(const Labels& labels) {
  Index index;
  index.reserve(labels.size());
  for (std::size_t i = 0; i < labels.size(); ++i) {
    if (!labels[i] || !index.emplace(*labels[i], i).second) return std::nullopt;
  }
  return index;
}

std::optional<Matching> match_by_label(const Labels& before, const Labels& after) {
  const std::optional<Index> index = index_of(before);
  if (!index || !index_of(after)) return std::nullopt;
  Matching matching(before.size(), after.size());
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (const auto found = index->find(*after[i]); found != index->end()) matching.match(found->second, i);
  }
  if (matching.matched == 0) return std::nullopt;  // all are new: rather the same lines, named anew
  return matching;
}

Matching match_lines(const Labels& before, const Labels& after) {
  // Data that came again mostly have the labels that they had, and then nothing need be looked up.
  if (before != after) {
    if (std::optional<Matching> matching = match_by_label(before, after)) return *matching;
  }
  Matching matching(before.size(), after.size());
  for (std::size_t i = 0; i < before.size() && i < after.size(); ++i) matching.match(i, i);
  return matching;
}

bool is_in_order(const Matching& matching) {
  std::size_t last = none;
  for (const std::size_t before : matching.before_of) {
    if (before == none) continue;
    if (last != none && before < last) return false;
    last = before;
  }
  return true;
}

bool same_labels(const Labels& before, const Labels& after, const Matching& matching) {
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (matching.after_of[i] != none && before[i] != after[matching.after_of[i]]) return false;
  }
  return true;
}

bool same_titles(const ContentsTable& before, const ContentsTable& after) {
  return before.row_title == after.row_title && before.column_title == after.column_title &&
         before.value_title == after.value_title;
}

// Only cells that are there are looked at: a table of few cells may have very many rows and columns.
std::size_t changed_cells(std::span<const std::string> before, std::span<const std::string> after,
                          const Matching& columns) {
  std::size_t changed = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const std::size_t now = columns.after_of[i];
    if (now != none && (now >= after.size() || before[i] != after[now])) ++changed;
  }
  for (std::size_t i = 0; i < after.size(); ++i) {
    const std::size_t then = columns.before_of[i];
    if (then != none && then >= before.size()) ++changed;
  }
  return changed;
}

}  // namespace

TableChanges compare_tables(const ContentsTable& before, const ContentsTable& after) {
  const Labels rows_before = row_labels(before), rows_after = row_labels(after);
  const Labels columns_before = column_labels(before), columns_after = column_labels(after);
  const Matching rows = match_lines(rows_before, rows_after);
  const Matching columns = match_lines(columns_before, columns_after);

  TableChanges changes;
  changes.rows_added = rows_after.size() - rows.matched;
  changes.rows_removed = rows_before.size() - rows.matched;
  changes.columns_added = columns_after.size() - columns.matched;
  changes.columns_removed = columns_before.size() - columns.matched;
  changes.labels_changed = !same_titles(before, after) || !same_labels(rows_before, rows_after, rows) ||
                           !same_labels(columns_before, columns_after, columns);
  changes.order_changed = !is_in_order(rows) || !is_in_order(columns);
  for (std::size_t row = 0; row < rows_before.size(); ++row) {
    const std::size_t now = rows.after_of[row];
    if (now != none) changes.cells_changed += changed_cells(before.row_values(row), after.row_values(now), columns);
  }
  return changes;
}

std::string to_text(const TableChanges& changes) {
  std::string text;
  const auto add = [&](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
  const auto count = [&](const char* sign, std::size_t number, const char* one, const char* more) {
    if (number > 0) add(sign + std::to_string(number) + " " + (number == 1 ? one : more));
  };
  count("+", changes.rows_added, "row", "rows");
  count("-", changes.rows_removed, "row", "rows");
  count("+", changes.columns_added, "column", "columns");
  count("-", changes.columns_removed, "column", "columns");
  count("", changes.cells_changed, "cell changed", "cells changed");
  if (changes.labels_changed) add("labels changed");
  if (changes.order_changed) add("order changed");
  return text.empty() ? "unchanged" : text;
}

}  // namespace plexoras
