#include "applet/text_position.h"

#include <string>

#include "host/automation.h"

namespace plexoras {

void raise_invalid_text(std::string_view text, std::size_t offset, std::string_view problem) {
  std::size_t line = 1;
  std::size_t line_start = 0;
  for (std::size_t i = 0; i < offset; ++i) {
    const bool is_first_of_pair = text.substr(i).starts_with("\r\n");
    if ((text[i] != '\r' && text[i] != '\n') || is_first_of_pair) continue;
    ++line;
    line_start = i + 1;
  }
  std::string description = std::to_string(line) + ":" + std::to_string(offset - line_start + 1) + ": ";
  description += problem;
  throw AutomationError(RunTimeError::InvalidCall, std::move(description));
}

}  // namespace plexoras
