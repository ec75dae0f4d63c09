#pragma once

#include <string>

#include "host/automation.h"

namespace plexoras {

/// What `step` was refused with, as "number description"; empty when it was not.
template <class Step>
std::string refusal(Step step) {
  try {
    step();
    return {};
  } catch (const AutomationError& error) {
    return std::to_string(static_cast<int>(error.number())) + " " + error.description();
  }
}

/// `part`, `count` times over.
inline std::string repeated(const std::string& part, std::size_t count) {
  std::string text;
  text.reserve(part.size() * count);
  for (std::size_t i = 0; i < count; ++i) text += part;
  return text;
}

}  // namespace plexoras
