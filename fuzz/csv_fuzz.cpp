// The input as comma-separated text: the document made of it can be read, and its table, written as comma-separated
// text, comes back.

#include <string>
#include <string_view>

#include "applet/csv_text.h"
#include "fuzz.h"

namespace plexoras {

void try_input(std::string_view input) {
  const auto document = accepted([&] { return contents_from_csv(input); });
  if (!document) return;
  const ContentsTable table = read_contents(*document);
  const std::string written = write_csv(table);
  require(read_contents(contents_from_csv(written)) == table, "a table comes back");
  require(write_csv(read_contents(contents_from_csv(written))) == written, "its text stays as it is");
}

}  // namespace plexoras
