#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/automation.h"

namespace plexoras {

/// Bytes that mean nothing in an encoding.
class EncodingError : public AutomationError {
public:
  EncodingError(std::size_t offset, std::string description)
      : AutomationError(RunTimeError::InvalidCall, std::move(description), "text encoding"), offset_(offset) {}

  /// Where they stand in the text, from 0.
  std::size_t offset() const { return offset_; }

private:
  std::size_t offset_;
};

/// Turns text of any encoding into UTF-8, from pieces of any size. Lives for one text.
///
///     TextDecoder decoder("UTF-16");
///     files.read_pieces(path, [&](std::string_view piece) { import.add(decoder.decode(piece)); });
///     import.add(decoder.finish());
class TextDecoder {
public:
  /// `encoding` is a name such as "UTF-8", "UTF-16LE" or "windows-1252", in any case and with or without the dashes.
  /// "UTF-16" and "UTF-32" take the byte order from the mark, and without one the big-endian order. Error 5 with a
  /// suggestion when no such encoding is known.
  explicit TextDecoder(std::string_view encoding);
  ~TextDecoder();
  TextDecoder(const TextDecoder&) = delete;
  TextDecoder& operator=(const TextDecoder&) = delete;

  /// What the next bytes mean, as UTF-8, as far as they make whole characters. It holds until the next call and as long
  /// as `bytes` do: text that is UTF-8 already is not copied. A byte-order mark at the start of the text is dropped.
  /// `EncodingError`, naming the offset and the encoding, for bytes that mean nothing in it; the decoder is of no more
  /// use then.
  std::string_view decode(std::string_view bytes);
  /// The rest, at the end of the text; errors as with `decode`, also for a character that is cut off.
  std::string_view finish();

private:
  struct Converter;
  std::unique_ptr<Converter> converter_;
};

}  // namespace plexoras
