#include "authoring/page_text.h"

#include <gtest/gtest.h>

#include <random>

namespace plexoras {
namespace {

std::string unescaped(std::string_view text) {
  std::size_t bad = 0;
  const std::optional<std::string> value = unescape_state(text, &bad);
  return value ? *value : "bad at " + std::to_string(bad);
}

TEST(PageText, EscapesAsLittleAsItMay) {
  struct Case {
    const char* name;
    std::string_view value, escaped;
  };
  const Case cases[] = {
      {"plain text", "It's 5 % of #1 = $(X) \\", "It's 5 % of #1 = $(X) \\"},
      {"markup", "<a b=\"c\">&amp;", "&lt;a b=&quot;c&quot;&gt;&amp;amp;"},
      {"every second hyphen", "a-b--c---", "a-b-&#45;c-&#45;&#45;"},
      {"line ends, but not behind the last", "a\r\nb\n\n", "a&#13;&#10;|b&#10;|&#10;"},
      {"control characters", std::string_view("\0\x1F\x7F\t", 4), "&#0;&#31;&#127;&#9;"},
      {"UTF-8", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"what is no UTF-8", "\xE9|\xC0\x80|\xED\xA0\x80|\xE2\x82",
       "&#233;|&#192;&#128;|&#237;&#160;&#128;|&#226;&#130;"},
      {"beyond the last character", "\xF4\x90\x80\x80", "&#244;&#144;&#128;&#128;"},
      {"overlong", "\xE0\x80\x80\xF0\x80\x80\x80", "&#224;&#128;&#128;&#240;&#128;&#128;&#128;"},
      {"nothing", "", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(escape_state(c.value, "|"), c.escaped) << c.name;
}

TEST(PageText, ReadsWhatOthersMayWrite) {
  struct Case {
    std::string_view text, value;
  };
  const Case cases[] = {
      {"a\r\n b\n", "a b"},
      {"&apos;&#39;", "''"},
      {"&#233;&#8364;", "\xE9\xE2\x82\xAC"},
      {"&#256;", "\xC4\x80"},
      {"&#1114111;", "\xF4\x8F\xBF\xBF"},
      {"a & b", "bad at 2"},
      {"&nbsp;", "bad at 0"},
      {"x&#;", "bad at 1"},
      {"&#12", "bad at 0"},
      {"&#1114112;", "bad at 0"},
      {"&#-1;", "bad at 0"},
      {"&#99999999999;", "bad at 0"},
      {"&amp", "bad at 0"},
  };
  for (const Case& c : cases) EXPECT_EQ(unescaped(c.text), c.value) << c.text;
}

TEST(PageText, BringsAnyBytesBack) {
  std::mt19937 random(1);
  constexpr std::string_view likely = "--->&<\"'\r\n\t #;0\\";
  std::string every_byte;
  for (int byte = 0; byte < 256; ++byte) every_byte += static_cast<char>(byte);
  for (int round = 0; round < 500; ++round) {
    std::string value = round == 0 ? every_byte : "";
    for (std::size_t length = random() % 60; length > 0; --length) {
      value += random() % 2 == 0 ? likely[random() % likely.size()] : static_cast<char>(random() % 256);
    }
    const std::string escaped = escape_state(value, "\r\n");
    ASSERT_EQ(unescaped(escaped), value);
    ASSERT_EQ(escaped.find("--"), std::string::npos) << escaped;
    ASSERT_EQ(escaped.find_first_of("<>\""), std::string::npos) << escaped;
    for (const char c : escaped) ASSERT_TRUE(c == '\r' || c == '\n' || (c & 0xE0) != 0) << escaped;

    const std::string listed = escape_listing(value);
    ASSERT_EQ(unescape_listing(listed), value);
    ASSERT_EQ(listed.find_first_of("\r\n\t"), std::string::npos);
  }
  EXPECT_EQ(unescape_listing("\\x"), std::nullopt);
  EXPECT_EQ(unescape_listing("a\\"), std::nullopt);
}

TEST(PlaceFinder, CountsLinesOfEveryKind) {
  PlaceFinder places("ab\r\nc\rd\n\ne");
  struct Case {
    std::size_t offset, line, column;
  };
  const Case cases[] = {{0, 1, 1}, {1, 1, 2}, {4, 2, 1}, {6, 3, 1}, {8, 4, 1}, {9, 5, 1}, {10, 5, 2}, {5, 2, 2}};
  for (const Case& c : cases) {
    const TextPlace place = places.place(c.offset);
    EXPECT_EQ(std::to_string(place.line) + ":" + std::to_string(place.column),
              std::to_string(c.line) + ":" + std::to_string(c.column))
        << c.offset;
  }
}

}  // namespace
}  // namespace plexoras
