#include "host/property_page.h"

#include <utility>

namespace plexoras {

void PropertyPage::select(std::vector<ObjectRef> controls) {
  SelectedControls = std::move(controls);
  SelectionChanged();
  Changed = false;
}

void PropertyPage::apply() {
  ApplyChanges();
  Changed = false;
}

AutomationObject& PropertyPage::selected_control() const {
  if (SelectedControls.empty() || SelectedControls.front() == nullptr) {
    throw AutomationError(RunTimeError::ObjectNotSet, "No control is selected", caption);
  }
  return *SelectedControls.front();
}

}  // namespace plexoras
