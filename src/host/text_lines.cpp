#include "host/text_lines.h"

#include <algorithm>

namespace plexoras {

TextLines::TextLines(std::string_view text) : text_(text), next_cr_(find('\r')), next_lf_(find('\n')) {}

std::size_t TextLines::find(char character) const { return std::min(text_.find(character, position_), text_.size()); }

std::optional<std::string_view> TextLines::next() {
  if (at_end()) return std::nullopt;
  if (next_cr_ < position_) next_cr_ = find('\r');
  if (next_lf_ < position_) next_lf_ = find('\n');

  const std::size_t start = position_;
  const std::size_t end = std::min(next_cr_, next_lf_);
  const bool ends_in_both = next_cr_ + 1 == next_lf_;
  position_ = std::min(end + (ends_in_both ? 2 : 1), text_.size());
  return text_.substr(start, end - start);
}

}  // namespace plexoras
