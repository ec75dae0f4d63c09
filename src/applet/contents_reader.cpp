#include "applet/contents_reader.h"

#include <algorithm>

#include "applet/compact_xml.h"

namespace plexoras {
namespace {

using Kind = CompactXmlReader::Kind;
using Piece = CompactXmlReader::Piece;

// One reading of a contents document, from the first byte to the last.
class ContentsReader {
public:
  explicit ContentsReader(std::string_view document) : xml_(document) {}

  ContentsTable read() {
    expect_start("xml", next_tag());
    const Piece first = next_tag();
    if (first.kind == Kind::EmptyTag && first.name == "cols") {
      read_lists_of_empty_document();
    } else {
      read_lists(first);
    }
    if (const Piece end = next_tag(); end.kind != Kind::EndTag) fail_unexpected(end, "the end of \"xml\"");
    next_tag();
    return std::move(table_);
  }

private:
  // The empty document has its lists in an order of its own.
  void read_lists_of_empty_document() {
    for (const std::string_view list : {"rows", "data"}) {
      const Piece tag = next_tag();
      if (tag.kind != Kind::EmptyTag) fail_unexpected(tag, "<" + std::string(list) + "/>");
      expect_start(list, tag);
    }
  }

  void read_lists(const Piece& rows) {
    expect_start("rows", rows);
    if (rows.kind == Kind::StartTag) read_rows();

    const Piece columns = next_tag();
    expect_start("cols", columns);
    if (columns.kind == Kind::StartTag) read_texts("col", table_.column_title, table_.columns);

    const Piece values = next_tag();
    expect_start("data", values);
    if (values.kind == Kind::StartTag) read_texts("value", table_.value_title, table_.values);
    if (table_.rows.empty() && !table_.values.empty()) {
      xml_.fail(values.offset, "there are values, but no rows that could hold them");
    }
  }

  void read_rows() {
    for (Piece piece = read_title(table_.row_title); piece.kind != Kind::EndTag; piece = next_tag()) {
      expect_start("row", piece);
      if (piece.kind == Kind::EmptyTag) {
        table_.rows.emplace_back();
      } else {
        table_.rows.emplace_back(read_element_text(piece));
      }
    }
  }

  void read_texts(std::string_view element, std::string& title, std::vector<std::string>& texts) {
    for (Piece piece = read_title(title); piece.kind != Kind::EndTag; piece = next_tag()) {
      expect_start(element, piece);
      texts.push_back(piece.kind == Kind::EmptyTag ? std::string() : read_element_text(piece));
    }
  }

  // The title at the start of a list, where there is one, and the tag that follows.
  Piece read_title(std::string& title) {
    const Piece piece = xml_.next();
    if (piece.kind != Kind::Text) return piece;
    if (!is_line_breaks(piece.raw)) title = unescape_text(piece.raw);
    return xml_.next();
  }

  // The text of the element that `start` has opened, up to its end tag.
  std::string read_element_text(const Piece& start) {
    Piece piece = xml_.next();
    std::string text;
    if (piece.kind == Kind::Text) {
      text = unescape_text(piece.raw);
      piece = xml_.next();
    }
    if (piece.kind != Kind::EndTag) fail_unexpected(piece, "the end of " + quoted(start.name));
    return text;
  }

  // The next piece that is not a line break between tags.
  Piece next_tag() {
    Piece piece = xml_.next();
    if (piece.kind != Kind::Text) return piece;
    if (!is_line_breaks(piece.raw)) xml_.fail(piece.offset, "text " + quoted(piece.raw) + " stands between elements");
    return xml_.next();
  }

  void expect_start(std::string_view element, const Piece& piece) {
    const bool is_start = piece.kind == Kind::StartTag || piece.kind == Kind::EmptyTag;
    if (!is_start || piece.name != element) fail_unexpected(piece, "<" + std::string(element) + ">");
    if (!piece.attributes.empty()) xml_.fail(piece.offset, quoted(element) + " takes no attributes");
  }

  [[noreturn]] void fail_unexpected(const Piece& piece, const std::string& expected) {
    const std::string found = piece.kind == Kind::End ? "the document ends" : quoted(piece.raw) + " stands";
    xml_.fail(piece.offset, found + " where " + expected + " is expected");
  }

  CompactXmlReader xml_;
  ContentsTable table_;
};

}  // namespace

std::size_t ContentsTable::column_count() const {
  if (rows.empty()) return columns.size();
  return std::max(columns.size(), (values.size() + rows.size() - 1) / rows.size());
}

std::span<const std::string> ContentsTable::row_values(std::size_t row) const {
  const std::size_t count = column_count();
  const std::size_t from = std::min(row * count, values.size());
  return std::span(values).subspan(from, std::min(count, values.size() - from));
}

ContentsTable read_contents(std::string_view document) { return ContentsReader(document).read(); }

std::string write_contents(const ContentsTable& labels, const ContentsCells& cells, ContentsLayout layout) {
  ContentsWriter writer(layout);
  writer.set_row_title(labels.row_title);
  writer.set_column_title(labels.column_title);
  writer.set_value_title(labels.value_title);
  for (const std::string& label : labels.columns) writer.add_column(label);
  std::size_t cell = 0;
  for (const std::optional<std::string>& label : labels.rows) {
    if (label) {
      writer.add_row(*label);
    } else {
      writer.add_row();
    }
    const std::size_t row_end = std::min(cells.count, cell + cells.column_count);
    for (; cell < row_end; ++cell) writer.add_value(cells.text(cell));
  }
  return writer.text();
}

std::string write_contents(const ContentsTable& table, ContentsLayout layout) {
  const auto text = [&](std::size_t cell) -> std::string_view { return table.values[cell]; };
  return write_contents(table, {table.column_count(), table.values.size(), text}, layout);
}

}  // namespace plexoras
