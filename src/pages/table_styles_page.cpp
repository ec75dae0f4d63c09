#include "pages/table_styles_page.h"

#include <initializer_list>

namespace plexoras {
namespace {

// Kept: the codes do not follow the order of the buttons.
constexpr OptionCode selection_modes[] = {{"rbNone", 0}, {"rbRows", 2}, {"rbCols", 1}, {"rbCell", 3}};
constexpr OptionCode multiple_selection[] = {{"rbSingle", 0}, {"rbMulti", 1}};
constexpr OptionCode extended_selection[] = {{"rbExtended", 1}, {"rbWindowsNT", 0}};

constexpr PropertyRow rows[] = {
    {"VScrollbarPolicy", Encoding::Lookup, "cmbVScrollbarPolicy", "SCROLLBAR"},
    {"HScrollbarPolicy", Encoding::Lookup, "cmbHScrollbarPolicy", "SCROLLBAR"},
    {"OnRowLabelClick", Encoding::Lookup, "cmbOnRowLabelClick", "ONROWLABELCLICK"},
    {"OnColLabelClick", Encoding::Lookup, "cmbOnColLabelClick", "ONCOLLABELCLICK"},
    {"showRowLabels", Encoding::Check, "cbShowRowLabels"},
    {"showColLabels", Encoding::Check, "cbShowColLabels"},
    {"EqualRows", Encoding::Check, "cbEqualRows"},
    {"EqualCols", Encoding::Check, "cbEqualCols"},
    {"moveableRows", Encoding::Check, "cbMoveableRows"},
    {"moveableCols", Encoding::Check, "cbMoveableCols"},
    {"resizableRows", Encoding::Check, "cbResizableRows"},
    {"resizableCols", Encoding::Check, "cbResizableCols"},
    {"DefaultColWidth", Encoding::Integer, "txtDefaultColWidth"},
    {"DefaultRowHeight", Encoding::Integer, "txtDefaultRowHeight"},
    {"RowLabelWidth", Encoding::Integer, "txtRowLabelWidth"},
    {"ColLabelHeight", Encoding::Integer, "txtColLabelHeight"},
    {"FixedRows", Encoding::Integer, "txtFixedRows"},
    {"FixedCols", Encoding::Integer, "txtFixedCols"},
    {"MultipleSelection", Encoding::OptionPair, "rbSingle", {}, multiple_selection},
    {"ExtendedSelection", Encoding::OptionPair, "rbExtended", {}, extended_selection},
    {.property = "SelectionMode", .encoding = Encoding::Options, .options = selection_modes},
};

// For loading and for applying. `negativeForeColor`, which only the chart itself has, comes last in both.
constexpr std::string_view order[] = {
    "VScrollbarPolicy",  "HScrollbarPolicy",  "OnRowLabelClick", "OnColLabelClick", "showRowLabels", "showColLabels",
    "EqualRows",         "EqualCols",         "moveableRows",    "moveableCols",    "resizableRows", "resizableCols",
    "DefaultColWidth",   "DefaultRowHeight",  "RowLabelWidth",   "ColLabelHeight",  "FixedRows",     "FixedCols",
    "MultipleSelection", "ExtendedSelection", "SelectionMode",
};
static_assert(all_in_rows(rows, order));

// What `negativeForeColor` is when negative values have no colour of their own.
constexpr std::string_view no_color = "null";

}  // namespace

TableStyles::TableStyles() : bindings_(*this, rows) {
  caption = "Table Styles";
  const auto changed_what_enables = [this] {
    Changed = true;
    enable_controls();
  };
  for (CheckBox* const box : {&cbShowRowLabels, &cbShowColLabels}) box->on_click = changed_what_enables;
  for (OptionButton* const button : {&rbNone, &rbRows, &rbCols, &rbCell, &rbSingle, &rbMulti}) {
    button->on_click = changed_what_enables;
  }
  chkRedNegativeValues.on_click = [this] { chkRedNegativeValues_Click(); };
}

std::span<const PropertyRow> TableStyles::property_rows() { return rows; }

void TableStyles::SelectionChanged() {
  bindings_.load(order);
  chkRedNegativeValues.set_value(chart_shows_red() ? 1 : 0);
  enable_controls();
}

void TableStyles::ApplyChanges() {
  std::int16_t working_value = 0;
  bindings_.apply(order, working_value);
  bindings_.write("negativeForeColor", chkRedNegativeValues.value() == 1 ? "red" : no_color);
  selected_control().call("Refresh");
}

void TableStyles::chkRedNegativeValues_Click() {
  if ((chkRedNegativeValues.value() == 1) != chart_shows_red()) Changed = true;
}

bool TableStyles::chart_shows_red() const {
  // Kept: any other colour counts as red too, and becomes red when the page is applied.
  return chart_of(selected_control(), "getDiagram")->get("negativeForeColor").to_text() != no_color;
}

void TableStyles::enable_controls() {
  fraSelectionMode.enabled = !rbNone.value();
  for (OptionButton* const button : {&rbExtended, &rbWindowsNT}) button->enabled = rbMulti.value();
  cmbOnColLabelClick.enabled = txtColLabelHeight.enabled = cbShowColLabels.value() == 1;
  cmbOnRowLabelClick.enabled = txtRowLabelWidth.enabled = cbShowRowLabels.value() == 1;
}

}  // namespace plexoras
