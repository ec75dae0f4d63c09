#pragma once

#include <string>

#include "host/automation.h"

namespace plexoras {

/// What `action` returns, or "error NUMBER: description" when it raises one.
template <class Action>
std::string outcome(Action action) {
  try {
    return action();
  } catch (const AutomationError& error) {
    return "error " + std::to_string(static_cast<int>(error.number())) + ": " + error.description();
  }
}

/// The same without the description.
template <class Action>
std::string brief_outcome(Action action) {
  const std::string text = outcome(action);
  return text.starts_with("error ") ? text.substr(0, text.find(':')) : text;
}

}  // namespace plexoras
