#include "authoring/control_properties.h"

#include <algorithm>
#include <charconv>

#include "applet/compact_xml.h"
#include "applet/style_document.h"
#include "authoring/data_source.h"
#include "authoring/suggestion.h"
#include "chart_control/chart_properties.h"
#include "contents/contents_document.h"

namespace plexoras {
namespace {

// The control's place on its page.
struct PlaceProperty {
  std::string_view name;
  ValueType type;
  std::string (*get)(HeadlessSite& site);
  void (*set)(HeadlessSite& site, const Variant& value);
};

std::int32_t pixels(const Variant& value) {
  const std::int32_t count = value.to_integer();
  if (count < 0)
    throw AutomationError(RunTimeError::InvalidCall, "a size takes 0 to 32767 pixels, not " + value.to_text());
  return count * HeadlessSite::twips_per_pixel;
}

constexpr PlaceProperty place_properties[] = {
    {"name", ValueType::String, [](HeadlessSite& site) { return site.name.value_or(""); },
     [](HeadlessSite& site, const Variant& value) {
       if (!is_control_name(value.to_text())) {
         throw AutomationError(RunTimeError::InvalidCall,
                               "\"" + value.to_text() +
                                   "\" cannot name a control; use a letter, then letters, digits, \".\", \"-\", "
                                   "\"_\" and \":\"");
       }
       site.name = value.to_text();
     }},
    {"width", ValueType::Integer,
     [](HeadlessSite& site) { return std::to_string(site.width_in_twips / HeadlessSite::twips_per_pixel); },
     [](HeadlessSite& site, const Variant& value) { site.width_in_twips = pixels(value); }},
    {"height", ValueType::Integer,
     [](HeadlessSite& site) { return std::to_string(site.height_in_twips / HeadlessSite::twips_per_pixel); },
     [](HeadlessSite& site, const Variant& value) { site.height_in_twips = pixels(value); }},
    {"visible", ValueType::Boolean, [](HeadlessSite& site) { return Variant(site.visible.value_or(true)).to_text(); },
     [](HeadlessSite& site, const Variant& value) { site.visible = value.to_boolean(); }},
};

const PlaceProperty* find_place_property(std::string_view name) {
  for (const PlaceProperty& property : place_properties) {
    if (property.name == name) return &property;
  }
  return nullptr;
}

// What the chart component has beside the properties that the control forwards.
bool is_component_property(std::string_view name) {
  return find_style_property(name) < style_properties().size() && find_forwarded_property(name) == nullptr;
}

// What the chart component keeps with the data: the titles of the table.
constexpr std::string_view title_members[] = {"rowTitle", "colTitle", "valueTitle"};

// Members of a chart control beside the forwarded ones: percentages of the space there is.
constexpr std::string_view ratio_members[] = {"WidthRatio", "HeightRatio"};

// Custom properties that any chart takes, whether its template declares them or not; so are those of a data source.
constexpr std::string_view size_keys[] = {"WIDTH", "HEIGHT"};

// Properties that hold nothing of their own: the style is the other properties in one text, each form of the contents
// and the titles are the custom property "Contents", a ratio is "WIDTH" or "HEIGHT". A name is given, not copied.
constexpr std::string_view derived[] = {"name",     "XmlStyle",   "XmlContents", "CsvContents", "rowTitle",
                                        "colTitle", "valueTitle", "WidthRatio",  "HeightRatio"};

// Keys of the saved form that are no custom properties.
constexpr std::string_view reserved_keys[] = {"AppletID"};

template <std::size_t Count>
bool is_one_of(std::string_view name, const std::string_view (&names)[Count]) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

struct TypeText {
  ValueType type;
  std::string_view expected;
};
constexpr TypeText type_texts[] = {
    {ValueType::Integer, "a whole number from -32768 to 32767"},
    {ValueType::Long, "a whole number from -2147483648 to 2147483647"},
    {ValueType::Double, "a number"},
    {ValueType::Boolean, "True or False"},
};

bool is_whole_number(std::string_view text) {
  if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// `text` as a value of `type`. Stricter than a conversion: a whole number must be written as one.
Variant typed_value(std::string_view name, std::string_view text, ValueType type) {
  const bool is_integral = type == ValueType::Integer || type == ValueType::Long;
  try {
    if (!is_integral || is_whole_number(text)) return Variant(text).converted_to(type);
  } catch (const AutomationError&) {
    // Told below, with what the type takes.
  }
  const std::string_view expected = expected_text(type);
  if (expected.empty()) return Variant(text);
  throw AutomationError(
      is_integral && is_whole_number(text) ? RunTimeError::Overflow : RunTimeError::TypeMismatch,
      std::string(name) + " takes " + std::string(expected) + ", not \"" + std::string(text.substr(0, 60)) + "\"",
      "ControlProperties");
}

}  // namespace

std::string_view expected_text(ValueType type) {
  for (const TypeText& row : type_texts) {
    if (row.type == type) return row.expected;
  }
  return {};
}

bool is_control_name(std::string_view name) {
  const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  if (name.empty() || !is_letter(name.front())) return false;
  return std::all_of(name.begin(), name.end(), [&](char c) {
    return is_letter(c) || (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '_' || c == ':';
  });
}

std::vector<std::string> ControlProperties::names() const {
  std::vector<std::string> names;
  for (const PlaceProperty& property : place_properties) names.emplace_back(property.name);
  if (control_.component() != nullptr) {
    for (const ForwardedProperty& property : forwarded_properties()) names.emplace_back(property.name);
    for (const StyleProperty& property : style_properties()) {
      if (is_component_property(property.name)) names.emplace_back(property.name);
    }
    names.insert(names.end(), std::begin(title_members), std::end(title_members));
    names.insert(names.end(), std::begin(ratio_members), std::end(ratio_members));
  }
  // A custom property of a name that is taken is kept, but cannot be reached by it.
  for (const std::string& key : control_.control().GetPropertyKeys()) {
    if (std::find(names.begin(), names.end(), key) == names.end()) names.push_back(key);
  }
  return names;
}

void ControlProperties::unknown(std::string_view name) const {
  throw AutomationError(RunTimeError::NoSuchMember,
                        "there is no property \"" + std::string(name) + "\"" + did_you_mean(name, names()),
                        "ControlProperties");
}

ControlProperties::Kind ControlProperties::kind(std::string_view name) const {
  if (const PlaceProperty* place = find_place_property(name)) return {Group::Place, place->type};
  if (control_.component() != nullptr) {
    if (const ForwardedProperty* property = find_forwarded_property(name)) return {Group::Chart, property->type};
    if (is_component_property(name)) return {Group::Chart, style_properties()[find_style_property(name)].type};
    if (is_one_of(name, title_members)) return {Group::Chart, ValueType::String};
    if (is_one_of(name, ratio_members)) return {Group::Chart, ValueType::Double};
  }
  if (!control_.control().CustomProperties()->includes(name, Dictionary::EmptyValues::Keep)) unknown(name);
  return {Group::Custom, ValueType::String};
}

std::string ControlProperties::get(std::string_view name) const {
  if (const PlaceProperty* place = find_place_property(name)) return place->get(control_.site());
  if (const ObjectRef chart = control_.component()) {
    if (find_forwarded_property(name) != nullptr || is_one_of(name, ratio_members)) {
      return control_.control().get(name).to_text();
    }
    if (is_component_property(name)) return chart->get(name).to_text();
    if (is_one_of(name, title_members)) return title(name);
  }
  const Dictionary& custom = *control_.control().CustomProperties();
  if (!custom.includes(name, Dictionary::EmptyValues::Keep)) unknown(name);
  return custom.atGet(name);
}

void ControlProperties::set(std::string_view name, std::string_view value, NewKeys new_keys) {
  if (const PlaceProperty* place = find_place_property(name)) {
    place->set(control_.site(), typed_value(name, value, place->type));
    control_.control().appletId();  // takes a new name into the saved state
    return;
  }
  DesignTimeControl& control = control_.control();
  if (const ObjectRef chart = control_.component()) {
    if (name == "Contents") return set_contents("XmlContents", value);
    if (name == "XmlContents" || name == "CsvContents") return set_contents(name, value);
    if (const ForwardedProperty* property = find_forwarded_property(name)) {
      return control.put(name, typed_value(name, value, property->type));
    }
    if (is_component_property(name)) return chart->put(name, value);
    if (is_one_of(name, title_members)) return set_title(name, value);
    if (is_one_of(name, ratio_members)) return control.put(name, typed_value(name, value, ValueType::Double));
    if (is_one_of(name, size_keys) || is_one_of(name, data_source_keys)) new_keys = NewKeys::Accept;
  }
  const bool is_known = control.CustomProperties()->includes(name, Dictionary::EmptyValues::Keep);
  if (!is_known && (new_keys == NewKeys::Refuse || name.empty() || is_one_of(name, reserved_keys))) unknown(name);
  control.SetProperty(name, value);
  control.FireCustomPropertyChange();
}

// The component checks the data; the custom property is what the page keeps.
void ControlProperties::set_contents(std::string_view member, std::string_view value) {
  if (value.empty() && member != "CsvContents") return store_contents("");
  DesignTimeControl& control = control_.control();
  control.put(member, value);
  store_contents(control.get("XmlContents").to_text());
}

// The component shows sample data where the page has none, or none that it can read: their titles are not the page's.
std::string ControlProperties::title(std::string_view name) const {
  const ObjectRef chart = control_.component();
  const std::string contents = control_.control().GetProperty("Contents");
  return chart->get("XmlContents") == Variant(contents) ? chart->get(name).to_text() : std::string();
}

// As with reading: a title must not make a sample the page's own.
void ControlProperties::set_title(std::string_view name, std::string_view value) {
  const std::string contents = control_.control().GetProperty("Contents");
  if (contents.empty() && is_line_breaks(value)) return;  // no data, and no title to begin some with
  const ObjectRef chart = control_.component();
  chart->put("XmlContents", contents.empty() ? Variant(empty_contents_document) : Variant(contents));
  chart->put(name, value);
  store_contents(chart->get("XmlContents").to_text());
}

void ControlProperties::store_contents(std::string_view document) {
  DesignTimeControl& control = control_.control();
  control.SetProperty("Contents", document);
  control.FireCustomPropertyChange();
}

std::vector<std::pair<std::string, std::string>> ControlProperties::changes_from(const ControlProperties& fresh) const {
  const std::vector<std::string> fresh_names = fresh.names();
  std::vector<std::pair<std::string, std::string>> changes;
  for (const std::string& name : names()) {
    if (is_one_of(name, derived) || is_one_of(name, data_source_keys)) continue;
    const bool is_new = std::find(fresh_names.begin(), fresh_names.end(), name) == fresh_names.end();
    std::string value = get(name);
    if (is_new || value != fresh.get(name)) changes.emplace_back(name, std::move(value));
  }
  return changes;
}

}  // namespace plexoras
