#pragma once

#include <functional>
#include <optional>

#include "tool/options.h"

namespace plexoras {

class Console;
class HeadlessPlatform;

/// What the command line asks for.
struct Invocation {
  CommonOptions common;
  /// Runs the command with the options it was given.
  std::function<int(HeadlessPlatform&, Console&)> run;
};

/// Reads the command line. Help and the version are printed here; nothing is left to run then, and the result is
/// empty. Raises `UsageError` for what cannot be read, with a suggestion where a word is nearly right.
std::optional<Invocation> parse_command_line(int argc, const char* const* argv);

}  // namespace plexoras
