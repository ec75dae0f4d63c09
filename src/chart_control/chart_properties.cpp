#include "chart_control/chart_properties.h"

#include <algorithm>
#include <iterator>

namespace plexoras {
namespace {

constexpr ForwardedProperty properties[] = {
    {"DiagramType", ValueType::Long},  // The control has a setter of its own for it.
    {"XmlStyle", ValueType::String},
    {"XmlContents", ValueType::String},
    {"CsvContents", ValueType::String},
    {"FontName", ValueType::String},
    {"FontBold", ValueType::Boolean},
    {"FontItalic", ValueType::Boolean},
    {"FontSize", ValueType::Integer},
    {"FormatType", ValueType::Long},
    {"FormatUseDefaultLocale", ValueType::String},
    {"FormatLanguage", ValueType::String},
    {"FormatCountry", ValueType::String},
    {"FormatVariant", ValueType::String},
    {"FormatPattern", ValueType::String},
    {"HasPopupMenu", ValueType::Boolean, AfterPut::NotifyOnly},
    {"RowSelection", ValueType::Integer, AfterPut::NotifyOnly},
    {"ColSelection", ValueType::Integer, AfterPut::NotifyOnly},
    {"ForegroundColor", ValueType::String},
    {"BackgroundColor", ValueType::String},
    {"ForeColor", ValueType::String},
    {"BackColor", ValueType::String},
    {"GridColor", ValueType::String},
    {"CurveColor", ValueType::String},
    {"CrossColor", ValueType::String},
    {"TagColor", ValueType::String},
    {"SelectionForeColor", ValueType::String},
    {"SelectionBackColor", ValueType::String},
    {"AutoResize", ValueType::Boolean},
    {"DefaultColWidth", ValueType::Integer},
    {"DefaultRowHeight", ValueType::Integer},
    {"RowLabelWidth", ValueType::Integer},
    {"ColLabelHeight", ValueType::Integer},
    {"SelectionMode", ValueType::Long},
    {"MultipleSelection", ValueType::Boolean},
    {"ExtendedSelection", ValueType::Boolean},
    {"FixedRows", ValueType::Integer},
    {"FixedCols", ValueType::Integer},
    {"EqualCols", ValueType::Boolean},
    {"EqualRows", ValueType::Boolean},
    {"VScrollbarPolicy", ValueType::Long},
    {"HScrollbarPolicy", ValueType::Long},
    {"OnRowLabelClick", ValueType::Long},
    {"OnColLabelClick", ValueType::Long},
    {"xGridVisible", ValueType::Boolean},
    {"yGridVisible", ValueType::Boolean},
    {"showColLabels", ValueType::Boolean},
    {"showRowLabels", ValueType::Boolean},
    {"moveableRows", ValueType::Boolean},
    {"moveableCols", ValueType::Boolean},
    {"resizableCols", ValueType::Boolean},
    {"resizableRows", ValueType::Boolean},
    {"RectStyle", ValueType::Long},
    {"ShowSelectedRow", ValueType::Boolean},
    {"PieStyle", ValueType::Long},
    {"PieType", ValueType::Long},
    {"BarStyle", ValueType::Long},
    {"CurveStyle", ValueType::Long},
    {"xScaleMin", ValueType::Double, AfterPut::RefreshAndNotify, "XScaleMin"},  // Kept: announced in another case.
    {"xScaleMax", ValueType::Double, AfterPut::RefreshAndNotify, "XScaleMax"},  // Kept: announced in another case.
    {"yScaleMin", ValueType::Double, AfterPut::RefreshAndNotify, "YScaleMin"},  // Kept: announced in another case.
    {"yScaleMax", ValueType::Double, AfterPut::RefreshAndNotify, "YScaleMax"},  // Kept: announced in another case.
    {"PieAngle", ValueType::Double},
    {"TabStyle", ValueType::Long},
    {"HasLegend", ValueType::Boolean},
    {"HasBorder", ValueType::Boolean},
    {"HasStatistics", ValueType::Boolean},
    {"HasSecondYAxis", ValueType::Boolean},
    {"IsAbsolute", ValueType::Boolean},
    {"IsEditable", ValueType::Boolean},
    {"BucketCount", ValueType::Integer},
    {"ShowRowTitle", ValueType::Boolean},
    {"ShowColTitle", ValueType::Boolean},
    {"IsTransposed", ValueType::Boolean},
    {"IsRotated", ValueType::Boolean},
    {"LabelStyle", ValueType::Long},
    {"Thickness", ValueType::Integer, AfterPut::RefreshAndNotify, "thickness"},  // Kept: announced in another case.
    {"Reverse", ValueType::Long},
};

constexpr bool names_are_unique() {
  for (const ForwardedProperty& row : properties) {
    if (std::ranges::count(properties, row.name, &ForwardedProperty::name) != 1) return false;
  }
  return true;
}
static_assert(names_are_unique(), "a chart property stands in the table twice");

}  // namespace

std::span<const ForwardedProperty> forwarded_properties() { return properties; }

const ForwardedProperty* find_forwarded_property(std::string_view name) {
  const auto row = std::ranges::find(properties, name, &ForwardedProperty::name);
  return row == std::end(properties) ? nullptr : row;
}

}  // namespace plexoras
