// The input as delimited text. Its first four bytes say how it is read: which lines and fields are labels and how many
// bytes the qualifier and the delimiter, which follow, have; and the size of two pieces that it is cut into by turns.
//
// Whatever the cuts, the document is that of the literal import.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "contents/delimited_import.h"
#include "contents/literal_import.h"
#include "fuzz.h"

namespace plexoras {
namespace {

std::string_view cut_off(std::string_view& text, std::size_t size) {
  const std::string_view front = text.substr(0, size);
  text.remove_prefix(front.size());
  return front;
}

// The document, or "Line N" when that line has no label.
std::string imported(std::string_view file, const DelimitedFormat& format, const std::size_t (&piece_sizes)[2]) {
  try {
    DelimitedImport import(format);
    for (std::size_t turn = 0; !file.empty(); ++turn) {
      // A copy without a byte behind it, so that reading too far is noticed.
      const std::string_view piece = cut_off(file, piece_sizes[turn % 2]);
      const std::vector<char> copy(piece.begin(), piece.end());
      import.add({copy.data(), copy.size()});
    }
    return import.finish().take_text();
  } catch (const AutomationError& error) {
    require(error.number() == RunTimeError::SubscriptOutOfRange, "only a missing label is an error");
    return error.description().substr(0, error.description().find(" is empty"));
  }
}

}  // namespace

void try_input(std::string_view input) {
  if (input.size() < 4) return;
  const std::string_view head = cut_off(input, 4);
  const auto number = [&](std::size_t i) { return static_cast<unsigned char>(head[i]); };
  DelimitedFormat format{.first_row = (number(0) & 1) != 0, .first_col = (number(0) & 2) != 0};
  format.qualifier = cut_off(input, (number(0) >> 2) & 3);
  format.delimiter = cut_off(input, std::max<std::size_t>(1, number(1) % 16));
  if (format.delimiter.empty()) return;
  const std::size_t piece_sizes[2] = {number(2) + 1U, number(3) + 1U};

  const std::string document = imported(input, format, piece_sizes);
  require(document == LiteralImport(input, format).result(), "the document is that of the literal import");
}

}  // namespace plexoras
