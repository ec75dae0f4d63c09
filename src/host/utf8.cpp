#include "host/utf8.h"

namespace plexoras {

std::size_t utf8_length(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U; };
  const auto continues = [&](std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) {
      if ((byte(i) & 0xC0U) != 0x80U) return false;
    }
    return true;
  };
  const unsigned first = byte(0);
  const unsigned second = byte(1);
  if (at >= text.size()) return 0;
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return continues(1, 2) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool overlong = first == 0xE0 && second < 0xA0;
    const bool surrogate = first == 0xED && second > 0x9F;
    return continues(1, 3) && !overlong && !surrogate ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool overlong = first == 0xF0 && second < 0x90;
    const bool too_large = first == 0xF4 && second > 0x8F;
    return continues(1, 4) && !overlong && !too_large ? 4 : 0;
  }
  return 0;
}

}  // namespace plexoras
