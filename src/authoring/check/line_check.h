#pragma once

#include "authoring/check/template_model.h"

namespace plexoras {

/// Tells what is wrong with a directive by itself, wherever it stands: its keyword, and the parts that it needs.
void check_directive(const TemplatePlace& line, Findings& findings);

/// Tells what is wrong with a reference by itself: `use` is one that stands in the line.
void check_reference(const TemplateUse& use, const TemplatePlace& line, Findings& findings);

}  // namespace plexoras
