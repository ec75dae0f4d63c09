#include "applet/diagram_applet.h"

#include <cassert>
#include <cmath>
#include <utility>

#include "applet/format_xml.h"
#include "applet/style_document.h"
#include "applet/table_members.h"
#include "contents/contents_document.h"
#include "host/platform.h"

namespace plexoras {
namespace {

struct PropertyDefault {
  std::string_view name;
  std::string_view text;
};

// The default of each property that does not begin as 0, false or the empty text. A scale from 0 to 0 is one that
// the chart finds from its data.
constexpr PropertyDefault defaults[] = {
    {"DiagramType", "5"},
    {"FontName", "sans-serif"},
    {"FontSize", "12"},
    {"FormatType", "4"},
    {"FormatUseDefaultLocale", "True"},
    {"FormatLanguage", "en"},
    {"FormatCountry", "US"},
    {"FormatPattern", "#,##0.00"},
    {"FormatDateStyle", "2"},
    {"RowSelection", "-1"},
    {"ColSelection", "-1"},
    {"ForegroundColor", "black"},
    {"BackgroundColor", "white"},
    {"ForeColor", "black"},
    {"BackColor", "white"},
    {"GridColor", "lightgray"},
    {"CurveColor", "navy"},
    {"CrossColor", "gray"},
    {"TagColor", "black"},
    {"SelectionForeColor", "white"},
    {"SelectionBackColor", "navy"},
    {"AutoResize", "True"},
    {"DefaultColWidth", "80"},
    {"DefaultRowHeight", "20"},
    {"RowLabelWidth", "80"},
    {"ColLabelHeight", "20"},
    {"yGridVisible", "True"},
    {"showColLabels", "True"},
    {"showRowLabels", "True"},
    {"resizableCols", "True"},
    {"resizableRows", "True"},
    {"HasLegend", "True"},
    {"BucketCount", "10"},
    {"Thickness", "1"},
    {"negativeForeColor", "null"},
};

// Families that every browser knows how to find, the generic ones first.
constexpr std::string_view font_families[] = {
    "sans-serif", "serif",    "monospace", "Arial",           "Courier New",  "Georgia",
    "Helvetica",  "Palatino", "Tahoma",    "Times New Roman", "Trebuchet MS", "Verdana",
};

std::vector<Variant> default_style() {
  std::vector<Variant> values;
  for (const StyleProperty& property : style_properties()) values.push_back(Variant().converted_to(property.type));
  for (const PropertyDefault& row : defaults) {
    const std::size_t index = find_style_property(row.name);
    assert(index < values.size() && "a default for a property that does not exist");
    values[index] = Variant(row.text).converted_to(style_properties()[index].type);
  }
  return values;
}

// Positive numbers of one magnitude show something in every type of chart.
std::string sample_contents() {
  constexpr std::string_view quarters[] = {"Q1", "Q2", "Q3", "Q4"};
  struct Region {
    std::string_view name;
    std::string_view values[4];
  };
  constexpr Region regions[] = {
      {"North", {"20", "35", "42", "50"}},
      {"South", {"32", "28", "36", "44"}},
      {"West", {"15", "22", "30", "27"}},
  };

  ContentsWriter writer;
  writer.set_row_title("Region");
  for (const std::string_view quarter : quarters) writer.add_column(quarter);
  for (const Region& region : regions) {
    writer.add_row(region.name);
    for (const std::string_view value : region.values) writer.add_value(value);
  }
  return writer.text();
}

// Runs `step` for `member`. An error of whatever lies below comes out as one of the component, naming the member.
template <class Step>
auto naming(std::string_view member, Step step) {
  try {
    return step();
  } catch (const AutomationError& error) {
    if (error.source() == diagram_applet_identifier) throw;
    throw AutomationError(error.number(), std::string(member) + ": " + error.description(),
                          std::string(diagram_applet_identifier));
  }
}

}  // namespace

// The members beside the plain properties.
struct DiagramApplet::Members {
  using Row = Member<DiagramApplet>;

  static Variant xml_style(DiagramApplet& applet) { return write_style_document(applet.style_); }
  static void put_xml_style(DiagramApplet& applet, const Variant& value) {
    applet.style_ = read_style_document(value.to_text(), applet.style_);
  }

  static Variant visible(DiagramApplet& applet) { return applet.visible_; }
  static void put_visible(DiagramApplet& applet, const Variant& value) { applet.visible_ = value.to_boolean(); }

  static Variant use_sample_contents(DiagramApplet& applet, Arguments) {
    applet.table_.put_document(sample_contents());
    return {};
  }

