#pragma once

#include <set>
#include <string>

#include "authoring/check/template_walk.h"

namespace plexoras {

/// What a control's form stands on, as far as it can be known without running anything.
struct FormContext {
  std::set<std::string> properties = {};    ///< that section PROPERTY declares
  bool knows_properties = false;            ///< whether those are all
  const TemplateWalk* constants = nullptr;  ///< section CONSTANT of the form's file
};

/// Tells what the form of a control cannot read in its window-spec, in all branches of its conditions, and settings
/// that would not be kept. Values that hang on what an author has set are left alone.
void check_form(const TemplateWalk& form, const FormContext& context, Findings& findings);

}  // namespace plexoras
