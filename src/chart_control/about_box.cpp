#include "chart_control/about_box.h"

#include <string>

#include "template/ini_section.h"

namespace plexoras {
namespace {

constexpr std::string_view sections[] = {".COMPANY", ".PRODUCT", ".VERSION"};

}  // namespace

AboutBox::AboutBox(TemplateSession& session, std::string_view template_file) {
  caption = "About";
  for (const std::string_view section : sections) add_constants(session, template_file, section);
  add<Button>("cmdOK", "OK").on_click = [this] { cmdOK_Click(); };
}

// A constant's name begins with a period, as its section's does, which means nothing to readers.
void AboutBox::add_constants(TemplateSession& session, std::string_view template_file, std::string_view section) {
  const auto constants = GetSectionVariables(session, template_file, section);
  for (std::int32_t i = 0; i < constants->Count(); ++i) {
    const std::string number = std::to_string(controls().size() / 2);
    const std::string& key = constants->keyAtIndex(i);
    add<Label>("lblKey" + number, key.substr(key.starts_with('.') ? 1 : 0));
    add<Label>("lblValue" + number, constants->valueAtIndex(i));
  }
}

}  // namespace plexoras
