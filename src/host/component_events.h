#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "host/automation.h"

namespace plexoras {

/// Hears the events of a component that is reached by member name, for as long as it lives.
///
/// A component that has events takes an object by its member `setEventSink` and calls the event's name on it, with the
/// event's arguments. This is the one who gives it that object, and takes it back when it goes. A component without
/// that member has no events.
class ComponentEvents {
public:
  /// What is called for an event, by its name ("SelectionChange"). It may delete the `ComponentEvents` that calls it.
  /// What it raises comes through to the component.
  using Handler = std::function<void(std::string_view event, Arguments arguments)>;

  /// The component, which is not null, is held until this goes. What it raises, but for error 438, comes out, and
  /// `handler` is not called then, even if the component has kept the event object.
  ComponentEvents(ObjectRef component, Handler handler);
  /// Takes the event object back: the component calls nothing from then on, and what it raises there is ignored.
  ~ComponentEvents();
  ComponentEvents(const ComponentEvents&) = delete;
  ComponentEvents& operator=(const ComponentEvents&) = delete;

private:
  class Sink;

  ComponentEvents(ObjectRef component, std::shared_ptr<Sink> sink);

  ObjectRef component_;
  std::shared_ptr<Sink> sink_;
};

}  // namespace plexoras
