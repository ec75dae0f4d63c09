#include "host/text_pieces.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <iterator>
#include <utility>

namespace plexoras {
namespace {

// A new piece is as large as all before it, from what suits a short text up to what the system takes back as soon as
// it is freed.
constexpr std::size_t smallest_piece = 1 << 12, largest_piece = 1 << 20;

}  // namespace

TextPieces::TextPieces(TextPieces&& other) noexcept
    : pieces_(std::exchange(other.pieces_, {})), size_(std::exchange(other.size_, 0)) {}

TextPieces& TextPieces::operator=(TextPieces&& other) noexcept {
  pieces_ = std::exchange(other.pieces_, {});
  size_ = std::exchange(other.size_, 0);
  return *this;
}

std::span<char> TextPieces::room(std::size_t count) {
  if (pieces_.empty() || pieces_.back().capacity - pieces_.back().size < count) {
    const std::size_t capacity = std::max(count, std::clamp(size_, smallest_piece, largest_piece));
    pieces_.push_back({std::make_unique_for_overwrite<char[]>(capacity), 0, capacity});
  }
  const Piece& last = pieces_.back();
  return {last.bytes.get() + last.size, last.capacity - last.size};
}

void TextPieces::extend(std::size_t count) {
  assert(count == 0 || (!pieces_.empty() && count <= pieces_.back().capacity - pieces_.back().size));
  if (count == 0) return;
  pieces_.back().size += count;
  size_ += count;
}

void TextPieces::append(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::span<char> free = room(1);
    const std::size_t count = std::min(bytes.size(), free.size());
    std::memcpy(free.data(), bytes.data(), count);
    extend(count);
    bytes.remove_prefix(count);
  }
}

void TextPieces::append(TextPieces&& other) {
  std::move(other.pieces_.begin(), other.pieces_.end(), std::back_inserter(pieces_));
  size_ += std::exchange(other.size_, 0);
  other.pieces_.clear();
}

void TextPieces::drain(const std::function<void(std::string_view)>& take) {
  size_ = 0;
  for (Piece& piece : std::exchange(pieces_, {})) {
    take({piece.bytes.get(), piece.size});
    piece.bytes.reset();
  }
}

std::string TextPieces::take_text() {
  std::string text;
  text.reserve(size_);
  drain([&](std::string_view piece) { text += piece; });
  return text;
}

}  // namespace plexoras
