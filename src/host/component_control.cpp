#include "host/component_control.h"

#include <utility>

namespace plexoras {
namespace {

ObjectRef required(ObjectRef component, const std::string& name) {
  if (component == nullptr) throw AutomationError(RunTimeError::ObjectNotSet, {}, name);
  return component;
}

}  // namespace

ComponentControl::ComponentControl(ControlContainer& container, std::string name, ObjectRef component)
    : FormControl(container, std::move(name)),
      component_(required(std::move(component), this->name())),
      events_(component_, [this](std::string_view event, Arguments arguments) {
        // The handler may delete the control that it belongs to, so a copy is called and nothing follows.
        if (const auto handler = on_event) handler(event, arguments);
      }) {}

bool ComponentControl::user_call(std::string_view member, std::initializer_list<Variant> arguments) {
  if (!is_usable()) return false;
  component_->call_with(member, arguments);
  return true;
}

}  // namespace plexoras
