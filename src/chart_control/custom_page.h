#pragma once

#include <memory>

#include "host/hosted_form.h"
#include "host/platform.h"
#include "host/property_page.h"
#include "host/selected_properties.h"

namespace plexoras {

/// The property page for the custom properties that a control's template declares: the input form that the template
/// describes, and nothing else.
///
/// It reaches the selected control by member name alone (`templateFile`, `advancedSpecSection`, `CustomProperties`,
/// `FireCustomPropertyChange`), so it serves any control that has custom properties. It keeps no values: what is
/// applied goes into the control's dictionary.
class Custom final : public PropertyPage {
public:
  /// Makes its form by `components`, as "PlexorasDTC.CustomizerControl"; error 429 when there is none.
  explicit Custom(const ComponentRegistry& components);
  ~Custom() override { properties_->let_go(); }

  /// Builds the form for the selected control. After an error the form is empty.
  void SelectionChanged() override;
  /// Has the form store what has been edited, then tells the selected control. Error 5 when a value cannot be
  /// stored. When the control refuses one midway, those stored before it stay, the control is told of them, and the
  /// error comes out.
  void ApplyChanges() override;

private:
  const ObjectRef customizer_;
  const std::shared_ptr<SelectedProperties> properties_;
  FormHost& host_;
};

}  // namespace plexoras
