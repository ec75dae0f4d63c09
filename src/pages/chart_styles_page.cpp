#include "pages/chart_styles_page.h"

namespace plexoras {
namespace {

constexpr OptionCode rect_styles[] = {{"rbBarRect", 0}, {"rbBarRect3D", 1}, {"rbBarCylI", 2}, {"rbBarCylII", 3}};
constexpr OptionCode reversals[] = {{"rbReverseDefault", 0}, {"rbReverseX", 1}, {"rbReverseY", 2}, {"rbReverseXY", 3}};
constexpr OptionCode tab_styles[] = {{"rbtNone", 0}, {"rbtTop", 1}, {"rbtBottom", 2}};
constexpr OptionCode curve_styles[] = {{"rbNone", 0}, {"rbDraw", 1}, {"rbFill", 2}};
// Kept: the codes do not follow the order of the buttons.
constexpr OptionCode label_styles[] = {{"rbLeftBottom", 0}, {"rbLeftTop", 2}, {"rbRightBottom", 1}, {"rbRightTop", 3}};
constexpr OptionCode bar_styles[] = {{"rbBarStyleDefault", 0},
                                     {"rbBarStyleStacked", 1},
                                     {"rbBarStyleDefaultPercent", 2},
                                     {"rbBarStyleStackedPercent", 3}};

constexpr PropertyRow rows[] = {
    {"PieStyle", Encoding::Lookup, "cmbPieStyle", "PIESTYLE"},
    {"PieType", Encoding::Lookup, "cmbPieType", "PIETYPE"},
    {"PieAngle", Encoding::Real, "txtAngle"},
    {"Thickness", Encoding::Integer, "txtThickness"},
    {"HasSecondYAxis", Encoding::Check, "cbHasTwoYAxis"},
    {"HasStatistics", Encoding::Check, "cbHasStatistics"},
    {"ShowSelectedRow", Encoding::Check, "cbShowSelectedRow"},
    {"ShowRowTitle", Encoding::Check, "cbShowRowTitle"},
    {"ShowColTitle", Encoding::Check, "cbShowColTitle"},
    {"IsRotated", Encoding::Check, "cbIsRotated"},
    {.property = "RectStyle", .encoding = Encoding::Options, .options = rect_styles},
    {.property = "Reverse", .encoding = Encoding::Options, .options = reversals},
    {.property = "TabStyle", .encoding = Encoding::Options, .options = tab_styles},
    {.property = "CurveStyle", .encoding = Encoding::Options, .options = curve_styles},
    {.property = "LabelStyle", .encoding = Encoding::Options, .options = label_styles},
    {.property = "BarStyle", .encoding = Encoding::Options, .options = bar_styles},
};

constexpr std::string_view load_order[] = {
    "PieStyle",        "PieType",      "PieAngle",     "Thickness", "HasSecondYAxis", "HasStatistics",
    "ShowSelectedRow", "ShowColTitle", "ShowRowTitle", "IsRotated", "RectStyle",      "Reverse",
    "TabStyle",        "CurveStyle",   "LabelStyle",   "BarStyle",
};
constexpr std::string_view apply_order[] = {
    "PieStyle",        "PieType",      "PieAngle",     "Thickness", "HasSecondYAxis", "HasStatistics",
    "ShowSelectedRow", "ShowRowTitle", "ShowColTitle", "IsRotated", "RectStyle",      "Reverse",
    "TabStyle",        "CurveStyle",   "LabelStyle",   "BarStyle",
};
static_assert(all_in_rows(rows, load_order) && all_in_rows(rows, apply_order));

}  // namespace

ChartStyles::ChartStyles() : bindings_(*this, rows) {
  caption = "Chart Styles";
  rbBarStyleDefault.on_click = [this] { rbBarStyleDefault_Click(); };
  rbBarStyleStacked.on_click = [this] { rbBarStyleStacked_Click(); };
  rbBarStyleDefaultPercent.on_click = [this] { rbBarStyleDefaultPercent_Click(); };
  rbBarStyleStackedPercent.on_click = [this] { rbBarStyleStackedPercent_Click(); };
}

std::span<const PropertyRow> ChartStyles::property_rows() { return rows; }

void ChartStyles::SelectionChanged() { bindings_.load(load_order); }

void ChartStyles::ApplyChanges() {
  std::int16_t working_value = 0;
  bindings_.apply(apply_order, working_value);
  selected_control().call("Refresh");
}

void ChartStyles::bar_style_clicked(bool is_absolute) {
  Changed = true;
  // Kept: disabled, the box is still read and written.
  cbHasTwoYAxis.enabled = is_absolute;
}

}  // namespace plexoras
