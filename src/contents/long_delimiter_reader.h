#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "contents/delimited_reader.h"

namespace plexoras {

/// Reads byte by byte, and after a delimiter goes on behind its first character: the delimiter's first UTF-8 sequence,
/// or its first byte where that begins no valid one. The rest of the delimiter is then read once more, but only for
/// how it begins a field; how much of a delimiter has been seen is kept in mind, so that no text is read twice.
class LongDelimiterReader final : public DelimitedReader {
public:
  /// `delimiter` has two bytes or more.
  LongDelimiterReader(std::string delimiter, std::string_view qualifier, ImportLists& lists);

  void add(std::string_view bytes) override;
  void finish() override;

private:
  // What has become of what follows a delimiter's first character: the rest of the delimiter, or nothing.
  struct Beginning {
    std::string_view text;
    Mode mode;
    std::size_t seen;
  };

  std::vector<std::size_t> borders() const;
  Beginning beginning_behind_delimiter() const;
  std::size_t shortened(std::size_t seen, char next) const;
  void read(char byte);
  void end_line(char byte);
  void begin_field(char first);
  void search(char byte);
  void write(char byte) { lists_.keep(characters_.write(lists_.pen(), byte)); }
  void write(std::string_view part_of_delimiter);

  const std::string delimiter_;
  const std::vector<std::size_t> borders_;  // of the first n bytes: how many of them end them as well, all n aside
  const Beginning behind_delimiter_;
  std::size_t seen_ = 0;  // that much of the delimiter stands before the next byte; not written yet in Plain
};

}  // namespace plexoras
