#pragma once

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>
#include <string_view>

#include "authoring/check/check_rules.h"
#include "authoring/page.h"
#include "template/diagnostic.h"

namespace plexoras {

/// The version of every object that --json prints; within one, members are only added.
inline constexpr int json_version = 1;

nlohmann::json to_json(const Diagnostic& diagnostic);
nlohmann::json to_json(const PageProblem& problem);
nlohmann::json to_json(const Finding& finding);
nlohmann::json to_json(std::span<const Diagnostic> diagnostics);
nlohmann::json to_json(std::span<const PageProblem> problems);
/// What stopped a command: the object that --json prints in place of a result.
nlohmann::json failure_json(std::span<const PageProblem> problems);
/// The same of a failure that has no place in a file.
nlohmann::json failure_json(std::string_view message);
/// The same of something that does not stop it.
nlohmann::json warning_json(std::string_view message);

/// One line of JSON. Bytes that are no UTF-8 become U+FFFD: JSON cannot carry them.
std::string json_line(const nlohmann::json& value);

}  // namespace plexoras
