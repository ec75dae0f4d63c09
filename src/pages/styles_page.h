#pragma once

#include "pages/pages_session.h"
#include "pages/property_bindings.h"

namespace plexoras {

/// The page "Styles": a chart's basic look, and its popup menu.
///
/// Made by the host that shows it; lives as long as that needs it, for any number of selections.
class Styles final : public PropertyPage {
public:
  Frame& fraBasicStyles = add<Frame>("fraBasicStyles", "Basic Styles");
  ComboBox& cmbDiagramType = fraBasicStyles.add<ComboBox>("cmbDiagramType", ComboBox::Style::ListOnly, "Diagram:");
  CheckBox& cbAutoResize = fraBasicStyles.add<CheckBox>("cbAutoResize", "Auto Resize");
  CheckBox& chkIsTransposed = fraBasicStyles.add<CheckBox>("chkIsTransposed", "Transposed");
  CheckBox& chkHasBorder = fraBasicStyles.add<CheckBox>("chkHasBorder", "Border");
  CheckBox& chkHasLegend = fraBasicStyles.add<CheckBox>("chkHasLegend", "Legend");
  CheckBox& cbYGridVisible = fraBasicStyles.add<CheckBox>("cbYGridVisible", "Show Y Grid");
  CheckBox& cbXGridVisible = fraBasicStyles.add<CheckBox>("cbXGridVisible", "Show X Grid");

  Frame& fraFont = add<Frame>("fraFont", "Font");
  ComboBox& cmbFontName = fraFont.add<ComboBox>("cmbFontName", ComboBox::Style::Typed, "Family:");
  ComboBox& cmbFontSize = fraFont.add<ComboBox>("cmbFontSize", ComboBox::Style::Typed, "Size:");
  CheckBox& chkFontBold = fraFont.add<CheckBox>("chkFontBold", "Bold");
  CheckBox& chkFontItalic = fraFont.add<CheckBox>("chkFontItalic", "Italic");

  Frame& fraScale = add<Frame>("fraScale", "Scale");
  CheckBox& chkIsAbsolute = fraScale.add<CheckBox>("chkIsAbsolute", "IsAbsolute");
  TextBox& yScaleMin = fraScale.add<TextBox>("yScaleMin", "YScaleMin:");
  TextBox& yScaleMax = fraScale.add<TextBox>("yScaleMax", "YScaleMax:");
  TextBox& xScaleMin = fraScale.add<TextBox>("xScaleMin", "XScaleMin:");
  TextBox& xScaleMax = fraScale.add<TextBox>("xScaleMax", "XScaleMax:");

  Frame& fraSelection = add<Frame>("fraSelection", "Selection");
  TextBox& txtSelectedRow = fraSelection.add<TextBox>("txtSelectedRow", "Row:");
  TextBox& txtSelectedCol = fraSelection.add<TextBox>("txtSelectedCol", "Column:");

  Frame& fraMisc = add<Frame>("fraMisc", "Misc");
  TextBox& txtBucketCount = fraMisc.add<TextBox>("txtBucketCount", "Buckets:");
  CheckBox& chkHasPopupMenu = fraMisc.add<CheckBox>("chkHasPopupMenu", "PopupMenu");
  Button& cmdMenuBuilder = fraMisc.add<Button>("cmdMenuBuilder", "Menu");
  Button& cmdAbout = fraMisc.add<Button>("cmdAbout", "About");

  explicit Styles(PagesSession& session);
  /// The properties that it shows, and where. Lives as long as the program.
  static std::span<const PropertyRow> property_rows();

  void SelectionChanged() override;
  /// Stores the menu that the menu builder holds, too. Kept: that is so even when it was last opened for another chart,
  /// or never.
  void ApplyChanges() override;

  void cmbDiagramType_Click();
  void chkIsAbsolute_Click();
  void chkHasPopupMenu_Click();
  void cmbFontName_Click();
  void cmbFontSize_Click();
  /// Shows the menu builder. The menu is stored when the page is applied.
  void cmdMenuBuilder_Click();
  void cmdAbout_Click();

private:
  bool supports_menus() const;
  void fill_font_lists();
  void enable_controls();
  std::string custom_property(std::string_view key) const;
  void set_custom_property(std::string_view key, std::string_view value);

  PagesSession& session_;
  PropertyBindings bindings_;
};

}  // namespace plexoras
