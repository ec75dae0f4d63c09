#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "authoring/page.h"
#include "template/diagnostic.h"

namespace plexoras {

/// The version of every object that --json prints; within one, members are only added.
inline constexpr int json_version = 1;

nlohmann::json to_json(const Diagnostic& diagnostic);
nlohmann::json to_json(const PageProblem& problem);

/// One line of JSON. Bytes that are no UTF-8 become U+FFFD: JSON cannot carry them.
std::string json_line(const nlohmann::json& value);

}  // namespace plexoras
