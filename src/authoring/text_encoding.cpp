#include "authoring/text_encoding.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "authoring/suggestion.h"

namespace plexoras {

// The work of one encoding. `is_last` says that no more bytes follow.
struct TextDecoder::Converter {
  struct Utf8;
  struct Icu;

  explicit Converter(std::string_view encoding) : name(encoding) {}
  virtual ~Converter() = default;
  virtual std::string_view decode(std::string_view bytes, bool is_last) = 0;

  std::string name;          // as it was given
  std::size_t consumed = 0;  // bytes of the text before those at hand
};

namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

struct CloseConverter {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using IcuConverter = std::unique_ptr<UConverter, CloseConverter>;

[[noreturn]] void fail_at(std::size_t offset, unsigned char byte, std::string_view encoding) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  throw EncodingError(offset, std::string("Byte 0x") + digits[byte >> 4] + digits[byte & 15U] + " at offset " +
                                  std::to_string(offset) + " means nothing in " + std::string(encoding) +
                                  "; name the encoding that the text is in");
}

[[noreturn]] void fail_cut(std::size_t offset, std::string_view encoding) {
  throw EncodingError(offset, "The text ends in the middle of a character, which begins at offset " +
                                  std::to_string(offset) + " (" + std::string(encoding) + ")");
}

IcuConverter open_converter(const std::string& encoding) {
  // The encodings that delimited text comes in; names for a suggestion, not all that can be used.
  static const std::array<std::string, 29> common = {
      "UTF-8",        "UTF-16",       "UTF-16LE",     "UTF-16BE",     "UTF-32",       "UTF-32LE",
      "UTF-32BE",     "US-ASCII",     "windows-1250", "windows-1251", "windows-1252", "windows-1253",
      "windows-1254", "windows-1255", "windows-1256", "windows-1257", "ISO-8859-1",   "ISO-8859-2",
      "ISO-8859-7",   "ISO-8859-9",   "ISO-8859-15",  "macintosh",    "KOI8-R",       "Shift_JIS",
      "EUC-JP",       "GB18030",      "GBK",          "Big5",         "EUC-KR"};
  UErrorCode status = U_ZERO_ERROR;
  // Names with options, or of files beside ICU's own, have no aliases.
  const bool known = encoding.find('\0') == std::string::npos && ucnv_countAliases(encoding.c_str(), &status) > 0;
  IcuConverter converter(known ? ucnv_open(encoding.c_str(), &status) : nullptr);
  if (converter == nullptr || U_FAILURE(status)) {
    const std::string suggestion = did_you_mean(encoding, common);
    throw AutomationError(
        RunTimeError::InvalidCall,
        "There is no encoding \"" + encoding + "\"" +
            (suggestion.empty() ? "; common ones are UTF-8, UTF-16, windows-1252 and ISO-8859-15" : suggestion),
        "text encoding");
  }
  ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  return converter;
}

// What a lead byte asks of the bytes behind it: how many there are, and the range of the first of them.
struct Utf8Lead {
  std::size_t following;
  unsigned char least, most;
};

Utf8Lead utf8_lead(unsigned char byte) {
  if (byte >= 0xC2 && byte <= 0xDF) return {1, 0x80, 0xBF};
  if (byte == 0xE0) return {2, 0xA0, 0xBF};
  if (byte == 0xED) return {2, 0x80, 0x9F};  // no surrogates
  if (byte >= 0xE1 && byte <= 0xEF) return {2, 0x80, 0xBF};
  if (byte == 0xF0) return {3, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return {3, 0x80, 0xBF};
  if (byte == 0xF4) return {3, 0x80, 0x8F};  // nothing above U+10FFFF
  return {0, 0, 0};
}

// How far the bytes from `from` on are ASCII, found out for many at a time.
std::size_t end_of_ascii(std::string_view bytes, std::size_t from) {
  constexpr std::uint64_t high_bits = 0x8080808080808080ULL;
  std::array<std::uint64_t, 4> words = {};
  for (; bytes.size() - from >= sizeof words; from += sizeof words) {
    std::memcpy(words.data(), bytes.data() + from, sizeof words);
    if (((words[0] | words[1] | words[2] | words[3]) & high_bits) != 0) break;
  }
  while (from < bytes.size() && static_cast<unsigned char>(bytes[from]) < 0x80) ++from;
  return from;
}

struct Utf8Extent {
  std::size_t whole;  // bytes that are whole characters
  bool is_cut;        // what follows them can be the beginning of another
};

Utf8Extent utf8_extent(std::string_view bytes) {
  std::size_t position = 0;
  while ((position = end_of_ascii(bytes, position)) < bytes.size()) {
    // Characters of several bytes mostly stand together.
    while (position < bytes.size() && static_cast<unsigned char>(bytes[position]) >= 0x80) {
      Utf8Lead lead = utf8_lead(static_cast<unsigned char>(bytes[position]));
      if (lead.following == 0) return {position, false};
      for (std::size_t i = 1; i <= lead.following; ++i) {
        if (position + i == bytes.size()) return {position, true};
        const auto byte = static_cast<unsigned char>(bytes[position + i]);
        if (byte < lead.least || byte > lead.most) return {position, false};
        lead.least = 0x80;
        lead.most = 0xBF;
      }
      position += 1 + lead.following;
    }
  }
  return {position, false};
}

// Writes UTF-8 for UTF-16 that may be cut in the middle of a pair.
class Utf8Writer {
public:
  // False where half a pair stands alone.
  bool append(std::string& out, std::span<const UChar> units) {
    // Three bytes a unit at most, but four for the second half of a pair.
    constexpr std::size_t most = 1024;
    std::array<char, 3U * most + 1U> buffer = {};
    while (!units.empty()) {
      const std::span<const UChar> part = units.first(std::min(units.size(), most));
      char* const end = encode(buffer.data(), part);
      if (end == nullptr) return false;
      out.append(buffer.data(), end);
      units = units.subspan(part.size());
    }
    return true;
  }
  bool is_within_pair() const { return lead_ != 0; }

private:
  // Null for half a pair.
  char* encode(char* out, std::span<const UChar> units) {
    const auto put = [&out](std::uint32_t byte) { *out++ = static_cast<char>(byte); };
    for (const UChar unit : units) {
      if (lead_ != 0) {
        if (!U16_IS_TRAIL(unit)) return nullptr;
        const auto point = static_cast<std::uint32_t>(U16_GET_SUPPLEMENTARY(lead_, unit));
        put(0xF0 | point >> 18), put(0x80 | (point >> 12 & 0x3F));
        put(0x80 | (point >> 6 & 0x3F)), put(0x80 | (point & 0x3F));
        lead_ = 0;
      } else if (unit < 0x80) {
        put(unit);
      } else if (unit < 0x800) {
        put(0xC0U | unit >> 6U), put(0x80U | (unit & 0x3FU));
      } else if (!U16_IS_SURROGATE(unit)) {
        put(0xE0U | unit >> 12U), put(0x80U | (unit >> 6U & 0x3FU)), put(0x80U | (unit & 0x3FU));
      } else if (U16_IS_SURROGATE_LEAD(unit)) {
        lead_ = unit;
      } else {
        return nullptr;
      }
    }
    return out;
  }

  UChar lead_ = 0;  // the first half of a pair whose second is still to come
};

}  // namespace

// Text that needs no change is checked and given back as it is.
struct TextDecoder::Converter::Utf8 final : Converter {
  using Converter::Converter;