  static Variant format(DiagramApplet&, Arguments arguments) {
    const std::string document = arguments[1].to_text();
    if (!arguments[0].to_boolean()) return format_xml(document, FormatFor::Text);
    // A page says what differs from a chart of which nothing is said.
    return format_xml(without_repeated_values(document, default_style()), FormatFor::Attribute);
  }

  static Variant font_list(DiagramApplet&, Arguments) {
    return StringList(std::begin(font_families), std::end(font_families));
  }

  static Variant chart_image(DiagramApplet& applet, Arguments) {
    const ObjectRef painter = applet.painter_.lock();
    if (painter == nullptr) {
      throw AutomationError(RunTimeError::NoSuchAction,
                            "Object doesn't support this action; this program gave the chart nothing to draw it with");
    }
    try {
      return painter->call("getChartImage");
    } catch (const AutomationError& error) {
      throw AutomationError(error.number(), error.description(), std::string(diagram_applet_identifier));
    }
  }

  static Variant set_painter(DiagramApplet& applet, Arguments arguments) {
    applet.painter_ = arguments[0].is_nothing() ? nullptr : arguments[0].to_object();
    return {};
  }

  static Variant set_event_sink(DiagramApplet& applet, Arguments arguments) {
    applet.event_sink_ = arguments[0].is_nothing() ? nullptr : arguments[0].to_object();
    return {};
  }

  static Variant refresh(DiagramApplet& applet, Arguments) {
    ++applet.repaints_;
    return {};
  }

  static constexpr Row rows[] = {
      {"XmlStyle", xml_style, put_xml_style},
      {"Visible", visible, put_visible},
      {.name = "UseSampleContents", .call = use_sample_contents},
      {.name = "FormatXml", .call = format, .arguments = 2},
      {.name = "getFontList", .call = font_list},
      {.name = "getChartImage", .call = chart_image},
      {.name = "setEventSink", .call = set_event_sink, .arguments = 1},
      {.name = "setPainter", .call = set_painter, .arguments = 1},
      {.name = "Refresh", .call = refresh},
  };
};

DiagramApplet::DiagramApplet(std::shared_ptr<LocaleLists> locales)
    : style_(default_style()), formats_(std::move(locales)) {
  table_.on_selection_change = [this] { selection_changed_ = true; };
}

// Called behind what was done for a member: what the host raises in the event is no error of that member.
void DiagramApplet::tell_selection_change() {
  if (!std::exchange(selection_changed_, false)) return;
  // The sink may be replaced while it is told.
  if (const ObjectRef sink = event_sink_) sink->call("SelectionChange");
}

Variant DiagramApplet::get(std::string_view member) {
  if (const std::size_t index = find_style_property(member); index < style_.size()) return style_[index];
  return naming(member, [&] {
    return is_table_member(member) ? get_table_member(table_, member)
                                   : get_member(*this, Members::rows, member, diagram_applet_identifier);
  });
}

void DiagramApplet::put(std::string_view member, const Variant& value) {
  if (const std::size_t index = find_style_property(member); index < style_.size()) {
    naming(member, [&] {
      Variant converted = value.converted_to(style_properties()[index].type);
      // The style document has no text for an infinity.
      if (converted.type() == ValueType::Double && !std::isfinite(converted.to_double())) {
        throw AutomationError(RunTimeError::Overflow);
      }
      style_[index] = std::move(converted);
    });
    return;
  }
  naming(member, [&] {
    is_table_member(member) ? put_table_member(table_, member, value)
                            : put_member(*this, Members::rows, member, value, diagram_applet_identifier);
  });
  tell_selection_change();
}

Variant DiagramApplet::call(std::string_view member, Arguments arguments) {
  Variant result = naming(member, [&]() -> Variant {
    if (FormatMembers::has(member)) return formats_.call(member, arguments, style_);
    return is_table_member(member) ? call_table_member(table_, member, arguments)
                                   : call_member(*this, Members::rows, member, arguments, diagram_applet_identifier);
  });
  tell_selection_change();
  return result;
}

Variant DiagramApplet::call_by_id(std::int32_t dispatch_id) {
  return dispatch_id == refresh_id ? call("Refresh") : AutomationObject::call_by_id(dispatch_id);
}

void register_diagram_applet(ComponentRegistry& components) {
  components.add(std::string(diagram_applet_identifier),
                 [locales = std::make_shared<LocaleLists>()] { return std::make_shared<DiagramApplet>(locales); });
}

}  // namespace plexoras
