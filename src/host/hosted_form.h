#pragma once

#include <memory>
#include <string_view>

#include "host/form.h"

namespace plexoras {

/// A form that a component registry makes by its identifier, to be shown inside another form (`FormHost`).
///
/// Whoever hosts it reaches its operations by member name, as of any component, and gives it the object that it is to
/// call back as `host`. It lives as long as somebody holds it.
class HostedForm : public Form, public AutomationObject {
public:
  /// What hears of the form's events, and answers its questions where it has some; null: nobody.
  ObjectRef host;

  /// Drops `host`. A form that got more from there drops that, too.
  void leave_host() override { host = nullptr; }

protected:
  /// Calls the member `event` of the host, if there is one. Handlers may put another host in its place.
  void tell_host(std::string_view event) const {
    if (const ObjectRef listener = host) listener->call(event);
  }
};

/// The row for `host` in the member table of a hosted form. Nothing and a null object take the host away.
template <class Hosted>
constexpr Member<Hosted> host_member = {"host", [](Hosted& form) { return Variant(form.host); },
                                        [](Hosted& form, const Variant& value) {
                                          const bool is_none = value.is_nothing() || value == Variant(ObjectRef());
                                          form.host = is_none ? nullptr : value.to_object();
                                        }};

/// The form behind a component, for a `FormHost`; null when the component is none.
inline std::shared_ptr<Form> form_of(const ObjectRef& component) {
  return std::dynamic_pointer_cast<HostedForm>(component);
}

}  // namespace plexoras