  std::string_view decode(std::string_view bytes, bool is_last) override {
    if (!cut_.empty()) {
      joined_ = cut_;
      bytes = joined_ += bytes;
    }
    const Utf8Extent extent = utf8_extent(bytes);
    if (extent.whole < bytes.size()) {
      const std::size_t offset = consumed + extent.whole;
      if (!extent.is_cut) fail_at(offset, static_cast<unsigned char>(bytes[extent.whole]), name);
      if (is_last) fail_cut(offset, name);
    }
    cut_ = bytes.substr(extent.whole);
    std::string_view text = bytes.substr(0, extent.whole);
    if (consumed == 0 && text.starts_with(utf8_mark)) text.remove_prefix(utf8_mark.size());
    consumed += extent.whole;
    return text;
  }

private:
  std::string cut_;  // the beginning of a character whose rest is in the next piece
  std::string joined_;
};

struct TextDecoder::Converter::Icu final : Converter {
  Icu(std::string_view encoding, IcuConverter icu) : Converter(encoding), icu_(std::move(icu)) {
    // These two take the mark for themselves; a second one belongs to the text.
    const UConverterType type = ucnv_getType(icu_.get());
    may_begin_with_mark_ = type != UCNV_UTF16 && type != UCNV_UTF32;
  }

  std::string_view decode(std::string_view bytes, bool is_last) override {
    // ICU takes no more than 2 GiB at a time.
    constexpr std::size_t longest = std::size_t{1} << 30;
    text_.clear();
    while (bytes.size() > longest) {
      decode_part(bytes.substr(0, longest), false);
      bytes.remove_prefix(longest);
    }
    decode_part(bytes, is_last);
    return text_;
  }

private:
  void decode_part(std::string_view bytes, bool is_last) {
    const char* source = bytes.empty() ? "" : bytes.data();
    const char* const begin = source;
    const char* const end = begin + bytes.size();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
      status = U_ZERO_ERROR;
      UChar* target = units_.data();
      ucnv_toUnicode(icu_.get(), &target, units_.data() + units_.size(), &source, end, nullptr, is_last ? 1 : 0,
                     &status);
      take({units_.data(), target}, consumed + static_cast<std::size_t>(source - begin));
    }
    if (U_FAILURE(status)) refuse(status, bytes, static_cast<std::size_t>(source - begin));
    consumed += bytes.size();
    if (is_last && writer_.is_within_pair()) fail_cut(consumed, name);
    last_bytes_ = last_of(last_bytes_, bytes);
  }

