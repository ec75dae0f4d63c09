#include "applet/style_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "chart_control/chart_properties.h"
#include "fixtures/fixtures.h"
#include "refusal.h"

namespace plexoras {
namespace {

std::vector<Variant> zero_values() {
  std::vector<Variant> values;
  for (const StyleProperty& property : style_properties()) values.push_back(Variant().converted_to(property.type));
  return values;
}

// "Name=text" of each property in which `values` differ from zero values.
std::string differences(const std::vector<Variant>& values) {
  const std::vector<Variant> zero = zero_values();
  std::string text;
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(values[i].type(), style_properties()[i].type) << style_properties()[i].name;
    if (values[i] != zero[i]) text += std::string(style_properties()[i].name) + "=" + values[i].to_text() + " ";
  }
  return text;
}

TEST(StyleProperties, AreTheChartsSingleValues) {
  for (const ForwardedProperty& row : forwarded_properties()) {
    const bool is_document = row.name.ends_with("Contents") || row.name == "XmlStyle";
    EXPECT_EQ(find_style_property(row.name) < style_properties().size(), !is_document) << row.name;
  }
  EXPECT_LT(find_style_property("negativeForeColor"), style_properties().size());
  EXPECT_EQ(find_style_property("fontname"), style_properties().size());
}

TEST(StyleDocument, HasOneElementALine) {
  std::vector<Variant> values = zero_values();
  values[find_style_property("DiagramType")] = std::int32_t{5};
  values[find_style_property("FontName")] = "A&B";
  values[find_style_property("FontBold")] = true;
  values[find_style_property("xScaleMin")] = -0.1;
  const std::string document = write_style_document(values);
  EXPECT_TRUE(
      document.starts_with("<xml>\n<DiagramType>5</>\n<FontName>A&amp;B</>\n<FontBold>True</>\n"
                           "<FontItalic>False</>\n"))
      << document;
  EXPECT_NE(document.find("\n<xScaleMin>-0.1</>\n"), std::string::npos);
  EXPECT_TRUE(document.ends_with("\n<negativeForeColor></>\n</xml>")) << document;
  EXPECT_EQ(std::ranges::count(document, '\n'), std::ssize(values) + 1);
}

TEST(StyleDocument, ComesBackEqualWhateverTheTextsHold) {
  std::string all_bytes = "\n";
  for (int byte = 0; byte < 256; ++byte) all_bytes += static_cast<char>(byte);
  for (const std::string& text :
       {all_bytes, std::string("\r\n"), std::string(" \t "), std::string("</>"), std::string()}) {
    std::vector<Variant> values = zero_values();
    for (std::size_t i = 0; i < values.size(); ++i) {
      switch (style_properties()[i].type) {
        case ValueType::Integer:
          values[i] = std::int16_t{-32768};
          break;
        case ValueType::Long:
          values[i] = std::int32_t{2147483647};
          break;
        case ValueType::Double:
          values[i] = 1.0 / 3;
          break;
        case ValueType::Boolean:
          values[i] = true;
          break;
        default:
          values[i] = text;
      }
    }
    EXPECT_EQ(read_style_document(write_style_document(values), zero_values()), values);
  }
}

TEST(StyleDocument, ReadsWhatItKnowsAndRefusesWhatItCannotRead) {
  for (const nlohmann::json& c : fixtures("style.json")) {
    const std::string document = text_of(c, "document");
    std::string style;
    const std::string refused = refusal([&] { style = differences(read_style_document(document, zero_values())); });
    EXPECT_EQ(refused, c.contains("refused") ? "5 " + text_of(c, "refused") : "") << c["name"];
    EXPECT_EQ(style, text_of(c, "style")) << c["name"];
  }
}

TEST(StyleDocument, CanLeaveOutWhatRepeatsAValue) {
  struct Case {
    const char* name;
    std::string_view document, left;  // zero values stand before it
  };
  const Case cases[] = {
      {"what differs stays", "<xml>\n<FontSize>9</>\n<FontBold>False</>\n<FontName>a</>\n</xml>",
       "<xml>\n<FontSize>9</><FontName>a</>\n</xml>"},
      {"nothing is left", "<xml>\n<FontSize>0</>\r\n<FontName></>\n<xScaleMin>-0e5</>\n<FontItalic>0</>\n</>",
       "<xml></>"},
      {"empty elements and line breaks in a text", "<xml><FontName/><CurveColor>\n</>\n<FontSize>0</></>",
       "<xml><CurveColor>\n</></>"},
      {"the later of two counts", "<xml><FontSize>9</><FontSize>9</><FontSize>0</><FontSize>0</></>",
       "<xml><FontSize>9</><FontSize>0</></>"},
      {"unknown elements stay", "<xml><FontSize>0</>\n<Later><FontSize>0</>\n</>\n</xml>",
       "<xml><Later><FontSize>0</>\n</>\n</xml>"},
      {"one that is refused", "<xml><FontSize>0</><FontBold>maybe</></>", "<xml><FontSize>0</><FontBold>maybe</></>"},
      {"one that is not well formed", "<xml><FontSize>0</>", "<xml><FontSize>0</>"},
      {"another document", "<xml><rows><FontSize>0</></><cols/><data/></>",
       "<xml><rows><FontSize>0</></><cols/><data/></>"},
      {"no document", "", ""},
  };
  for (const Case& c : cases) {
    const std::string left = without_repeated_values(c.document, zero_values());
    EXPECT_EQ(left, c.left) << c.name;
    EXPECT_EQ(without_repeated_values(left, zero_values()), left) << c.name;
  }
}

TEST(StyleDocument, TakesHostileAndLargeDocuments) {
  const std::size_t many = 500'000;
  const std::string nested = "<xml>" + repeated("<a>", many) + repeated("</>", many) + "<FontSize>9</></xml>";
  EXPECT_EQ(differences(read_style_document(nested, zero_values())), "FontSize=9 ");
  const std::string flat = "<xml>" + repeated("<FontSize>9</>\n", many) + "</xml>";
  EXPECT_EQ(differences(read_style_document(flat, zero_values())), "FontSize=9 ");
}

}  // namespace
}  // namespace plexoras
