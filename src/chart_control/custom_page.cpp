#include "chart_control/custom_page.h"

#include "template/customizer_control.h"

namespace plexoras {

Custom::Custom(const ComponentRegistry& components)
    : customizer_(components.create(CustomizerControl::identifier)),
      properties_(std::make_shared<SelectedProperties>(*this)),
      host_(add<FormHost>("customizer", form_of(customizer_))) {
  caption = "Custom";
  host_.placement = {.left = 0, .top = 0};  // and all of the page
  customizer_->put("host", ObjectRef(properties_));
}

void Custom::SelectionChanged() {
  // What shows another control's values must not be applied to this one, whatever comes now.
  customizer_->call("Clear");
  AutomationObject& control = selected_control();
  customizer_->call_with("loadWindowSpec", {control.get("advancedSpecSection").to_text(),
                                            control.get("templateFile").to_text(), ObjectRef(properties_)});
  Changed = false;
}

void Custom::ApplyChanges() {
  properties_->store_and_tell([this] { customizer_->call("Accept"); });
}

}  // namespace plexoras
