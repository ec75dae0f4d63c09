// describe: the kinds of controls and their properties.

#include <algorithm>
#include <nlohmann/json.hpp>

#include "authoring/property_description.h"
#include "authoring/suggestion.h"
#include "host/ascii.h"
#include "host/headless_platform.h"
#include "tool/commands.h"
#include "tool/json_text.h"
#include "tool/page_target.h"
#include "tool/text_table.h"

namespace plexoras {
namespace {

std::string_view group_word(ControlProperties::Group group) {
  switch (group) {
    case ControlProperties::Group::Place:
      return "place";
    case ControlProperties::Group::Chart:
      return "chart";
    case ControlProperties::Group::Custom:
      return "custom";
  }
  return {};
}

// Whether `caption` is what people read at a control, with or without the caption of its frame.
bool is_captioned(const PropertyDescription& property, std::string_view caption) {
  if (caption.empty() || property.caption.size() < caption.size()) return false;
  const std::size_t frame_size = property.caption.size() - caption.size();
  const std::string_view own = property.caption;
  return equal_but_for_case(own.substr(frame_size), caption) &&
         (frame_size == 0 || own.substr(0, frame_size).ends_with(": "));
}

// One name may be a property of the chart and a custom one; the first is what `get` and `set` reach.
const PropertyDescription& find_property(const std::vector<PropertyDescription>& properties, const ControlType& type,
                                         const std::string& name) {
  const auto found = std::ranges::find(properties, name, &PropertyDescription::name);
  if (found != properties.end()) return *found;
  std::vector<std::string> names;
  std::vector<const PropertyDescription*> captioned;
  std::string listed;
  for (const PropertyDescription& property : properties) {
    names.push_back(property.name);
    if (!is_captioned(property, name)) continue;
    captioned.push_back(&property);
    listed += (listed.empty() ? "" : ", ") + property.name + " (" + property.caption + ")";
  }
  if (captioned.size() == 1) return *captioned.front();
  if (!captioned.empty()) {
    throw AutomationError(RunTimeError::NoSuchMember, std::string(type.short_name) + ": \"" + name +
                                                          "\" is the caption of several properties: " + listed);
  }
  throw AutomationError(RunTimeError::NoSuchMember, std::string(type.short_name) + ": there is no property \"" + name +
                                                        "\"" + did_you_mean(name, names));
}

nlohmann::json to_json(const PropertyDescription& property) {
  nlohmann::json codes = nlohmann::json::array();
  for (const PropertyDescription::Code& code : property.codes) {
    codes.push_back({{"value", code.value}, {"caption", code.caption}});
  }
  return {{"name", property.name},
          {"group", group_word(property.kind.group)},
          {"type", type_name(property.kind.type)},
          {"takes", property.takes},
          {"default", property.default_value},
          {"codes", codes},
          {"property_page", property.page},
          {"form_control", property.control},
          {"caption", property.caption},
          {"comment", property.comment}};
}

nlohmann::json to_json(const ControlType& type, LiveControl& control) {
  nlohmann::json pages = nlohmann::json::array();
  for (const PropertyPageType* const page : PropertyPages::types_for(control)) pages.push_back(page->name);
  return {{"control", type.short_name},
          {"identifier", type.identifier},
          {"template", control.control().templateFile()},
          {"property_pages", pages}};
}

std::string summary(const PropertyDescription& property) {
  std::string text = property.caption;
  for (const PropertyDescription::Code& code : property.codes) {
    text += (&code == property.codes.data() ? (text.empty() ? "" : ": ") : ", ") + code.value;
    if (!code.caption.empty() && code.caption != code.value) text += " " + code.caption;
  }
  return text;
}

std::string all_properties_text(const std::vector<PropertyDescription>& properties) {
  TextTable table({.columns = {{.widest = 24}, {.widest = 8}, {.widest = 18}}});
  table.add({"PROPERTY", "TYPE", "DEFAULT", "CAPTION AND CODES"});
  for (const PropertyDescription& property : properties) {
    table.add({property.name, std::string(type_name(property.kind.type)), property.default_value, summary(property)});
  }
  return table.text();
}

std::string property_text(const PropertyDescription& property) {
  TextTable table({.columns = {{.widest = 16}, {.lines = TextTable::any}}});
  const auto add = [&](const char* title, const std::string& text) {
    if (!text.empty()) table.add({title, text});
  };
  add("property", property.name);
  add("type", std::string(type_name(property.kind.type)) + (property.takes.empty() ? "" : ": " + property.takes));
  add("default", property.default_value);
  add("caption", property.caption);
  add("property page", property.page.empty() ? "" : property.page + ", " + property.control);
  add("comment", property.comment);
  for (const PropertyDescription::Code& code : property.codes) {
    const bool is_first = &code == property.codes.data();
    table.add({is_first ? "the codes are" : "", code.value.empty() ? "(empty)  " + code.caption
                                                : code.caption.empty() || code.caption == code.value
                                                    ? code.value
                                                    : code.value + "  " + code.caption});
  }
  return table.text();
}

std::string controls_text(TemplateSession& session) {
  TextTable table({.columns = {{.widest = 16}, {.widest = 40}}});
  table.add({"CONTROL", "IDENTIFIER", "TEMPLATE"});
  for (const ControlType& type : control_types()) {
    LiveControl control = LiveControl::make_new(session, type.short_name, "New");
    table.add(
        {std::string(type.short_name), std::string(type.identifier), std::string(control.control().templateFile())});
  }
  return table.text();
}

void describe_controls(TemplateSession& session, Console& console) {
  if (!console.options().json) return console.result(controls_text(session));
  nlohmann::json object{{"version", json_version}, {"controls", nlohmann::json::array()}};
  for (const ControlType& type : control_types()) {
    LiveControl control = LiveControl::make_new(session, type.short_name, "New");
    object["controls"].push_back(to_json(type, control));
  }
  console.result(json_line(object));
}

}  // namespace

int run_describe(const DescribeOptions& options, HeadlessPlatform& host, Console& console) {
  SilentMessageBox silent;
  host.platform().message_box = &silent;
  TemplateSession session(host.platform());
  PropertyPages pages(session);
  if (options.control.empty()) {
    describe_controls(session, console);
    tell(as_warnings(session.diagnostics), console);
    return exit_done;
  }

  const ControlType& type = find_control_type(options.control);
  LiveControl control = LiveControl::make_new(session, type.short_name, "New");
  std::vector<PropertyDescription> properties = describe_properties(session, pages, control);
  const std::vector<Diagnostic> warnings = as_warnings(session.diagnostics);
  tell(warnings, console);
  if (!options.property.empty()) properties = {find_property(properties, type, options.property)};
  if (console.options().json) {
    nlohmann::json object = to_json(type, control);
    object["version"] = json_version;
    object["properties"] = nlohmann::json::array();
    for (const PropertyDescription& property : properties) object["properties"].push_back(to_json(property));
    object["diagnostics"] = to_json(warnings);
    console.result(json_line(object));
  } else {
    console.result(options.property.empty() ? all_properties_text(properties) : property_text(properties.front()));
  }
  return exit_done;
}

}  // namespace plexoras
