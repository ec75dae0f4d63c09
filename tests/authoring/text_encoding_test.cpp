#include "authoring/text_encoding.h"

#include <gtest/gtest.h>

#include <string>

#include "host/automation.h"

namespace plexoras {
namespace {

using namespace std::string_literals;

// The whole text, given in pieces of `size` bytes.
std::string decoded(std::string_view encoding, std::string_view bytes, std::size_t size) {
  TextDecoder decoder(encoding);
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += size) text += decoder.decode(bytes.substr(at, size));
  return text += decoder.finish();
}

// The error's description, or the text in "<>" when there is none.
std::string refusal(std::string_view encoding, std::string_view bytes, std::size_t size = 1) {
  try {
    return "<" + decoded(encoding, bytes, size) + ">";
  } catch (const AutomationError& error) {
    EXPECT_EQ(error.number(), RunTimeError::InvalidCall);
    return error.description();
  }
}

const std::string all_widths = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x99\x82z";  // 1 to 4 bytes a character

TEST(TextDecoder, DecodesHoweverTheTextIsCut) {
  const std::string little = "a\0\xE4\0\xAC\x20\x3D\xD8\x42\xDEz\0"s;
  const std::string big = "\0a\0\xE4\x20\xAC\xD8\x3D\xDE\x42\0z"s;
  const std::string long_ascii(100, 'x');
  struct Case {
    const char* name;
    const char* encoding;
    std::string bytes, text;
  };
  const Case cases[] = {
      {"UTF-8", "UTF-8", all_widths, all_widths},
      {"UTF-8 by another name", "utf8", all_widths, all_widths},
      {"UTF-8 after much ASCII", "UTF-8", long_ascii + all_widths + long_ascii, long_ascii + all_widths + long_ascii},
      {"a mark is dropped", "UTF-8", "\xEF\xBB\xBF" + all_widths, all_widths},
      {"once", "UTF-8", "\xEF\xBB\xBF\xEF\xBB\xBFx", "\xEF\xBB\xBFx"},
      {"and nowhere else", "UTF-8", "x\xEF\xBB\xBF", "x\xEF\xBB\xBF"},
      {"UTF-16LE", "UTF-16LE", little, all_widths},
      {"UTF-16LE with its mark", "UTF-16LE", "\xFF\xFE" + little, all_widths},
      {"UTF-16BE with its mark", "UTF-16BE", "\xFE\xFF" + big, all_widths},
      {"UTF-16, little-endian", "UTF-16", "\xFF\xFE" + little, all_widths},
      {"UTF-16, big-endian", "UTF-16", "\xFE\xFF" + big, all_widths},
      {"UTF-16 without a mark", "UTF-16", big, all_widths},
      {"a second mark is text", "UTF-16", "\xFE\xFF\xFE\xFF\0x"s, "\xEF\xBB\xBFx"},
      {"UTF-32", "UTF-32", "\xFF\xFE\0\0\xAC\x20\0\0"s, "\xE2\x82\xAC"},
      {"windows-1252", "Windows-1252", "\x80 \xE4 \x81", "\xE2\x82\xAC \xC3\xA4 \xC2\x81"},
      {"ISO-8859-15", "latin-9", "\xA4", "\xE2\x82\xAC"},
      {"Shift_JIS", "Shift_JIS", "\x93\x8C\x8B\x9E,13", "\xE6\x9D\xB1\xE4\xBA\xAC,13"},
      {"shifts", "ISO-2022-JP", "a\x1B$BEl\x1B(Bb",
       "a\xE6\x9D\xB1"
       "b"},
      {"GB18030 with its mark", "GB18030", "\x84\x31\x95\x33x", "x"},
      {"no text", "UTF-16", "", ""},
  };
  for (const Case& c : cases) {
    for (const std::size_t size : {1U, 2U, 3U, 5U, 1000U}) {
      EXPECT_EQ(decoded(c.encoding, c.bytes, size), c.text) << c.name << ", pieces of " << size;
    }
  }
}

TEST(TextDecoder, DecodesMoreThanItsBuffers) {
  std::string wide, text;
  for (int i = 0; i < 30000; ++i) {
    wide += "a\0\x3D\xD8\x42\xDE"s;
    text += "a\xF0\x9F\x99\x82";
  }
  for (const std::size_t size : {997U, 1U << 20}) {
    EXPECT_EQ(decoded("UTF-16LE", wide, static_cast<std::size_t>(size)), text);
    EXPECT_EQ(decoded("UTF-8", text, static_cast<std::size_t>(size)), text);
  }
}

TEST(TextDecoder, NamesTheBytesThatMeanNothing) {
  struct Case {
    const char* name;
    const char* encoding;
    std::string bytes, refusal;
  };
  const auto at = [](const char* byte, int offset, const char* encoding) {
    return std::string("Byte ") + byte + " at offset " + std::to_string(offset) + " means nothing in " + encoding +
           "; name the encoding that the text is in";
  };
  const auto cut = [](int offset, const char* encoding) {
    return "The text ends in the middle of a character, which begins at offset " + std::to_string(offset) + " (" +
           encoding + ")";
  };
  const Case cases[] = {
      {"Latin-1 as UTF-8", "UTF-8", "Z\xFCrich", at("0xFC", 1, "UTF-8")},
      {"a lead byte alone", "UTF-8", "ab\xC3;", at("0xC3", 2, "UTF-8")},
      {"a follower alone", "UTF-8", "\xE2\x82\xAC\x82", at("0x82", 3, "UTF-8")},
      {"longer than need be", "UTF-8", "\xC0\x80", at("0xC0", 0, "UTF-8")},
      {"longer than need be, three bytes", "UTF-8", "\xE0\x9F\xBF", at("0xE0", 0, "UTF-8")},
      {"a surrogate", "UTF-8", "\xED\xA0\x80", at("0xED", 0, "UTF-8")},
      {"above the last character", "UTF-8", "\xF4\x90\x80\x80", at("0xF4", 0, "UTF-8")},
      {"after a mark", "UTF-8", "\xEF\xBB\xBF\xFF", at("0xFF", 3, "UTF-8")},
      {"cut off", "UTF-8", "ab\xF0\x9F\x99", cut(2, "UTF-8")},
      {"half a pair", "UTF-16LE", "a\0\x3D\xD8z\0"s, at("0x3D", 2, "UTF-16LE")},
      {"half a pair at the end", "UTF-16LE", "a\0\x3D\xD8"s, cut(2, "UTF-16LE")},
      {"half a unit", "UTF-16", "\xFE\xFF\0aX"s, cut(4, "UTF-16")},
      {"no such character", "UTF-32LE", "a\0\0\0\0\0\x11\0"s, at("0x00", 4, "UTF-32LE")},
      {"8 bits", "US-ASCII", "abc\xE4", at("0xE4", 3, "US-ASCII")},
      {"no such pair", "Shift_JIS", "ab\x81\x20", at("0x81", 2, "Shift_JIS")},
      {"unknown name", "UTF-88", "", "There is no encoding \"UTF-88\"; did you mean \"UTF-8\"?"},
      {"swapped letters", "windwos-1252", "", "There is no encoding \"windwos-1252\"; did you mean \"windows-1252\"?"},
      {"nothing near", "../x", "",
       "There is no encoding \"../x\"; common ones are UTF-8, UTF-16, windows-1252 and ISO-8859-15"},
      {"no name", "", "", "There is no encoding \"\"; common ones are UTF-8, UTF-16, windows-1252 and ISO-8859-15"},
  };
  for (const Case& c : cases) {
    for (const std::size_t size : {1U, 2U, 1000U}) {
      EXPECT_EQ(refusal(c.encoding, c.bytes, size), c.refusal) << c.name << ", pieces of " << size;
    }
  }
}

}  // namespace
}  // namespace plexoras
