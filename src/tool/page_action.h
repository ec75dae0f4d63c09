#pragma once

#include <string>

#include "authoring/form_driver.h"
#include "tool/options.h"

namespace plexoras {

/// An author's action as it was typed.
struct TypedAction {
  FormAction action;
  std::string text;  ///< "--click cmdOK", for messages
};

/// Reads an action of the command line. Raises `UsageError` for a text that names no control, or arguments that cannot
/// be read.
TypedAction parse_action(const PageActionText& typed);

}  // namespace plexoras
