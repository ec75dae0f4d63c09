#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace plexoras {

/// The contents of a chart that has no data at all.
///
/// Kept: the columns come before the rows, the lists are self-closing and the document ends in "</>". What
/// `ContentsWriter` makes of an empty table reads differently.
inline constexpr std::string_view empty_contents_document = "<xml><cols/><rows/><data/></>";

/// A character that cannot stand for itself in a label or value, and what is written in its place.
struct ContentsEntity {
  char character;
  std::string_view written;
};

/// Every entity of the contents document; the style document uses the same ones.
inline constexpr ContentsEntity contents_entities[] = {
    {'\'', "&apos;"}, {'"', "&quot;"}, {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'\t', "&tab;"},
};

/// `text` as it stands inside an element: a<b becomes a&lt;b. All other bytes stay as they are.
std::string escape_contents(std::string_view text);

/// Appends `escape_contents(text)` to `out`.
void append_escaped_contents(std::string& out, std::string_view text);

/// Where line breaks stand between the elements of a contents document. They mean nothing there.
enum class ContentsLayout {
  Compact,  ///< nowhere
  Lines,    ///< CR LF behind <xml>, each tag of a list, each row label, the last column label and a row's last value
};

/// Writes a contents document in one pass over a table.
///
///     ContentsWriter writer;
///     writer.set_row_title("Region");
///     writer.add_column("Q1");
///     writer.add_row("North");
///     writer.add_value("1");
///     writer.text();  // <xml><rows>Region<row>North</></><cols><col>Q1</></><data><value>1</></></xml>
///
/// Labels and values are any bytes, not yet escaped; the writer never fails on what they hold. Columns may be
/// added before, between and after the rows. Values belong to the row added last, and a table without rows has
/// none; rows may be of different length. A title that consists of line breaks alone is written, but reads as no
/// title. No line break follows a title, which would become part of it.
class ContentsWriter {
public:
  explicit ContentsWriter(ContentsLayout layout = ContentsLayout::Compact) : layout_(layout) {}

  /// What the row labels are: the heading of their column, the text in the table's corner.
  void set_row_title(std::string_view text);
  /// What the column labels are.
  void set_column_title(std::string_view text);
  /// What the values are.
  void set_value_title(std::string_view text);
  /// The next column's label. A table without column labels adds none.
  void add_column(std::string_view label);
  /// A row that carries no label, which is not the same as a row labelled with the empty text.
  void add_row();
  void add_row(std::string_view label);
  /// The next cell of the row added last.
  void add_value(std::string_view value);

  /// The document of all that was added so far.
  std::string text() const;

private:
  struct List {
    std::string title;
    std::string elements;
  };

  void begin_row();
  void append_list(std::string& document, const List& list) const;
  std::string_view line_end() const { return layout_ == ContentsLayout::Lines ? "\r\n" : ""; }

  ContentsLayout layout_;
  List rows_;
  List columns_;
  List values_;
  bool first_value_of_row_ = true;
};

}  // namespace plexoras
