#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chart_control/chart_component.h"
#include "host/automation.h"

namespace plexoras {

class ComponentRegistry;

/// The component identifier under which `DiagramApplet` is created.
inline constexpr std::string_view diagram_applet_identifier = chart_component::identifier;

/// The chart component that ships with the library: it keeps every property of one chart and its data, and reads and
/// writes the documents that these travel in. It draws nothing; a published page does that.
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
/// | `XmlContents` | the data as a contents document; comes back byte for byte as it was put |
/// | `CsvContents` | the same data as comma-separated text, see `write_csv` |
/// | `Visible` | Boolean |
/// | `isValidXmlContents(text)` | whether `XmlContents` would take the text |
/// | `UseSampleContents()` | replaces the data by a small table, labelled on both sides, that suits every chart type |
/// | `FormatXml(flag, text)` | the document without line breaks between elements; a true flag escapes it for HTML |
/// | `getFontList()` | names of font families for `FontName` |
/// | `Refresh()`, dispatch identifier 367 | repaints |
///
/// A value that is refused (error 5, 6 or 13, naming the member and, in documents, the line and column) changes
/// nothing. Errors carry the component's identifier as their source.
class DiagramApplet final : public AutomationObject {
public:
  /// The dispatch identifier of `Refresh`.
  static constexpr std::int32_t refresh_id = chart_component::repaint_id;

  DiagramApplet();

  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments = {}) override;
  Variant call_by_id(std::int32_t dispatch_id) override;

  /// How often the chart was asked to repaint.
  std::size_t repaints() const { return repaints_; }

private:
  struct Members;

  std::vector<Variant> style_;  // one value for each row of style_properties()
  std::string contents_;        // a valid contents document, as it was put
  bool visible_ = true;
  std::size_t repaints_ = 0;
};

/// Makes `DiagramApplet` known as "Plexoras.DiagramApplet".
void register_diagram_applet(ComponentRegistry& components);

}  // namespace plexoras
