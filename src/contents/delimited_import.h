#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "host/platform.h"
#include "host/text_pieces.h"

namespace plexoras {

/// How delimited text is to be read.
struct DelimitedFormat {
  std::string delimiter = ",";  ///< any text but the empty one
  std::string qualifier = {};   ///< protects delimiters in a field; only a qualifier of one byte ever matches
  bool first_row = false;       ///< the first line holds the column labels
  bool first_col = false;       ///< the first field of each line is the label of its row
};

/// Makes a contents document of delimited text in one pass, from pieces of any size.
///
///     DelimitedImport import({.delimiter = ";", .first_row = true});
///     import.add("a;b\r\n1;2\r\n");
///     import.finish().take_text();  // <xml><rows><row/></><cols><col>a</><col>b</></><data>...</></xml>
///
/// One line is one row. CR, LF and CR LF each end a line, whatever the qualifier. A field that begins with the
/// qualifier ends at the next one, and what follows up to the delimiter is dropped; a qualifier that is not closed
/// takes the rest of the line. A doubled qualifier is no escaped one. After a delimiter reading goes on behind its
/// first character, so that of a longer delimiter the rest begins the next field; the first character is a whole one
/// of UTF-8 where the delimiter begins with that, and else a byte. A delimiter at the end of a line opens no further
/// field. Nothing is trimmed. An empty line at the very end is no row, one elsewhere is a row without values.
///
/// Memory: the document that was made so far and little else, however long a line is. Time: linear in the bytes.
class DelimitedImport {
public:
  /// Error 5 when the delimiter is empty.
  explicit DelimitedImport(DelimitedFormat format);
  ~DelimitedImport();
  DelimitedImport(const DelimitedImport&) = delete;
  DelimitedImport& operator=(const DelimitedImport&) = delete;

  /// Reads on. Error 9, naming the line, when a line that has to give a label has no fields. After an error, here or
  /// in `finish`, the import is good for nothing but being destroyed.
  void add(std::string_view bytes);
  /// The document of all that was added; nothing can be added afterwards. Errors as with `add`.
  TextPieces finish();
  /// The number of the line, from 1, that the next byte stands on.
  std::size_t line() const;

private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

/// The contents document of the file at `path`, read once from its beginning. Errors as with `FileSystem::read_pieces`
/// and `DelimitedImport`.
std::string import_delimited_file(FileSystem& files, std::string_view path, const DelimitedFormat& format);

}  // namespace plexoras
