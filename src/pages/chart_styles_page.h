#pragma once

#include "pages/property_bindings.h"

namespace plexoras {

/// The page "Chart Styles": what depends on the kind of chart. Pies, axes and titles, and six styles that are chosen
/// with option buttons.
///
/// Made by the host that shows it; lives as long as that needs it, for any number of selections.
class ChartStyles final : public PropertyPage {
public:
  Frame& fraPie = add<Frame>("fraPie", "Pie");
  ComboBox& cmbPieStyle = fraPie.add<ComboBox>("cmbPieStyle", ComboBox::Style::ListOnly, "Style:");
  ComboBox& cmbPieType = fraPie.add<ComboBox>("cmbPieType", ComboBox::Style::ListOnly, "Type:");
  TextBox& txtAngle = fraPie.add<TextBox>("txtAngle", "Angle:");
  TextBox& txtThickness = fraPie.add<TextBox>("txtThickness", "Thickness:");

  CheckBox& cbHasTwoYAxis = add<CheckBox>("cbHasTwoYAxis", "Two Y Axes");
  CheckBox& cbHasStatistics = add<CheckBox>("cbHasStatistics", "Has Statistics");
  CheckBox& cbShowSelectedRow = add<CheckBox>("cbShowSelectedRow", "Selected Row");
  CheckBox& cbShowRowTitle = add<CheckBox>("cbShowRowTitle", "Row Title");
  CheckBox& cbShowColTitle = add<CheckBox>("cbShowColTitle", "Column Title");

  Frame& fraBars = add<Frame>("fraBars");
  Label& lblBars = fraBars.add<Label>("lblBars", "Bars:");
  OptionButton& rbBarRect = fraBars.add<OptionButton>("rbBarRect", "Rectangle");
  OptionButton& rbBarRect3D = fraBars.add<OptionButton>("rbBarRect3D", "Rectangle 3D");
  OptionButton& rbBarCylI = fraBars.add<OptionButton>("rbBarCylI", "Dark Cyllinder");
  OptionButton& rbBarCylII = fraBars.add<OptionButton>("rbBarCylII", "Light Cyllinder");

  Frame& fraContents = add<Frame>("fraContents", "Contents:");
  OptionButton& rbBarStyleDefault = fraContents.add<OptionButton>("rbBarStyleDefault", "Default");
  OptionButton& rbBarStyleStacked = fraContents.add<OptionButton>("rbBarStyleStacked", "Stacked");
  OptionButton& rbBarStyleDefaultPercent = fraContents.add<OptionButton>("rbBarStyleDefaultPercent", "Percent");
  OptionButton& rbBarStyleStackedPercent = fraContents.add<OptionButton>("rbBarStyleStackedPercent", "Stacked Percent");

  Frame& fraOrientation = add<Frame>("fraOrientation", "Orientation");
  CheckBox& cbIsRotated = fraOrientation.add<CheckBox>("cbIsRotated", "Is Rotated");
  Label& lblReversed = fraOrientation.add<Label>("lblReversed", "Reversed:");
  OptionButton& rbReverseDefault = fraOrientation.add<OptionButton>("rbReverseDefault", "None");
  OptionButton& rbReverseX = fraOrientation.add<OptionButton>("rbReverseX", "X Axis");
  OptionButton& rbReverseY = fraOrientation.add<OptionButton>("rbReverseY", "Y Axis");
  OptionButton& rbReverseXY = fraOrientation.add<OptionButton>("rbReverseXY", "Both");

  Frame& fraTabs = add<Frame>("fraTabs");
  Label& lblTabs = fraTabs.add<Label>("lblTabs", "Tabs:");
  OptionButton& rbtNone = fraTabs.add<OptionButton>("rbtNone", "None");
  OptionButton& rbtTop = fraTabs.add<OptionButton>("rbtTop", "Top");
  OptionButton& rbtBottom = fraTabs.add<OptionButton>("rbtBottom", "Bottom");

  Frame& fraCurve = add<Frame>("fraCurve");
  Label& lblCurve = fraCurve.add<Label>("lblCurve", "Curve:");
  OptionButton& rbNone = fraCurve.add<OptionButton>("rbNone", "None");
  OptionButton& rbDraw = fraCurve.add<OptionButton>("rbDraw", "Draw");
  OptionButton& rbFill = fraCurve.add<OptionButton>("rbFill", "Fill");

  Frame& fraLabels = add<Frame>("fraLabels", "Labels");
  Label& lblPlacement = fraLabels.add<Label>("lblPlacement", "Placement:");
  OptionButton& rbLeftBottom = fraLabels.add<OptionButton>("rbLeftBottom", "LeftBottom");
  OptionButton& rbLeftTop = fraLabels.add<OptionButton>("rbLeftTop", "LeftTop");
  OptionButton& rbRightBottom = fraLabels.add<OptionButton>("rbRightBottom", "RightBottom");
  OptionButton& rbRightTop = fraLabels.add<OptionButton>("rbRightTop", "RightTop");

  ChartStyles();
  /// The properties that it shows, and where. Lives as long as the program.
  static std::span<const PropertyRow> property_rows();

  void SelectionChanged() override;
  void ApplyChanges() override;

  // A second y axis goes with absolute bar contents alone. The rule is tied to these four clicks; selecting a button
  // from code, as loading does, counts as one.
  void rbBarStyleDefault_Click() { bar_style_clicked(true); }
  void rbBarStyleStacked_Click() { bar_style_clicked(true); }
  void rbBarStyleDefaultPercent_Click() { bar_style_clicked(false); }
  void rbBarStyleStackedPercent_Click() { bar_style_clicked(false); }

private:
  void bar_style_clicked(bool is_absolute);

  PropertyBindings bindings_;
};

}  // namespace plexoras
