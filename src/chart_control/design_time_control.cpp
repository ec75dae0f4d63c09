#include "chart_control/design_time_control.h"

#include <algorithm>
#include <cmath>

namespace plexoras {
namespace {

// Twips to whole pixels, halves to even.
std::string pixels(std::int32_t twips, std::int32_t twips_per_pixel) {
  return std::to_string(std::lrint(static_cast<double>(twips) / twips_per_pixel));
}

using Row = Member<DesignTimeControl>;

const Row members[] = {
    {"appletId", [](DesignTimeControl& c) { return Variant(c.appletId()); },
     [](DesignTimeControl& c, const Variant& value) { c.appletId(value.to_text()); }},
    // Kept: assigning the dictionary only tells the host; the one that is there stays.
    {"CustomProperties", [](DesignTimeControl& c) { return Variant(ObjectRef(c.CustomProperties())); },
     [](DesignTimeControl& c, const Variant&) { c.FireCustomPropertyChange(); }},
    {"templateFile", [](DesignTimeControl& c) { return Variant(c.templateFile()); }},
    {"advancedSpecSection", [](DesignTimeControl& c) { return Variant(c.advancedSpecSection); }},
    {"constSpecSection", [](DesignTimeControl& c) { return Variant(c.constSpecSection); }},
    {.name = "GetPropertyKeys", .call = [](DesignTimeControl& c, Arguments) { return Variant(c.GetPropertyKeys()); }},
    {.name = "GetProperty",
     .call = [](DesignTimeControl& c, Arguments a) { return Variant(c.GetProperty(a[0].to_text())); },
     .arguments = 1},
    {.name = "SetProperty",
     .call = [](DesignTimeControl& c, Arguments a) { return c.SetProperty(a[0].to_text(), a[1].to_text()), Variant(); },
     .arguments = 2},
    {.name = "FireCustomPropertyChange",
     .call = [](DesignTimeControl& c, Arguments) { return c.FireCustomPropertyChange(), Variant(); }},
    {.name = "GetRuntimeText", .call = [](DesignTimeControl& c, Arguments) { return Variant(c.GetRuntimeText()); }},
};

}  // namespace

std::string DesignTimeControl::appletId() {
  std::string name;
  std::string display_name;
  ignoring_errors([&] { name = site_.extender_name(); });
  ignoring_errors([&] { display_name = site_.ambient_display_name(); });
  if (!name.empty()) {
    stored_id_ = name;
  } else if (!display_name.empty()) {
    stored_id_ = display_name;
  }
  return stored_id_;
}

void DesignTimeControl::appletId(std::string_view name) {
  ignoring_errors([&] { site_.set_extender_name(name); });
  site_.property_changed("AppletID");
}

std::shared_ptr<Dictionary> DesignTimeControl::declared_properties() {
  return GetSectionVariables(session_, template_file_, "PROPERTY");
}

void DesignTimeControl::read_custom_properties(PropertyBag& bag, std::span<const std::string_view> own_keys) {
  reset_custom_properties();
  custom_properties_->readFrom(bag);
  for (const std::string& key : bag.keys()) {
    const bool is_own = std::find(own_keys.begin(), own_keys.end(), key) != own_keys.end();
    if (is_own || custom_properties_->includes(key, Dictionary::EmptyValues::Keep)) continue;
    const std::string value = bag.read(key, "").to_text();
    custom_properties_->atPut(key, bag.keeps_every_byte() ? value : decode_separators(value));
  }
}

void DesignTimeControl::write_custom_properties(PropertyBag& bag) {
  custom_properties_->writeTo(bag, *declared_properties());
}

void DesignTimeControl::ensure_name() {
  if (!appletId().empty()) return;
  const std::string name = "Plexora" + std::to_string(std::lrint(session_.platform.random() * 1000));
  appletId(name);
}

void DesignTimeControl::bind_width(IniSection& text) {
  if (text.Find("WIDTH").empty()) text.Define("WIDTH", pixels(site_.width(), site_.twips_per_pixel_x()));
}

void DesignTimeControl::bind_height(IniSection& text) {
  if (text.Find("HEIGHT").empty()) text.Define("HEIGHT", pixels(site_.height(), site_.twips_per_pixel_y()));
}

Variant DesignTimeControl::get(std::string_view member) {
  return get_member(*this, members, member, "DesignTimeControl");
}

void DesignTimeControl::put(std::string_view member, const Variant& value) {
  put_member(*this, members, member, value, "DesignTimeControl");
}

Variant DesignTimeControl::call(std::string_view member, Arguments arguments) {
  return call_member(*this, members, member, arguments, "DesignTimeControl");
}

}  // namespace plexoras
