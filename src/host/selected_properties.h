#pragma once

#include <functional>
#include <string_view>

#include "host/property_page.h"

namespace plexoras {

/// The custom properties of the control that a page edits, by way of the page: each call goes to the dictionary that
/// the page's selected control has by then. A control may take another dictionary while a page shows it.
///
/// A page gives it to its input form, as the form's values and as its host, which hears of edits:
///
///     properties_ = std::make_shared<SelectedProperties>(*this);
///     form->put("host", ObjectRef(properties_));
///     form->call_with("loadWindowSpec", {section, file, ObjectRef(properties_)});
///     ...
///     properties_->store_and_tell([&] { form->call("Accept"); });
///
/// Forms may hold it longer than the page lives. The page calls `let_go` in its destructor.
class SelectedProperties : public AutomationObject {
public:
  explicit SelectedProperties(PropertyPage& page) : page_(&page) {}

  /// The page goes: from now on every call is error 91.
  void let_go() { page_ = nullptr; }

  /// Runs `store`, which writes properties through this object, then calls the control's `FireCustomPropertyChange`.
  ///
  /// When `store` raises, what it stored before stays and the control is told of it, if there is anything; then the
  /// error comes out.
  void store_and_tell(const std::function<void()>& store);

  /// The members are those of the control's dictionary and `RaiseChangedEvent()`, which sets the page's `Changed`.
  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments = {}) override;

protected:
  /// Error 91 when the page has gone.
  PropertyPage& page() const;

private:
  ObjectRef dictionary() const { return page().selected_control().get("CustomProperties").to_object(); }

  PropertyPage* page_;
  bool has_stored_ = false;  // since `store_and_tell` began
};

}  // namespace plexoras
