#include "tool/line_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

#include "host/automation.h"

extern char** environ;  // NOLINT: the environment has no other name

namespace plexoras {
namespace {

[[noreturn]] void fail(RunTimeError number, const std::string& what, int reason) {
  throw AutomationError(number, what + ": " + std::generic_category().message(reason), "LineProcess");
}

[[noreturn]] void fail(const std::string& what) {
  throw AutomationError(RunTimeError::InvalidCall, what, "LineProcess");
}

// The end of a pair that stays here and the one that the program gets.
struct Ends {
  int ours = -1;
  int theirs = -1;
};

// A socket, and no pipe: a write to one that nobody reads is an error and no signal.
Ends make_ends() {
  int pair[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair) != 0) {
    fail(RunTimeError::PathFileAccess, "cannot connect to another program", errno);
  }
  return {pair[0], pair[1]};
}

// How a program is started: with the two ends as its input and output, in a process group of its own.
class SpawnPlan {
public:
  SpawnPlan(int input, int output) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes_, 0);
  }
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;

  int start(pid_t& process, const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    return posix_spawnp(&process, arguments.front(), &actions_, &attributes_, arguments.data(), environ);
  }

private:
  posix_spawn_file_actions_t actions_ = {};
  posix_spawnattr_t attributes_ = {};
};

}  // namespace

LineProcess::LineProcess(const std::vector<std::string>& command) {
  const Ends input = make_ends();
  const Ends output = make_ends();
  const int reason = SpawnPlan(input.theirs, output.theirs).start(process_, command);
  close(input.theirs);
  close(output.theirs);
  to_ = input.ours;
  from_ = output.ours;
  if (reason == 0) return;
  close(to_);
  close(from_);
  fail(reason == ENOENT ? RunTimeError::FileNotFound : RunTimeError::PathFileAccess,
       "cannot start \"" + command.front() + "\"", reason);
}

LineProcess::~LineProcess() {
  close(to_);
  constexpr int patience = 2000;  // milliseconds
  pollfd output{.fd = from_, .events = POLLIN, .revents = 0};
  char byte = 0;
  const bool has_ended = poll(&output, 1, patience) > 0 && read(from_, &byte, 1) == 0;
  if (!has_ended) kill(process_, SIGKILL);
  close(from_);
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
}

std::string LineProcess::ask(std::string_view line, std::chrono::milliseconds limit) {
  const Deadline deadline = std::chrono::steady_clock::now() + limit;
  send(line, deadline);
  send("\n", deadline);
  return receive_line(deadline);
}

void LineProcess::send(std::string_view bytes, Deadline deadline) const {
  while (!bytes.empty()) {
    wait_for(to_, POLLOUT, deadline);
    const ssize_t sent = ::send(to_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
    if (sent < 0 && errno != EAGAIN && errno != EINTR) fail("the program has ended");
  }
}

std::string LineProcess::receive_line(Deadline deadline) {
  std::size_t looked_at = 0;
  std::size_t end = 0;
  while ((end = received_.find('\n', looked_at)) == std::string::npos) {
    looked_at = received_.size();
    wait_for(from_, POLLIN, deadline);
    char piece[65536];
    const ssize_t size = read(from_, piece, sizeof piece);
    if (size > 0) received_.append(piece, static_cast<std::size_t>(size));
    if (size == 0 || (size < 0 && errno != EINTR)) fail("the program has ended");
  }
  std::string line = received_.substr(0, end);
  received_.erase(0, end + 1);
  return line;
}

void LineProcess::wait_for(int descriptor, short event, Deadline deadline) {
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    pollfd state{.fd = descriptor, .events = event, .revents = 0};
    const int ready = left > 0 ? poll(&state, 1, static_cast<int>(left)) : 0;
    if (ready > 0) return;
    if (ready == 0) fail("the program takes too long");
    if (errno != EINTR) fail("the program cannot be reached");
  }
}

}  // namespace plexoras
