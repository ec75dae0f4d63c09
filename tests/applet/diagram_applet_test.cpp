#include "applet/diagram_applet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

#include "applet/contents_reader.h"
#include "applet/style_document.h"
#include "chart_control/chart_properties.h"
#include "contents/contents_document.h"
#include "fixtures/fixtures.h"
#include "host/platform.h"
#include "refusal.h"

namespace plexoras {
namespace {

TEST(DiagramApplet, IsMadeByItsIdentifier) {
  ComponentRegistry components;
  register_diagram_applet(components);
  const ObjectRef chart = components.create("Plexoras.DiagramApplet");
  EXPECT_EQ(chart->get("DiagramType"), Variant(std::int32_t{5}));
  EXPECT_NE(chart, components.create("Plexoras.DiagramApplet"));
}

TEST(DiagramApplet, KeepsEveryForwardedPropertyInItsType) {
  DiagramApplet chart;
  for (const ForwardedProperty& row : forwarded_properties()) {
    EXPECT_EQ(chart.get(row.name).type(), row.type) << row.name;
    chart.put(row.name, chart.get(row.name));
    if (row.type == ValueType::String) continue;
    chart.put(row.name, "1");
    EXPECT_EQ(chart.get(row.name), Variant("1").converted_to(row.type)) << row.name;
  }
  EXPECT_EQ(chart.repaints(), 0u);
}

// A page names what differs from them, and the element that draws begins with the same ones.
TEST(DiagramApplet, BeginsWithDefaults) {
  DiagramApplet chart;
  const nlohmann::json defaults = fixtures("default_style.json");
  EXPECT_EQ(defaults.size(), style_properties().size());
  for (const StyleProperty& property : style_properties()) {
    EXPECT_EQ(chart.get(property.name).to_text(), text_of(defaults, property.name.data())) << property.name;
  }
  EXPECT_EQ(chart.call_with("FormatXml", {true, chart.get("XmlStyle")}), Variant("&lt;xml&gt;&lt;/xml&gt;"));
  chart.put("FontName", "$(A)");
  EXPECT_EQ(chart.call_with("FormatXml", {true, chart.get("XmlStyle")}),
            Variant("&lt;xml&gt;&lt;FontName&gt;&#36;(A)&lt;/&gt;&lt;/xml&gt;"));
}

TEST(DiagramApplet, TakesItsStyleAsADocument) {
  DiagramApplet changed;
  changed.put("FontName", "Georgia");
  changed.put("negativeForeColor", "red");
  changed.put("xScaleMin", 0.1);
  changed.put("RowSelection", std::int16_t{3});

  DiagramApplet other;
  other.put("XmlStyle", changed.get("XmlStyle"));
  for (const StyleProperty& property : style_properties()) {
    EXPECT_EQ(other.get(property.name), changed.get(property.name)) << property.name;
  }
}

TEST(DiagramApplet, KeepsItsContentsVerbatim) {
  DiagramApplet chart;
  EXPECT_EQ(chart.get("XmlContents"), Variant(empty_contents_document));
  const std::string document = "<xml>\n<rows>c<row>a</></>\r\n<cols><col>b</></><data><value>1</></></xml>\n";
  chart.put("XmlContents", document);
  EXPECT_EQ(chart.get("XmlContents"), Variant(document));
  EXPECT_EQ(chart.get("CsvContents"), Variant("c,b\r\na,1\r\n"));

  chart.put("CsvContents", "c,b\nx,2\n");
  EXPECT_EQ(chart.get("XmlContents"), Variant("<xml><rows>c<row>x</></><cols><col>b</></><data><value>2</></></xml>"));
}

TEST(DiagramApplet, RefusesValuesAndStaysAsItWas) {
  struct Case {
    std::string_view member;
    Variant value;
    std::string_view message;
  };
  const Case cases[] = {
      {"FontSize", "big", "13 FontSize: Type mismatch: \"big\" is not a number"},
      {"FontSize", std::int32_t{70000}, "6 FontSize: Overflow"},
      {"PieAngle", std::numeric_limits<double>::infinity(), "6 PieAngle: Overflow"},
      {"PieAngle", std::numeric_limits<double>::quiet_NaN(), "6 PieAngle: Overflow"},
      {"HasLegend", StringList{}, "13 HasLegend: Type mismatch: TextList cannot be read as Boolean"},
      {"XmlContents", "<xml>", "5 XmlContents: 1:1: <xml> is never closed; close it with \"</>\""},
      {"XmlContents", "", "5 XmlContents: 1:1: the document holds no element"},
      {"CsvContents", "c\n\"", "5 CsvContents: 2:1: the quoted field that begins here is never closed"},
      {"XmlStyle", "<xml><FontName>x</><FontSize>y</></>",
       "5 XmlStyle: 1:30: FontSize (Integer): Type mismatch: \"y\" is not a number"},
      {"fontSize", "1", "438 Object doesn't support this property or method: \"fontSize\""},
      {"Refresh", "1", "438 Object doesn't support this property or method: \"Refresh\""},
  };
  DiagramApplet chart;
  const Variant style = chart.get("XmlStyle"), contents = chart.get("XmlContents");
  for (const Case& c : cases) {
    EXPECT_EQ(refusal([&] { chart.put(c.member, c.value); }), c.message);
    EXPECT_EQ(chart.get("XmlStyle"), style) << c.message;
    EXPECT_EQ(chart.get("XmlContents"), contents) << c.message;
  }
  try {
    chart.put("FontSize", "big");
    FAIL();
  } catch (const AutomationError& error) {
    EXPECT_EQ(error.source(), "Plexoras.DiagramApplet");
  }
}

TEST(DiagramApplet, AnswersItsMethods) {
  DiagramApplet chart;
  EXPECT_EQ(chart.call_with("isValidXmlContents", {empty_contents_document}), Variant(true));
  EXPECT_EQ(chart.call_with("isValidXmlContents", {""}), Variant(false));
  EXPECT_EQ(chart.call_with("FormatXml", {true, "<xml>\n</xml>\n"}), Variant("&lt;xml&gt;&#10;&lt;/xml&gt;"));
  EXPECT_EQ(chart.call_with("FormatXml", {false, "<xml>\n<a/>\n</>"}), Variant("<xml><a/></>"));
  const Variant fonts = chart.call("getFontList");
  EXPECT_EQ(std::ranges::count(fonts.to_text_list(), chart.get("FontName").to_text()), 1);

  chart.put("Visible", std::int16_t{0});
  EXPECT_EQ(chart.get("Visible"), Variant(false));
  chart.call("Refresh");
  chart.call_by_id(367);
  EXPECT_EQ(chart.repaints(), 2u);

  EXPECT_EQ(refusal([&] {
              chart.call_with("FormatXml", {true, "<a"});
            }),
            "5 FormatXml: 1:3: tag \"a\" must end in \">\" or \"/>\" here");
  EXPECT_EQ(refusal([&] { chart.call("FormatXml"); }), "5 FormatXml cannot be called with 0 arguments");
  EXPECT_EQ(refusal([&] { chart.call("FontName"); }).substr(0, 4), "438 ");
  EXPECT_EQ(refusal([&] { chart.get("getFontList"); }).substr(0, 4), "438 ");
  EXPECT_EQ(refusal([&] { chart.call_by_id(1); }).substr(0, 4), "438 ");
  EXPECT_EQ(refusal([&] { chart.call("getChartImage"); }).substr(0, 4), "445 ");
}

TEST(DiagramApplet, SampleContentsAreALabelledTable) {
  DiagramApplet chart;
  chart.call("UseSampleContents");
  const ContentsTable table = read_contents(chart.get("XmlContents").to_text());
  ASSERT_FALSE(table.rows.empty());
  EXPECT_EQ(table.column_count(), table.columns.size());
  EXPECT_EQ(table.values.size(), table.rows.size() * table.columns.size());
  for (const auto& label : table.rows) EXPECT_FALSE(label.value_or("").empty());
  for (const std::string& value : table.values) EXPECT_GT(Variant(value).to_double(), 0);
}

}  // namespace
}  // namespace plexoras
