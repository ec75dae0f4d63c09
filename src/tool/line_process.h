#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace plexoras {

/// A program that answers each line on its standard input by a line on its standard output. It runs as long as this
/// object lives; what it writes to standard error is lost. Ctrl-C at the terminal does not reach it.
///
///     LineProcess process({"node", "draw.mjs"});
///     const std::string answer = process.ask("{}", std::chrono::seconds(30));
class LineProcess {
public:
  /// Starts `command`: the program, which is looked for in PATH, and its arguments. No shell is involved. Error 53 when
  /// there is no such program, 75 when it cannot be run.
  explicit LineProcess(const std::vector<std::string>& command);
  /// Ends the program by the end of its input or, where that does not help at once, by force.
  ~LineProcess();
  LineProcess(const LineProcess&) = delete;
  LineProcess& operator=(const LineProcess&) = delete;

  /// The answer to `line`, both without their line ends. Error 5 when the program ends, or takes longer than `limit`:
  /// it must not be asked again then.
  std::string ask(std::string_view line, std::chrono::milliseconds limit);

private:
  using Deadline = std::chrono::steady_clock::time_point;

  void send(std::string_view bytes, Deadline deadline) const;
  std::string receive_line(Deadline deadline);
  static void wait_for(int descriptor, short event, Deadline deadline);

  pid_t process_ = -1;
  int to_ = -1;
  int from_ = -1;
  std::string received_;  // behind the last answer
};

}  // namespace plexoras
