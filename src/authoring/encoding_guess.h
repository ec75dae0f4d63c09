#pragma once

#include <string>
#include <string_view>

namespace plexoras {

/// The encoding that a text is probably in, and why.
struct EncodingGuess {
  std::string encoding;  ///< a name for `TextDecoder`
  bool is_plain_utf8;    ///< the bytes are UTF-8 already and begin with no mark
  std::string reason;    ///< "the text begins with the byte-order mark of UTF-16LE"
};

/// Looks at the beginning of a text, or all of it if `is_whole`. In this order: a byte-order mark; zero bytes at every
/// other place (UTF-16); valid UTF-8; what ICU's detector finds likely; windows-1252, in which every byte means
/// something.
EncodingGuess guess_encoding(std::string_view sample, bool is_whole);

}  // namespace plexoras
