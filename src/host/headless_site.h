#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/control_site.h"
#include "host/platform.h"

namespace plexoras {

/// A site that is plain data: what a program without windows, or a test, tells a control about its place on the page.
///
///     HeadlessSite site(platform.components);
///     site.name = "Sales";
///     site.width_in_twips = 480 * HeadlessSite::twips_per_pixel;
///
/// An empty optional is something that this host does not tell: reading it raises error 438.
class HeadlessSite final : public ControlSite {
public:
  static constexpr std::int32_t twips_per_pixel = 15;

  struct Child {
    ObjectRef object;
    bool visible = false;
  };

  /// Child controls are made by `components`, which must outlive the site.
  explicit HeadlessSite(const ComponentRegistry& components) : components_(components) {}

  std::optional<std::string> name = "";
  std::optional<std::string> display_name = "";
  std::optional<bool> visible = true;
  std::optional<bool> runs_page = false;  ///< what `user_mode` tells
  bool shows_design_view = false;
  std::int32_t width_in_twips = 0;
  std::int32_t height_in_twips = 0;
  std::map<std::string, Child, std::less<>> children;  ///< by name
  std::vector<std::string> changed_properties;         ///< every name announced, in order
  /// Called for the events of a component in the design view.
  std::function<void(std::string_view name, Arguments arguments)> on_component_event = {};

  std::string extender_name() override;
  /// Error 438 when the host does not name its controls.
  void set_extender_name(std::string_view new_name) override;
  bool extender_visible() override;
  std::string ambient_display_name() override;
  bool user_mode() override;
  bool has_design_view() override { return shows_design_view; }
  /// Error 5 when there is a child of that name already.
  ObjectRef add_child(std::string_view component, std::string_view child_name) override;
  /// Error 9 when there is no child of that name; so does `show_child`.
  void remove_child(std::string_view child_name) override;
  void show_child(std::string_view child_name, bool child_visible) override;
  std::int32_t width() override { return width_in_twips; }
  std::int32_t height() override { return height_in_twips; }
  std::int32_t twips_per_pixel_x() override { return twips_per_pixel; }
  std::int32_t twips_per_pixel_y() override { return twips_per_pixel; }
  std::int32_t window_handle() override { return 0; }
  void property_changed(std::string_view property) override { changed_properties.emplace_back(property); }
  void component_event(std::string_view event, Arguments arguments) override {
    if (on_component_event) on_component_event(event, arguments);
  }

private:
  const ComponentRegistry& components_;
};

}  // namespace plexoras
