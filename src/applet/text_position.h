#pragma once

#include <cstddef>
#include <string_view>

namespace plexoras {

/// Raises error 5 for the byte at `offset` of `text`: "line:column: problem".
///
/// Lines and columns count from 1, columns in bytes; CR LF, CR and LF each end a line. Linear in `offset`.
[[noreturn]] void raise_invalid_text(std::string_view text, std::size_t offset, std::string_view problem);

}  // namespace plexoras
