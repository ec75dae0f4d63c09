#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace plexoras {

/// A long text under construction, held in pieces: growing it never copies what is there, and at its end it takes
/// about as much memory as the text has bytes.
///
///     TextPieces text;
///     text.append("<value>");
///     text.drain([&](std::string_view piece) { out << piece; });
class TextPieces {
public:
  TextPieces() = default;
  /// What was moved from is empty.
  TextPieces(TextPieces&& other) noexcept;
  TextPieces& operator=(TextPieces&& other) noexcept;

  void append(std::string_view bytes);
  /// Moves all of `other` behind this text.
  void append(TextPieces&& other);

  /// Room behind the text, `count` bytes or more, to be written directly and then taken into the text with `extend`.
  /// It is there until the text is changed in another way.
  std::span<char> room(std::size_t count);
  /// Takes the first `count` bytes of the room into the text.
  void extend(std::size_t count);

  std::size_t size() const { return size_; }

  /// Gives the pieces to `take` in order and lets go of each before the next; the text is empty afterwards.
  void drain(const std::function<void(std::string_view)>& take);
  /// The whole text in one; each piece is let go of as soon as it has been copied. The text here is empty afterwards.
  std::string take_text();

private:
  struct Piece {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
    std::size_t capacity = 0;
  };
  std::vector<Piece> pieces_;
  std::size_t size_ = 0;
};

}  // namespace plexoras
