#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "host/text_pieces.h"

namespace plexoras {

/// A short text that is written by copying all of its room and counting only its size.
struct ShortText {
  char bytes[15] = {};
  unsigned char size = 0;

  constexpr ShortText(std::string_view text) : size(static_cast<unsigned char>(text.size())) {
    for (std::size_t i = 0; i < text.size(); ++i) bytes[i] = text[i];
  }
  char* write(char* pen) const {
    std::memcpy(pen, bytes, sizeof bytes);
    return pen + size;
  }
};

/// The row, column and data lists of a contents document while delimited text is being read.
///
/// Whoever reads the text says where fields and lines begin and end, and writes the text of the fields, escaped, at
/// a pen: a pointer that each function here takes and gives back moved. Only what `make_room` promises may be written.
///
///     char* pen = lists.make_room(lists.pen());
///     pen = lists.begin_field(pen);
///     *pen++ = '1';
///     pen = lists.end_line(lists.end_field(pen));
///     lists.keep(pen);
class ImportLists {
public:
  /// How many bytes of input may be handled between two calls of `make_room`.
  static constexpr std::size_t input_step = 64;

  /// `first_row`: the first line holds column labels; `first_col`: the first field of a line labels its row.
  ImportLists(bool first_row, bool first_col);
  ImportLists(const ImportLists&) = delete;
  ImportLists& operator=(const ImportLists&) = delete;

  char* pen() const { return pens_[current_].at; }
  void keep(char* pen) {
    assert(pen <= pens_[current_].end);
    pens_[current_].at = pen;
  }

  /// Room in every list for what `input_step` bytes can give, and some more into which copying may run over.
  char* make_room(char* pen) {
    keep(pen);
    for (std::size_t list = 0; list < list_count; ++list) {
      if (pens_[list].end - pens_[list].at < static_cast<std::ptrdiff_t>(room_for_step)) renew(list);
    }
    return this->pen();
  }

  /// The next field of the line; its text is to be written next.
  char* begin_field(char* pen) {
    if (place_ == nullptr) return begin_line(pen);
    pen = go_to(*rest_, pen);
    return place_->opening.write(pen);
  }
  char* end_field(char* pen) const { return place_->closing.write(pen); }
  /// `end_field` and `begin_field`.
  char* next_field(char* pen) {
    if (place_ == rest_) return rest_->separator.write(pen);
    return begin_field(end_field(pen));
  }
  /// The line is over, and so is its last field, if it had any. Error 9 when it has none and must give a label.
  char* end_line(char* pen);

  /// The document; nothing can be written any more. `saw_bytes` is false when there was no text at all. An empty line
  /// that was the last one is no row.
  TextPieces finish(bool saw_bytes);

  /// The number of the line at hand, from 1.
  std::size_t line() const { return line_; }

private:
  enum List : std::size_t { rows, columns, values, list_count };

  // Where a field goes, and what is written around it.
  struct Place {
    List list;
    ShortText opening, closing, separator;
  };
  static const Place corner, column, row_label, value;

  // The room left in a list's last piece.
  struct Pen {
    char* at = nullptr;
    char* end = nullptr;
  };

  // What a step gives a list at most, and the block by which a copied stretch may run over. A byte that ends a field
  // answers for the ten of "</><value>", its end and the beginning of the next one; one of text gives six ("&quot;").
  // The first field that begins in a step, or the row of an empty line before it, has no such byte in the step.
  static constexpr std::size_t room_for_step = 10 * input_step + std::string_view("<value>").size() + 64;

  char* go_to(const Place& place, char* pen) {
    place_ = &place;
    if (place.list == current_) return pen;
    keep(pen);
    current_ = place.list;
    return this->pen();
  }
  char* begin_line(char* pen);
  void add_pending_row();
  void write_to(List list, const ShortText& text) { pens_[list].at = text.write(pens_[list].at); }
  void renew(std::size_t list);
  TextPieces take(List list);
  [[noreturn]] void no_label(std::size_t line) const;

  bool first_col_;
  bool in_label_line_;                 // the first line, which holds column labels
  bool empty_row_is_pending_ = false;  // an empty line has ended, which is a row when more follows
  std::size_t line_ = 1;
  const Place* place_ = nullptr;  // of the field begun last; null at the beginning of a line
  const Place* first_;            // of the first field of this line
  const Place* rest_;             // of the others
  std::size_t current_ = values;
  std::array<TextPieces, list_count> texts_;
  std::array<Pen, list_count> pens_;
};

}  // namespace plexoras
