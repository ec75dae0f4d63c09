#include "host/platform.h"

#include <iostream>
#include <utility>

namespace plexoras {

void ComponentRegistry::add(std::string identifier, Factory factory) {
  factories_.insert_or_assign(std::move(identifier), std::move(factory));
}

ObjectRef ComponentRegistry::create(std::string_view identifier) const {
  const auto found = factories_.find(identifier);
  ObjectRef object = found == factories_.end() ? nullptr : found->second();
  if (object == nullptr) {
    throw AutomationError(RunTimeError::CannotCreateObject,
                          std::string(customary_description(RunTimeError::CannotCreateObject)) + ": \"" +
                              std::string(identifier) + "\" is not a component of this program");
  }
  return object;
}

void Platform::show_message(std::string_view text, std::string_view title) const {
  if (message_box != nullptr) {
    message_box->show(text, title);
    return;
  }
  if (!title.empty()) std::cerr << title << '\n';
  std::cerr << text << '\n' << std::flush;
}

}  // namespace plexoras
