#include "contents/long_delimiter_reader.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "host/utf8.h"

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
  const std::string_view rest =
      std::string_view(delimiter_).substr(std::max<std::size_t>(1, utf8_length(delimiter_, 0)));
  if (rest.empty()) return {rest, Mode::FieldStart, 0};
  if (!characters_.is(ImportCharacters::Qualifier, rest[0])) {
    // No delimiter begins inside its first character, so what it ends with lies in the rest.
    const std::size_t seen = borders_.back();
    assert(seen <= rest.size());
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
  while (!bytes.empty()) {
    const std::string_view step = bytes.substr(0, ImportLists::input_step);
    lists_.make_room(lists_.pen());
    for (const char byte : step) read(byte);
    bytes.remove_prefix(step.size());
  }
}

void LongDelimiterReader::finish() {
  lists_.make_room(lists_.pen());
  if (mode_ != Mode::LineStart) end_line('\n');
}

void LongDelimiterReader::read(char byte) {
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
        write(byte);
      }
      break;
  }
}

void LongDelimiterReader::end_line(char byte) {
  if (byte == '\n' && mode_ == Mode::LineStart && std::exchange(saw_carriage_return_, false)) return;
  if (mode_ == Mode::Plain) write(std::string_view(delimiter_).substr(0, seen_));
  seen_ = 0;
  lists_.keep(DelimitedReader::end_line(lists_.pen(), byte == '\r'));
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
    if (!goes_on) write(byte);
  }
  seen_ = goes_on ? still_seen + 1 : 0;
  if (seen_ < delimiter_.size()) return;

  // Kept: reading goes on behind the delimiter's first character, so that the rest of it is text of the next field.
  mode_ = behind_delimiter_.mode;
  const bool next_has_begun = mode_ != Mode::FieldStart;
  lists_.keep(next_has_begun ? lists_.next_field(lists_.pen()) : lists_.end_field(lists_.pen()));
  seen_ = behind_delimiter_.seen;
  write(behind_delimiter_.text);
}

// The part may be longer than a step, so it makes room for itself, and afterwards for what is left of the step.
void LongDelimiterReader::write(std::string_view part_of_delimiter) {
  if (part_of_delimiter.empty()) return;
  while (!part_of_delimiter.empty()) {
    lists_.make_room(lists_.pen());
    const std::string_view step = part_of_delimiter.substr(0, ImportLists::input_step);
    for (const char byte : step) write(byte);
    part_of_delimiter.remove_prefix(step.size());
  }
  lists_.make_room(lists_.pen());
}

}  // namespace plexoras
