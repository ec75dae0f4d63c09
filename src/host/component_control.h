#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "host/component_events.h"
#include "host/form.h"

namespace plexoras {

/// The place on a form of a component that is reached by member name, such as the grid of a table editor.
///
/// It hears the component's events (see `ComponentEvents`) for as long as it lives.
class ComponentControl final : public FormControl {
public:
  /// The component is held as long as this control. Error 91 for a null one.
  ComponentControl(ControlContainer& container, std::string name, ObjectRef component);
  std::string_view kind() const override { return "ComponentControl"; }

  AutomationObject& component() const { return *component_; }

  /// An event of the component, by its name ("SelectionChange").
  ComponentEvents::Handler on_event;

  /// Calls a member of the component for what a user has done in its place, such as selecting a cell of a grid. False,
  /// without a call, when the control cannot be used.
  bool user_call(std::string_view member, std::initializer_list<Variant> arguments = {});

private:
  ObjectRef component_;
  ComponentEvents events_;
};

}  // namespace plexoras
