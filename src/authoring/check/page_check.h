#pragma once

#include <string>

#include "authoring/check/check_rules.h"
#include "template/template_session.h"

namespace plexoras {

/// Reads the controls of a page as they would be loaded for publishing, and tells what is wrong with them. The text
/// that readers get is not looked at. `bytes` are the page's; `path` is for messages.
std::vector<Finding> check_page(TemplateSession& session, const std::string& path, std::string bytes);

}  // namespace plexoras
