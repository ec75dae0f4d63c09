#include "applet/table_model.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "applet/diagram_applet.h"
#include "refusal.h"

namespace plexoras {
namespace {

// Two labelled rows and columns, a cell that is no number and a number in a form of its own.
constexpr std::string_view labelled =
    "<xml><rows>c<row>a</><row>b</></><cols><col>x</><col>y</></>"
    "<data><value>1.10</><value>n/a</><value> 3</><value>4</></></xml>";
// Three rows of two columns, without labels; the last row lacks a cell.
constexpr std::string_view ragged =
    "<xml>\n<rows><row/><row/><row/></>\n<cols/><data><value>1</><value>2</><value>3</><value>4</><value>5</></></xml>";

ObjectRef list_of(AutomationObject& chart, std::initializer_list<double> numbers) {
  ObjectRef list = chart.call("newValueList").to_object();
  for (const double number : numbers) list->call_with("addElement", {number});
  return list;
}

// The component's members, as a caller by name uses them.
struct Chart {
  explicit Chart(std::string_view document) { component.put("XmlContents", document); }
  Variant call(std::string_view member, std::initializer_list<Variant> arguments) {
    return component.call_with(member, arguments);
  }
  void insert(std::string_view member, int index, std::string_view label, std::initializer_list<double> numbers) {
    component.call_with(member, {index, label, list_of(component, numbers)});
  }
  std::string document() { return component.get("XmlContents").to_text(); }

