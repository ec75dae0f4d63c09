#include "applet/style_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "chart_control/chart_properties.h"
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

TEST(StyleDocument, ReadsWhatItKnows) {
  struct Case {
    const char* name;
    std::string_view document, read;
  };
  const Case cases[] = {
      {"nothing", "<xml/>", ""},
      {"absent elements", "<xml><FontSize>9</></>", "FontSize=9 "},
      {"line ends of any kind", "\r\n<xml>\r<FontSize>9</>\r\n\n<FontName>x</></xml>\n", "FontName=x FontSize=9 "},
      {"unknown elements, nested ones too",
       "<xml><Later>1</><Other><FontSize>1</>text<Deep><a/></></Other><FontSize>9</></xml>", "FontSize=9 "},
      {"text forms of Booleans", "<xml><FontBold>true</><HasLegend>-1</><HasBorder>0</></>",
       "FontBold=True HasLegend=True "},
      {"the later of two counts", "<xml><FontSize>9</><FontSize>12</></xml>", "FontSize=12 "},
      {"an empty text", "<xml><FontName>a</><FontName/></xml>", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(differences(read_style_document(c.document, zero_values())), c.read) << c.name;
}

TEST(StyleDocument, RefusesWhatItCannotRead) {
  struct Case {
    std::string_view document, message;
  };
  const Case cases[] = {
      {"", "5 1:1: the document holds no element"},
      {"<style/>", "5 1:1: \"style\" stands where <xml> is expected"},
      {"<xml>\n<FontName>a</>\n<FontSize>big</>\n</>",
       "5 3:11: FontSize (Integer): Type mismatch: \"big\" is not a number"},
      {"<xml><FontSize>40000</></>", "5 1:16: FontSize (Integer): Overflow"},
      {"<xml><FontSize/></>", "5 1:6: FontSize (Integer): Type mismatch: \"\" is not a number"},
      {"<xml><FontSize></></>", "5 1:16: FontSize (Integer): Type mismatch: \"\" is not a number"},
      {"<xml><HasLegend>maybe</></>", "5 1:17: HasLegend (Boolean): Type mismatch: \"maybe\" is not a Boolean"},
      {"<xml><FontSize>1<b/></></>", "5 1:17: \"FontSize\" holds a text and no elements"},
      {"<xml>stray<FontSize>1</></>", "5 1:6: text \"stray\" stands between elements"},
      {"<xml><FontSize>1</>", "5 1:1: <xml> is never closed; close it with \"</>\""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(refusal([&] { read_style_document(c.document, zero_values()); }), c.message) << c.document;
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
