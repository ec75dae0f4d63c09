#include "pages/styles_page.h"

#include <algorithm>
#include <string>

#include "host/ascii.h"
#include "template/ini_section.h"

namespace plexoras {
namespace {

constexpr PropertyRow rows[] = {
    {"DiagramType", Encoding::Lookup, "cmbDiagramType", "DIAGRAMTYPE"},
    {"AutoResize", Encoding::Check, "cbAutoResize"},
    {"IsTransposed", Encoding::Check, "chkIsTransposed"},
    {"IsAbsolute", Encoding::Check, "chkIsAbsolute"},
    {"HasBorder", Encoding::Check, "chkHasBorder"},
    {"HasLegend", Encoding::Check, "chkHasLegend"},
    {"HasPopupMenu", Encoding::Check, "chkHasPopupMenu"},
    {"yGridVisible", Encoding::Check, "cbYGridVisible"},
    {"xGridVisible", Encoding::Check, "cbXGridVisible"},
    {"yScaleMin", Encoding::Real, "yScaleMin"},
    {"yScaleMax", Encoding::Real, "yScaleMax"},
    {"xScaleMin", Encoding::Real, "xScaleMin"},
    {"xScaleMax", Encoding::Real, "xScaleMax"},
    {"BucketCount", Encoding::PositiveInteger, "txtBucketCount"},
    {"FontName", Encoding::Text, "cmbFontName"},
    {"FontSize", Encoding::PositiveInteger, "cmbFontSize"},
    {"FontBold", Encoding::CheckOrGrayed, "chkFontBold"},
    {"FontItalic", Encoding::CheckOrGrayed, "chkFontItalic"},
    {"RowSelection", Encoding::Integer, "txtSelectedRow"},
    {"ColSelection", Encoding::Integer, "txtSelectedCol"},
};

constexpr std::string_view load_order[] = {
    "DiagramType",  "AutoResize",   "IsTransposed", "IsAbsolute",   "HasBorder", "HasLegend",
    "HasPopupMenu", "yGridVisible", "xGridVisible", "yScaleMin",    "yScaleMax", "xScaleMin",
    "xScaleMax",    "BucketCount",  "RowSelection", "ColSelection",
};
constexpr std::string_view apply_order[] = {
    "DiagramType",  "AutoResize",   "IsTransposed", "IsAbsolute", "HasBorder", "HasLegend", "HasPopupMenu",
    "yGridVisible", "xGridVisible", "yScaleMin",    "yScaleMax",  "xScaleMin", "xScaleMax", "BucketCount",
};
// After the others, both in loading and in applying.
constexpr std::string_view font_order[] = {"FontName", "FontSize", "FontBold", "FontItalic"};
// Kept: applied after the chart has been redrawn, so that the selection is made in the new chart.
constexpr std::string_view apply_after_refresh[] = {"RowSelection", "ColSelection"};
static_assert(all_in_rows(rows, load_order) && all_in_rows(rows, apply_order) && all_in_rows(rows, font_order) &&
              all_in_rows(rows, apply_after_refresh));

constexpr std::string_view font_sizes[] = {"8",  "9",  "10", "11", "12", "14", "16", "18",
                                           "20", "22", "24", "26", "28", "36", "48"};

// The chart types that the page knows something about.
enum : std::int32_t { Histogram = 0, Table = 9, CumulativeHistogram = 10, HeatTable = 11 };

std::string_view yes_or_empty(bool flag) { return flag ? "Yes" : ""; }

}  // namespace

Styles::Styles(PagesSession& session) : session_(session), bindings_(*this, rows) {
  caption = "Styles";
  cmbDiagramType.on_click = [this] { cmbDiagramType_Click(); };
  chkIsAbsolute.on_click = [this] { chkIsAbsolute_Click(); };
  chkHasPopupMenu.on_click = [this] { chkHasPopupMenu_Click(); };
  cmbFontName.on_click = [this] { cmbFontName_Click(); };
  cmbFontSize.on_click = [this] { cmbFontSize_Click(); };
  cmdMenuBuilder.on_click = [this] { cmdMenuBuilder_Click(); };
  cmdAbout.on_click = [this] { cmdAbout_Click(); };
}

std::span<const PropertyRow> Styles::property_rows() { return rows; }

void Styles::SelectionChanged() {
  cmdMenuBuilder.enabled = chkHasPopupMenu.enabled = supports_menus();
  bindings_.load(load_order);
  // Once more: the box's click may have set it, if this chart's value is not the one that the page showed before.
  cmdMenuBuilder.enabled = chkHasPopupMenu.enabled;
  fill_font_lists();
  bindings_.load(font_order);
  enable_controls();
}

void Styles::ApplyChanges() {
  std::int16_t working_value = 0;
  bindings_.apply(apply_order, working_value);
  bindings_.apply(font_order, working_value);
  set_custom_property("MENU", session_.contents.menu_builder.menu_document());
  set_custom_property("USEMENU", yes_or_empty(session_.contents.menu_builder.use_custom_menu()));
  selected_control().call("Refresh");
  bindings_.apply(apply_after_refresh, working_value);
  selected_control().call("FireCustomPropertyChange");
  Changed = false;
}

bool Styles::supports_menus() const {
  return !equal_but_for_case(selected_control().call_with("GetProperty", {"HASMENU"}).to_text(), "false");
}

void Styles::fill_font_lists() {
  cmbFontName.clear();
  const Variant fonts = chart_of(selected_control(), "diagram")->call("getFontList");
  for (const std::string& font : fonts.to_text_list()) cmbFontName.add(font);
  // Kept: every load adds the sizes once more.
  for (const std::string_view size : font_sizes) cmbFontSize.add(std::string(size));
}

void Styles::enable_controls() {
  yScaleMin.enabled = yScaleMax.enabled = chkIsAbsolute.value() == 1;
  // Kept: the control's type counts, not one that is selected in the list and not yet applied.
  const std::int32_t type = selected_control().get("DiagramType").to_long();
  txtBucketCount.enabled = type == Histogram || type == CumulativeHistogram;
  cbAutoResize.enabled = type == Table || type == HeatTable;
}

void Styles::cmbDiagramType_Click() {
  if (!bindings_.lookup_differs("DiagramType")) return;
  Changed = true;
  enable_controls();
}

void Styles::chkIsAbsolute_Click() {
  Changed = true;
  enable_controls();
}

void Styles::chkHasPopupMenu_Click() {
  // Disabled means that the template has no menus.
  if (!chkHasPopupMenu.enabled) return;
  Changed = true;
  cmdMenuBuilder.enabled = chkHasPopupMenu.value() == 1;
}

void Styles::cmbFontName_Click() {
  if (cmbFontName.text() != selected_control().get("FontName").to_text()) Changed = true;
}

void Styles::cmbFontSize_Click() {
  std::int16_t size = 0;
  if (integer_of(cmbFontSize.text(), size) != selected_control().get("FontSize").to_integer()) Changed = true;
}

void Styles::cmdMenuBuilder_Click() {
  MenuBuilder& builder = session_.contents.menu_builder;
  if (!builder.has_command_table()) {
    const std::string file = selected_control().get("templateFile").to_text();
    const auto commands = GetSectionVariables(session_.templates, file, "MENUITEMS");
    // Without the file there is no catalogue yet: the next launch looks for one again.
    if (session_.templates.files.bytes(file)) builder.set_command_table(commands);
  }
  builder.set_use_custom_menu(!custom_property("USEMENU").empty());
  builder.set_menu_document(custom_property("MENU"));
  builder.ShowModal(session_.templates.platform);
  if (builder.menu_document() != custom_property("MENU")) Changed = true;
  if (yes_or_empty(builder.use_custom_menu()) != custom_property("USEMENU")) Changed = true;
}

void Styles::cmdAbout_Click() {
  if (session_.show_about_box) session_.show_about_box(selected_control().get("templateFile").to_text());
}

std::string Styles::custom_property(std::string_view key) const {
  return selected_control().get("CustomProperties").to_object()->call_with("atGet", {key}).to_text();
}

void Styles::set_custom_property(std::string_view key, std::string_view value) {
  selected_control().get("CustomProperties").to_object()->call_with("atPut", {key, value});
}

}  // namespace plexoras
