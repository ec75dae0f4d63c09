#include "authoring/encoding_guess.h"

#include <unicode/ucsdet.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "authoring/text_encoding.h"
#include "host/automation.h"

namespace plexoras {
namespace {

using namespace std::string_view_literals;

// The longer ones first: UTF-32LE begins as UTF-16LE does.
constexpr ByteOrderMark marks[] = {
    {"\xFF\xFE\0\0"sv, "UTF-32LE"}, {"\0\0\xFE\xFF"sv, "UTF-32BE"}, {"\xEF\xBB\xBF"sv, "UTF-8"},
    {"\xFF\xFE"sv, "UTF-16LE"},     {"\xFE\xFF"sv, "UTF-16BE"},
};

// What people take for delimited text, as it looks like it in a spreadsheet program.
struct Signature {
  std::string_view bytes;
  const char* kind;
};
constexpr Signature signatures[] = {
    {"PK\x03\x04"sv, "a spreadsheet or another ZIP archive"},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "a spreadsheet or another binary office document"},
    {"%PDF-"sv, "a PDF document"},
    {"\x1F\x8B"sv, "a gzip archive"},
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

// Whether the sample means something in `encoding`, and not control characters above ASCII, which nobody writes.
bool reads_as(std::string_view encoding, std::string_view sample, bool is_whole) {
  try {
    TextDecoder decoder(encoding);
    const std::string_view text = decoder.decode(sample);
    for (std::size_t at = 0; (at = text.find('\xC2', at)) != std::string_view::npos; ++at) {
      if (static_cast<unsigned char>(text[at + 1]) < 0xA0) return false;
    }
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

// Whether most letters lie outside ASCII: in the languages of the Latin script few do.
bool is_mostly_other_letters(std::string_view text) {
  std::size_t others = 0;
  std::size_t latin = 0;
  for (const char c : text) {
    others += is_ascii(c) ? 0U : 1U;
    latin += (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ? 1U : 0U;
  }
  return others > latin;
}

struct Candidate {
  std::string encoding;
  std::int32_t confidence;  // of 100
};

// The encodings in which the sample means something, as ICU's detector ranks them.
std::vector<Candidate> detected(std::string_view sample, bool is_whole) {
  constexpr std::int32_t least_confidence = 35;  // what is found in a few words is below, and often wrong
  constexpr std::string_view latin[] = {"windows-1252", "windows-1250", "windows-1254",
                                        "ISO-8859-2",   "ISO-8859-9",   "ISO-8859-15"};
  const std::string telling = telling_lines(sample);
  const bool is_latin = !is_mostly_other_letters(telling);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UCharsetDetector, decltype(&ucsdet_close)> detector(ucsdet_open(&status), &ucsdet_close);
  ucsdet_setText(detector.get(), telling.data(), static_cast<std::int32_t>(telling.size()), &status);
  std::int32_t count = 0;
  const UCharsetMatch** const matches = ucsdet_detectAll(detector.get(), &count, &status);
  std::vector<Candidate> candidates;
  for (std::int32_t i = 0; U_SUCCESS(status) && i < count; ++i) {
    Candidate candidate{ucsdet_getName(matches[i], &status), ucsdet_getConfidence(matches[i], &status)};
    std::string& encoding = candidate.encoding;
    if (is_latin && candidate.confidence < least_confidence) break;
    // What is called ISO-8859-1 is mostly windows-1252, which has more characters.
    if (encoding == "ISO-8859-1") encoding = "windows-1252";
    if (!is_latin && std::find(std::begin(latin), std::end(latin), encoding) != std::end(latin)) continue;
    // A text with ASCII digits and line ends is in no encoding of mainframes.
    if (encoding.starts_with("IBM42") || !reads_as(encoding, sample, is_whole)) continue;
    const bool is_known = std::any_of(candidates.begin(), candidates.end(),
                                      [&](const Candidate& other) { return other.encoding == encoding; });
    if (!is_known) candidates.push_back(std::move(candidate));
  }
  return candidates;
}

}  // namespace

const ByteOrderMark* mark_of(std::string_view text) {
  const auto found =
      std::find_if(std::begin(marks), std::end(marks), [&](const auto& mark) { return text.starts_with(mark.bytes); });
  return found == std::end(marks) ? nullptr : found;
}

std::string why_no_text(std::string_view bytes, std::string_view allowed) {
  for (const Signature& signature : signatures) {
    if (bytes.starts_with(signature.bytes)) return std::string("it begins as ") + signature.kind + " does";
  }
  const auto is_no_text = [&](char c) {
    const bool is_control = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
    return is_control && "\t\n\r\f"sv.find(c) == std::string_view::npos && allowed.find(c) == std::string_view::npos;
  };
  const auto found = std::find_if(bytes.begin(), bytes.end(), is_no_text);
  if (found == bytes.end()) return {};
  constexpr std::string_view digits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(*found);
  return std::string("it holds the control character 0x") + digits[byte >> 4U] + digits[byte & 15U] + " at offset " +
         std::to_string(found - bytes.begin());
}

EncodingGuess guess_encoding(std::string_view sample, bool is_whole) {
  if (const ByteOrderMark* const mark = mark_of(sample)) {
    return {mark->encoding, false, std::string("the text begins with the byte-order mark of ") + mark->encoding};
  }
  if (auto guess = by_zero_bytes(sample, is_whole)) return *guess;
  if (std::all_of(sample.begin(), sample.end(), is_ascii)) return {"UTF-8", true, "all bytes are ASCII"};
  if (decodes_as("UTF-8", sample, is_whole)) return {"UTF-8", true, "the bytes are valid UTF-8"};
  if (const std::vector<Candidate> found = detected(sample, is_whole); !found.empty()) {
    const Candidate& best = found.front();
    return {best.encoding, false,
            "the bytes are not UTF-8, and may be " + best.encoding + " (" + std::to_string(best.confidence) +
                " % sure)" + (found.size() > 1 ? " or else " + found[1].encoding : "")};
  }
  const bool is_windows = reads_as("windows-1252", sample, is_whole);
  return {is_windows ? "windows-1252" : "IBM850", false,
          std::string("the bytes are not UTF-8, and too few of them tell other encodings apart; this is a common one") +
              (is_windows ? "" : " where windows-1252 means nothing")};
}

}  // namespace plexoras
