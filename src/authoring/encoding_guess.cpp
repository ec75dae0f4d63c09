#include "authoring/encoding_guess.h"

#include <unicode/ucsdet.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>

#include "authoring/text_encoding.h"
#include "host/automation.h"

namespace plexoras {
namespace {

struct Mark {
  std::string_view bytes;
  const char* encoding;
};
// The longer ones first: UTF-32LE begins as UTF-16LE does.
constexpr Mark marks[] = {
    {{"\xFF\xFE\0\0", 4}, "UTF-32LE"}, {{"\0\0\xFE\xFF", 4}, "UTF-32BE"}, {"\xEF\xBB\xBF", "UTF-8"},
    {"\xFF\xFE", "UTF-16LE"},          {"\xFE\xFF", "UTF-16BE"},
};

bool is_ascii(char c) { return static_cast<unsigned char>(c) < 0x80; }

bool decodes_as(std::string_view encoding, std::string_view sample, bool is_whole) {
  try {
    TextDecoder decoder(encoding);
    decoder.decode(sample);
    if (is_whole) decoder.finish();
    return true;
  } catch (const AutomationError&) {
    return false;
  }
}

// UTF-16 without a mark: of ASCII characters, of which delimited text has many, one byte in two is zero.
std::optional<EncodingGuess> by_zero_bytes(std::string_view sample, bool is_whole) {
  const std::size_t units = sample.size() / 2;
  std::size_t zeros[2] = {};
  for (std::size_t i = 0; i < 2 * units; ++i) zeros[i % 2] += sample[i] == '\0' ? 1U : 0U;
  struct {
    const char* encoding;
    std::size_t high, low;
    const char* place;
  } const orders[] = {{"UTF-16LE", zeros[1], zeros[0], "second"}, {"UTF-16BE", zeros[0], zeros[1], "first"}};
  for (const auto& order : orders) {
    const bool is_pattern = order.high > 0 && order.high >= units / 8 && order.low <= order.high / 16;
    if (!is_pattern || !decodes_as(order.encoding, sample, is_whole)) continue;
    return EncodingGuess{order.encoding, false,
                         std::to_string(order.high) + " of " + std::to_string(units) + " pairs of bytes have a zero " +
                             order.place + " byte"};
  }
  return std::nullopt;
}

// The lines with bytes above 127, up to 4 KiB: they alone tell encodings apart, and the detector is slow.
std::string telling_lines(std::string_view sample) {
  constexpr std::size_t enough = 4096;
  std::string lines;
  while (lines.size() < enough) {
    const auto telling = std::find_if_not(sample.begin(), sample.end(), is_ascii);
    if (telling == sample.end()) break;
    const auto place = static_cast<std::size_t>(telling - sample.begin());
    const std::size_t line_start = sample.substr(0, place).find_last_of("\r\n") + 1;  // "none" plus 1 is 0
    const std::size_t start = std::max(line_start, place - std::min(place, enough / 8));
    const std::size_t end = std::min({sample.find_first_of("\r\n", place), sample.size(), place + enough / 2});
    lines.append(sample, start, end - start).append("\n");
    sample.remove_prefix(end);
  }
  return lines;
}

// The most likely encoding for ICU's detector in which the sample means something.
std::optional<EncodingGuess> by_detector(std::string_view sample, bool is_whole) {
  constexpr std::int32_t least_confidence = 35;  // of 100; what it finds in a few words is below, and often wrong
  const std::string telling = telling_lines(sample);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UCharsetDetector, decltype(&ucsdet_close)> detector(ucsdet_open(&status), &ucsdet_close);
  ucsdet_setText(detector.get(), telling.data(), static_cast<std::int32_t>(telling.size()), &status);
  std::int32_t count = 0;
  const UCharsetMatch** const matches = ucsdet_detectAll(detector.get(), &count, &status);
  if (U_FAILURE(status)) return std::nullopt;
  for (std::int32_t i = 0; i < count; ++i) {
    const std::int32_t confidence = ucsdet_getConfidence(matches[i], &status);
    if (confidence < least_confidence) break;
    std::string encoding = ucsdet_getName(matches[i], &status);
    // What is called ISO-8859-1 is mostly windows-1252, which has more characters.
    if (encoding == "ISO-8859-1") encoding = "windows-1252";
    if (!decodes_as(encoding, sample, is_whole)) continue;
    return EncodingGuess{
        encoding, false,
        "the bytes are not UTF-8, and look like " + encoding + " (" + std::to_string(confidence) + " % sure)"};
  }
  return std::nullopt;
}

}  // namespace

EncodingGuess guess_encoding(std::string_view sample, bool is_whole) {
  for (const Mark& mark : marks) {
    if (!sample.starts_with(mark.bytes)) continue;
    return {mark.encoding, false, std::string("the text begins with the byte-order mark of ") + mark.encoding};
  }
  if (auto guess = by_zero_bytes(sample, is_whole)) return *guess;
  if (std::all_of(sample.begin(), sample.end(), is_ascii)) return {"UTF-8", true, "all bytes are ASCII"};
  if (decodes_as("UTF-8", sample, is_whole)) return {"UTF-8", true, "the bytes are valid UTF-8"};
  if (auto guess = by_detector(sample, is_whole)) return *guess;
  return {"windows-1252", false, "the bytes are not UTF-8, and too few of them tell other encodings apart"};
}

}  // namespace plexoras
