#include "applet/contents_reader.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

#include "refusal.h"

namespace plexoras {
namespace {

// "row title/column title/value title [label|-] (column) value,value;value" for a readable comparison, with the titles
// left out when there are none; the values cut into their rows.
std::string shown(const ContentsTable& table) {
  std::string text = table.row_title;
  if (!table.column_title.empty() || !table.value_title.empty()) {
    text += "/" + table.column_title + "/" + table.value_title;
  }
  for (const auto& row : table.rows) text += row ? " [" + *row + "]" : " -";
  for (const std::string& column : table.columns) text += " (" + column + ")";
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    text += row == 0 ? " " : ";";
    for (const std::string& value : table.row_values(row)) text += value + ",";
  }
  return text;
}

TEST(ReadContents, AcceptsTheDialect) {
  struct Case {
    const char* name;
    std::string_view document, table;
  };
  const Case cases[] = {
      {"the empty document", empty_contents_document, ""},
      {"the empty document with line breaks", "\n<xml>\r\n<cols/>\n<rows/>\n<data/>\n</>\r\n", ""},
      {"empty lists", "<xml><rows></><cols></><data></></xml>", ""},
      {"self-closing lists", "<xml><rows/><cols/><data/></xml>", ""},
      {"labels on both sides",
       "<xml><rows>Region<row>North</><row>South</></><cols><col>Q1</><col>Q2</></>"
       "<data><value>1</><value>2</><value>3</><value>4</></></xml>",
       "Region [North] [South] (Q1) (Q2) 1,2,;3,4,"},
      {"titles", "<xml><rows>Region<row/></><cols>Quarter<col>Q1</></><data>Sales<value>1</></></xml>",
       "Region/Quarter/Sales - (Q1) 1,"},
      {"titles of empty lists", "<xml>\n<rows>\n</>\n<cols>a&amp;\n</>\n<data>b</>\n</xml>", "/a&\n/b"},
      {"no labels", "<xml><rows><row/><row/></><cols></><data><value>1</><value>2</></></xml>", " - - 1,;2,"},
      {"an empty label is a label", "<xml><rows><row></><row/></><cols><col/></><data></></xml>", " [] - () ;"},
      {"named end tags", "<xml><rows><row>a</row></rows><cols></cols><data></data></>", " [a] "},
      {"line breaks between any tags",
       "<xml>\n<rows>\r\n<row>a</>\n\n<row/>\r</>\n<cols>\n<col>b</>\n</>\n<data>\n<value>1</>\n</>\n</xml>\n",
       " [a] - (b) 1,;"},
      {"line breaks in a text are text", "<xml><rows>c\nd<row>\n</></><cols/><data/></xml>", "c\nd [\n] "},
      {"entities", "<xml><rows>&tab;<row>&lt;&amp;lt;&apos;&quot;&gt;</></><cols/><data/></xml>", "\t [<&lt;'\">] "},
      {"raw quotes and >", "<xml><rows><row>'\">$(X)</></><cols/><data/></xml>", " ['\">$(X)] "},
      {"a short last row", "<xml><rows><row/><row/></><cols/><data><value>1</><value>2</><value>3</></></xml>",
       " - - 1,2,;3,"},
      {"rows longer than the labels lose nothing",
       "<xml><rows><row/></><cols><col>a</></><data><value>1</><value>2</></></xml>", " - (a) 1,2,"},
  };
  for (const Case& c : cases) EXPECT_EQ(shown(read_contents(c.document)), c.table) << c.name;
}

TEST(ReadContents, RefusesTheRestSayingWhatAndWhere) {
  struct Case {
    std::string_view document, message;
  };
  const Case cases[] = {
      {"", "5 1:1: the document holds no element"},
      {"junk", "5 1:1: text stands outside the document's element"},
      {"<xml>", "5 1:1: <xml> is never closed; close it with \"</>\""},
      {"<html></>", "5 1:1: \"<html>\" stands where <xml> is expected"},
      {"<xml></>", "5 1:6: \"</>\" stands where <rows> is expected"},
      {"<xml><rows/><cols/></>", "5 1:20: \"</>\" stands where <data> is expected"},
      {"<xml><cols/><data/><rows/></>", "5 1:13: \"<data/>\" stands where <rows> is expected"},
      {"<xml><cols></><rows></><data></></>", "5 1:6: \"<cols>\" stands where <rows> is expected"},
      {"<xml><rows/><cols/><data/><rows/></xml>", "5 1:27: \"<rows/>\" stands where the end of \"xml\" is expected"},
      {"<xml><rows/><cols/><data/></xml>x", "5 1:33: text stands outside the document's element"},
      {"<xml><rows/><cols/><data/></xml><xml/>", "5 1:33: a second element follows the document's element"},
      {"<xml><rows/><cols/><data/></xml></>", "5 1:33: an end tag closes no element"},
      {"<xml><rows/><cols/><data/></rows>", "5 1:27: end tag \"rows\" stands where \"xml\" is open"},
      {"<xml>\r\n<rows>\r<row>a & b</></><cols/><data/></xml>",
       "5 3:8: \"&\" begins none of &apos; &quot; &amp; &lt; &gt; &tab;; write \"&amp;\" for the character itself"},
      {"<xml><rows>\n<row>a&#9;</></><cols/><data/></xml>",
       "5 2:7: \"&\" begins none of &apos; &quot; &amp; &lt; &gt; &tab;; write \"&amp;\" for the character itself"},
      {"<xml><rows><row>a < b</></><cols/><data/></xml>",
       "5 1:19: \"<\" must begin a tag here; write \"&lt;\" for the character itself"},
      {"<xml><rows><row>a</>corner</><cols/><data/></xml>", "5 1:21: text \"corner\" stands between elements"},
      {"<xml><rows/><cols><col/>a</><data/></xml>", "5 1:25: text \"a\" stands between elements"},
      {"<xml><rows/>a<cols/><data/></xml>", "5 1:13: text \"a\" stands between elements"},
      {"<xml><rows><row><b>a</></></><cols/><data/></xml>",
       "5 1:17: \"<b>\" stands where the end of \"row\" is expected"},
      {"<xml><rows><row id=\"1\">a</></><cols/><data/></xml>", "5 1:12: \"row\" takes no attributes"},
      {"<xml><rows><col>a</></><cols/><data/></xml>", "5 1:12: \"<col>\" stands where <row> is expected"},
      {"<xml><rows/><cols/><data>\n<value>1</></></xml>", "5 1:20: there are values, but no rows that could hold them"},
      {"<xml><rows/", "5 1:11: tag \"rows\" must end in \">\" or \"/>\" here"},
      {"<!-- --><xml/>", "5 1:1: \"<\" must begin a tag here; write \"&lt;\" for the character itself"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(refusal([&] { read_contents(c.document); }), c.message) << c.document;
  }
}

TEST(ReadContents, RefusesEveryTruncatedDocument) {
  const std::string document = "<xml><rows>c<row>a&amp;</><row/></><cols><col>b</></><data><value>1</></></xml>";
  ASSERT_EQ(refusal([&] { read_contents(document); }), "");
  for (std::size_t size = 0; size < document.size(); ++size) {
    EXPECT_NE(refusal([&] { read_contents(document.substr(0, size)); }), "") << size;
  }
}

TEST(ReadContents, TakesHostileAndLargeDocuments) {
  const std::size_t many = 1'000'000;
  EXPECT_EQ(refusal([&] { read_contents(repeated("<xml>", many)); }),
            "5 1:6: \"<xml>\" stands where <rows> is expected");

  const std::string large = "<xml><rows>" + repeated("<row>a&lt;</>", many) + "</><cols/><data>" +
                            repeated("<value>1</>", many) + "</></xml>";
  const ContentsTable table = read_contents(large);
  EXPECT_EQ(table.rows.size(), many);
  EXPECT_EQ(table.column_count(), 1u);
  EXPECT_EQ(table.rows.back(), "a<");
}

TEST(ReadContents, GivesBackWhateverWasWritten) {
  std::mt19937 random(20240607);
  const auto below = [&](std::size_t bound) { return random() % bound; };
  const auto random_text = [&] {
    constexpr char alphabet[] = "ab1.,'\"&<>/;\t\r\n $#()\0\xFF";
    std::string text;
    for (std::size_t i = below(6); i > 0; --i) text += alphabet[below(sizeof alphabet - 1)];
    return text;
  };
  for (int run = 0; run < 2000; ++run) {
    ContentsTable table;
    for (std::size_t i = below(4); i > 0; --i) {
      table.rows.push_back(below(3) == 0 ? std::nullopt : std::optional(random_text()));
    }
    for (std::size_t i = below(4); i > 0; --i) table.columns.push_back(random_text());
    if (!table.rows.empty()) {
      for (std::size_t i = below(10); i > 0; --i) table.values.push_back(random_text());
    }
    for (std::string* title : {&table.row_title, &table.column_title, &table.value_title}) {
      *title = random_text();
      // Line breaks alone at this place are layout.
      if (title->find_first_not_of("\r\n") == std::string::npos) title->clear();
    }

    for (const ContentsLayout layout : {ContentsLayout::Compact, ContentsLayout::Lines}) {
      const std::string document = write_contents(table, layout);
      ASSERT_EQ(read_contents(document), table) << document;
    }
  }
}

}  // namespace
}  // namespace plexoras
