#include "applet/csv_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "contents/contents_document.h"
#include "refusal.h"

namespace plexoras {
namespace {

std::string csv_of(std::string_view contents) { return write_csv(read_contents(contents)); }

TEST(CsvText, WritesAndReadsBackATable) {
  struct Case {
    const char* name;
    std::string_view contents, csv;
  };
  const Case cases[] = {
      {"nothing", empty_contents_document, ""},
      {"labels on both sides",
       "<xml><rows>Region<row>North</><row>South</></><cols><col>Q1</><col>Q2</></>"
       "<data><value>1</><value>2</><value>3</><value>4</></></xml>",
       "Region,Q1,Q2\r\nNorth,1,2\r\nSouth,3,4\r\n"},
      {"column labels alone", "<xml><rows><row/></><cols><col>a</><col>b</></><data><value>1</><value>2</></></xml>",
       ",a,b\r\n,1,2\r\n"},
      {"row labels alone", "<xml><rows><row>a</><row>b</></><cols></><data><value>1</><value>2</></></xml>",
       "\"\"\r\na,1\r\nb,2\r\n"},
      {"no labels", "<xml><rows><row/><row/></><cols></><data><value>1</><value>2</></></xml>", "\"\"\r\n,1\r\n,2\r\n"},
      {"labels without values", "<xml><rows>c<row>a</></><cols></><data></></xml>", "c\r\na\r\n"},
      {"fields that need quotes",
       "<xml><rows>a,b<row>say &quot;x&quot;</></><cols><col>c\r\nd</></><data><value>&tab; &apos;</></></xml>",
       "\"a,b\",\"c\r\nd\"\r\n\"say \"\"x\"\"\",\t '\r\n"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(csv_of(c.contents), c.csv) << c.name;
    EXPECT_EQ(contents_from_csv(c.csv), c.contents) << c.name;
  }
}

TEST(CsvText, ReadsOtherForms) {
  struct Case {
    const char* name;
    std::string_view csv, same_as;
  };
  const Case cases[] = {
      {"empty lines alone", "\r\n\n\r", ""},
      {"no end at the last record", "c,a\nr,1", "c,a\r\nr,1\r\n"},
      {"LF, CR and empty lines", "c,a\n\nr,1\rs,2\r\n", "c,a\r\nr,1\r\ns,2\r\n"},
      {"needless quotes", "\"c\",\"a\"\r\n\"r\",\"1\"", "c,a\r\nr,1\r\n"},
      {"a quote inside a plain field", "c,a\nr,5\" x", "c,a\r\nr,\"5\"\" x\"\r\n"},
      {"short records are filled up", "c,a,b\nr\ns,1,2", "c,a,b\r\nr,,\r\ns,1,2\r\n"},
      {"records longer than the header", "c,a\nr,1,2\ns,3", "c,a\r\nr,1,2\r\ns,3,\r\n"},
      {"an empty last field", "c,a,\nr,1,", "c,a,\r\nr,1,\r\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(csv_of(contents_from_csv(c.csv)), c.same_as) << c.name;
}

TEST(CsvText, RefusesBadQuotesAndSparseTables) {
  struct Case {
    const char* name;
    std::string csv, message;
  };
  const Case cases[] = {
      {"unclosed", "c,a\r\nr,\"1\r\n2", "5 2:3: the quoted field that begins here is never closed"},
      {"unclosed at the end", "\"", "5 1:1: the quoted field that begins here is never closed"},
      {"text behind a quote", "c,\"a\"b",
       "5 1:6: text follows the quote that closes a field; double the quotes in a field"},
      {"one long record among many short ones", "c\n" + repeated("r\n", 3000) + repeated(",", 3000),
       "5 3002:1: this record has 3001 fields, most others far fewer; give all records the same number of fields"},
  };
  for (const Case& c : cases) EXPECT_EQ(refusal([&] { contents_from_csv(c.csv); }), c.message) << c.name;
}

TEST(CsvText, IsStableOnceRead) {
  std::mt19937 random(4180);
  for (int run = 0; run < 5000; ++run) {
    std::string text;
    for (unsigned i = random() % 16; i > 0; --i) text += std::string_view("a1,,\"\n\r")[random() % 7];
    std::string once;
    if (!refusal([&] { once = csv_of(contents_from_csv(text)); }).empty()) continue;
    ASSERT_EQ(csv_of(contents_from_csv(once)), once) << text;
  }
}

TEST(CsvText, TakesLargeTexts) {
  const std::size_t rows = 500'000;
  const std::string csv = "c,a,b\r\n" + repeated("r,\"1\"\"\",123456\r\n", rows);
  const std::string contents = contents_from_csv(csv);
  EXPECT_EQ(read_contents(contents).values.size(), 2 * rows);
  EXPECT_EQ(csv_of(contents), csv);
}

}  // namespace
}  // namespace plexoras
