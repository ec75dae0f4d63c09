#include "authoring/page_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "host/property_bag.h"
#include "host/utf8.h"
#include "template/dictionary.h"

namespace plexoras {
namespace {

bool stands_for_itself(char c) {
  return c >= 0x20 && c < 0x7F && c != '&' && c != '<' && c != '>' && c != '"' && c != '-';
}

void append_number(unsigned char byte, std::string& out) { out.append("&#").append(std::to_string(byte)).append(";"); }

void append_utf8(std::uint32_t code, std::string& out) {
  const auto put = [&](std::uint32_t byte) { out += static_cast<char>(byte); };
  if (code < 0x800) {
    put(0xC0 | (code >> 6));
  } else {
    if (code < 0x10000) {
      put(0xE0 | (code >> 12));
    } else {
      put(0xF0 | (code >> 18));
      put(0x80 | ((code >> 12) & 0x3F));
    }
    put(0x80 | ((code >> 6) & 0x3F));
  }
  put(0x80 | (code & 0x3F));
}

struct Entity {
  std::string_view name;
  char character;
};
constexpr Entity entities[] = {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

// Appends what the entity at the start of `text` stands for; how long it is, or 0 when it cannot be read.
std::size_t append_entity(std::string_view text, std::string& out) {
  for (const Entity& entity : entities) {
    if (!text.starts_with(entity.name)) continue;
    out += entity.character;
    return entity.name.size();
  }
  if (!text.starts_with("&#")) return 0;
  std::uint32_t code = 0;
  const char* const digits = text.data() + 2;
  const auto [end, error] = std::from_chars(digits, text.data() + text.size(), code);
  if (error != std::errc() || end == digits || end == text.data() + text.size() || *end != ';' || code > 0x10FFFF) {
    return 0;
  }
  if (code <= 0xFF) {
    out += static_cast<char>(code);
  } else {
    append_utf8(code, out);
  }
  return static_cast<std::size_t>(end - text.data()) + 1;
}

}  // namespace

std::string escape_state(std::string_view value, std::string_view line_break) {
  std::string out;
  out.reserve(value.size() + value.size() / 8);
  for (std::size_t at = 0; at < value.size();) {
    const std::size_t run = at;
    while (at < value.size() && stands_for_itself(value[at])) ++at;
    out.append(value, run, at - run);
    if (at == value.size()) break;

    const char c = value[at];
    const auto byte = static_cast<unsigned char>(c);
    if (const std::size_t length = utf8_length(value, at); length > 1) {
      out.append(value, at, length);
      at += length;
      continue;
    }
    if (c == '&') {
      out += "&amp;";
    } else if (c == '<') {
      out += "&lt;";
    } else if (c == '>') {
      out += "&gt;";
    } else if (c == '"') {
      out += "&quot;";
    } else if (byte < 0x20 || byte >= 0x7F || (c == '-' && at > 0 && value[at - 1] == '-')) {
      append_number(byte, out);
      if (c == '\n' && at + 1 < value.size()) out += line_break;
    } else {
      out += c;
    }
    ++at;
  }
  return out;
}

std::optional<std::string> unescape_state(std::string_view text, std::size_t* bad) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t special = text.find_first_of("&\r\n", at);
    out.append(text, at, special - at);
    if (special == std::string_view::npos) break;
    at = special + 1;
    if (text[special] != '&') continue;
    const std::size_t length = append_entity(text.substr(special), out);
    if (length == 0) {
      *bad = special;
      return std::nullopt;
    }
    at = special + length;
  }
  return out;
}

std::string_view line_break_of(std::string_view page) {
  const std::size_t first = page.find('\n');
  return first != std::string_view::npos && first > 0 && page[first - 1] == '\r' ? "\r\n" : "\n";
}

std::string with_line_breaks(std::string_view text, std::string_view line_break) {
  return replaced_all(text, "\r\n", line_break);
}

namespace {

struct ListingEscape {
  char character;
  char letter;
};
constexpr ListingEscape listing_escapes[] = {{'\\', '\\'}, {'\r', 'r'}, {'\n', 'n'}, {'\t', 't'}};

}  // namespace

std::string escape_listing(std::string_view value) {
  std::string out;
  for (const char c : value) {
    const ListingEscape* found = nullptr;
    for (const ListingEscape& escape : listing_escapes) {
      if (escape.character == c) found = &escape;
    }
    if (found != nullptr) {
      out.append({'\\', found->letter});
    } else {
      out += c;
    }
  }
  return out;
}

std::optional<std::string> unescape_listing(std::string_view text) {
  std::string out;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\\') {
      out += text[at];
      continue;
    }
    const ListingEscape* found = nullptr;
    for (const ListingEscape& escape : listing_escapes) {
      if (at + 1 < text.size() && escape.letter == text[at + 1]) found = &escape;
    }
    if (found == nullptr) return std::nullopt;
    out += found->character;
    ++at;
  }
  return out;
}

namespace {

// The character at `at`, which a terminal would obey: C0, DEL or C1, as U+0080 to U+009F or as a byte of its own.
std::size_t obeyed_length(std::string_view text, std::size_t at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (byte < 0x20 || byte == 0x7F) return 1;
  const std::size_t length = utf8_length(text, at);
  if (length == 0) return byte >= 0x80 && byte < 0xA0 ? 1 : 0;
  return length == 2 && byte == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0 ? 2 : 0;
}

}  // namespace

std::string printable(std::string_view text) {
  std::string shown;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t obeyed = obeyed_length(text, at);
    const std::size_t length = std::max<std::size_t>({obeyed, utf8_length(text, at), 1});
    const std::string_view character = text.substr(at, length);
    const std::string escape = escape_listing(character);
    if (obeyed == 0) {
      shown += character;
    } else if (escape != character) {
      shown += escape;
    } else {
      for (const char& c : character) shown += "\\x" + to_hex({&c, 1});
    }
    at += length;
  }
  return shown;
}

void PlaceFinder::advance() {
  line_start_ = next_line_start_;
  ++line_;
  const std::optional<std::string_view> line = lines_.next();
  const std::size_t end = line ? static_cast<std::size_t>(line->data() - text_.data()) + line->size() : text_.size();
  const std::string_view rest = text_.substr(end);
  // A text that ends in a line break has an empty line behind it.
  next_line_start_ = rest.empty() ? std::string_view::npos : end + (rest.starts_with("\r\n") ? 2 : 1);
}

TextPlace PlaceFinder::place(std::size_t offset) {
  if (offset < line_start_) *this = PlaceFinder(text_);
  while (offset >= next_line_start_) advance();
  return {line_, offset - line_start_ + 1};
}

}  // namespace plexoras
