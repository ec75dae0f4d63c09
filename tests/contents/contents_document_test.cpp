#include "contents/contents_document.h"

#include <gtest/gtest.h>

#include <string>

namespace plexoras {
namespace {

TEST(EscapeContents, ReplacesSixCharactersAndNoOthers) {
  struct Case {
    const char* name;
    std::string_view text, escaped;
  };
  const Case cases[] = {
      {"nothing", "", ""},
      {"nothing to escape", "plain $(X) #(Y) \xC3\xA4", "plain $(X) #(Y) \xC3\xA4"},
      {"all six", "'\"&<>\t", "&apos;&quot;&amp;&lt;&gt;&tab;"},
      {"between other characters", "a<b & 'c'", "a&lt;b &amp; &apos;c&apos;"},
      {"no character is looked at twice", "&lt;", "&amp;lt;"},
      {"other control characters stay", {"\r\n\0\x01", 4}, {"\r\n\0\x01", 4}},
  };
  for (const Case& c : cases) EXPECT_EQ(escape_contents(c.text), c.escaped) << c.name;
}

TEST(ContentsWriter, WritesEachKindOfTable) {
  {
    ContentsWriter writer;
    EXPECT_EQ(writer.text(), "<xml><rows></><cols></><data></></xml>");
  }
  {
    ContentsWriter writer;
    writer.set_row_title("Region");
    writer.add_column("Q1");
    writer.add_column("Q2");
    writer.add_row("North");
    writer.add_value("1");
    writer.add_value("2");
    writer.add_row("South");
    writer.add_value("3");
    writer.add_value("4");
    EXPECT_EQ(writer.text(),
              "<xml><rows>Region<row>North</><row>South</></><cols><col>Q1</><col>Q2</></>"
              "<data><value>1</><value>2</><value>3</><value>4</></></xml>");
  }
  {
    ContentsWriter writer;
    writer.add_row();
    writer.add_row("");
    writer.add_value("<1>");
    writer.add_column("a&b");
    writer.set_row_title("\t");
    EXPECT_EQ(writer.text(),
              "<xml><rows>&tab;<row/><row></></><cols><col>a&amp;b</></><data><value>&lt;1&gt;</></></xml>");
  }
  {
    ContentsWriter writer;
    writer.set_value_title("<");
    writer.set_column_title("Quarter");
    EXPECT_EQ(writer.text(), "<xml><rows></><cols>Quarter</><data>&lt;</></xml>");
  }
}

TEST(ContentsWriter, BreaksLinesBetweenElementsAlone) {
  {
    ContentsWriter writer(ContentsLayout::Lines);
    EXPECT_EQ(writer.text(), "<xml>\r\n<rows>\r\n</>\r\n<cols>\r\n</>\r\n<data>\r\n</>\r\n</xml>");
  }
  {
    ContentsWriter writer(ContentsLayout::Lines);
    writer.set_row_title("Region");
    writer.add_column("Q1");
    writer.add_column("Q2");
    for (const std::string_view row : {"North", "South"}) {
      writer.add_row(row);
      writer.add_value("1\n");
      writer.add_value("2");
    }
    writer.add_row();
    EXPECT_EQ(writer.text(),
              "<xml>\r\n<rows>Region<row>North</>\r\n<row>South</>\r\n<row/>\r\n</>\r\n"
              "<cols>\r\n<col>Q1</><col>Q2</>\r\n</>\r\n"
              "<data>\r\n<value>1\n</><value>2</>\r\n<value>1\n</><value>2</>\r\n</>\r\n</xml>");
  }
}

}  // namespace
}  // namespace plexoras
