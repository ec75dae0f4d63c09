#include "host/text_pieces.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

namespace plexoras {
namespace {

constexpr std::size_t long_size = 3'000'000;  // more than one piece

std::string long_text() {
  std::string text(long_size, '\0');
  for (std::size_t i = 0; i < long_size; ++i) text[i] = static_cast<char>('a' + i % 23);
  return text;
}

TEST(TextPieces, GivesBackWhatWasAppended) {
  TextPieces text;
  EXPECT_EQ(text.take_text(), "");
  text.append("<");
  text.append("");
  text.append(long_text());
  text.append(">");
  EXPECT_EQ(text.size(), long_size + 2);
  EXPECT_EQ(text.take_text(), "<" + long_text() + ">");
  EXPECT_EQ(text.size(), 0U);
  text.append("again");
  EXPECT_EQ(text.take_text(), "again");
}

TEST(TextPieces, JoinsAndMovesTexts) {
  TextPieces text, other;
  text.append("head ");
  other.append(long_text());
  text.append(std::move(other));
  text.append(" tail");
  TextPieces moved = std::move(text);
  EXPECT_EQ(moved.size(), long_size + 10);
  std::string drained;
  moved.drain([&](std::string_view piece) { drained += piece; });
  EXPECT_EQ(drained, "head " + long_text() + " tail");
}

TEST(TextPieces, TakesWhatWasWrittenIntoItsRoom) {
  TextPieces text;
  std::string expected;
  // Rooms smaller and larger than a piece, some of them left empty.
  for (const std::size_t size : {1U, 700'000U, 700'000U, 0U, 2'000'000U, 64U}) {
    const std::span<char> room = text.room(size + 64);
    ASSERT_GE(room.size(), size + 64);
    std::fill(room.begin(), room.end(), '#');
    std::fill_n(room.begin(), size, 'x');
    text.extend(size);
    expected.append(size, 'x');
    text.append("-");
    expected += '-';
  }
  EXPECT_EQ(text.size(), expected.size());
  EXPECT_EQ(text.take_text(), expected);
}

}  // namespace
}  // namespace plexoras
