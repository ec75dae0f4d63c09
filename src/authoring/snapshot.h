#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "authoring/live_control.h"

namespace plexoras {

/// What the picture of a chart is drawn from: what readers get of it.
struct ChartPicture {
  std::vector<std::pair<std::string, std::string>> settings;  ///< names and texts of the element's parameters
  std::int32_t width = 480;                                   ///< in pixels
  std::int32_t height = 320;
  std::string language = {};  ///< for charts of the current locale; empty: American English
  /// 16 hexadecimal digits: pictures of other settings, data, sizes or languages have others.
  std::string stamp = {};
};

/// Nothing for a control without a chart, and for a chart without data of its own. `language` is that of the page. An
/// error of the component comes through.
std::optional<ChartPicture> picture_of(LiveControl& control, std::string_view language);

/// Draws a chart, as the text of an SVG element whose ids begin with something of the picture's own. Raises why it
/// cannot.
using DrawChart = std::function<std::string(const ChartPicture&)>;

/// Lets the chart component of `control` answer `getChartImage` with what `draw` makes of the chart as it is then, for
/// readers of a page in `language`. This ends with the life of what is returned; `control` outlives it. A component
/// that draws itself keeps doing so. Error 5 of the call for a chart without data of its own.
ObjectRef paint_with(LiveControl& control, DrawChart draw, std::string language);

/// The picture in an element that carries its stamp, for a template: no reference begins in it.
///
///     <div data-stamp="8c1f0a2be0d1c933"><svg ...>...</svg></div>
///
/// Error 5 for what is no SVG element, or may hold more than a drawing: a script or a comment.
std::string snapshot_element(std::string_view svg, std::string_view stamp);

/// The stamp of the picture in a control's text for readers, as a part of that text; empty where there is none.
std::string_view stamp_in(std::string_view text);

}  // namespace plexoras
