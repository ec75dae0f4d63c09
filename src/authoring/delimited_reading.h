#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plexoras {

/// A setting that was decided on, and what spoke for it.
template <class Value>
struct Decided {
  Value value;
  std::string reason;
};

/// The reason for a setting that was given.
inline constexpr const char* as_given = "as given";

/// The first lines of a delimited text, as views of it.
struct DelimitedSample {
  std::vector<std::string_view> lines;
  bool is_all = true;          ///< there are no more of them
  std::size_t empty_line = 0;  ///< the number of the first empty line, from 1; 0 when there is none
};

/// The lines of `text`, which is all of it if `is_whole`. A line that is cut off is left out, unless it is the only
/// one.
DelimitedSample sample_of(std::string_view text, bool is_whole);

struct DelimitedField {
  std::string_view text;
  bool is_opened = false;    ///< it begins with the qualifier
  bool is_enclosed = false;  ///< and ends with it
  bool is_doubled = false;   ///< a second one follows the one that ends it
  bool is_unclosed = false;  ///< no second one is on the line
};

struct DelimitedLine {
  std::vector<DelimitedField> fields;
  bool ends_in_delimiter = false;

  /// With the empty field behind a delimiter at the end, which an import leaves out.
  std::size_t count() const { return fields.size() + (ends_in_delimiter ? 1 : 0); }
};

/// The fields of `line` by the rules of `DelimitedImport`.
DelimitedLine split(std::string_view line, std::string_view delimiter, std::string_view qualifier);

/// The lines of a sample as they read with a delimiter and a qualifier.
struct DelimitedReading {
  Decided<std::string> delimiter;
  Decided<std::string> qualifier;
  std::vector<DelimitedLine> lines;
  std::size_t columns = 0;   ///< the number of fields that most lines have
  std::size_t agreeing = 0;  ///< lines with that number
  std::size_t filled = 0;    ///< lines that are not empty
  double typed = 0;          ///< the share of cells that are numbers, dates or enclosed in qualifiers
};

/// How many cells are looked at for what they hold.
inline constexpr std::size_t most_typed_cells = 2000;

/// The reading that makes the most even table; of a delimiter or qualifier that is given no other is tried.
DelimitedReading best_reading(const DelimitedSample& sample, const std::optional<std::string>& delimiter,
                              const std::optional<std::string>& qualifier);

/// "1 field", "3 fields".
std::string counted(std::size_t count, const char* one, const char* many);

}  // namespace plexoras