  DiagramApplet component;
};

TEST(TableModel, EditsWhatMustChangeAndNoMore) {
  struct Case {
    const char* name;
    std::string_view document;
    void (*edit)(Chart& chart);
    std::string_view result;  // empty: the document stays as it is
  };
  const Case cases[] = {
      {"what is there already", labelled,
       [](Chart& chart) {
         chart.call("setCellValue", {0, 0, 1.1});
         chart.call("setCellValue", {1, 0, "3"});
         chart.call("setRowLabel", {1, "b"});
         chart.call("setColLabel", {0, "x"});
         chart.component.put("rowTitle", "c");
         chart.component.put("colTitle", "\r\n");
         chart.call("deleteRow", {-1});
         chart.call("deleteCol", {-1});
       },
       ""},
      {"labels that are not there stay so when emptied", ragged,
       [](Chart& chart) {
         chart.call("setRowLabel", {1, ""});
         chart.call("setColLabel", {1, ""});
       },
       ""},
      {"a cell, of which the others keep their text", labelled,
       [](Chart& chart) {
         chart.call("setCellValue", {1, 1, -0.5});
       },
       "<xml><rows>c<row>a</><row>b</></><cols><col>x</><col>y</></>"
       "<data><value>1.10</><value>n/a</><value> 3</><value>-0.5</></></xml>"},
      {"a cell beyond a short row's end", ragged,
       [](Chart& chart) {
         chart.call("setCellValue", {2, 1, 0});
       },
       "<xml><rows><row/><row/><row/></><cols></>"
       "<data><value>1</><value>2</><value>3</><value>4</><value>5</><value>0</></></xml>"},
      {"labels where there were none", ragged,
       [](Chart& chart) {
         chart.call("setRowLabel", {1, "r"});
         chart.call("setColLabel", {1, "y"});
       },
       "<xml><rows><row/><row>r</><row/></><cols><col></><col>y</></>"
       "<data><value>1</><value>2</><value>3</><value>4</><value>5</></></xml>"},
      {"a label emptied is an empty label", labelled,
       [](Chart& chart) {
         chart.call("setRowLabel", {1, ""});
         chart.call("setColLabel", {1, ""});
       },
       "<xml><rows>c<row>a</><row></></><cols><col>x</><col></></>"
       "<data><value>1.10</><value>n/a</><value> 3</><value>4</></></xml>"},
      {"titles", labelled,
       [](Chart& chart) {
         chart.component.put("rowTitle", "");
         chart.component.put("colTitle", "C&");
         chart.component.put("valueTitle", "V");
       },
       "<xml><rows><row>a</><row>b</></><cols>C&amp;<col>x</><col>y</></>"
       "<data>V<value>1.10</><value>n/a</><value> 3</><value>4</></></xml>"},
      {"a row into short ones, its list shorter than the row", ragged,
       [](Chart& chart) { chart.insert("insertRow", 1, "", {7}); },
       "<xml><rows><row/><row/><row/><row/></><cols></><data><value>1</><value>2</><value>7</><value></>"
       "<value>3</><value>4</><value>5</><value></></></xml>"},
      {"a labelled column into unlabelled ones", ragged,
       [](Chart& chart) {
         chart.insert("insertCol", 1, "n", {7, 8, 9});
       },
       "<xml><rows><row/><row/><row/></><cols><col></><col>n</></><data><value>1</><value>7</><value>2</>"
       "<value>3</><value>8</><value>4</><value>5</><value>9</><value></></></xml>"},
      {"an unlabelled column", ragged, [](Chart& chart) { chart.insert("insertCol", -1, "", {}); },
       "<xml><rows><row/><row/><row/></><cols></><data><value>1</><value>2</><value></><value>3</><value>4</>"
       "<value></><value>5</><value></><value></></></xml>"},
      {"columns among labelled ones", labelled,
       [](Chart& chart) {
         chart.insert("insertCol", 0, "", {});
         chart.insert("insertCol", 3, "z", {1e20});
         chart.call("deleteCol", {1});
       },
       "<xml><rows>c<row>a</><row>b</></><cols><col></><col>y</><col>z</></>"
       "<data><value></><value>n/a</><value>1e+20</><value></><value>4</><value></></></xml>"},
      {"the last row, and another one in its columns", ragged,
       [](Chart& chart) {
         for (int i = 0; i < 3; ++i) chart.call("deleteRow", {0});
         chart.insert("insertRow", 0, "r", {1, 2});
       },
       "<xml><rows><row>r</></><cols></><data><value>1</><value>2</></></xml>"},
      {"a table from nothing", "<xml><cols/><rows/><data/></>",
       [](Chart& chart) {
         chart.insert("insertRow", -1, "r", {});
         chart.insert("insertCol", -1, "c", {1});
       },
       "<xml><rows><row>r</></><cols><col>c</></><data><value>1</></></xml>"},
  };
  for (const Case& c : cases) {
    Chart chart(c.document);
    c.edit(chart);
    EXPECT_EQ(chart.document(), c.result.empty() ? c.document : c.result) << c.name;
  }
}

TEST(TableModel, TellsCellsWithANumberFromThoseWithout) {
  struct Case {
    std::string_view text;
    Variant number;
  };
  const Case cases[] = {{"1.10", 1.1}, {" -2e3 ", -2000.0}, {"", {}},    {" ", {}},     {"n/a", {}},
                        {"1,5", {}},   {"12 %", {}},        {"inf", {}}, {"1e999", {}}, {"1e-999", 0.0}};
  for (const Case& c : cases) {
    Chart chart("<xml><rows><row/></><cols/><data><value>" + std::string(c.text) + "</></></xml>");
    EXPECT_EQ(chart.call("getCellValue", {0, 0}), c.number) << c.text;
    EXPECT_EQ(chart.call("getCellText", {0, 0}), Variant(c.text));
  }
  Chart chart(ragged);
  EXPECT_EQ(chart.call("getCellValue", {2, 1}), Variant());
}

TEST(TableModel, MovesTheSelectionAndTellsOfIt) {
  struct Log final : AutomationObject {
    explicit Log(DiagramApplet& applet) : chart(applet) {}
    Variant get(std::string_view) override { return {}; }
    void put(std::string_view, const Variant&) override {}
    Variant call(std::string_view event, Arguments) override {
      text += std::string(event) + " " + chart.get("selectedRow").to_text() + "," + chart.get("selectedCol").to_text();
      text += "; ";
      return {};
    }
    DiagramApplet& chart;
    std::string text;
  };
  struct Case {
    const char* name;
    void (*step)(Chart& chart);
    std::string_view events;
  };
  const Case cases[] = {
      // one after the other
      {"a row alone", [](Chart& chart) { chart.component.put("selectedRow", 2); }, "SelectionChange 2,-1; "},
      {"the same row", [](Chart& chart) { chart.component.put("selectedRow", "2"); }, ""},
      {"both at once",
       [](Chart& chart) {
         chart.call("selectCell", {2, 1});
       },
       "SelectionChange 2,1; "},
      {"an insertion before it", [](Chart& chart) { chart.insert("insertRow", 0, "", {}); }, ""},
      {"a row behind it gone", [](Chart& chart) { chart.call("deleteRow", {3}); }, ""},
      {"its row gone, the last", [](Chart& chart) { chart.call("deleteRow", {2}); }, "SelectionChange 1,1; "},
      {"its column gone", [](Chart& chart) { chart.call("deleteCol", {1}); }, "SelectionChange 1,0; "},
      {"no column left", [](Chart& chart) { chart.call("deleteCol", {0}); }, "SelectionChange 1,-1; "},
      {"other data", [](Chart& chart) { chart.component.put("CsvContents", "a\n"); }, "SelectionChange -1,-1; "},
      {"the same again", [](Chart& chart) { chart.component.call("UseSampleContents"); }, ""},
      {"nobody is told",
       [](Chart& chart) {
         chart.call("setEventSink", {Variant()}), chart.call("selectCell", {0, 0});
       },
       ""},
  };
  Chart chart(ragged);
  const auto log = std::make_shared<Log>(chart.component);
  chart.call("setEventSink", {ObjectRef(log)});
  for (const Case& c : cases) {
    log->text.clear();
    c.step(chart);
    EXPECT_EQ(log->text, c.events) << c.name;
  }
}

// What a handler raises is the host's own error, and the change has been made.
TEST(TableModel, LetsErrorsOfTheHostThrough) {
  struct Refusing final : AutomationObject {
    Variant get(std::string_view) override { return {}; }
    void put(std::string_view, const Variant&) override {}
    Variant call(std::string_view, Arguments) override {
      throw AutomationError(RunTimeError::InvalidCall, "not now", "Host");
    }
  };
  Chart chart(labelled);
  chart.call("setEventSink", {ObjectRef(std::make_shared<Refusing>())});
  EXPECT_EQ(refusal([&] { chart.component.put("selectedRow", 1); }), "5 not now");
  EXPECT_EQ(refusal([&] { chart.call("selectCell", {0, 1}); }), "5 not now");
  EXPECT_EQ(refusal([&] { chart.component.put("XmlContents", ragged); }), "5 not now");
  EXPECT_EQ(chart.document(), ragged);
}

TEST(TableModel, RefusesWhatIsNotThereAndStaysAsItWas) {
  struct Case {
    std::string_view member;
    std::vector<Variant> arguments;
    std::string_view message;
  };
  Chart chart(labelled);
  chart.call("selectCell", {1, 1});
  const Variant list = list_of(chart.component, {1, 2, 3});
  const double infinity = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {"getCellValue", {2, 0}, "9 getCellValue: there is no row 2; the table has 0 to 1"},
      {"getCellText", {0, -1}, "9 getCellText: there is no column -1; the table has 0 to 1"},
      {"setCellValue", {0, 2, 1}, "9 setCellValue: there is no column 2; the table has 0 to 1"},
      {"setCellValue", {0, 0, "big"}, "13 setCellValue: Type mismatch: \"big\" is not a number"},
      {"setCellValue", {0, 0, Variant()}, "13 setCellValue: Type mismatch: Nothing is not a number"},
      {"setCellValue", {0, 0, infinity}, "6 setCellValue: Overflow"},
      {"getRowLabel", {-1}, "9 getRowLabel: there is no row -1; the table has 0 to 1"},
      {"setColLabel", {2, "x"}, "9 setColLabel: there is no column 2; the table has 0 to 1"},
      {"selectCell", {2, 0}, "9 selectCell: there is no row 2; the table has 0 to 1"},
      {"selectCell", {-2, 0}, "9 selectCell: there is no row -2; the table has 0 to 1"},
      {"insertRow",
       {3, "x", list},
       "9 insertRow: a row cannot be inserted at 3; the places are 0 to 2, and -1 is behind all"},
      {"insertRow", {0, "x", list}, "5 insertRow: the list has 3 values where the table has room for 2"},
      {"insertCol",
       {-2, "x", list},
       "9 insertCol: a column cannot be inserted at -2; the places are 0 to 2, and -1 is behind all"},
      {"insertCol", {0, "x", StringList{}}, "13 insertCol: Type mismatch: the values must be a list from newValueList"},
      {"deleteRow", {2}, "9 deleteRow: there is no row 2; the table has 0 to 1"},
      {"deleteCol", {-2}, "9 deleteCol: there is no column -2; the table has 0 to 1"},
  };
  for (const Case& c : cases) EXPECT_EQ(refusal([&] { chart.component.call(c.member, c.arguments); }), c.message);
  EXPECT_EQ(refusal([&] { list.to_object()->call_with("addElement", {"x"}); }).substr(0, 3), "13 ");
  EXPECT_EQ(list.to_object()->get("count"), Variant(3));
  EXPECT_EQ(chart.document(), labelled);
  EXPECT_EQ(chart.component.get("selectedRow"), Variant(1));

