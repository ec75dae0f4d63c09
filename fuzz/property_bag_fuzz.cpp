// The input as the byte form of a property bag, and as hexadecimal text: there is one form for each bag, and each
// value a bag holds is found under its key.

#include <string>
#include <string_view>

#include "fuzz.h"
#include "host/property_bag.h"

namespace plexoras {

void try_input(std::string_view input) {
  if (auto bag = accepted([&] { return MemoryPropertyBag::from_bytes(input); })) {
    require(bag->bytes() == input, "a bag has one byte form");
    for (const MemoryPropertyBag::Entry& entry : bag->entries()) {
      require(bag->read(entry.key, {}).type() == entry.value.type(), "each key finds its value");
    }
  }
  require(from_hex(to_hex(input)) == input, "bytes come back from hexadecimal text");
  if (const auto bytes = accepted([&] { return from_hex(input); })) {
    require(from_hex(to_hex(*bytes)) == *bytes && 2 * bytes->size() == input.size(), "two digits are a byte");
  }
}

}  // namespace plexoras
