#include "authoring/chart_data.h"

#include "authoring/control_properties.h"
#include "authoring/data_source.h"
#include "contents/contents_document.h"

namespace plexoras {
namespace {

// The table in `document`, or nothing when it cannot be read; a chart without data has the empty text.
std::optional<ContentsTable> table_in(const std::string& document) {
  try {
    return read_contents(document);
  } catch (const AutomationError&) {
    return std::nullopt;
  }
}

bool holds_row_title(const DelimitedFormat& format) { return format.first_row && format.first_col; }

// Whether the row title that `control` has came from the file that it remembers.
bool has_row_title_of_file(LiveControl& control) {
  try {
    const std::optional<DataSource> source = remembered_source(control.control());
    return source && holds_row_title(source->settings.format);
  } catch (const AutomationError&) {
    return false;  // what cannot be understood tells nothing
  }
}

// Gives `after` the titles of `before` that an author has typed. Whether there were any.
bool keep_titles(const ContentsTable& before, bool has_row_title, ContentsTable& after) {
  bool kept = false;
  for (const auto title : {&ContentsTable::row_title, &ContentsTable::column_title, &ContentsTable::value_title}) {
    if ((has_row_title && title == &ContentsTable::row_title) || (before.*title).empty()) continue;
    after.*title = before.*title;
    kept = true;
  }
  return kept;
}

}  // namespace

std::optional<TableChanges> give_data(LiveControl& control, const std::string& document,
                                      const DelimitedFormat& format) {
  const std::string present = control.control().GetProperty("Contents");
  if (document == present) return std::nullopt;
  TableChanges changes;
  std::string with_titles;
  {
    // The tables are gone before the chart makes its own.
    const std::optional<ContentsTable> before = table_in(present);
    ContentsTable after = read_contents(document);
    const bool has_titles =
        before && keep_titles(*before, holds_row_title(format) || has_row_title_of_file(control), after);
    changes = compare_tables(before.value_or(ContentsTable()), after);
    // Two documents of one table are as good as each other.
    if (before && changes == TableChanges()) return std::nullopt;
    if (has_titles) with_titles = write_contents(after);
  }
  ControlProperties(control).set("Contents", with_titles.empty() ? document : with_titles);
  return changes;
}

}  // namespace plexoras
