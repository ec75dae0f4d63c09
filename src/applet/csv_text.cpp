#include "applet/csv_text.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "applet/compact_xml.h"
#include "applet/text_position.h"
#include "contents/contents_document.h"

namespace plexoras {
namespace {

constexpr std::string_view line_end = "\r\n";

void append_field(std::string& out, std::string_view field) {
  if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += field;
    return;
  }
  out += '"';
  for (std::size_t quote; (quote = field.find('"')) != std::string_view::npos; field.remove_prefix(quote + 1)) {
    out.append(field.substr(0, quote)).append("\"\"");
  }
  out.append(field).append("\"");
}

void append_record(std::string& out, std::string_view label, std::span<const std::string> fields) {
  if (label.empty() && fields.empty()) out += "\"\"";
  append_field(out, label);
  for (const std::string& field : fields) {
    out += ',';
    append_field(out, field);
  }
  out += line_end;
}

// All fields of a text in one list, and where each record begins.
struct Records {
  struct Start {
    std::size_t field;   // index in `fields`
    std::size_t offset;  // in the text
  };

  std::vector<std::string> fields;
  std::vector<Start> starts;

  std::size_t count() const { return starts.size(); }
  // The first field of record `index`: the row title or a row's label.
  const std::string& label(std::size_t index) const { return fields[starts[index].field]; }
  // The other fields of record `index`.
  std::span<const std::string> values(std::size_t index) const {
    const std::size_t from = starts[index].field + 1;
    const std::size_t end = index + 1 < starts.size() ? starts[index + 1].field : fields.size();
    return std::span(fields).subspan(from, end - from);
  }
};

class CsvReader {
public:
  explicit CsvReader(std::string_view text) : text_(text) {}

  Records read() {
    while (position_ < text_.size()) {
      if (skip_line_end()) continue;
      records_.starts.push_back({records_.fields.size(), position_});
      read_record();
    }
    return std::move(records_);
  }

private:
  void read_record() {
    while (true) {
      const bool is_quoted = position_ < text_.size() && text_[position_] == '"';
      records_.fields.push_back(is_quoted ? read_quoted() : read_plain());
      if (position_ == text_.size() || skip_line_end()) return;
      ++position_;  // the comma
    }
  }

  std::string read_plain() {
    const std::size_t from = position_;
    position_ = std::min(text_.find_first_of(",\r\n", from), text_.size());
    return std::string(text_.substr(from, position_ - from));
  }

  std::string read_quoted() {
    const std::size_t opening = position_++;
    std::string field;
    while (true) {
      const std::size_t quote = text_.find('"', position_);
      if (quote == std::string_view::npos) {
        raise_invalid_text(text_, opening, "the quoted field that begins here is never closed");
      }
      field += text_.substr(position_, quote - position_);
      position_ = quote + 1;
      if (position_ == text_.size() || text_[position_] != '"') break;
      field += '"';
      ++position_;
    }
    if (position_ < text_.size() && text_.substr(position_, 1).find_first_of(",\r\n") == std::string_view::npos) {
      raise_invalid_text(text_, position_, "text follows the quote that closes a field; double the quotes in a field");
    }
    return field;
  }

  bool skip_line_end() {
    if (text_[position_] != '\r' && text_[position_] != '\n') return false;
    position_ += text_.substr(position_).starts_with(line_end) ? 2 : 1;
    return true;
  }

  std::string_view text_;
  std::size_t position_ = 0;
  Records records_;
};

std::size_t longest_record(const Records& records) {
  std::size_t longest = 0;
  for (std::size_t i = 1; i < records.count(); ++i) {
    if (records.values(i).size() > records.values(longest).size()) longest = i;
  }
  return longest;
}

// Filling up must not make a short text a huge table: one long record among many short ones would.
void check_filling(std::string_view csv, const Records& records, std::size_t longest) {
  constexpr std::size_t most_filled_up = 4'000'000;
  const std::size_t rows = records.count() - 1;
  const std::size_t present = records.fields.size() - records.count() - records.values(0).size();
  const std::size_t width = records.values(longest).size();
  if (rows * width - present > most_filled_up) {
    raise_invalid_text(csv, records.starts[longest].offset,
                       "this record has " + std::to_string(width + 1) +
                           " fields, most others far fewer; give all records the same number of fields");
  }
}

void write_column_labels(ContentsWriter& writer, const Records& records) {
  const auto is_empty = [](const std::string& label) { return label.empty(); };
  const std::span<const std::string> labels = records.values(0);
  if (is_line_breaks(records.label(0)) && std::ranges::all_of(labels, is_empty)) return;
  for (const std::string& label : labels) writer.add_column(label);
}

void write_rows(ContentsWriter& writer, const Records& records, std::size_t width) {
  bool labelled = false;
  for (std::size_t i = 1; i < records.count(); ++i) labelled = labelled || !records.label(i).empty();

  for (std::size_t i = 1; i < records.count(); ++i) {
    if (labelled) {
      writer.add_row(records.label(i));
    } else {
      writer.add_row();
    }
    const std::span<const std::string> values = records.values(i);
    for (const std::string& value : values) writer.add_value(value);
    for (std::size_t missing = width - values.size(); missing > 0; --missing) writer.add_value("");
  }
}

}  // namespace

std::string write_csv(const ContentsTable& table) {
  if (table == ContentsTable{}) return {};
  std::string csv;
  append_record(csv, table.row_title, table.columns);
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    append_record(csv, table.rows[row].value_or(""), table.row_values(row));
  }
  return csv;
}

std::string contents_from_csv(std::string_view csv) {
  const Records records = CsvReader(csv).read();
  if (records.count() == 0) return std::string(empty_contents_document);
  const std::size_t longest = longest_record(records);
  check_filling(csv, records, longest);

  ContentsWriter writer;
  // A contents document cannot hold line breaks alone as a title.
  if (!is_line_breaks(records.label(0))) writer.set_row_title(records.label(0));
  write_column_labels(writer, records);
  write_rows(writer, records, records.values(longest).size());
  return writer.text();
}

}  // namespace plexoras
