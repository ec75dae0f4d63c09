#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace plexoras {

// Letters in any case, ASCII alone: bytes of other characters stay as they are, in any locale.

constexpr char ascii_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

inline std::string ascii_lower(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), [](char c) { return ascii_lower(c); });
  return lower;
}

constexpr bool equal_but_for_case(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) { return ascii_lower(x) == ascii_lower(y); });
}

}  // namespace plexoras
