#pragma once

#include <cstdint>
#include <string_view>

namespace plexoras {

/// What the table editor needs of the component that holds its table, which it makes by identifier and reaches by
/// member name alone. Rows and columns count from 0, -1 stands for none; counts and indexes are Long.
///
/// | member | form | meaning |
/// |---|---|---|
/// | `isValidXmlContents` | call (String) | Boolean: whether `XmlContents` takes the text |
/// | `XmlContents` | get, put | the data as a contents document; putting it selects nothing |
/// | `getXmlContents` | call (Boolean true) | the same, with line breaks between the elements of an edited document |
/// | `rowTitle`, `colTitle`, `valueTitle` | get, put String | what the row labels, column labels and values are
/// | `rowCount`, `colCount` | get | how many there are |
/// | `selectedRow`, `selectedCol` | get | the selected row and column |
/// | `getCellValue` | call (row, column) | a cell's number, or Nothing for a cell without one |
/// | `setCellValue` | call (row, column, Double) | puts a cell's number |
/// | `getRowLabel`, `getColLabel` | call (index) | a label |
/// | `setRowLabel`, `setColLabel` | call (index, String) | puts a label |
/// | `newValueList` | call () | an object with `addElement` (Double), for the values of a new row or column |
/// | `insertRow`, `insertCol` | call (index, label, list) | puts one in before `index`; at -1 behind all |
/// | `deleteRow`, `deleteCol` | call (index) | takes one out; nothing at -1 |
/// | `setEventSink` | call (object) | where the event `SelectionChange` is called; Nothing for nowhere |
/// | `DiagramType` and the switches of `table_component::switches` | put | how the component shows its data |
namespace table_component {

inline constexpr std::string_view identifier = "Plexoras.DiagramApplet";
/// The name of its control on the editor.
inline constexpr std::string_view control_name = "tbl";
inline constexpr std::string_view selection_event = "SelectionChange";

/// The type of diagram that is a table.
inline constexpr std::int32_t table_type = 9;

/// What makes the component a grid for editing: three switches off, three on.
struct Switch {
  std::string_view member;
  bool value;
};
inline constexpr Switch switches[] = {
    {"HasPopupMenu", false}, {"HasLegend", false},    {"IsTransposed", false},
    {"IsEditable", true},    {"showColLabels", true}, {"showRowLabels", true},
};

}  // namespace table_component

}  // namespace plexoras