  // The last bytes of the text, as many as a converter may hold back.
  static std::string last_of(const std::string& before, std::string_view bytes) {
    constexpr std::size_t most = 32;
    std::string last = before + std::string(bytes.substr(bytes.size() - std::min(bytes.size(), most)));
    return last.substr(last.size() - std::min(last.size(), most));
  }

  // Notes the characters that the bytes before `offset` stood for.
  void take(std::span<const UChar> units, std::size_t offset) {
    if (may_begin_with_mark_ && !units.empty()) {
      may_begin_with_mark_ = false;
      if (units.front() == 0xFEFF) units = units.subspan(1);
    }
    if (!writer_.append(text_, units)) {
      throw EncodingError(offset,
                          "Half a character stands before offset " + std::to_string(offset) + " (" + name + ")");
    }
  }

  // Names the bytes without meaning that ICU found when it had read `bytes` up to `read`.
  [[noreturn]] void refuse(UErrorCode reason, std::string_view bytes, std::size_t read) const {
    std::array<char, 64> buffer = {};
    auto count = static_cast<std::int8_t>(buffer.size());
    UErrorCode status = U_ZERO_ERROR;
    ucnv_getInvalidChars(icu_.get(), buffer.data(), &count, &status);
    const std::string_view bad(buffer.data(), U_SUCCESS(status) && count > 0 ? static_cast<std::size_t>(count) : 0);
    // They may begin in an earlier piece, and bytes behind them may have been read already, to be read again.
    const std::string last = last_of(last_bytes_, bytes.substr(0, read));
    const std::size_t behind = last.size() - std::min(last.rfind(bad), last.size());
    const std::size_t offset = consumed + read - behind;
    if (reason == U_TRUNCATED_CHAR_FOUND) fail_cut(offset, name);
    fail_at(offset, static_cast<unsigned char>(buffer[0]), name);
  }

  IcuConverter icu_;
  bool may_begin_with_mark_ = true;
  std::vector<UChar> units_ = std::vector<UChar>(8192);
  Utf8Writer writer_;
  std::string last_bytes_;
  std::string text_;
};

TextDecoder::TextDecoder(std::string_view encoding) {
  IcuConverter converter = open_converter(std::string(encoding));
  if (ucnv_getType(converter.get()) == UCNV_UTF8) {
    converter_ = std::make_unique<Converter::Utf8>(encoding);
  } else {
    converter_ = std::make_unique<Converter::Icu>(encoding, std::move(converter));
  }
}

TextDecoder::~TextDecoder() = default;

std::string_view TextDecoder::decode(std::string_view bytes) { return converter_->decode(bytes, false); }

std::string_view TextDecoder::finish() { return converter_->decode({}, true); }

}  // namespace plexoras
