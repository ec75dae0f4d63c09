#include "chart_control/about_box.h"

#include <string>
#include <vector>

#include "template/ini_section.h"

namespace plexoras {
namespace {

constexpr std::string_view shared_file = "APPLET.DAT";

std::vector<std::string_view> constant_sections(TemplateSession& session, std::string_view template_file) {
  std::vector<std::string_view> names = session.files.section_names(template_file);
  std::erase_if(names, [](std::string_view name) { return !name.starts_with('.'); });
  return names;
}

}  // namespace

AboutBox::AboutBox(TemplateSession& session, std::string_view template_file) {
  caption = "About";
  std::vector<std::string_view> sections = constant_sections(session, template_file);
  if (sections.empty()) {
    template_file = shared_file;
    sections = constant_sections(session, template_file);
  }
  for (const std::string_view section : sections) add_constants(session, template_file, section);
  add<Button>("cmdOK", "OK").on_click = [this] { cmdOK_Click(); };
}

// A constant's name begins with a period, as its section's does, which means nothing to readers. One that begins with
// "_" is the template's own.
void AboutBox::add_constants(TemplateSession& session, std::string_view template_file, std::string_view section) {
  const auto constants = GetSectionVariables(session, template_file, section);
  for (std::int32_t i = 0; i < constants->Count(); ++i) {
    const std::string& key = constants->keyAtIndex(i);
    if (key.starts_with('_') || constants->valueAtIndex(i).empty()) continue;
    const std::string number = std::to_string(controls().size() / 2);
    add<Label>("lblKey" + number, key.substr(key.starts_with('.') ? 1 : 0));
    add<Label>("lblValue" + number, constants->valueAtIndex(i));
  }
}

}  // namespace plexoras
