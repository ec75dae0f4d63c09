#include "host/selected_properties.h"

#include <algorithm>

namespace plexoras {
namespace {

// The members of a dictionary that change it.
constexpr std::string_view changing_members[] = {"atPut", "putAtIndex", "removeKey", "removeAtIndex"};

}  // namespace

void SelectedProperties::store_and_tell(const std::function<void()>& store) {
  AutomationObject& control = page().selected_control();
  has_stored_ = false;
  try {
    store();
  } catch (...) {
    if (has_stored_) ignoring_errors([&] { control.call("FireCustomPropertyChange"); });
    throw;
  }
  control.call("FireCustomPropertyChange");
}

Variant SelectedProperties::get(std::string_view member) { return dictionary()->get(member); }

void SelectedProperties::put(std::string_view member, const Variant& value) { dictionary()->put(member, value); }

Variant SelectedProperties::call(std::string_view member, Arguments arguments) {
  if (member == "RaiseChangedEvent") {
    page().Changed = true;
    return {};
  }
  Variant result = dictionary()->call(member, arguments);
  has_stored_ |=
      std::find(std::begin(changing_members), std::end(changing_members), member) != std::end(changing_members);
  return result;
}

PropertyPage& SelectedProperties::page() const {
  if (page_ == nullptr) throw AutomationError(RunTimeError::ObjectNotSet, "The property page has gone");
  return *page_;
}

}  // namespace plexoras
