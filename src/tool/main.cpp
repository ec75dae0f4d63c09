#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <nlohmann/json.hpp>

#include "applet/diagram_applet.h"
#include "authoring/page.h"
#include "host/headless_platform.h"
#include "tool/command_line.h"
#include "tool/commands.h"
#include "tool/json_text.h"

namespace {

// Set from the signal handler, which can reach nothing else.
volatile std::sig_atomic_t interruptions = 0;

void on_interrupt(int) { interruptions = 1; }

// Says what stopped a command, as an object where objects are wanted.
int failed(plexoras::Console& console, const std::string& text, const nlohmann::json& object) {
  if (console.options().json) {
    console.result(plexoras::json_line(object));
  } else {
    console.problem(text + "\n");
  }
  return plexoras::exit_failed;
}

}  // namespace

namespace plexoras {

bool interrupted() { return interruptions != 0; }

void defer_interrupts() {
  struct sigaction action = {};
  action.sa_handler = on_interrupt;
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);  // a write at hand is finished
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

}  // namespace plexoras

int main(int argc, char** argv) {
  using namespace plexoras;
  std::signal(SIGPIPE, SIG_DFL);  // a reader that has seen enough ends the program quietly, whoever started it
  try {
    const std::optional<Invocation> invocation = parse_command_line(argc, argv);
    if (!invocation) return exit_done;
    Console console(invocation->common);
    try {
      HeadlessPlatform host;
      register_diagram_applet(host.components());
      return invocation->run(host, console);
    } catch (const PageError& error) {
      return failed(console, error.what(), failure_json(error.problems()));
    } catch (const AutomationError& error) {
      return failed(console, "plexoras: error: " + error.description(), failure_json(error.description()));
    } catch (const std::bad_alloc&) {
      return failed(console, "plexoras: error: out of memory", failure_json("out of memory"));
    }
  } catch (const UsageError& error) {
    std::fprintf(stderr, "plexoras: error: %s\n", error.what());
    return exit_usage;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "plexoras: error: %s\n", error.what());
    return exit_failed;
  }
}
