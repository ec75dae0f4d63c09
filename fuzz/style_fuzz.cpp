// The input as a style document: what is read can be written, and then reads as the same values whatever was there
// before.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "applet/style_document.h"
#include "fuzz.h"

namespace plexoras {
namespace {

std::vector<Variant> values_from(std::int16_t number) {
  std::vector<Variant> values;
  for (const StyleProperty& property : style_properties()) {
    values.push_back(Variant(number).converted_to(property.type));
  }
  return values;
}

}  // namespace

void try_input(std::string_view input) {
  const auto values = accepted([&] { return read_style_document(input, values_from(0)); });
  if (!values) return;
  const std::string written = write_style_document(*values);
  require(read_style_document(written, values_from(1)) == *values, "a style comes back");
}

}  // namespace plexoras
