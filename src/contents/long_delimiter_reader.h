#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "contents/delimited_reader.h"

namespace plexoras {

/// Reads byte by byte and keeps in mind how much of a delimiter it has seen, so that nothing is read twice.
class LongDelimiterReader final : public DelimitedReader {
public:
  /// `delimiter` has two bytes or more.
  LongDelimiterReader(std::string delimiter, std::string_view qualifier, ImportLists& lists);

  void add(std::string_view bytes) override;
  void finish() override;

private:
  // What has become of a field that begins with all of the delimiter but its first byte.
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
  void write(std::string_view text);

  const std::string delimiter_;
  const std::vector<std::size_t> borders_;  // of the first n bytes: how many of them end them as well, all n aside
  const Beginning behind_delimiter_;
  std::size_t seen_ = 0;  // that much of the delimiter stands before the next byte; not written yet in Plain
};

}  // namespace plexoras
