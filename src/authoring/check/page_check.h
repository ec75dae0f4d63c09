#pragma once

#include <string>

#include "authoring/check/check_rules.h"
#include "template/template_session.h"

namespace plexoras {

struct CheckedPage {
  std::vector<Finding> findings;
  bool is_published = false;  ///< without the state of its controls, so that there is nothing to check
};

/// Reads the controls of a page as they would be loaded for publishing, and tells what is wrong with them. Of the text
/// that readers get, the stamp of its picture alone is looked at. `bytes` are the page's; `path` is for messages.
CheckedPage check_page(TemplateSession& session, const std::string& path, std::string bytes);

}  // namespace plexoras
