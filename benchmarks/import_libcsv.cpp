// Makes a contents document of comma-separated text with libcsv, as well as one reasonably can: the peer of
// `plexoras import FILE`.
//
//     import_libcsv FILE    the document goes to the standard output
//
// What is not libcsv's is what the engine has too: files are read in the same pieces, the document is held in the same
// pieces of memory, and stretches of text without anything to escape are copied at once.

#include <csv.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

#include "contents/contents_document.h"
#include "host/atomic_file.h"
#include "host/text_pieces.h"

namespace {

using namespace plexoras;

class Document {
public:
  Document() {
    for (const ContentsEntity& entity : contents_entities) {
      written_forms_[static_cast<unsigned char>(entity.character)] = entity.written;
    }
  }

  void add_value(std::string_view text) {
    // The longest entity has six bytes.
    char* const start = values_.room(6 * text.size() + value_start.size() + value_end.size()).data();
    char* pen = copied(start, value_start);
    std::size_t plain_from = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const std::string_view form = written_forms_[static_cast<unsigned char>(text[i])];
      if (form.empty()) continue;
      pen = copied(copied(pen, text.substr(plain_from, i - plain_from)), form);
      plain_from = i + 1;
    }
    pen = copied(copied(pen, text.substr(plain_from)), value_end);
    values_.extend(static_cast<std::size_t>(pen - start));
  }

  void add_row() { rows_.append("<row/>"); }

  void write() {
    TextPieces document;
    document.append("<xml><rows>");
    document.append(std::move(rows_));
    document.append("</><cols></><data>");
    document.append(std::move(values_));
    document.append("</></xml>");
    document.drain([](std::string_view piece) {
      while (!piece.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, piece.data(), piece.size());
        if (count < 0) throw std::runtime_error("cannot write");
        piece.remove_prefix(static_cast<std::size_t>(count));
      }
    });
  }

private:
  static constexpr std::string_view value_start = "<value>", value_end = "</>";

  static char* copied(char* pen, std::string_view text) {
    std::memcpy(pen, text.data(), text.size());
    return pen + text.size();
  }

  std::array<std::string_view, 256> written_forms_ = {};
  TextPieces rows_;
  TextPieces values_;
};

void take_field(void* text, std::size_t size, void* document) {
  static_cast<Document*>(document)->add_value({static_cast<const char*>(text), size});
}

void take_line_end(int, void* document) { static_cast<Document*>(document)->add_row(); }

void import(const std::string& path) {
  Document document;
  csv_parser parser;
  if (csv_init(&parser, 0) != 0) throw std::runtime_error("no parser");
  read_file_pieces(path, [&](std::string_view bytes) {
    if (csv_parse(&parser, bytes.data(), bytes.size(), take_field, take_line_end, &document) != bytes.size()) {
      throw std::runtime_error(csv_strerror(csv_error(&parser)));
    }
  });
  csv_fini(&parser, take_field, take_line_end, &document);
  csv_free(&parser);
  document.write();
}

}  // namespace

int main(int argument_count, char** arguments) {
  try {
    if (argument_count != 2) throw std::runtime_error("usage: import_libcsv FILE");
    import(arguments[1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
