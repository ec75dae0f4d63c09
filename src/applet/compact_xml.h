#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plexoras {

/// Reads the compact dialect of XML in which a chart's contents, style and menu are written, piece by piece.
///
///     <xml><ITEM type="script" param="f()">Open &amp; close</><SEPARATOR></></xml>
///
/// An element ends in "</>" or in an end tag that carries its name, or is empty: "<row/>". Text and attribute
/// values know six entities (`contents_entities`) and no numeric references; a ">" or a quote may stand in text
/// as it is. There is one root element, with nothing but line breaks outside it. Comments, declarations and
/// processing instructions are no part of the dialect.
///
/// The reader checks all of this as it goes, keeps no tree and does not recurse: any depth of nesting is fine.
/// It refers to the text it was given, which must outlive it.
class CompactXmlReader {
public:
  enum class Kind {
    StartTag,  ///< <name ...>
    EmptyTag,  ///< <name .../>
    EndTag,    ///< </> or </name>
    Text,      ///< a run of text up to the next tag, never empty
    End,       ///< the end of the document
  };

  struct Piece {
    Kind kind;
    std::string_view raw;         ///< the piece as it stands in the document
    std::string_view name;        ///< of a tag: its element's name
    std::string_view attributes;  ///< of a start tag or an empty tag: what follows the name and a blank
    std::size_t offset;           ///< of the first byte of `raw`
  };

  explicit CompactXmlReader(std::string_view text) : text_(text) {}

  /// The next piece. Error 5 with "line:column: what is wrong" where the document is not well formed.
  Piece next();

  /// Raises error 5 for the byte at `offset` of the document, see `raise_invalid_text`.
  [[noreturn]] void fail(std::size_t offset, std::string_view problem) const;

private:
  Piece read_text();
  Piece read_end_tag();
  Piece read_start_tag();
  /// Empty when no name begins here.
  std::string_view read_name();
  void read_attribute();
  void skip_blanks();
  void check_entities(std::size_t from, std::size_t to) const;
  bool at(std::string_view expected) const { return text_.substr(position_).starts_with(expected); }

  std::string_view text_;
  std::size_t position_ = 0;
  bool root_seen_ = false;
  std::vector<std::string_view> open_elements_;
};

/// Whether `text` consists of carriage returns and line feeds alone. Between elements such text means nothing.
bool is_line_breaks(std::string_view text);

/// The text behind `raw`, the text of a piece that `CompactXmlReader` has checked: a&lt;b becomes a<b.
std::string unescape_text(std::string_view raw);

/// `text` in quotes for a message, cut where it is long.
std::string quoted(std::string_view text);

}  // namespace plexoras