  // A short document that filling up would make ten thousand million cells.
  const std::string sparse =
      "<xml><rows>" + repeated("<row/>", 100'000) + "</><cols>" + repeated("<col/>", 100'000) + "</><data></></xml>";
  Chart huge(sparse);
  EXPECT_EQ(huge.call("getCellValue", {99'999, 99'999}), Variant());
  EXPECT_EQ(refusal([&] { huge.call("setCellValue", {0, 0, 1}); }).substr(0, 3), "14 ");
  EXPECT_EQ(huge.document(), sparse);
}

// The table as anybody would write it down: every row a list of its own, missing cells empty.
struct NaiveTable {
  std::vector<std::string> row_labels, column_labels;
  std::vector<std::vector<std::string>> cells;
  std::array<std::string, 3> titles;

  std::string shown() const {
    std::string text = titles[0] + "|" + titles[1] + "|" + titles[2];
    for (const std::string& label : column_labels) text += "|" + label;
    for (std::size_t row = 0; row < cells.size(); ++row) {
      text += "\n" + row_labels[row];
      for (const std::string& cell : cells[row]) text += "|" + cell;
    }
    return text;
  }
};

NaiveTable naive(const TableModel& table) {
  NaiveTable copy;
  for (int column = 0; column < table.column_count(); ++column) {
    copy.column_labels.emplace_back(table.column_label(column));
  }
  for (int row = 0; row < table.row_count(); ++row) {
    copy.row_labels.emplace_back(table.row_label(row));
    copy.cells.emplace_back();
    for (int column = 0; column < table.column_count(); ++column) {
      copy.cells.back().emplace_back(table.cell_text(row, column));
    }
  }
  copy.titles = {table.title(&ContentsTable::row_title), table.title(&ContentsTable::column_title),
                 table.title(&ContentsTable::value_title)};
  return copy;
}

// One random edit of both.
void edit_both(TableModel& table, NaiveTable& expected, const std::function<int(int)>& below) {
  constexpr std::string_view texts[] = {"", "a", "<&>", "x\r\ny"};
  const auto any_text = [&] { return std::string(texts[static_cast<std::size_t>(below(4))]); };
  const int rows = table.row_count(), columns = table.column_count();
  const double number = below(5) / 2.0;
  const int action = below(8);
  const int row = rows == 0 ? -1 : below(rows), column = columns == 0 ? -1 : below(columns);
  if (action == 0) {
    table.insert_row(row, any_text() + "r", std::vector<double>(static_cast<std::size_t>(columns), number));
    const auto place = row < 0 ? rows : row;
    expected.cells.emplace(expected.cells.begin() + place, columns, Variant(number).to_text());
    expected.row_labels.emplace(expected.row_labels.begin() + place, table.row_label(place));
  } else if (action == 1) {
    const std::string label = any_text();
    table.insert_column(column, label, std::vector<double>(static_cast<std::size_t>(rows), number));
    const auto place = column < 0 ? columns : column;
    for (auto& cells : expected.cells) cells.insert(cells.begin() + place, Variant(number).to_text());
    expected.column_labels.insert(expected.column_labels.begin() + place, label);
  } else if (action == 2 && row >= 0) {
    table.delete_row(row);
    expected.cells.erase(expected.cells.begin() + row);
    expected.row_labels.erase(expected.row_labels.begin() + row);
  } else if (action == 3 && column >= 0) {
    table.delete_column(column);
    for (auto& cells : expected.cells) cells.erase(cells.begin() + column);
    expected.column_labels.erase(expected.column_labels.begin() + column);
  } else if (action == 4 && row >= 0) {
    expected.row_labels[static_cast<std::size_t>(row)] = any_text();
    table.set_row_label(row, expected.row_labels[static_cast<std::size_t>(row)]);
  } else if (action == 5 && column >= 0) {
    expected.column_labels[static_cast<std::size_t>(column)] = any_text();
    table.set_column_label(column, expected.column_labels[static_cast<std::size_t>(column)]);
  } else if (action == 6) {
    expected.titles[1] = any_text();
    table.set_title(&ContentsTable::column_title, expected.titles[1]);
  } else if (row >= 0 && column >= 0) {
    std::string& cell = expected.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    if (number_of_text(cell) != number) cell = Variant(number).to_text();
    table.set_cell(row, column, number);
  }
}

TEST(TableModel, AgreesWithANaiveTableAfterAnyEdits) {
  std::mt19937 random(20240611);
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  for (int run = 0; run < 400; ++run) {
    ContentsTable start;
    for (int i = below(5); i > 0; --i) start.rows.push_back(below(2) == 0 ? std::nullopt : std::optional("r"));
    for (int i = below(4); i > 0; --i) start.columns.emplace_back("c");
    for (int i = start.rows.empty() ? 0 : below(12); i > 0; --i) start.values.emplace_back(below(2) == 0 ? "1.0" : "-");
    TableModel table;
    table.put_document(write_contents(start));
    NaiveTable expected = naive(table);
    const int steps = run == 0 ? 3000 : 20;  // once so many that texts which no cell has any more are dropped
    for (int step = 0; step < steps; ++step) {
      edit_both(table, expected, below);
      ASSERT_EQ(naive(table).shown(), expected.shown()) << write_contents(start);
    }
    for (const ContentsLayout layout : {ContentsLayout::Compact, ContentsLayout::Lines}) {
      ASSERT_EQ(read_contents(table.document(layout)), table.table());
    }
  }
}

}  // namespace
}  // namespace plexoras
