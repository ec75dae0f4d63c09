#pragma once

#include "pages/property_bindings.h"

namespace plexoras {

/// The page "Table Styles": how the chart's table of data behaves. Its rows and columns, scroll bars, and what can be
/// selected.
///
/// Made by the host that shows it; lives as long as that needs it, for any number of selections.
class TableStyles final : public PropertyPage {
public:
  Frame& fraRows = add<Frame>("fraRows", "Rows");
  CheckBox& cbShowRowLabels = fraRows.add<CheckBox>("cbShowRowLabels", "Show labels");
  ComboBox& cmbOnRowLabelClick =
      fraRows.add<ComboBox>("cmbOnRowLabelClick", ComboBox::Style::ListOnly, "On label click:");
  TextBox& txtRowLabelWidth = fraRows.add<TextBox>("txtRowLabelWidth", "Label width:");
  TextBox& txtDefaultRowHeight = fraRows.add<TextBox>("txtDefaultRowHeight", "Default height:");
  CheckBox& cbEqualRows = fraRows.add<CheckBox>("cbEqualRows", "Equal size");
  CheckBox& cbMoveableRows = fraRows.add<CheckBox>("cbMoveableRows", "Moveable");
  CheckBox& cbResizableRows = fraRows.add<CheckBox>("cbResizableRows", "Resizable");
  TextBox& txtFixedRows = fraRows.add<TextBox>("txtFixedRows", "Fixed rows:");

  Frame& fraColumns = add<Frame>("fraColumns", "Columns");
  CheckBox& cbShowColLabels = fraColumns.add<CheckBox>("cbShowColLabels", "Show labels");
  ComboBox& cmbOnColLabelClick =
      fraColumns.add<ComboBox>("cmbOnColLabelClick", ComboBox::Style::ListOnly, "On label click:");
  TextBox& txtColLabelHeight = fraColumns.add<TextBox>("txtColLabelHeight", "Label height:");
  TextBox& txtDefaultColWidth = fraColumns.add<TextBox>("txtDefaultColWidth", "Default width:");
  CheckBox& cbEqualCols = fraColumns.add<CheckBox>("cbEqualCols", "Equal size");
  CheckBox& cbMoveableCols = fraColumns.add<CheckBox>("cbMoveableCols", "Moveable");
  CheckBox& cbResizableCols = fraColumns.add<CheckBox>("cbResizableCols", "Resizable");
  TextBox& txtFixedCols = fraColumns.add<TextBox>("txtFixedCols", "Fixed cols:");

  Frame& fraScrollbars = add<Frame>("fraScrollbars", "Scrollbars");
  ComboBox& cmbVScrollbarPolicy =
      fraScrollbars.add<ComboBox>("cmbVScrollbarPolicy", ComboBox::Style::ListOnly, "Vertical:");
  ComboBox& cmbHScrollbarPolicy =
      fraScrollbars.add<ComboBox>("cmbHScrollbarPolicy", ComboBox::Style::ListOnly, "Horizontal:");

  Frame& fraSelectionStyle = add<Frame>("fraSelectionStyle", "Selection Style");
  OptionButton& rbNone = fraSelectionStyle.add<OptionButton>("rbNone", "None");
  OptionButton& rbCols = fraSelectionStyle.add<OptionButton>("rbCols", "Column");
  OptionButton& rbRows = fraSelectionStyle.add<OptionButton>("rbRows", "Row");
  OptionButton& rbCell = fraSelectionStyle.add<OptionButton>("rbCell", "Cell");

  // The frames inside are there for their groups of buttons: how many can be selected, and by which keys.
  Frame& fraSelectionMode = add<Frame>("fraSelectionMode", "Selection Mode");
  Frame& fraMultiple = fraSelectionMode.add<Frame>("fraMultiple");
  OptionButton& rbSingle = fraMultiple.add<OptionButton>("rbSingle", "Single");
  OptionButton& rbMulti = fraMultiple.add<OptionButton>("rbMulti", "Multiple");
  Frame& fraExtended = fraSelectionMode.add<Frame>("fraExtended");
  OptionButton& rbWindowsNT = fraExtended.add<OptionButton>("rbWindowsNT", "Windows/NT");
  OptionButton& rbExtended = fraExtended.add<OptionButton>("rbExtended", "Extended");

  CheckBox& chkRedNegativeValues = add<CheckBox>("chkRedNegativeValues", "Red negative values");

  TableStyles();
  /// The properties that it shows, and where. Lives as long as the program.
  static std::span<const PropertyRow> property_rows();

  void SelectionChanged() override;
  void ApplyChanges() override;

  /// An edit when the box now says other than the chart that the control shows.
  void chkRedNegativeValues_Click();

private:
  bool chart_shows_red() const;
  void enable_controls();

  PropertyBindings bindings_;
};

}  // namespace plexoras
