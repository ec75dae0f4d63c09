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

void ContentsWriter::set_row_title(std::string_view text) { rows_.title = escape_contents(text); }

void ContentsWriter::set_column_title(std::string_view text) { columns_.title = escape_contents(text); }

void ContentsWriter::set_value_title(std::string_view text) { values_.title = escape_contents(text); }

void ContentsWriter::add_column(std::string_view label) { append_element(columns_.elements, "<col>", label); }

void ContentsWriter::add_row() {
  begin_row();
  rows_.elements += "<row/>";
}

void ContentsWriter::add_row(std::string_view label) {
  begin_row();
  append_element(rows_.elements, "<row>", label);
}

void ContentsWriter::begin_row() {
  if (!rows_.elements.empty()) rows_.elements += line_end();
  first_value_of_row_ = true;
}

void ContentsWriter::add_value(std::string_view value) {
  assert(!rows_.elements.empty() && "a value belongs to a row");
  if (first_value_of_row_ && !values_.elements.empty()) values_.elements += line_end();
  first_value_of_row_ = false;
  append_element(values_.elements, "<value>", value);
}

std::string ContentsWriter::text() const {
  constexpr std::size_t tags_and_line_ends = 100;
  std::size_t size = tags_and_line_ends;
  for (const List* list : {&rows_, &columns_, &values_}) size += list->title.size() + list->elements.size();

  std::string document;
  document.reserve(size);
  document.append("<xml>").append(line_end()).append("<rows>");
  append_list(document, rows_);
  document += "<cols>";
  append_list(document, columns_);
  document += "<data>";
  append_list(document, values_);
  return document += "</xml>";
}

// What follows a list's start tag, its end tag included.
void ContentsWriter::append_list(std::string& document, const List& list) const {
  document += list.title.empty() ? line_end() : list.title;
  if (!list.elements.empty()) document.append(list.elements).append(line_end());
  document.append("</>").append(line_end());
}

}  // namespace plexoras
