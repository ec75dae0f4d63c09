#pragma once

#include <optional>
#include <string_view>

namespace plexoras {

/// The day that `text` stands for, in milliseconds from the start of 1970 (UTC) to the start of that day or, for a
/// number, to the number itself:
///
/// | text | day |
/// |---|---|
/// | `2024-05-17` | as it stands |
/// | `2024-05-17T23:30-05:00`, `2024-05-17 23:30` | as it stands; the time and its zone do not count |
/// | `2024-05`, `2024` | the first of the month or year |
/// | `1715904000000`, `-1.5e9` | a number of milliseconds since 1970, within 8.64e15 of it |
///
/// Nothing for any other text, and for a day that is in no calendar.
std::optional<double> date_of(std::string_view text);

}  // namespace plexoras
