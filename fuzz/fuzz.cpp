#include "fuzz.h"

#include <cstddef>
#include <cstdint>

// What libFuzzer looks for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  plexoras::try_input({reinterpret_cast<const char*>(data), size});
  return 0;
}
