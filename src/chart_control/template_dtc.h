#pragma once

#include <string>
#include <string_view>

#include "chart_control/design_time_control.h"

namespace plexoras {

/// The control for whatever a template can make: it has no settings but the custom properties that section "PROPERTY"
/// of TEMPLATE.DAT declares, and readers get what section "TEMPLATE" makes of them.
///
///     TemplateDTC notice(session, site);
///     notice.InitProperties();                 // a new control, or: notice.ReadProperties(bag)
///     notice.SetProperty("KIND", "tip");
///     std::string text = notice.GetRuntimeText();
class TemplateDTC final : public DesignTimeControl {
public:
  static constexpr std::string_view identifier = "PlexorasDTC.TemplateDTC";
  static constexpr std::string_view template_file = "TEMPLATE.DAT";

  TemplateDTC(TemplateSession& session, ControlSite& site) : DesignTimeControl(session, site, template_file) {}

  void InitProperties() override;
  /// Reads "AppletID", then the custom properties. A read that fails is raised.
  void ReadProperties(PropertyBag& bag) override;
  /// Writes "AppletID", then the custom properties.
  void WriteProperties(PropertyBag& bag) override;

  /// The text that takes the control's place in the page, the empty text in place of a failure.
  std::string GetRuntimeText() override;
  std::string GetRuntimeTextOnErrorReport() override;
};

}  // namespace plexoras
