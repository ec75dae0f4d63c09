#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "chart_control/chart_properties.h"
#include "chart_control/design_time_control.h"
#include "host/component_events.h"

namespace plexoras {

/// The chart on a page, as its author configures it.
///
/// It keeps almost none of the chart's properties itself: the chart component (see chart_component.h) is the store of
/// record, and each property of `forwarded_properties()` is read from it and written to it by name. The control keeps
/// its name, its custom properties and two size ratios, and makes the text that readers get:
///
///     DiagramDTC chart(session, site);
///     chart.InitProperties();                  // a new chart, or: chart.ReadProperties(bag)
///     chart.put("FontSize", std::int16_t{14});
///     std::string text = chart.GetRuntimeText();
///
/// Members are reached by name through `get`, `put` and `call`; those that are not forwarded are also functions here.
/// Whatever needs the chart component raises error 91 while there is none.
class DiagramDTC final : public DesignTimeControl {
public:
  static constexpr std::string_view identifier = "PlexorasDTC.DiagramDTC";
  static constexpr std::string_view template_file = "DIAGRAM.DAT";

  DiagramDTC(TemplateSession& session, ControlSite& site) : DesignTimeControl(session, site, template_file) {}

  /// The host has put a new control on the page: shows it as chart type 5 with sample contents.
  void InitProperties() override;
  /// The host has opened a page that holds this control. The keys are read in the order "AppletID", "XmlStyle",
  /// custom properties, "ColSelection", "RowSelection". Contents that the component refuses are ignored. A read that
  /// fails is raised, and the steps after it do not run. A host that shows no design view gets a chart component all
  /// the same, as by `InitObject`: there would be nothing to keep the state.
  void ReadProperties(PropertyBag& bag) override;
  /// The host saves the page: "AppletID", "XmlStyle", "ColSelection", "RowSelection", then the custom properties.
  void WriteProperties(PropertyBag& bag) override;
  /// The whole state as hexadecimal text, two upper-case digits a byte.
  std::string GetPropertiesBytes();
  /// Error 5 when `text` is not such a text; the control then stays as it was. What the component refuses of a state
  /// that can be read is raised as by `ReadProperties`.
  void SetPropertiesBytes(std::string_view text);

  /// Creates the chart component when there is none: for a control that has no design view.
  void InitObject();
  /// Lets go of the chart component, in the design view too, behind its events.
  void DestroyObject();

  /// The chart component, or null.
  const ObjectRef& diagram() const { return diagram_; }
  /// The one that the design view shows, or null. Its events go on to `ControlSite::component_event`.
  const ObjectRef& getDiagram() const { return design_view_; }
  /// Repaints the design view, if there is one.
  void Refresh();

  /// The percentage kept as "HEIGHT" or "WIDTH", as text without its "%"; the integer 0 when there is none.
  Variant HeightRatio() const { return ratio("HEIGHT"); }
  Variant WidthRatio() const { return ratio("WIDTH"); }
  /// Keeps a percentage; 0 or less removes it.
  void HeightRatio(const Variant& percent) { put_ratio("HEIGHT", "HeightRatio", percent); }
  void WidthRatio(const Variant& percent) { put_ratio("WIDTH", "WidthRatio", percent); }

  /// The entries of section "CONSTANT" whose names begin with `name`: list text and code, in template order. The
  /// section is read once in a control's life.
  std::shared_ptr<Dictionary> GetLookupTable(std::string_view name);

  std::int32_t hWnd() { return site_.window_handle(); }

  /// The text that takes the control's place in the page, behind a comment that says how far it got. A failure turns
  /// into text: the comment as it stands, unclosed, and the error.
  std::string GetRuntimeText() override;
  /// `GetRuntimeText`; the empty text in place of a failure.
  std::string GetRuntimeTextOnErrorResume();
  /// `GetRuntimeText` with failures raised.
  std::string GetRuntimeTextOnErrorReport() override;
  /// The template's text alone; failures are raised. The template also sees the whole state, as "CUSTOMDAT".
  std::string GetRuntimeHTML();
  std::string GetRuntimeHTMLOnErrorReport() { return GetRuntimeHTML(); }

  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments = {}) override;

private:
  enum class Output { Commented, Bare };

  AutomationObject& component() const;
  void create_design_view();
  bool IsDesignViewLive();
  void InitDefaults();
  void put_diagram_type(const Variant& value);
  Variant ratio(std::string_view key) const;
  void put_ratio(std::string_view key, std::string_view notified_as, const Variant& percent);
  std::string build_text(Output output, std::string& progress);

  ObjectRef diagram_;
  ObjectRef design_view_;
  std::optional<ComponentEvents> view_events_;  // behind the view, so that it goes first
  std::shared_ptr<Dictionary> constants_;       // section "CONSTANT", once somebody has asked for it
};

}  // namespace plexoras
