#pragma once

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "host/automation.h"

namespace plexoras {

/// What the fuzzer calls with every input; each target defines it.
void try_input(std::string_view input);

/// Stops the fuzzer, which keeps the input, when what must hold does not. Unlike `assert` it is there in every build.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "ERROR: broken promise: %s\n", what);
  std::abort();
}

/// What `read` returns, or nothing when it refuses its input with error 5 and a message; nothing else may come.
template <class Read>
auto accepted(Read read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const AutomationError& error) {
    require(error.number() == RunTimeError::InvalidCall && !error.description().empty(), "a refusal is error 5");
    return std::nullopt;
  }
}

}  // namespace plexoras
