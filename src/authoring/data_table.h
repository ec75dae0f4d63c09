#pragma once

#include <string>
#include <string_view>

#include "authoring/live_control.h"

namespace plexoras {

/// A chart's data as an HTML table, for readers whose browser draws no chart and for those who listen to the page.
///
///     <table>
///     <caption>Sales</caption>
///     <thead><tr><th scope="col">Region</th><th scope="col">Q1</th></tr></thead>
///     <tbody><tr><th scope="row">North</th><td>1,234.5</td></tr></tbody>
///     </table>
///
/// Labels and values are text, whatever they hold, and no template reference begins in them. Values are written in the
/// chart's number format, rows and columns change places where the chart has them do so. A chart of the current locale
/// is written in that of `language` ("de", "pt-BR"; empty: American English), not in that of this machine, so that the
/// same page comes out of every machine.
///
/// Empty for a control without a chart, and for a chart without data of its own, be it that it shows sample data or has
/// no rows or columns. An error of the component comes through; the chart is as it was, in any case.
std::string data_table(LiveControl& control, std::string_view caption, std::string_view language);

}  // namespace plexoras
