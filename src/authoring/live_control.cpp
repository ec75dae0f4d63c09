#include "authoring/live_control.h"

#include "authoring/suggestion.h"
#include "chart_control/chart_component.h"
#include "chart_control/diagram_dtc.h"
#include "chart_control/template_dtc.h"

namespace plexoras {
namespace {

template <class Control>
std::unique_ptr<DesignTimeControl> make_control(TemplateSession& session, ControlSite& site) {
  return std::make_unique<Control>(session, site);
}

constexpr ControlType types[] = {
    {DiagramDTC::identifier, "chart", make_control<DiagramDTC>},
    {TemplateDTC::identifier, "template", make_control<TemplateDTC>},
};

}  // namespace

std::span<const ControlType> control_types() { return types; }

const ControlType& find_control_type(std::string_view name) {
  std::string known;
  std::vector<std::string> names;
  for (const ControlType& type : types) {
    if (type.identifier == name || type.short_name == name) return type;
    names.emplace_back(type.short_name);
    names.emplace_back(type.identifier);
    known += (known.empty() ? "" : ", ") + std::string(type.short_name) + " (" + std::string(type.identifier) + ")";
  }
  throw AutomationError(
      RunTimeError::CannotCreateObject,
      "there is no control \"" + std::string(name) + "\" here; known: " + known + did_you_mean(name, names),
      "LiveControl");
}

LiveControl::LiveControl(TemplateSession& session, const ControlRecord& place, bool is_new)
    : identifier_(find_control_type(place.identifier).identifier),
      site_(std::make_unique<HeadlessSite>(session.platform.components)) {
  site_->name = place.name;
  site_->visible = place.visible;
  site_->shows_design_view = true;
  site_->width_in_twips = place.width * HeadlessSite::twips_per_pixel;
  site_->height_in_twips = place.height * HeadlessSite::twips_per_pixel;
  control_ = find_control_type(identifier_).make(session, *site_);
  if (is_new) {
    control_->InitProperties();
    return;
  }
  // A control has a handful of keys of its own beside its custom properties.
  constexpr std::size_t most_keys = Dictionary::capacity + 8;
  if (place.state.size() > most_keys) {
    throw AutomationError(RunTimeError::SubscriptOutOfRange,
                          "its state has " + std::to_string(place.state.size()) + " keys, and a control takes " +
                              std::to_string(most_keys) + " at most",
                          "LiveControl");
  }
  MemoryPropertyBag bag;
  for (const auto& [key, value] : place.state) bag.write(key, value, Variant());
  control_->ReadProperties(bag);
}

LiveControl::LiveControl(TemplateSession& session, const ControlRecord& record) : LiveControl(session, record, false) {}

LiveControl LiveControl::make_new(TemplateSession& session, std::string_view type, std::string_view name) {
  ControlRecord place;
  place.identifier = find_control_type(type).identifier;
  place.name = name;
  LiveControl made(session, place, true);
  made.control_->appletId();  // stores the name that the host gave
  // The author sees the sample data in the page and replaces them, rather than wondering where they come from.
  if (const ObjectRef chart = made.component(); chart != nullptr && made.control_->GetProperty("Contents").empty()) {
    made.control_->SetProperty("Contents", chart->get("XmlContents").to_text());
  }
  return made;
}

ControlRecord LiveControl::record() {
  ControlRecord record;
  record.identifier = identifier_;
  record.name = site_->name.value_or("");
  record.width = site_->width_in_twips / HeadlessSite::twips_per_pixel;
  record.height = site_->height_in_twips / HeadlessSite::twips_per_pixel;
  record.visible = site_->visible.value_or(true);
  MemoryPropertyBag bag;
  control_->WriteProperties(bag);
  for (const MemoryPropertyBag::Entry& entry : bag.entries()) {
    record.state.emplace_back(entry.key, entry.value.to_text());
  }
  return record;
}

ObjectRef LiveControl::component() {
  const auto child = site_->children.find(chart_component::child_name);
  return child == site_->children.end() ? nullptr : child->second.object;
}

}  // namespace plexoras
