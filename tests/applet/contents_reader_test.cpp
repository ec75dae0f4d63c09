#include "applet/contents_reader.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

#include "fixtures/fixtures.h"
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

TEST(ReadContents, AcceptsTheDialectAndRefusesTheRestSayingWhere) {
  for (const nlohmann::json& c : fixtures("contents.json")) {
    const std::string document = text_of(c, "document");
    std::string table;
    const std::string refused = refusal([&] { table = shown(read_contents(document)); });
    EXPECT_EQ(refused, c.contains("refused") ? "5 " + text_of(c, "refused") : "") << c["name"];
    EXPECT_EQ(table, text_of(c, "table")) << c["name"];
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
