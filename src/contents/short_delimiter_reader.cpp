#include "contents/short_delimiter_reader.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace plexoras {
namespace {

constexpr std::size_t block_size = ImportLists::input_step;

// Copies less than a block, and touches up to a block behind `pen`; a block behind `from` must be there to be read.
inline char* copy_run(char* pen, const char* from, const char* to) {
  constexpr std::size_t short_run = 16;
  const auto size = static_cast<std::size_t>(to - from);
  std::memcpy(pen, from, short_run);
  if (size > short_run) std::memcpy(pen + short_run, from + short_run, block_size - short_run);
  return pen + size;
}

// Bit i is the lowest bit of flags[i]; the other bits of the flags are 0.
std::uint64_t gathered(const unsigned char (&flags)[block_size]) {
  // Multiplying moves the flags of eight bytes side by side into the topmost byte.
  constexpr std::uint64_t side_by_side =
      std::endian::native == std::endian::little ? 0x0102040810204080 : 0x8040201008040201;
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < block_size; i += 8) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, flags + i, 8);
    bits |= ((eight * side_by_side) >> 56) << i;
  }
  return bits;
}

}  // namespace

ShortDelimiterReader::ShortDelimiterReader(char delimiter, std::string_view qualifier, ImportLists& lists)
    : DelimitedReader({&delimiter, 1}, qualifier, lists),
      delimiter_(delimiter),
      qualifier_(qualifier.size() == 1 ? qualifier[0] : delimiter) {}

void ShortDelimiterReader::add(std::string_view bytes) {
  // A block is read together with up to a block behind it, so the last ones are taken from a longer copy. What fills it
  // is a line end, behind which the reader never looks ahead.
  while (bytes.size() >= 2 * block_size) {
    read_block(bytes.data(), block_size);
    bytes.remove_prefix(block_size);
  }
  char rest[4 * block_size];
  std::memset(rest, '\n', sizeof rest);
  if (!bytes.empty()) std::memcpy(rest, bytes.data(), bytes.size());
  for (std::size_t from = 0; from < bytes.size(); from += block_size) {
    read_block(rest + from, std::min(block_size, bytes.size() - from));
  }
}

void ShortDelimiterReader::finish() {
  if (mode_ != Mode::LineStart) lists_.keep(end_line(lists_.make_room(lists_.pen()), false));
}

// Bit i is set when byte i may mean something; a few bytes that are just text are marked too.
std::uint64_t ShortDelimiterReader::marks_in(const char* block) const {
  unsigned char bytes[block_size];
  std::memcpy(bytes, block, block_size);
  const auto delimiter = static_cast<unsigned char>(delimiter_), qualifier = static_cast<unsigned char>(qualifier_);
  unsigned char marked[block_size];
  for (std::size_t i = 0; i < block_size; ++i) {
    const unsigned char byte = bytes[i];
    const bool is_ampersand_or_apostrophe = (byte & 0xFE) == '&';
    const bool is_angle_bracket = (byte | 2) == '>';
    const bool is_tab_or_line_end = static_cast<unsigned char>(byte - '\t') <= '\r' - '\t';
    marked[i] = (byte == delimiter) | (byte == qualifier) | (byte == '"') | is_ampersand_or_apostrophe |
                is_angle_bracket | is_tab_or_line_end;
  }
  return gathered(marked);
}

void ShortDelimiterReader::read_block(const char* block, std::size_t size) {
  Place place{block, lists_.make_room(lists_.pen())};
  std::uint64_t marks = marks_in(block);
  if (size < block_size) marks &= (std::uint64_t{1} << size) - 1;
  for (; marks != 0; marks &= marks - 1) take(block + std::countr_zero(marks), place);

  const char* const end = block + size;
  if (place.from < end) {
    if (mode_ <= Mode::FieldStart) {
      place.pen = lists_.begin_field(place.pen);
      mode_ = Mode::Plain;
    }
    if (mode_ != Mode::Dropped) place.pen = copy_run(place.pen, place.from, end);
  }
  lists_.keep(place.pen);
}

// Reads up to and with the byte at `mark`, before which nothing else is marked.
inline void ShortDelimiterReader::take(const char* mark, Place& place) {
  const unsigned char meaning = characters_.meaning(*mark);
  if (mode_ <= Mode::FieldStart && !begin_field(mark, meaning, place)) {
    place.from = mark + 1;
    return;
  }

  if (mode_ != Mode::Dropped) place.pen = copy_run(place.pen, place.from, mark);
  place.from = mark + 1;
  if ((meaning & ImportCharacters::LineEnd) != 0) {
    end_line_at(mark, place);
  } else if (mode_ == Mode::Qualified) {
    if ((meaning & ImportCharacters::Qualifier) != 0) {
      mode_ = Mode::Dropped;
    } else {
      place.pen = characters_.write(place.pen, *mark);
    }
  } else if ((meaning & ImportCharacters::Delimiter) != 0) {
    end_field_at(mark, place);
  } else if (mode_ == Mode::Plain) {
    place.pen = characters_.write(place.pen, *mark);
  }
}

// Where a field may begin. False when the mark is dealt with: a line end before any field, or an opening qualifier.
inline bool ShortDelimiterReader::begin_field(const char* mark, unsigned char meaning, Place& place) {
  const bool mark_is_first = place.from == mark;
  if (mark_is_first && (meaning & ImportCharacters::LineEnd) != 0) {
    end_line_at(mark, place);
    return false;
  }
  place.pen = lists_.begin_field(place.pen);
  const bool is_qualified = mark_is_first && (meaning & ImportCharacters::Qualifier) != 0;
  mode_ = is_qualified ? Mode::Qualified : Mode::Plain;
  return !is_qualified;
}

inline void ShortDelimiterReader::end_line_at(const char* mark, Place& place) {
  if (*mark == '\n' && mode_ == Mode::LineStart && std::exchange(saw_carriage_return_, false)) return;
  place.pen = end_line(place.pen, *mark == '\r');
}

// Goes on to the next field at once when its first byte shows that there is one and that it is a plain one.
inline void ShortDelimiterReader::end_field_at(const char* delimiter, Place& place) {
  if (characters_.meaning(delimiter[1]) == ImportCharacters::Text) {
    place.pen = lists_.next_field(place.pen);
    mode_ = Mode::Plain;
  } else {
    place.pen = lists_.end_field(place.pen);
    mode_ = Mode::FieldStart;
  }
}

}  // namespace plexoras
