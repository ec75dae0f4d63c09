// The input as a contents document, and as any document that goes into an attribute of a page.
//
// What is read can be written and read again, and means the same without the line breaks between elements. A document
// in an attribute cannot end it, holds no reference for the template engine, and a browser gets it back whole.

#include <string>
#include <string_view>

#include "applet/contents_reader.h"
#include "applet/format_xml.h"
#include "authoring/page_text.h"
#include "fuzz.h"

namespace plexoras {

void try_input(std::string_view input) {
  const auto table = accepted([&] { return read_contents(input); });
  if (table) {
    require(read_contents(write_contents(*table)) == *table, "a table comes back");
    require(read_contents(write_contents(*table, ContentsLayout::Lines)) == *table, "a table comes back from lines");
  }

  const auto compact = accepted([&] { return format_xml(input, FormatFor::Text); });
  require(!table || compact, "a contents document is well formed");
  if (!compact) return;
  require(format_xml(*compact, FormatFor::Text) == *compact, "a compact document stays as it is");
  require(!table || read_contents(*compact) == *table, "a compact document holds the same table");

  const std::string attribute = format_xml(input, FormatFor::Attribute);
  require(attribute.find_first_of("\"'<>\t\r\n") == std::string::npos, "a document cannot end its attribute");
  require(attribute.find("$(") == std::string::npos && attribute.find("#(") == std::string::npos,
          "a document holds no reference");
  require(!attribute.ends_with('$') && !attribute.ends_with('#'), "no reference begins where a document ends");
  std::size_t bad = 0;
  require(unescape_state(attribute, &bad) == *compact, "a document comes back from its attribute");
}

}  // namespace plexoras
