#pragma once

#include <string_view>

#include "host/automation.h"

namespace plexoras {

class TableModel;

/// The members of the chart component that work on its data alone, documented with `DiagramApplet`.
bool is_table_member(std::string_view member);

/// As in `AutomationObject`, on `table`.
Variant get_table_member(TableModel& table, std::string_view member);
void put_table_member(TableModel& table, std::string_view member, const Variant& value);
Variant call_table_member(TableModel& table, std::string_view member, Arguments arguments);

}  // namespace plexoras
