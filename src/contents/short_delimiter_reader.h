#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "contents/delimited_reader.h"

namespace plexoras {

/// Looks for the bytes that mean something in blocks of 64, and copies what lies between them.
class ShortDelimiterReader final : public DelimitedReader {
public:
  ShortDelimiterReader(char delimiter, std::string_view qualifier, ImportLists& lists);

  void add(std::string_view bytes) override;
  void finish() override;

private:
  // How far a block has been read, and where writing goes on.
  struct Place {
    const char* from;
    char* pen;
  };

  std::uint64_t marks_in(const char* block) const;
  void read_block(const char* block, std::size_t size);
  void take(const char* mark, Place& place);
  bool begin_field(const char* mark, unsigned char meaning, Place& place);
  void end_line_at(const char* mark, Place& place);
  void end_field_at(const char* delimiter, Place& place);

  const char delimiter_;
  const char qualifier_;  // the delimiter again, if no qualifier can match
};

}  // namespace plexoras
