#include "tool/console.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace plexoras {
namespace {

void write_to(std::FILE* stream, std::string_view bytes) { std::fwrite(bytes.data(), 1, bytes.size(), stream); }

bool wants_colours(const std::string& choice) {
  if (choice != "auto") return choice == "always";
  const char* const no_color = std::getenv("NO_COLOR");
  const char* const term = std::getenv("TERM");
  const bool refused =
      (no_color != nullptr && *no_color != '\0') || (term != nullptr && std::strcmp(term, "dumb") == 0);
  return !refused && isatty(STDERR_FILENO) != 0;
}

struct Highlight {
  std::string_view word;
  std::string_view colour;
};
constexpr Highlight highlights[] = {
    {": error: ", "\x1b[1;31m"}, {": warning: ", "\x1b[1;33m"}, {": note: ", "\x1b[1;36m"}};

}  // namespace

Console::Console(const CommonOptions& options) : options_(options), colours_(wants_colours(options.color)) {}

void Console::result(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0) return;
  throw AutomationError(RunTimeError::PathFileAccess,
                        std::string("standard output cannot be written: ") + std::strerror(errno));
}

void Console::aside(std::string_view json_line) { write_to(stderr, json_line); }

void Console::say(std::string_view line) {
  if (options_.quiet || options_.json) return;
  write_to(stderr, std::string(line) + "\n");
}

void Console::detail(std::string_view line) {
  if (options_.verbose) write_to(stderr, std::string(line) + "\n");
}

void Console::problem(std::string_view text) { write_to(stderr, coloured(text)); }

std::string Console::coloured(std::string_view text) const {
  std::string out(text);
  if (!colours_) return out;
  for (const Highlight& highlight : highlights) {
    std::size_t at = 0;
    while ((at = out.find(highlight.word, at)) != std::string::npos) {
      const std::string shown = ": " + std::string(highlight.colour) +
                                std::string(highlight.word.substr(2, highlight.word.size() - 3)) + "\x1b[0m ";
      out.replace(at, highlight.word.size(), shown);
      at += shown.size();
    }
  }
  return out;
}

void ConsoleMessageBox::show(std::string_view text, std::string_view title) {
  if (!title.empty()) write_to(stderr, std::string(title) + "\n");
  write_to(stderr, text);
  if (!text.ends_with('\n')) write_to(stderr, "\n");
}

}  // namespace plexoras
