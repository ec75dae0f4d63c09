#pragma once

#include "authoring/check/template_walk.h"

namespace plexoras {

/// Tells of macros and variables whose expansion meets themselves again, as far as the walk has met them. One that is
/// defined several times may be another by then, and is left alone.
void check_endless(const TemplateWalk& walk, Findings& findings);

}  // namespace plexoras
