#pragma once

#include <set>
#include <string>
#include <string_view>

#include "authoring/check/template_walk.h"

namespace plexoras {

/// Who reads a section, as far as its names depend on it.
struct NameContext {
  std::string file;  ///< that is checked; what other files define for others to use is not judged
  /// Whether all variables that come from outside are in `known`: so for the sections that a control reads.
  bool is_closed = false;
  /// Whether the section makes the text of a page.
  bool is_page_text = false;
  std::set<std::string> known = {};  ///< variables that come from outside
};

/// Judges the names that a walk has met: macros and variables that nothing defines or nothing uses, text that nothing
/// escapes, and calls that are nearly a directive.
void check_names(TemplateModel& model, const TemplateWalk& walk, const NameContext& context, Findings& findings);

}  // namespace plexoras
