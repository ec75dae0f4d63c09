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
/// | `getChartImage` | call () | the chart's picture: the bytes of an SVG or PNG file; error 445 if it cannot draw |
/// | `setEventSink` | call (object) | where its events are called from now on; Nothing for nowhere |
/// | `setPainter` | call (object) | for one that cannot draw itself: whose `getChartImage` draws in its place |
///
/// The last three may be missing. A component in a design view may call any event, with arguments of its own; the
/// control relays each to its host (`ControlSite::component_event`) and does nothing else about it. The one that ships
/// calls `SelectionChange` ().
///
/// The page for number and date formats needs besides:
///
/// | member | form | meaning |
/// |---|---|---|
/// | `FormatDateStyle` | get, put Long | 0 full, 1 long, 2 medium, 3 short |
/// | `getLanguages`, `getCountries`, `getVariants` | call () | lists of "code-name": all, of the language, of both |
/// | `chooseLanguage`, `chooseCountry` | call (String) | sets the code, and what must follow from it |
/// | `formatSample` | call (String) | the text as the chart shows such a value |
///
/// `FormatPattern` is the author's own pattern whatever the format type is. It may be half typed: neither putting it
/// nor formatting with it fails.
namespace chart_component {

inline constexpr std::string_view identifier = "Plexoras.DiagramApplet";
/// The name under which the control keeps it among its child controls.
inline constexpr std::string_view child_name = "diagram";
inline constexpr std::int32_t repaint_id = 367;

}  // namespace chart_component

}  // namespace plexoras
