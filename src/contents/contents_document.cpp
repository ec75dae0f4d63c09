#include "contents/contents_document.h"

#include <array>
#include <cassert>

namespace plexoras {
namespace {

// What is written for each byte; empty for a byte that stands for itself.
constexpr std::array<std::string_view, 256> written_forms = [] {
  std::array<std::string_view, 256> forms{};
  for (const ContentsEntity& entity : contents_entities) {
    forms[static_cast<unsigned char>(entity.character)] = entity.written;
  }
  return forms;
}();

void append_element(std::string& out, std::string_view start_tag, std::string_view text) {
  out += start_tag;
  append_escaped_contents(out, text);
  out += "</>";
}

}  // namespace

void append_escaped_contents(std::string& out, std::string_view text) {
  std::size_t plain_from = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string_view written = written_forms[static_cast<unsigned char>(text[i])];
    if (written.empty()) continue;
    out.append(text, plain_from, i - plain_from);
    out += written;
    plain_from = i + 1;
  }
  out.append(text, plain_from);
}

std::string escape_contents(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  append_escaped_contents(escaped, text);
  return escaped;
}

void ContentsWriter::set_corner(std::string_view text) { corner_ = escape_contents(text); }

void ContentsWriter::add_column(std::string_view label) { append_element(columns_, "<col>", label); }

void ContentsWriter::add_row() { rows_ += "<row/>"; }

void ContentsWriter::add_row(std::string_view label) { append_element(rows_, "<row>", label); }

void ContentsWriter::add_value(std::string_view value) {
  assert(!rows_.empty() && "a value belongs to a row");
  append_element(values_, "<value>", value);
}

std::string ContentsWriter::text() const {
  constexpr std::string_view before_rows = "<xml><rows>", before_columns = "</><cols>", before_values = "</><data>",
                             end = "</></xml>";
  std::string document;
  document.reserve(before_rows.size() + corner_.size() + rows_.size() + before_columns.size() + columns_.size() +
                   before_values.size() + values_.size() + end.size());
  document += before_rows;
  document += corner_;
  document += rows_;
  document += before_columns;
  document += columns_;
  document += before_values;
  document += values_;
  document += end;
  return document;
}

}  // namespace plexoras
