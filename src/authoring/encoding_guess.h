#pragma once

#include <string>
#include <string_view>

namespace plexoras {

/// A byte-order mark, and the encoding of a text that begins with it.
struct ByteOrderMark {
  std::string_view bytes;
  const char* encoding;
};
/// The mark that `text` begins with, or null.
const ByteOrderMark* mark_of(std::string_view text);

/// What speaks against `bytes`, the first ones of a file, being text in an encoding of single bytes or in UTF-8: "it
/// begins as a PDF document does", "it holds the control character 0x01 at offset 7". Empty when nothing does. Control
/// characters in `allowed`, those of a delimiter say, are none.
std::string why_no_text(std::string_view bytes, std::string_view allowed = {});

/// The encoding that a text is probably in, and why.
struct EncodingGuess {
  std::string encoding;  ///< a name for `TextDecoder`
  bool is_plain_utf8;    ///< the bytes are UTF-8 already and begin with no mark
  std::string reason;    ///< "the text begins with the byte-order mark of UTF-16LE"
};

/// Looks at the beginning of a text, or all of it if `is_whole`. In this order: a byte-order mark; zero bytes at every
/// other place (UTF-16); valid UTF-8; what ICU's detector finds likely; windows-1252, or IBM850 for text in which that
/// would give control characters. What is mostly written in letters that ASCII lacks is in no encoding of the Latin
/// script.
EncodingGuess guess_encoding(std::string_view sample, bool is_whole);

}  // namespace plexoras
