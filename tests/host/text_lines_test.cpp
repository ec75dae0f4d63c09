#include "host/text_lines.h"

#include <gtest/gtest.h>

#include <string>

namespace plexoras {
namespace {

std::string bracketed(std::string_view text) {
  std::string result;
  TextLines lines(text);
  while (!lines.at_end()) result += "[" + std::string(lines.next().value()) + "]";
  EXPECT_FALSE(lines.next().has_value());
  return result;
}

TEST(TextLines, EndAtCrLfAndBoth) {
  struct Case {
    std::string_view text, lines;
  };
  const Case cases[] = {
      {"", ""},           {"a", "[a]"},
      {"a\n", "[a]"},     {"a\r\nb\r\n", "[a][b]"},
      {"\n", "[]"},       {"a\rb\nc\r\nd", "[a][b][c][d]"},
      {"\r\r\n", "[][]"}, {"\n\r\n\r", "[][][]"},
      {"\r\n", "[]"},     {{"a\0b\rc", 5}, {"[a\0b][c]", 8}},
  };
  for (const Case& c : cases) EXPECT_EQ(bracketed(c.text), c.lines) << c.lines;
}

}  // namespace
}  // namespace plexoras
