#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "authoring/form_driver.h"

namespace plexoras {

/// A form for people: a line a control, with its caption, value, whether it can be used, and choices; what stands in a
/// frame is indented. Hidden controls are left out, long values cut, and of many choices the first ones shown.
std::string form_text(const ListedForm& form);

/// A form for programs: all of it. Members that a kind of control does not have are left out.
nlohmann::json to_json(const ListedForm& form);

}  // namespace plexoras
