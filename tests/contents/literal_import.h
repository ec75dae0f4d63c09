#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "contents/contents_document.h"
#include "contents/delimited_import.h"

namespace plexoras {

/// The import as its rules read, a line at a time and with positions that count from 1: what the fast one must equal.
class LiteralImport {
public:
  LiteralImport(std::string_view file, const DelimitedFormat& format) : file_(file), format_(format) {}

  /// The document, or "Line N" when line N lacks the field that is to be its label.
  std::string result() {
    try {
      return document();
    } catch (const std::out_of_range&) {
      return "Line " + std::to_string(line_number_);
    }
  }

private:
  using Fields = std::vector<std::string>;

  bool at_end() const { return position_ == file_.size(); }

  std::string read_line() {
    ++line_number_;
    std::string line;
    while (!at_end()) {
      const char c = file_[position_++];
      if (c == '\n') break;
      if (c == '\r') {
        if (!at_end() && file_[position_] == '\n') ++position_;
        break;
      }
      line += c;
    }
    return line;
  }

  // The position of `wanted` in `text` at or behind `from`, or 0.
  static std::size_t find(std::size_t from, std::string_view text, std::string_view wanted) {
    return from > text.size() ? 0 : text.find(wanted, from - 1) + 1;
  }
  static std::string between(std::string_view text, std::size_t first, std::size_t behind_last) {
    return std::string(text.substr(first - 1, behind_last - first));
  }

  // How many bytes the delimiter's first character has: by its lead byte, if as many continuations follow.
  std::size_t first_character() const {
    const std::string& text = format_.delimiter;
    const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0; };
    const std::size_t count = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : byte(0) >= 0xC2 ? 2 : 1;
    for (std::size_t i = 1; i < count; ++i) {
      if (byte(i) < 0x80 || byte(i) > 0xBF) return 1;
    }
    const int start = byte(0) << 8 | byte(1);  // overlong forms, surrogates and what lies beyond Unicode
    const bool bad = (start >= 0xE000 && start < 0xE0A0) || (start >= 0xEDA0 && start < 0xEE00) ||
                     (start >= 0xF000 && start < 0xF090) || start >= 0xF490;
    return bad ? 1 : count;
  }

  Fields split_line() {
    const std::string line = read_line();
    const std::size_t length = line.size();
    std::size_t p = 1;
    Fields fields;
    while (p <= length) {
      std::string field;
      if (!format_.qualifier.empty() && line.substr(p - 1, 1) == format_.qualifier) {
        const std::size_t q = find(p + 1, line, format_.qualifier);
        if (q != 0) {
          field = between(line, p + 1, q);
          const std::size_t d = find(q + 1, line, format_.delimiter);
          p = d != 0 ? d + first_character() : length + 1;
        } else {
          field = between(line, p + 1, length + 1);
          p = length + 1;
        }
      } else {
        const std::size_t d = find(p, line, format_.delimiter);
        field = between(line, p, d != 0 ? d : length + 1);
        p = d != 0 ? d + first_character() : length + 1;
      }
      fields.push_back(escape_contents(field));
    }
    return fields;
  }

  std::string document() {
    if (at_end()) return "<xml><cols/><rows/><data/></>";
    std::string rows, cols, data;
    const std::size_t first = format_.first_col ? 1 : 0;
    if (format_.first_row) {
      const Fields labels = split_line();
      for (std::size_t i = first; i < labels.size(); ++i) cols += "<col>" + labels[i] + "</>";
      if (format_.first_col) rows += labels.at(0);
    }
    while (!at_end()) {
      const Fields fields = split_line();
      if (at_end() && fields.empty()) break;
      rows += format_.first_col ? "<row>" + fields.at(0) + "</>" : "<row/>";
      for (std::size_t i = first; i < fields.size(); ++i) data += "<value>" + fields[i] + "</>";
    }
    return "<xml><rows>" + rows + "</><cols>" + cols + "</><data>" + data + "</></xml>";
  }

  std::string_view file_;
  std::size_t position_ = 0;
  std::size_t line_number_ = 0;
  const DelimitedFormat& format_;
};

}  // namespace plexoras
