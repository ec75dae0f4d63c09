#pragma once

#include <string>
#include <string_view>

#include "authoring/check/template_model.h"

namespace plexoras {

/// Reads template file `file` and all that its sections include, and tells what is wrong with it.
///
/// Its sections are read as a control reads them, with the variables that a control sets; those that no control reads,
/// as `plexoras expand` does. `model` looks for files beside this one first. A file that cannot be read raises what the
/// file system does; one that is not there is a finding.
void check_template(TemplateModel& model, std::string_view file, std::string_view path, std::string_view bytes,
                    Findings& findings);

}  // namespace plexoras
