#include "host/headless_site.h"

namespace plexoras {

namespace {

constexpr std::string_view source = "ControlSite";

template <class Value>
const Value& told(const std::optional<Value>& value, std::string_view member) {
  if (!value) no_such_member(member, source);
  return *value;
}

[[noreturn]] void no_such_child(std::string_view name) {
  throw AutomationError(RunTimeError::SubscriptOutOfRange,
                        "Subscript out of range: there is no child control \"" + std::string(name) + "\"",
                        std::string(source));
}

}  // namespace

std::string HeadlessSite::extender_name() { return told(name, "Name"); }

void HeadlessSite::set_extender_name(std::string_view new_name) {
  if (!name) no_such_member("Name", source);
  name = std::string(new_name);
}

bool HeadlessSite::extender_visible() { return told(visible, "Visible"); }

std::string HeadlessSite::ambient_display_name() { return told(display_name, "DisplayName"); }

bool HeadlessSite::user_mode() { return told(runs_page, "UserMode"); }

ObjectRef HeadlessSite::add_child(std::string_view component, std::string_view child_name) {
  if (children.contains(child_name)) {
    throw AutomationError(RunTimeError::InvalidCall,
                          "There is a child control \"" + std::string(child_name) + "\" already", std::string(source));
  }
  ObjectRef object = components_.create(component);
  children.emplace(std::string(child_name), Child{object});
  return object;
}

void HeadlessSite::remove_child(std::string_view child_name) {
  const auto child = children.find(child_name);
  if (child == children.end()) no_such_child(child_name);
  children.erase(child);
}

void HeadlessSite::show_child(std::string_view child_name, bool child_visible) {
  const auto child = children.find(child_name);
  if (child == children.end()) no_such_child(child_name);
  child->second.visible = child_visible;
}

}  // namespace plexoras
