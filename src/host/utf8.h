#pragma once

#include <cstddef>
#include <string_view>

namespace plexoras {

/// How many bytes of `text` at `at` make one well-formed UTF-8 character: 1 to 4, or 0 when they make none. `at` may be
/// the text's end, where there is none.
std::size_t utf8_length(std::string_view text, std::size_t at);

}  // namespace plexoras
