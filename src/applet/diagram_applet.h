#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "applet/format_members.h"
#include "applet/table_model.h"
#include "chart_control/chart_component.h"
#include "host/automation.h"

namespace plexoras {

class ComponentRegistry;

/// The component identifier under which `DiagramApplet` is created.
inline constexpr std::string_view diagram_applet_identifier = chart_component::identifier;

/// The chart component that ships with the library: it keeps every property of one chart and its data, and reads and
/// writes the documents that these travel in. It draws nothing itself: a published page does that, and a painter that
/// the host brings.
///
/// Like every such component it is reached by member name. One is created for each chart control and lives as long
/// as somebody holds it.
///
///     ObjectRef chart = components.create(diagram_applet_identifier);
///     chart->put("DiagramType", 5);
///     chart->call("UseSampleContents");
///     chart->get("XmlStyle");
///
/// | member | does |
/// |---|---|
/// | every row of `style_properties()` | a property, with a default; what is put is converted to its type |
/// | `XmlStyle` | all of these as one style document |
/// | `XmlContents` | the data as a contents document; byte for byte as it was put, until it is edited |
/// | `getXmlContents(flag)` | the same; with a true flag an edited document has CR LF between its elements |
/// | `isValidXmlContents(text)` | whether `XmlContents` would take the text |
/// | `CsvContents` | the same data as comma-separated text, without `colTitle` and `valueTitle`, see `write_csv` |
/// | `Visible` | Boolean |
/// | `UseSampleContents()` | replaces the data by a small table, labelled on both sides, that suits every chart type |
/// | `FormatXml(flag, text)` | the document without line breaks between elements; a true flag: for a page, see below |
/// | every row of `FormatMembers` | lists for a number and date format, and a sample of it |
/// | `getFontList()` | names of font families for `FontName` |
/// | `getChartImage()` | the chart's picture as the painter makes it; error 445 without one |
/// | `setPainter(object)` | the object whose `getChartImage()` draws; Nothing for none. Its owner keeps it alive |
/// | `Refresh()`, dispatch identifier 367 | repaints |
///
/// For a page `FormatXml` also leaves out of a style document what has its default (`without_repeated_values`), and
/// escapes all of it (`escape_for_attribute`).
///
/// The data can be edited as a table, see `TableModel`. Rows and columns count from 0; counts and indexes are Long:
///
/// | member | does |
/// |---|---|
/// | `rowTitle`, `colTitle`, `valueTitle` | String: what the row labels, the column labels and the values are |
/// | `rowCount`, `colCount` | how many there are; cannot be put |
/// | `selectedRow`, `selectedCol` | the selected row and column, -1 for none; nothing is selected in new data |
/// | `selectCell(row, col)` | puts both at once, so that one event tells of it |
/// | `getCellValue(row, col)` | Double, or Nothing for a cell whose text is no number |
/// | `setCellValue(row, col, number)` | replaces the cell's text, unless it is that number already |
/// | `getCellText(row, col)` | String: the cell as it is kept |
/// | `getRowLabel(row)`, `getColLabel(col)` | String, empty where there is no label |
/// | `setRowLabel(row, text)`, `setColLabel(col, text)` | puts a label |
/// | `newValueList()` | an object for the values of a new row or column: `addElement(number)`, and `count` |
/// | `insertRow(row, label, list)`, `insertCol(col, label, list)` | puts one in before it; -1 is behind all |
/// | `deleteRow(row)`, `deleteCol(col)` | takes one out; nothing at -1 |
/// | `setEventSink(object)` | the object on which events are called from now on; Nothing for none |
///
/// There is one event, `SelectionChange()`: `selectedRow` or `selectedCol` has changed, by a put, by new data, or by a
/// deletion that has left fewer. What its handler raises comes through as it is, behind the change.
///
/// A value that is refused (error 5, 6 or 13, naming the member and, in documents, the line and column) changes
/// nothing; nor does a row or column that does not exist (error 9). Errors carry the component's identifier as their
/// source.
class DiagramApplet final : public AutomationObject {
public:
  /// The dispatch identifier of `Refresh`.
  static constexpr std::int32_t refresh_id = chart_component::repaint_id;

  /// `locales` may serve many charts, and then each list in it is made only once.
  explicit DiagramApplet(std::shared_ptr<LocaleLists> locales = std::make_shared<LocaleLists>());
  DiagramApplet(const DiagramApplet&) = delete;
  DiagramApplet& operator=(const DiagramApplet&) = delete;

  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments = {}) override;
  Variant call_by_id(std::int32_t dispatch_id) override;

  /// How often the chart was asked to repaint.
  std::size_t repaints() const { return repaints_; }

private:
  struct Members;

  void tell_selection_change();

  std::vector<Variant> style_;  // one value for each row of style_properties()
  FormatMembers formats_;
  TableModel table_;
  ObjectRef event_sink_;
  std::weak_ptr<AutomationObject> painter_;  // it may hold the chart's control, and so the chart
  bool selection_changed_ = false;           // and the event sink is yet to be told
  bool visible_ = true;
  std::size_t repaints_ = 0;
};

/// Makes `DiagramApplet` known as "Plexoras.DiagramApplet".
void register_diagram_applet(ComponentRegistry& components);

}  // namespace plexoras
