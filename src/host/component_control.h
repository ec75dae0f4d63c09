#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "host/form.h"

namespace plexoras {

/// The place on a form of a component that is reached by member name, such as the grid of a table editor.
///
/// A component that has events takes an object by its member `setEventSink` and calls the event's name on it, with the
/// event's arguments; this control is the one who gives it that object, and takes it back when it goes. A component
/// without that member has no events.
class ComponentControl final : public FormControl {
public:
  /// The component is held as long as this control. Error 91 for a null one.
  ComponentControl(ControlContainer& container, std::string name, ObjectRef component);
  /// Takes the event object back: the component calls nothing from then on, and what it raises there is ignored.
  ~ComponentControl() override;
  std::string_view kind() const override { return "ComponentControl"; }

  AutomationObject& component() const { return *component_; }

  /// An event of the component, by its name ("SelectionChange").
  std::function<void(std::string_view event, Arguments arguments)> on_event;

  /// Calls a member of the component for what a user has done in its place, such as selecting a cell of a grid. False,
  /// without a call, when the control cannot be used.
  bool user_call(std::string_view member, std::initializer_list<Variant> arguments = {});

private:
  class Sink;

  ObjectRef component_;
  std::shared_ptr<Sink> sink_;
};

}  // namespace plexoras
