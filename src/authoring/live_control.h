#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "authoring/page.h"
#include "chart_control/design_time_control.h"
#include "host/headless_site.h"

namespace plexoras {

/// A kind of control that can stand in a page.
struct ControlType {
  std::string_view identifier;
  std::string_view short_name;  ///< for command lines: "chart", "template"
  std::unique_ptr<DesignTimeControl> (*make)(TemplateSession& session, ControlSite& site);
};

std::span<const ControlType> control_types();
/// The type that has `name` as its identifier or short name; error 429 with a suggestion when there is none.
const ControlType& find_control_type(std::string_view name);

/// A control of a page at work: this is its host. It lives between reading a page and writing it.
///
///     LiveControl control(session, page.controls()[0].record);
///     control.control().put("HasLegend", true);
///     edit.replace_record(0, control.record());
///
/// `session` outlives it. Controls show their design view, as in any authoring environment.
class LiveControl {
public:
  /// Loads a saved control. Error 429 when its type is unknown; what the control raises of its state comes through.
  LiveControl(TemplateSession& session, const ControlRecord& record);
  /// A new control, with the data it shows at first stored as its own.
  static LiveControl make_new(TemplateSession& session, std::string_view type, std::string_view name);

  const std::string& identifier() const { return identifier_; }
  DesignTimeControl& control() { return *control_; }
  HeadlessSite& site() { return *site_; }
  /// What is to be written into the page.
  ControlRecord record();

  /// The chart component of the design view, or null for a control without one.
  ObjectRef component();

private:
  LiveControl(TemplateSession& session, const ControlRecord& place, bool is_new);

  std::string identifier_;
  std::unique_ptr<HeadlessSite> site_;
  std::unique_ptr<DesignTimeControl> control_;
};

}  // namespace plexoras
