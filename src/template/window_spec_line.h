#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "template/dictionary.h"
#include "template/window_spec.h"

namespace plexoras {

/// A piece of a window-spec line that cannot be read: where in the line's value it begins, and why.
struct WindowSpecFault {
  std::size_t offset = 0;
  std::string what;
};

/// Reads the value of one entry into `entry`, whose kind and names are set. `constants` are the definitions of section
/// "CONSTANT". Raises `WindowSpecFault`. `condition_at` becomes the offset of the entry's condition, if it has one.
void read_window_spec_line(std::string_view value, const Dictionary& constants, WindowSpecEntry& entry,
                           std::size_t& condition_at);

}  // namespace plexoras
