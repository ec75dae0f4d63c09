#include "authoring/property_description.h"

#include <algorithm>
#include <map>
#include <set>

#include "authoring/form_driver.h"
#include "chart_control/events_page.h"
#include "template/ini_section.h"
#include "template/lookup_table.h"
#include "template/window_spec.h"

namespace plexoras {
namespace {

using Code = PropertyDescription::Code;

std::string without_colon(std::string_view caption) {
  return std::string(caption.substr(0, caption.size() - (caption.ends_with(':') ? 1 : 0)));
}

std::string caption_of(const Form& page, std::string_view control) {
  const FormControl* const found = page.find(control);
  return found == nullptr ? "" : without_colon(found->caption);
}

// What a group of option buttons is about stands on a label before it, or at a frame around it.
std::string group_caption(const Form& page, std::string_view button) {
  const FormControl* const found = page.find(button);
  if (found == nullptr) return {};
  for (const auto& control : found->container().controls()) {
    if (control.get() == found) break;
    if (control->kind() == "Label") return without_colon(control->caption);
  }
  return frame_caption(*found);
}

std::vector<Code> lookup_codes(LiveControl& control, std::string_view table_name) {
  std::vector<Code> codes;
  const ObjectRef table = control.control().call_with("GetLookupTable", {table_name}).to_object();
  const std::int32_t count = table->get("Count").to_long();
  codes.reserve(static_cast<std::size_t>(std::max(count, 0)));
  for (std::int32_t i = 0; i < count; ++i) {
    codes.push_back({table->call_with("valueAtIndex", {i}).to_text(), table->call_with("keyAtIndex", {i}).to_text()});
  }
  return codes;
}

// What the page has of it, and the codes that it shows as texts.
void describe_on_page(const PropertyPageType& type, const Form& page, const PropertyRow& row, LiveControl& control,
                      PropertyDescription& description) {
  description.page = type.name;
  description.control = row.control.empty() ? row.options.front().button : row.control;
  description.caption = row.options.empty() ? caption_of(page, row.control) : group_caption(page, description.control);
  // Buttons stand as they fit on the page.
  std::vector<OptionCode> options(row.options.begin(), row.options.end());
  std::ranges::stable_sort(options, {}, &OptionCode::code);
  for (const OptionCode& option : options) {
    const bool is_pair = row.encoding == Encoding::OptionPair;
    description.codes.push_back(
        {is_pair ? Variant(option.code != 0).to_text() : std::to_string(option.code), caption_of(page, option.button)});
  }
  if (row.encoding != Encoding::Lookup) return;
  if (!row.lookup_table.empty()) {
    description.codes = lookup_codes(control, row.lookup_table);
    return;
  }
  const auto& list = dynamic_cast<const ListBox&>(*page.find(row.control));
  for (std::size_t i = 0; i < list.entries().size(); ++i) {
    description.codes.push_back({std::to_string(i), list.entries()[i]});
  }
}

void describe_on_page(const PropertyPageType& type, const Form& page, const OwnProperty& own,
                      PropertyDescription& description) {
  description.page = type.name;
  description.control = own.control;
  description.caption = caption_of(page, own.control);
  for (const OwnProperty::Code& code : own.codes) {
    description.codes.push_back({std::string(code.value), std::string(code.caption)});
  }
}

// Puts the frames' captions before those that several properties have, where that helps: "Columns: Equal size".
void tell_captions_apart(std::vector<PropertyDescription>& descriptions, const std::vector<std::string>& frames) {
  std::map<std::string, std::set<std::string>> frames_of;
  for (std::size_t i = 0; i < descriptions.size(); ++i) frames_of[descriptions[i].caption].insert(frames[i]);
  for (std::size_t i = 0; i < descriptions.size(); ++i) {
    std::string& caption = descriptions[i].caption;
    if (!caption.empty() && !frames[i].empty() && frames_of[caption].size() > 1) caption.insert(0, frames[i] + ": ");
  }
}

std::string number_range(const WindowSpecEntry& entry) {
  std::string text = entry.input == WindowSpecEntry::Input::Integer ? "a whole number" : "a number";
  if (!entry.lowest.empty()) text += " from " + entry.lowest;
  if (!entry.highest.empty()) text += (entry.lowest.empty() ? " up to " : " to ") + entry.highest;
  return text;
}

std::string taken_by(const WindowSpecEntry& entry) {
  switch (entry.input) {
    case WindowSpecEntry::Input::Integer:
    case WindowSpecEntry::Input::Number:
      return number_range(entry);
    case WindowSpecEntry::Input::Color:
      return "a colour";
    case WindowSpecEntry::Input::Combo:
      return "any text; the codes are proposals";
    case WindowSpecEntry::Input::Check:
    case WindowSpecEntry::Input::Choice:
    case WindowSpecEntry::Input::Text:
    case WindowSpecEntry::Input::MultiLine:
      return {};
  }
  return {};
}

void describe_in_template(const WindowSpecEntry& entry, PropertyDescription& description) {
  description.page = "Custom";
  description.control = entry.key;
  description.caption = without_colon(entry.text);
  description.comment = entry.comment;
  description.takes = taken_by(entry);
  for (const WindowSpecEntry::Choice& choice : entry.choices) description.codes.push_back({choice.value, choice.label});
}

// The scripts that answer events are custom properties, which the template lists by event.
std::vector<std::pair<std::string, std::string>> event_handlers(TemplateSession& session,
                                                                const DesignTimeControl& control) {
  const auto constants = GetSectionVariables(session, std::string(control.templateFile()),
                                             std::string(DesignTimeControl::constSpecSection));
  const auto table = lookup_table(*constants, Events::handler_table);
  std::vector<std::pair<std::string, std::string>> handlers;
  handlers.reserve(static_cast<std::size_t>(table->Count()));
  for (std::int32_t i = 0; i < table->Count(); ++i) handlers.emplace_back(table->keyAtIndex(i), table->valueAtIndex(i));
  return handlers;
}

// The default of a name is the one that the control was made with, and means nothing.
std::string default_of(const ControlProperties& properties, const std::string& name) {
  return name == "name" ? "" : properties.get(name);
}

}  // namespace

std::vector<PropertyDescription> describe_properties(TemplateSession& session, PropertyPages& pages,
                                                     LiveControl& control) {
  const ControlProperties properties(control);
  std::vector<PropertyDescription> descriptions;
  for (const std::string& name : properties.names()) {
    const ControlProperties::Kind kind = properties.kind(name);
    descriptions.push_back({.name = name,
                            .kind = kind,
                            .takes = std::string(expected_text(kind.type)),
                            .default_value = default_of(properties, name)});
  }
  const auto find = [&](std::string_view name, bool is_custom) -> PropertyDescription* {
    const auto found = std::ranges::find_if(descriptions, [&](const PropertyDescription& description) {
      return description.name == name && (description.kind.group == ControlProperties::Group::Custom) == is_custom;
    });
    return found == descriptions.end() ? nullptr : &*found;
  };

  std::vector<std::string> frames(descriptions.size());
  for (const PropertyPageType* const type : PropertyPages::types_for(control)) {
    if (type->properties == nullptr && type->own_properties.empty()) continue;
    const std::unique_ptr<PropertyPage> page = pages.open(*type, control);
    const auto note_frame = [&](const PropertyDescription& description) {
      const FormControl* const shown = page->find(description.control);
      if (shown != nullptr)
        frames[static_cast<std::size_t>(&description - descriptions.data())] = frame_caption(*shown);
    };
    for (const PropertyRow& row : type->properties == nullptr ? std::span<const PropertyRow>() : type->properties()) {
      PropertyDescription* const found = find(row.property, false);
      if (found == nullptr) continue;
      describe_on_page(*type, *page, row, control, *found);
      note_frame(*found);
    }
    for (const OwnProperty& own : type->own_properties) {
      PropertyDescription* found = find(own.name, false);
      if (found == nullptr) found = find(own.name, true);
      if (found == nullptr) continue;
      describe_on_page(*type, *page, own, *found);
      note_frame(*found);
    }
  }
  tell_captions_apart(descriptions, frames);

  const DesignTimeControl& own = control.control();
  for (const WindowSpecEntry& entry : read_window_spec(session, std::string(own.templateFile()),
                                                       std::string(own.advancedSpecSection), *own.CustomProperties())) {
    if (entry.kind != WindowSpecEntry::Kind::Setting) continue;
    if (PropertyDescription* const found = find(entry.key, true)) describe_in_template(entry, *found);
  }
  for (const auto& [event, key] : event_handlers(session, own)) {
    PropertyDescription* const found = find(key, true);
    if (found == nullptr) continue;
    found->page = "Events";
    found->control = "txtScript";
    found->caption = event;
    found->takes = "a script";
  }
  return descriptions;
}

}  // namespace plexoras
