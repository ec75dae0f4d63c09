#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/automation.h"

namespace plexoras {

/// The place on a page where a control stands: what the host tells a control, and what it hears from it.
///
/// Made and kept by the host; it outlives the control.
class ControlSite {
public:
  virtual ~ControlSite() = default;

  /// The control's name on the page. Either may raise: not every host names its controls.
  virtual std::string extender_name() = 0;
  virtual void set_extender_name(std::string_view name) = 0;
  /// Whether the control is visible on the page; raises when the host does not tell.
  virtual bool extender_visible() = 0;
  /// The name that the host shows for the control; may raise.
  virtual std::string ambient_display_name() = 0;
  /// True when the page runs, false while it is being designed; may raise.
  virtual bool user_mode() = 0;

  /// Whether the host shows a design view, in which a control may create child controls.
  virtual bool has_design_view() = 0;
  /// Creates a child control; error 429 when the component is unknown.
  virtual ObjectRef add_child(std::string_view component, std::string_view name) = 0;
  virtual void remove_child(std::string_view name) = 0;
  virtual void show_child(std::string_view name, bool visible) = 0;

  /// The control's size in twips, and the screen's twips per pixel.
  virtual std::int32_t width() = 0;
  virtual std::int32_t height() = 0;
  virtual std::int32_t twips_per_pixel_x() = 0;
  virtual std::int32_t twips_per_pixel_y() = 0;
  /// The control's window handle, 0 when it has no window.
  virtual std::int32_t window_handle() = 0;

  /// The control says that its property `name` has changed.
  virtual void property_changed(std::string_view name) = 0;
  /// An event of the component that the control shows in its design view, such as "SelectionChange". What is raised
  /// here comes through to the component.
  virtual void component_event([[maybe_unused]] std::string_view name, [[maybe_unused]] Arguments arguments) {}
};

/// The runtime text that takes a control's place in the published page.
class IProvideRuntimeText {
public:
  virtual ~IProvideRuntimeText() = default;
  /// Never fails: what goes wrong is told in the text.
  virtual std::string GetRuntimeText() = 0;
};

}  // namespace plexoras
