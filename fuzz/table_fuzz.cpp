// The input as a script of edits, a line break, and a contents document: a table is loaded into the chart component and
// edited by member name.
//
// Looking at the table leaves the document byte for byte. Whatever is edited, an edited document is one that reads as
// the same table, with line breaks between its elements or without, and the selection stays inside the table.

#include <algorithm>
#include <string>
#include <string_view>

#include "applet/contents_reader.h"
#include "applet/diagram_applet.h"
#include "fuzz.h"

namespace plexoras {
namespace {

// Every cell and label, as the members give them.
std::string shown(DiagramApplet& chart) {
  const std::int32_t rows = chart.get("rowCount").to_long(), columns = chart.get("colCount").to_long();
  std::string text;
  for (const std::string_view title : {"rowTitle", "colTitle", "valueTitle"}) text += chart.get(title).to_text() + "|";
  for (std::int32_t column = 0; column < columns && rows > 0; ++column) {
    text += chart.call_with("getColLabel", {column}).to_text() + "|";
  }
  for (std::int32_t row = 0; row < rows; ++row) {
    text += "\n" + chart.call_with("getRowLabel", {row}).to_text();
    for (std::int32_t column = 0; column < columns; ++column) {
      const std::string cell = chart.call_with("getCellText", {row, column}).to_text();
      const Variant number = chart.call_with("getCellValue", {row, column});
      require(number.is_nothing() || number_of_text(cell) == number.to_double(), "a cell's number is that of its text");
      text += "|" + cell;
    }
  }
  return text;
}

// One step of three bytes: what is done, where, and with what. An index that does not exist is refused.
void edit(DiagramApplet& chart, unsigned char action, std::int32_t index, unsigned char detail) {
  const std::string label(detail % 3, static_cast<char>(detail));
  const double number = detail / 4.0;
  const auto list = [&] {
    ObjectRef values = chart.call("newValueList").to_object();
    for (int i = detail % 4; i > 0; --i) values->call_with("addElement", {number});
    return values;
  };
  switch (action % 10) {
    case 0:
      chart.call_with("insertRow", {index, label, list()});
      break;
    case 1:
      chart.call_with("insertCol", {index, label, list()});
      break;
    case 2:
      chart.call_with("deleteRow", {index});
      break;
    case 3:
      chart.call_with("deleteCol", {index});
      break;
    case 4:
      chart.call_with("setRowLabel", {index, label});
      break;
    case 5:
      chart.call_with("setColLabel", {index, label});
      break;
    case 6:
      chart.call_with("setCellValue", {index, detail % 8, number});
      break;
    case 7:
      chart.call_with("selectCell", {index, detail % 8 - 1});
      break;
    case 8:
      chart.put("colTitle", label);
      break;
    default:
      chart.put("valueTitle", label);
  }
}

}  // namespace

void try_input(std::string_view input) {
  const std::size_t line_end = std::min(input.find('\n'), input.size());
  std::string_view script = input.substr(0, line_end);
  const std::string_view document = input.substr(std::min(line_end + 1, input.size()));
  DiagramApplet chart;
  if (!chart.call_with("isValidXmlContents", {document}).to_boolean()) return;
  chart.put("XmlContents", document);
  // Few labels and no values make a huge table, whose cells take too long to look at.
  const auto cells = std::int64_t{chart.get("rowCount").to_long()} * chart.get("colCount").to_long();
  if (cells > 1000) return;
  std::string before = shown(chart);
  require(chart.get("XmlContents") == Variant(document), "looking changes nothing");

  for (; script.size() >= 3; script.remove_prefix(3)) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(script[at]); };
    try {
      edit(chart, byte(0), byte(1) % 16 - 2, byte(2));
    } catch (const AutomationError& error) {
      const bool is_expected =
          error.number() == RunTimeError::InvalidCall || error.number() == RunTimeError::SubscriptOutOfRange;
      require(is_expected && shown(chart) == before, "a refused edit changes nothing");
    }
    before = shown(chart);
    for (const auto& [selected, count] : {std::pair("selectedRow", "rowCount"), std::pair("selectedCol", "colCount")}) {
      const std::int32_t index = chart.get(selected).to_long();
      require(index >= -1 && index < chart.get(count).to_long(), "the selection stays inside");
    }
  }

  const std::string compact = chart.get("XmlContents").to_text();
  const std::string lines = chart.call_with("getXmlContents", {true}).to_text();
  require(read_contents(lines) == read_contents(compact), "both forms of the document hold the same table");
  DiagramApplet other;
  other.put("XmlContents", lines);
  // A table without rows does not keep how many columns it had.
  require(chart.get("rowCount") == Variant(0) || shown(other) == before, "the edited table comes back");
}

}  // namespace plexoras
