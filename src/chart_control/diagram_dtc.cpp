#include "chart_control/diagram_dtc.h"

#include <utility>

#include "chart_control/chart_component.h"
#include "host/format_defaults.h"
#include "template/lookup_table.h"

namespace plexoras {
namespace {

using Row = Member<DiagramDTC>;

const Row members[] = {
    {"HeightRatio", [](DiagramDTC& c) { return c.HeightRatio(); },
     [](DiagramDTC& c, const Variant& value) { c.HeightRatio(value); }},
    {"WidthRatio", [](DiagramDTC& c) { return c.WidthRatio(); },
     [](DiagramDTC& c, const Variant& value) { c.WidthRatio(value); }},
    {"diagram", [](DiagramDTC& c) { return Variant(c.diagram()); }},
    {"getDiagram", [](DiagramDTC& c) { return Variant(c.getDiagram()); }, nullptr,
     [](DiagramDTC& c, Arguments) { return Variant(c.getDiagram()); }},
    {"hWnd", [](DiagramDTC& c) { return Variant(c.hWnd()); }},
    {.name = "GetLookupTable",
     .call = [](DiagramDTC& c, Arguments a) { return Variant(ObjectRef(c.GetLookupTable(a[0].to_text()))); },
     .arguments = 1},
    {.name = "Refresh", .call = [](DiagramDTC& c, Arguments) { return c.Refresh(), Variant(); }},
    {.name = "InitObject", .call = [](DiagramDTC& c, Arguments) { return c.InitObject(), Variant(); }},
    {.name = "DestroyObject", .call = [](DiagramDTC& c, Arguments) { return c.DestroyObject(), Variant(); }},
    {.name = "GetPropertiesBytes", .call = [](DiagramDTC& c, Arguments) { return Variant(c.GetPropertiesBytes()); }},
    {.name = "SetPropertiesBytes",
     .call = [](DiagramDTC& c, Arguments a) { return c.SetPropertiesBytes(a[0].to_text()), Variant(); },
     .arguments = 1},
    {.name = "GetRuntimeTextOnErrorResume",
     .call = [](DiagramDTC& c, Arguments) { return Variant(c.GetRuntimeTextOnErrorResume()); }},
    {.name = "GetRuntimeTextOnErrorReport",
     .call = [](DiagramDTC& c, Arguments) { return Variant(c.GetRuntimeTextOnErrorReport()); }},
    {.name = "GetRuntimeHTML", .call = [](DiagramDTC& c, Arguments) { return Variant(c.GetRuntimeHTML()); }},
    {.name = "GetRuntimeHTMLOnErrorReport",
     .call = [](DiagramDTC& c, Arguments) { return Variant(c.GetRuntimeHTMLOnErrorReport()); }},
};

}  // namespace

AutomationObject& DiagramDTC::component() const {
  if (diagram_ == nullptr) {
    throw AutomationError(RunTimeError::ObjectNotSet, "the control has no chart component; call InitObject first",
                          std::string(identifier));
  }
  return *diagram_;
}

void DiagramDTC::InitProperties() {
  create_design_view();
  if (diagram_ == nullptr) InitObject();
  put("DiagramType", std::int32_t{5});
  InitDefaults();
  Refresh();
}

void DiagramDTC::create_design_view() {
  if (diagram_ != nullptr || !site_.has_design_view()) return;
  design_view_ = site_.add_child(chart_component::identifier, chart_component::child_name);
  diagram_ = design_view_;
  try {
    view_events_.emplace(
        design_view_, [this](std::string_view name, Arguments arguments) { site_.component_event(name, arguments); });
    site_.show_child(chart_component::child_name, true);
  } catch (...) {
    // A view that is neither heard nor seen would stand in the way of another attempt.
    ignoring_errors([this] { DestroyObject(); });
    throw;
  }
}

void DiagramDTC::InitObject() {
  if (diagram_ != nullptr) return;
  diagram_ = session_.platform.components.create(chart_component::identifier);
  InitDefaults();
}

void DiagramDTC::DestroyObject() {
  if (diagram_ == nullptr) return;
  view_events_.reset();
  diagram_ = nullptr;
  // Last, because the host may fail to remove it.
  if (std::exchange(design_view_, nullptr) != nullptr) site_.remove_child(chart_component::child_name);
}

void DiagramDTC::Refresh() {
  if (design_view_ != nullptr) design_view_->call_by_id(chart_component::repaint_id);
}

bool DiagramDTC::IsDesignViewLive() {
  bool live = false;
  ignoring_errors([&] { live = design_view_ != nullptr && !site_.user_mode(); });
  return live;
}

void DiagramDTC::InitDefaults() {
  ensure_name();
  if (IsDesignViewLive()) component().call("UseSampleContents");

  const FormatDefaults format = read_format_defaults(session_.platform.settings);
  put("FormatType", format.type);
  put("FormatUseDefaultLocale", Variant(format.use_default_locale).to_text());
  put("FormatLanguage", format.language);
  put("FormatCountry", format.country);
  put("FormatVariant", format.variant);
  put("FormatPattern", format.pattern);

  reset_custom_properties();
}

void DiagramDTC::put_diagram_type(const Variant& value) {
  const Variant type = value.to_long();
  AutomationObject& chart = component();
  if (IsDesignViewLive()) {
    chart.put("Visible", false);
    chart.put("DiagramType", type);
    chart.call("UseSampleContents");
    chart.call("Refresh");
    chart.put("Visible", true);
  } else {
    chart.put("DiagramType", type);
    chart.call("Refresh");
  }
  // Kept: the chart has repainted itself, so the control's own `Refresh` is not called.
  site_.property_changed("DiagramType");
}

Variant DiagramDTC::ratio(std::string_view key) const {
  const std::string& size = custom_properties_->atGet(key);
  const std::size_t percent = size.find('%');
  if (percent == std::string::npos) return std::int16_t{0};
  return size.substr(0, percent);
}

void DiagramDTC::put_ratio(std::string_view key, std::string_view notified_as, const Variant& percent) {
  if (percent.to_double() <= 0) {
    custom_properties_->removeKey(key);
  } else {
    custom_properties_->atPut(key, percent.to_text() + "%");
  }
  site_.property_changed(notified_as);
}

std::shared_ptr<Dictionary> DiagramDTC::GetLookupTable(std::string_view name) {
  if (constants_ == nullptr) constants_ = GetSectionVariables(session_, template_file, constSpecSection);
  return lookup_table(*constants_, name);
}

Variant DiagramDTC::get(std::string_view member) {
  if (const ForwardedProperty* property = find_forwarded_property(member)) {
    return component().get(property->name).converted_to(property->type);
  }
  if (find_member(members, member) == nullptr) return DesignTimeControl::get(member);
  return get_member(*this, members, member, identifier);
}

void DiagramDTC::put(std::string_view member, const Variant& value) {
  if (member == "DiagramType") return put_diagram_type(value);
  if (const ForwardedProperty* property = find_forwarded_property(member)) {
    component().put(property->name, value.converted_to(property->type));
    if (property->after_put == AfterPut::RefreshAndNotify) Refresh();
    site_.property_changed(property->notification());
    return;
  }
  if (find_member(members, member) == nullptr) return DesignTimeControl::put(member, value);
  put_member(*this, members, member, value, identifier);
}

Variant DiagramDTC::call(std::string_view member, Arguments arguments) {
  if (find_member(members, member) == nullptr) return DesignTimeControl::call(member, arguments);
  return call_member(*this, members, member, arguments, identifier);
}

}  // namespace plexoras
