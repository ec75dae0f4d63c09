#pragma once

#include <cstdint>
#include <string_view>

namespace plexoras {

/// What the chart control needs of a chart component, which it makes by identifier and reaches by member name alone.
/// Bring one of your own by adding it to the component registry under this identifier:
///
/// | member | form | meaning |
/// |---|---|---|
/// | each of `forwarded_properties()` | get, put | the chart's settings; the component is their store of record |
/// | `Visible` | put Boolean | whether the chart is drawn while it is being designed |
/// | `UseSampleContents` | call () | shows sample data |
/// | `Refresh` | call () | repaints after a change of chart type |
/// | dispatch identifier 367 | call () | repaints |
/// | `FormatXml` | call (Boolean, String) | a document normalised for embedding in a page |
/// | `isValidXmlContents` | call (String) | Boolean: whether `XmlContents` takes the text |
/// | `getFontList` | call () | a list of texts |
namespace chart_component {

inline constexpr std::string_view identifier = "Plexoras.DiagramApplet";
/// The name under which the control keeps it among its child controls.
inline constexpr std::string_view child_name = "diagram";
inline constexpr std::int32_t repaint_id = 367;

}  // namespace chart_component

}  // namespace plexoras
