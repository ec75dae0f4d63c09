#pragma once

#include <memory>

#include "host/form.h"

namespace plexoras {

/// A form that a component registry makes by its identifier, to be shown inside another form (`FormHost`).
///
/// Whoever hosts it reaches its operations by member name, as of any component, and gives it the object that it is to
/// call back as `host`. It lives as long as somebody holds it.
class HostedForm : public Form, public AutomationObject {};

/// The form behind a component, for a `FormHost`; null when the component is none.
inline std::shared_ptr<Form> form_of(const ObjectRef& component) {
  return std::dynamic_pointer_cast<HostedForm>(component);
}

}  // namespace plexoras
