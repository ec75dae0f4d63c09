#pragma once

#include <string>
#include <vector>

#include "host/form.h"

namespace plexoras {

/// A page on which an author edits properties of the selected controls.
///
/// The host makes the page, calls `select` when the selection changes and `apply` when the author applies. In between
/// it shows the page and may read `Changed` to enable its apply button. What a control raises passes through.
class PropertyPage : public Form {
public:
  /// Whether the author has edited anything since the page was last loaded or applied. Handlers set it.
  bool Changed = false;
  /// The controls that the page edits. They are set before `SelectionChanged`; pages use the first one alone.
  std::vector<ObjectRef> SelectedControls;

  /// Reads the selected controls into the page.
  virtual void SelectionChanged() = 0;
  /// Writes the page into the selected controls.
  virtual void ApplyChanges() = 0;

  /// Loads the page from `controls`. Loading is no edit: `Changed` is false afterwards.
  void select(std::vector<ObjectRef> controls);
  /// Applies the page. `Changed` is false afterwards, but stays as it is when applying fails.
  void apply();
  /// The first selected control; error 91 when nothing is selected.
  AutomationObject& selected_control() const;
};

}  // namespace plexoras
