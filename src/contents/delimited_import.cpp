#include "contents/delimited_import.h"

#include <utility>

#include "contents/import_lists.h"
#include "contents/long_delimiter_reader.h"
#include "contents/short_delimiter_reader.h"

namespace plexoras {
namespace {

std::unique_ptr<DelimitedReader> reader_for(DelimitedFormat format, ImportLists& lists) {
  if (format.delimiter.empty()) {
    throw AutomationError(RunTimeError::InvalidCall, "The delimiter between fields must not be empty",
                          "DelimitedImport");
  }
  if (format.delimiter.size() == 1) {
    return std::make_unique<ShortDelimiterReader>(format.delimiter[0], format.qualifier, lists);
  }
  return std::make_unique<LongDelimiterReader>(std::move(format.delimiter), format.qualifier, lists);
}

}  // namespace

class DelimitedImport::Parts {
public:
  explicit Parts(DelimitedFormat format)
      : lists(format.first_row, format.first_col), reader(reader_for(std::move(format), lists)) {}

  bool saw_bytes = false;
  ImportLists lists;
  std::unique_ptr<DelimitedReader> reader;
};

DelimitedImport::DelimitedImport(DelimitedFormat format) : parts_(std::make_unique<Parts>(std::move(format))) {}

DelimitedImport::~DelimitedImport() = default;

void DelimitedImport::add(std::string_view bytes) {
  if (bytes.empty()) return;
  parts_->saw_bytes = true;
  parts_->reader->add(bytes);
}

TextPieces DelimitedImport::finish() {
  parts_->reader->finish();
  return parts_->lists.finish(parts_->saw_bytes);
}

std::size_t DelimitedImport::line() const { return parts_->lists.line(); }

std::string import_delimited_file(FileSystem& files, std::string_view path, const DelimitedFormat& format) {
  DelimitedImport import(format);
  files.read_pieces(path, [&](std::string_view bytes) { import.add(bytes); });
  return import.finish().take_text();
}

}  // namespace plexoras
