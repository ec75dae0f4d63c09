#include "authoring/property_pages.h"

#include "applet/diagram_applet.h"
#include "authoring/suggestion.h"
#include "chart_control/about_box.h"
#include "chart_control/custom_page.h"
#include "chart_control/diagram_dtc.h"
#include "chart_control/events_page.h"
#include "contents/contents_page.h"
#include "host/ascii.h"
#include "pages/chart_styles_page.h"
#include "pages/format_page.h"
#include "pages/styles_page.h"
#include "pages/table_styles_page.h"
#include "template/customizer_control.h"

namespace plexoras {
namespace {

using MadePage = std::unique_ptr<PropertyPage>;

constexpr std::string_view chart = DiagramDTC::identifier;
constexpr std::string_view any_control;

// Pages differ in what they are made with.
template <class Page>
MadePage alone(PagesSession&) {
  return std::make_unique<Page>();
}
template <class Page>
MadePage with_session(PagesSession& session) {
  return std::make_unique<Page>(session);
}
template <class Page>
MadePage with_templates(PagesSession& session) {
  return std::make_unique<Page>(session.templates);
}
template <class Page>
MadePage with_settings(PagesSession& session) {
  return std::make_unique<Page>(session.templates.platform.settings);
}
template <class Page>
MadePage with_components(PagesSession& session) {
  return std::make_unique<Page>(session.templates.platform.components);
}

constexpr OwnProperty menu[] = {{"MENU", "cmdMenuBuilder"}, {"USEMENU", "cmdMenuBuilder"}};
constexpr OwnProperty::Code negative_colors[] = {{"red", "on"}, {"null", "off"}};
constexpr OwnProperty negative_color[] = {{"negativeForeColor", "chkRedNegativeValues", negative_colors}};
constexpr OwnProperty contents[] = {{"Contents", "txtContents"}};

constexpr PropertyPageType types[] = {
    {"Styles", "Styles", chart, with_session<Styles>, Styles::property_rows, menu, /*edits_menu=*/true},
    {"ChartStyles", "Chart Styles", chart, alone<ChartStyles>, ChartStyles::property_rows},
    {"TableStyles", "Table Styles", chart, alone<TableStyles>, TableStyles::property_rows, negative_color},
    {"Format", "Format", chart, with_settings<Format>, Format::property_rows},
    {"Contents", "Contents", chart, with_templates<Contents>, nullptr, contents},
    {"Events", "Events", any_control, with_templates<Events>},
    {"Custom", "Custom", any_control, with_components<Custom>},
};

}  // namespace

std::span<const PropertyPageType> property_page_types() { return types; }

PropertyPages::PropertyPages(TemplateSession& templates) : session_(templates) {
  ComponentRegistry& components = templates.platform.components;
  register_diagram_applet(components);
  register_template_forms(components, templates);
  register_contents_forms(components, session_.contents);
  session_.show_about_box = [&templates](std::string_view template_file) {
    AboutBox(templates, template_file).ShowModal(templates.platform);
  };
}

std::vector<const PropertyPageType*> PropertyPages::types_for(const LiveControl& control) {
  std::vector<const PropertyPageType*> found;
  for (const PropertyPageType& type : types) {
    if (type.control_type.empty() || type.control_type == control.identifier()) found.push_back(&type);
  }
  return found;
}

const PropertyPageType& PropertyPages::find(std::string_view name, const LiveControl& control) {
  std::vector<std::string> names;
  std::string listed;
  for (const PropertyPageType* const type : types_for(control)) {
    if (equal_but_for_case(type->name, name) || equal_but_for_case(type->caption, name)) return *type;
    names.emplace_back(type->name);
    listed += (listed.empty() ? "" : ", ") + std::string(type->name);
  }
  throw AutomationError(RunTimeError::NoSuchMember,
                        "there is no property page \"" + std::string(name) + "\" for this control (it has: " + listed +
                            ")" + did_you_mean(name, names),
                        "PropertyPages");
}

std::unique_ptr<PropertyPage> PropertyPages::open(const PropertyPageType& type, LiveControl& control) {
  // Whoever applies such a page stores the menu that the builder holds, whether it was opened or not.
  if (type.edits_menu) {
    MenuBuilder& builder = session_.contents.menu_builder;
    builder.set_menu_document(control.control().GetProperty("MENU"));
    builder.set_use_custom_menu(!control.control().GetProperty("USEMENU").empty());
  }

  std::unique_ptr<PropertyPage> page = type.make(session_);
  page->select({ObjectRef(ObjectRef(), &control.control())});
  return page;
}

}  // namespace plexoras
