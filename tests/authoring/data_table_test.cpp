#include "authoring/data_table.h"

#include <gtest/gtest.h>

#include "authoring_fixture.h"

namespace plexoras {
namespace {

// A chart of this contents document, and the properties that are set in it: "FormatType=1 IsTransposed=True".
LiveControl chart_of(Author& author, std::string_view contents, std::string_view settings) {
  LiveControl control = author.make();
  ControlProperties properties(control);
  properties.set("XmlContents", std::string(contents));
  while (!settings.empty()) {
    const std::string_view setting = settings.substr(0, settings.find(' '));
    const std::size_t sign = setting.find('=');
    properties.set(std::string(setting.substr(0, sign)), std::string(setting.substr(sign + 1)));
    settings.remove_prefix(std::min(setting.size() + 1, settings.size()));
  }
  return control;
}

// The table without its caption and line ends.
std::string table_of(std::string_view contents, std::string_view settings = {}, std::string_view language = {}) {
  Author author;
  LiveControl control = chart_of(author, contents, settings);
  const std::string before = control.component()->get("XmlStyle").to_text();
  std::string table = replaced_all(data_table(control, "C", language), "\r\n", "");
  EXPECT_EQ(control.component()->get("XmlStyle").to_text(), before) << "the chart is as it was";
  constexpr std::string_view opening = "<table><caption>C</caption>", closing = "</table>";
  if (table.empty()) return table;
  EXPECT_TRUE(table.starts_with(opening) && table.ends_with(closing)) << table;
  return table.substr(opening.size(), table.size() - opening.size() - closing.size());
}

TEST(DataTable, HasTheLabelsAndCellsOfTheChart) {
  constexpr std::string_view both =
      "<xml><rows>R<row>a</><row/></><cols>C<col>x</><col/></><data><value>1</><value>2</><value>3</></></xml>";
  struct Case {
    const char* name;
    std::string_view contents, settings, table;
  };
  const Case cases[] = {
      {"labels on both sides, a short row", both, "",
       "<thead><tr><th scope=\"col\">R</th><th scope=\"col\">x</th><th scope=\"col\"></th></tr></thead>"
       "<tbody><tr><th scope=\"row\">a</th><td>1</td><td>2</td></tr>"
       "<tr><th scope=\"row\"></th><td>3</td><td></td></tr></tbody>"},
      {"the same the other way round", both, "IsTransposed=True",
       "<thead><tr><th scope=\"col\">C</th><th scope=\"col\">a</th><th scope=\"col\"></th></tr></thead>"
       "<tbody><tr><th scope=\"row\">x</th><td>1</td><td>3</td></tr>"
       "<tr><th scope=\"row\"></th><td>2</td><td></td></tr></tbody>"},
      {"no labels", "<xml><rows><row/></><cols/><data><value>1</><value>2</></></xml>", "",
       "<tbody><tr><td>1</td><td>2</td></tr></tbody>"},
      {"row labels alone, without a title", "<xml><rows><row>a</></><cols/><data><value>1</></></xml>", "",
       "<tbody><tr><th scope=\"row\">a</th><td>1</td></tr></tbody>"},
      {"the same the other way round", "<xml><rows><row>a</></><cols/><data><value>1</></></xml>", "IsTransposed=True",
       "<thead><tr><th scope=\"col\">a</th></tr></thead><tbody><tr><td>1</td></tr></tbody>"},
      {"no title for the labels", "<xml><rows><row>a</></><cols><col>x</></><data><value>1</></></xml>", "",
       "<thead><tr><td></td><th scope=\"col\">x</th></tr></thead>"
       "<tbody><tr><th scope=\"row\">a</th><td>1</td></tr></tbody>"},
      {"no rows", "<xml><rows/><cols><col>x</></><data/></xml>", "", ""},
      {"no data", "<xml><cols/><rows/><data/></>", "", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(table_of(c.contents, c.settings), c.table) << c.name;

  Author author;
  LiveControl sample = author.make();
  sample.control().SetProperty("Contents", "");
  EXPECT_EQ(data_table(sample, "C", ""), "") << "readers get no sample data";
}

TEST(DataTable, WritesValuesAsTheChartDoesInThePagesLanguage) {
  struct Case {
    std::string_view settings, language, cell;
  };
  const Case cases[] = {
      {"", "", "1234.5"},
      {"FormatType=3", "", "1,234.5"},
      {"FormatType=3", "de", "1.234,5"},
      {"FormatType=1", "de-AT", "€\u00A01.234,50"},
      {"FormatType=1", "zh-Hant-TW", "$1,234.50"},
      {"FormatType=3", "no language", "1,234.5"},
      {"FormatType=3 FormatUseDefaultLocale=False FormatLanguage=fr FormatCountry=CH", "de", "1\u202F234,5"},
  };
  for (const Case& c : cases) {
    const std::string table =
        table_of("<xml><rows><row/></><cols/><data><value>1234.5</></></xml>", c.settings, c.language);
    const std::size_t begin = table.find("<td>") + 4;
    EXPECT_EQ(table.substr(begin, table.find("</td>") - begin), c.cell) << c.settings << " " << c.language;
  }
}

TEST(DataTable, HoldsTextWhateverItIs) {
  Author author;
  const std::string_view label = "</td><script>&amp;$(NOTE)#(LOOP)$$(#(\"'-->\r\n\t$";
  ContentsTable contents;
  contents.rows = {std::string(label)};
  contents.row_title = label;
  contents.columns = {std::string(label)};
  contents.values = {std::string(label)};
  LiveControl control = chart_of(author, write_contents(contents, ContentsLayout::Compact), "");
  const std::string written = "&lt;/td&gt;&lt;script&gt;&amp;amp;&#36;(NOTE)&#35;(LOOP)$&#36;(&#35;(\"'--&gt;\r\n\t$";
  const std::string table = data_table(control, label, "");
  std::size_t count = 0;
  for (std::size_t at = table.find(written); at != std::string::npos; at = table.find(written, at + 1)) ++count;
  EXPECT_EQ(count, 5u) << table;
  EXPECT_EQ(replaced_all(table, written, ""),
            "<table>\r\n<caption></caption>\r\n<thead><tr><th scope=\"col\"></th><th "
            "scope=\"col\"></th></tr></thead>\r\n<tbody>\r\n<tr><th scope=\"row\"></th><td></td></tr>\r\n"
            "</tbody>\r\n</table>");
}

}  // namespace
}  // namespace plexoras
