#pragma once

#include <optional>
#include <string>

#include "authoring/live_control.h"
#include "authoring/table_changes.h"
#include "contents/delimited_import.h"

namespace plexoras {

/// Gives a chart the data that were imported into `document` by `format`.
///
/// Titles stay as an author has typed them: those of columns and values, and that of the rows unless the format, or the
/// file that the chart remembers until now, gives it. Returns what is different now: nothing but default values when an
/// empty table takes the place of data that cannot be read. Where the chart has the same table already, it is left
/// alone and nothing is returned.
std::optional<TableChanges> give_data(LiveControl& control, const std::string& document, const DelimitedFormat& format);

}  // namespace plexoras
