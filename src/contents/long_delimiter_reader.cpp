#include "contents/long_delimiter_reader.h"

#include <cassert>
#include <utility>

namespace plexoras {

LongDelimiterReader::LongDelimiterReader(std::string delimiter, std::string_view qualifier, ImportLists& lists)
    : DelimitedReader(delimiter, qualifier, lists),
      delimiter_(std::move(delimiter)),
      borders_(borders()),
      behind_delimiter_(beginning_behind_delimiter()) {
  assert(delimiter_.size() > 1);
}

std::vector<std::size_t> LongDelimiterReader::borders() const {
  std::vector<std::size_t> borders(delimiter_.size() + 1, 0);
  for (std::size_t length = 2; length <= delimiter_.size(); ++length) {
    const char last = delimiter_[length - 1];
    std::size_t border = borders[length - 1];
    while (border > 0 && delimiter_[border] != last) border = borders[border];
    borders[length] = delimiter_[border] == last ? border + 1 : 0;
  }
  return borders;
}

LongDelimiterReader::Beginning LongDelimiterReader::beginning_behind_delimiter() const {
  const std::string_view rest = std::string_view(delimiter_).substr(1);
  if (!characters_.is(ImportCharacters::Qualifier, rest[0])) {
    const std::size_t seen = borders_.back();
    return {rest.substr(0, rest.size() - seen), Mode::Plain, seen};
  }
  const std::size_t closing = rest.find(rest[0], 1);
  if (closing == std::string_view::npos) return {rest.substr(1), Mode::Qualified, 0};
  std::size_t seen = 0;
  for (const char byte : rest.substr(closing + 1)) {
    seen = shortened(seen, byte);
    if (delimiter_[seen] == byte) ++seen;
  }
  return {rest.substr(1, closing - 1), Mode::Dropped, seen};
}

// How much of the delimiter still counts when `next` follows: as much as makes it the next byte, or nothing.
std::size_t LongDelimiterReader::shortened(std::size_t seen, char next) const {
  while (seen > 0 && delimiter_[seen] != next) seen = borders_[seen];
  return seen;
}

void LongDelimiterReader::add(std::string_view bytes) {
  for (const char byte : bytes) read(byte);
}

void LongDelimiterReader::finish() {
  if (mode_ != Mode::LineStart) end_line('\n');
}

void LongDelimiterReader::read(char byte) {
  lists_.keep(lists_.make_room(lists_.pen()));
  if (characters_.is(ImportCharacters::LineEnd, byte)) return end_line(byte);
  switch (mode_) {
    case Mode::LineStart:
    case Mode::FieldStart:
      begin_field(byte);
      break;
    case Mode::Plain:
    case Mode::Dropped:
      search(byte);
      break;
    case Mode::Qualified:
      if (characters_.is(ImportCharacters::Qualifier, byte)) {
        mode_ = Mode::Dropped;
      } else {
        write({&byte, 1});
      }
      break;
  }
}

void LongDelimiterReader::end_line(char byte) {
  if (byte == '\n' && mode_ == Mode::LineStart && std::exchange(saw_carriage_return_, false)) return;
  if (mode_ == Mode::Plain) write(std::string_view(delimiter_).substr(0, seen_));
  seen_ = 0;
  lists_.keep(DelimitedReader::end_line(lists_.make_room(lists_.pen()), byte == '\r'));
}

void LongDelimiterReader::begin_field(char first) {
  lists_.keep(lists_.begin_field(lists_.pen()));
  if (characters_.is(ImportCharacters::Qualifier, first)) {
    mode_ = Mode::Qualified;
  } else {
    mode_ = Mode::Plain;
    search(first);
  }
}

void LongDelimiterReader::search(char byte) {
  const std::size_t still_seen = shortened(seen_, byte);
  const bool goes_on = delimiter_[still_seen] == byte;
  if (mode_ == Mode::Plain) {
    write(std::string_view(delimiter_).substr(0, seen_ - still_seen));
    if (!goes_on) write({&byte, 1});
  }
  seen_ = goes_on ? still_seen + 1 : 0;
  if (seen_ < delimiter_.size()) return;

  // Kept: reading goes on one byte behind the delimiter's beginning, so that the rest of it is text of the next field.
  lists_.keep(lists_.next_field(lists_.make_room(lists_.pen())));
  mode_ = behind_delimiter_.mode;
  seen_ = behind_delimiter_.seen;
  write(behind_delimiter_.text);
}

void LongDelimiterReader::write(std::string_view text) {
  char* pen = lists_.pen();
  for (const char byte : text) pen = characters_.write(lists_.make_room(pen), byte);
  lists_.keep(pen);
}

}  // namespace plexoras
