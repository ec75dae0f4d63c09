#pragma once

#include <string_view>

#include "contents/import_characters.h"
#include "contents/import_lists.h"

namespace plexoras {

/// Cuts delimited text into lines and fields and writes them into the lists of a document.
///
/// `ShortDelimiterReader` is for delimiters of one byte, and fast; `LongDelimiterReader` is for all others. The lists
/// outlive the reader.
class DelimitedReader {
public:
  DelimitedReader(std::string_view delimiter, std::string_view qualifier, ImportLists& lists)
      : characters_(delimiter, qualifier), lists_(lists) {}
  virtual ~DelimitedReader() = default;
  DelimitedReader(const DelimitedReader&) = delete;
  DelimitedReader& operator=(const DelimitedReader&) = delete;

  /// Reads on; `bytes` may end anywhere.
  virtual void add(std::string_view bytes) = 0;
  /// There is no more text: ends the last line, if no line end did.
  virtual void finish() = 0;

protected:
  /// What the next byte may be, if it ends no line.
  enum class Mode {
    LineStart,   ///< the first one of a line
    FieldStart,  ///< the first one behind a delimiter: of a field, which is not there if the line ends here
    Plain,       ///< one of a field that did not begin with a qualifier
    Qualified,   ///< one of a field behind its opening qualifier
    Dropped,     ///< one between the closing qualifier and the delimiter
  };

  /// Ends the line, and its last field with it. `saw_carriage_return`: a line feed next would be part of this line end.
  char* end_line(char* pen, bool saw_carriage_return) {
    if (mode_ >= Mode::Plain) pen = lists_.end_field(pen);
    mode_ = Mode::LineStart;
    saw_carriage_return_ = saw_carriage_return;
    return lists_.end_line(pen);
  }

  const ImportCharacters characters_;
  ImportLists& lists_;
  Mode mode_ = Mode::LineStart;
  bool saw_carriage_return_ = false;  // in LineStart: as the very last byte
};

}  // namespace plexoras
