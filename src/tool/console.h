#pragma once

#include <string>
#include <string_view>

#include "host/platform.h"
#include "tool/options.h"

namespace plexoras {

/// Wrong usage of the command line: exit status 2.
class UsageError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

/// What every exit status means.
enum ExitStatus : int { exit_done = 0, exit_failed = 1, exit_usage = 2, exit_interrupted = 130 };

/// The two streams of the program. Results go to standard output, byte for byte; everything said to a person goes to
/// standard error.
class Console {
public:
  explicit Console(const CommonOptions& options);

  /// Writes to standard output. Error 75 when it cannot be written.
  void result(std::string_view bytes);
  /// An object for programs, on standard error: what a command has to tell whose result is no object.
  void aside(std::string_view json_line);
  /// A line for people; not with --quiet or --json.
  void say(std::string_view line);
  /// A line for people who asked for details.
  void detail(std::string_view line);
  /// Problems, always told. "error:" and "warning:" are coloured on a terminal.
  void problem(std::string_view text);

  const CommonOptions& options() const { return options_; }

private:
  std::string coloured(std::string_view text) const;

  CommonOptions options_;
  bool colours_ = false;
};

/// Shows the library's message boxes on standard error: the title on a line of its own, then the text as it is.
class ConsoleMessageBox final : public MessageBox {
public:
  void show(std::string_view text, std::string_view title) override;
};

/// Keeps the library's message boxes to itself, for commands that tell what went wrong in a better form.
class SilentMessageBox final : public MessageBox {
public:
  void show(std::string_view, std::string_view) override {}
};

}  // namespace plexoras
