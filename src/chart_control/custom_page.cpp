#include "chart_control/custom_page.h"

#include <utility>

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
    if (member == "RaiseChangedEvent") {
      page_.Changed = true;
      return {};
    }
    const Variant result = properties()->call(member, arguments);
    has_stored_ |= member == "atPut";
    return result;
  }

  /// Whether the form has stored anything since this was last asked.
  bool has_stored() { return std::exchange(has_stored_, false); }

private:
  ObjectRef properties() const { return page_.selected_control().get("CustomProperties").to_object(); }

  Custom& page_;
  bool has_stored_ = false;
};

Custom::Custom(const ComponentRegistry& components)
    : customizer_(components.create(CustomizerControl::identifier)),
      callbacks_(std::make_shared<Callbacks>(*this)),
      host_(add<FormHost>("customizer", form_of(customizer_))) {
  caption = "Custom";
  host_.placement = {.left = 0, .top = 0};  // and all of the page
  customizer_->put("host", Variant(ObjectRef(callbacks_)));
}

void Custom::SelectionChanged() {
  AutomationObject& control = selected_control();
  customizer_->call_with("loadWindowSpec", {control.get("advancedSpecSection").to_text(),
                                            control.get("templateFile").to_text(), ObjectRef(callbacks_)});
  Changed = false;
}

void Custom::ApplyChanges() {
  callbacks_->has_stored();
  try {
    customizer_->call("Accept");
  } catch (...) {
    // What was stored before the refusal stays, and is to be saved.
    if (callbacks_->has_stored()) {
      ignoring_errors([&] { selected_control().call("FireCustomPropertyChange"); });
    }
    throw;
  }
  selected_control().call("FireCustomPropertyChange");
}

}  // namespace plexoras
