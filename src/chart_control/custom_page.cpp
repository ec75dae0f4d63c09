#include "chart_control/custom_page.h"

#include "template/customizer_control.h"

namespace plexoras {

/// What the page offers the form: it hears of edits, and is the selected control's dictionary by way of the control,
/// which may have taken another one since the form was built.
class Custom::Callbacks final : public AutomationObject {
public:
  explicit Callbacks(Custom& page) : page_(page) {}

  Variant get(std::string_view member) override { return properties()->get(member); }
  void put(std::string_view member, const Variant& value) override { properties()->put(member, value); }
  Variant call(std::string_view member, Arguments arguments) override {
    if (member != "RaiseChangedEvent") return properties()->call(member, arguments);
    page_.Changed = true;
    return {};
  }

private:
  ObjectRef properties() const { return page_.selected_control().get("CustomProperties").to_object(); }

  Custom& page_;
};

Custom::Custom(const ComponentRegistry& components)
    : customizer_(components.create(CustomizerControl::identifier)),
      callbacks_(std::make_shared<Callbacks>(*this)),
      host_(add<FormHost>("customizer", form_of(customizer_))) {
  caption = "Custom";
  host_.placement = {.left = 0, .top = 0};  // and all of the page
  customizer_->put("host", Variant(ObjectRef(callbacks_)));
}

// The form is the page's own; nobody else calls the page through it once the page has gone.
Custom::~Custom() {
  ignoring_errors([&] { customizer_->put("host", Variant(ObjectRef())); });
}

void Custom::SelectionChanged() {
  AutomationObject& control = selected_control();
  customizer_->call_with("loadWindowSpec", {control.get("advancedSpecSection").to_text(),
                                            control.get("templateFile").to_text(), ObjectRef(callbacks_)});
  Changed = false;
}

void Custom::ApplyChanges() {
  customizer_->call("Accept");
  selected_control().call("FireCustomPropertyChange");
}

}  // namespace plexoras
