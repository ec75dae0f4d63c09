#include "authoring/table_changes.h"

#include <gtest/gtest.h>

#include <random>

#include "applet/csv_text.h"

namespace plexoras {
namespace {

ContentsTable table(std::string_view csv) { return read_contents(contents_from_csv(csv)); }

TEST(TableChanges, SayWhatIsDifferent) {
  struct Case {
    const char* name;
    std::string_view before, after, text;
  };
  const Case cases[] = {
      {"the same", ",x,y\na,1,2\n", ",x,y\na,1,2\n", "unchanged"},
      {"nothing at all", "", "", "unchanged"},
      {"one cell", ",x,y\na,1,2\n", ",x,y\na,1,3\n", "1 cell changed"},
      {"cells are texts", ",x,y\na,1,2\n", ",x,y\na,1.0,2\n", "1 cell changed"},
      {"a row at the front", ",x\nb,1\nc,2\n", ",x\na,0\nb,1\nc,2\n", "+1 row"},
      {"rows gone and come", ",x\na,1\nb,2\nc,3\n", ",x\nc,4\nd,1\n", "+1 row, -2 rows, 1 cell changed"},
      {"columns gone", ",x,y,z\na,1,2,3\nb,4,5,6\n", ",y\na,2\nb,7\n", "-2 columns, 1 cell changed"},
      {"a column in the middle", ",x,z\na,1,3\n", ",x,y,z\na,1,2,3\n", "+1 column"},
      {"rows in another order", ",x\na,1\nb,2\n", ",x\nb,2\na,1\n", "order changed"},
      {"columns in another order", ",x,y\na,1,2\n", ",y,x\na,2,1\n", "order changed"},
      {"the corner", "A,x\na,1\n", "B,x\na,1\n", "labels changed"},
      {"all labels new: the same rows", ",x\na,1\nb,2\n", ",x\nc,1\nd,2\n", "labels changed"},
      {"one label new: another row", ",x\na,1\nb,2\n", ",x\na,1\nc,2\n", "+1 row, -1 row"},
      {"a label twice: by position", ",x\na,1\na,2\nb,3\n", ",x\na,2\nb,3\n",
       "-1 row, 2 cells changed, labels changed"},
      {"no labels: by position", ",\n,1\n,2\n", ",\n,1\n,3\n,4\n", "+1 row, 1 cell changed"},
      {"labels taken away", ",x\na,1\n", ",\n,1\n", "labels changed"},
      {"all data new", "", ",x\na,1\nb,2\n", "+2 rows, +1 column"},
  };
  for (const Case& c : cases) EXPECT_EQ(to_text(compare_tables(table(c.before), table(c.after))), c.text) << c.name;
}

TEST(TableChanges, AMissingCellIsNoEmptyOne) {
  ContentsTable before = table(",x,y\na,1,2\nb,3,4\n");
  before.values.pop_back();
  ContentsTable after = before;
  after.values.emplace_back("");
  EXPECT_EQ(to_text(compare_tables(before, after)), "1 cell changed");
  EXPECT_EQ(to_text(compare_tables(after, before)), "1 cell changed");
}

// Tables of so few values that all kinds of near misses occur.
ContentsTable random_table(std::mt19937& random) {
  const auto below = [&](std::size_t limit) { return random() % limit; };
  const auto label = [&] { return std::string(1, static_cast<char>('a' + below(3))); };
  ContentsTable table;
  if (below(4) == 0) table.row_title = label();
  if (below(8) == 0) table.value_title = label();
  const bool labelled = below(3) > 0;
  for (std::size_t i = below(4); i > 0; --i) table.rows.push_back(labelled ? std::optional(label()) : std::nullopt);
  for (std::size_t i = below(4); i > 0; --i) table.columns.push_back(label());
  if (!table.rows.empty()) {
    for (std::size_t i = below(7); i > 0; --i) table.values.push_back(below(2) == 0 ? "" : "1");
  }
  return table;
}

TEST(TableChanges, AreNoneExactlyForEqualTables) {
  std::mt19937 random(1);
  std::size_t equal = 0;
  for (int i = 0; i < 20'000; ++i) {
    const ContentsTable before = random_table(random), after = random_table(random);
    ASSERT_EQ(compare_tables(before, after) == TableChanges(), before == after) << write_contents(before) << "\n"
                                                                                << write_contents(after);
    equal += before == after ? 1 : 0;
  }
  EXPECT_GT(equal, 10U);
}

TEST(TableChanges, ManyRowsAndColumnsWithFewCells) {
  ContentsTable before;
  for (int i = 0; i < 50'000; ++i) {
    before.rows.emplace_back(std::to_string(i));
    before.columns.push_back(std::to_string(i));
  }
  before.values = {"1"};
  ContentsTable after = before;
  after.values = {"2", "3"};
  after.columns.emplace_back("new");
  EXPECT_EQ(to_text(compare_tables(before, after)), "+1 column, 2 cells changed");
}

}  // namespace
}  // namespace plexoras
