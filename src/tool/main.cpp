#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

#include "applet/diagram_applet.h"
#include "authoring/page.h"
#include "host/headless_platform.h"
#include "tool/command_line.h"
#include "tool/commands.h"

namespace {

// Set from the signal handler, which can reach nothing else.
volatile std::sig_atomic_t interruptions = 0;

void on_interrupt(int) { interruptions = 1; }

}  // namespace

namespace plexoras {

bool interrupted() { return interruptions != 0; }

void defer_interrupts() {
  struct sigaction action = {};
  action.sa_handler = on_interrupt;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

}  // namespace plexoras

int main(int argc, char** argv) {
  using namespace plexoras;
  try {
    const std::optional<Invocation> invocation = parse_command_line(argc, argv);
    if (!invocation) return exit_done;
    Console console(invocation->common);
    try {
      HeadlessPlatform host;
      register_diagram_applet(host.components());
      return invocation->run(host, console);
    } catch (const PageError& error) {
      console.problem(std::string(error.what()) + "\n");
    } catch (const AutomationError& error) {
      console.problem("plexoras: error: " + error.description() + "\n");
    } catch (const std::bad_alloc&) {
      console.problem("plexoras: error: out of memory\n");
    }
    return exit_failed;
  } catch (const UsageError& error) {
    std::fprintf(stderr, "plexoras: error: %s\n", error.what());
    return exit_usage;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "plexoras: error: %s\n", error.what());
    return exit_failed;
  }
}
