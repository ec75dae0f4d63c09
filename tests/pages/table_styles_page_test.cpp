#include "pages/table_styles_page.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "page_fixture.h"

namespace plexoras {
namespace {

struct TableStylesTest : testing::Test, PageFixture {
  TableStylesTest() {
    table("SCROLLBAR", "Auto=0 Always=1");
    table("ONROWLABELCLICK", "Nothing=0 Sort=2");
    table("ONCOLLABELCLICK", "Nothing=0 Select=1");
    const auto size = [](int number) { return Variant(static_cast<std::int16_t>(number)); };
    for (const auto& [name, value] : std::initializer_list<std::pair<const char*, Variant>>{
             {"VScrollbarPolicy", 1},       {"HScrollbarPolicy", 0},        {"OnRowLabelClick", 2},
             {"OnColLabelClick", 1},        {"showRowLabels", true},        {"showColLabels", false},
             {"EqualRows", true},           {"EqualCols", false},           {"moveableRows", true},
             {"moveableCols", false},       {"resizableRows", true},        {"resizableCols", false},
             {"DefaultColWidth", size(80)}, {"DefaultRowHeight", size(20)}, {"RowLabelWidth", size(60)},
             {"ColLabelHeight", size(25)},  {"FixedRows", size(1)},         {"FixedCols", size(2)},
             {"MultipleSelection", true},   {"ExtendedSelection", false},   {"SelectionMode", 2}}) {
      control->values[name] = value;
    }
    chart->values["negativeForeColor"] = "null";
  }

  void load() {
    page.select({control});
    log.take();
  }

  TableStyles page;
};

TEST_F(TableStylesTest, Loads) {
  chart->values["negativeForeColor"] = "blue";
  page.select({control});
  EXPECT_EQ(log.take(), entries(R"(
      get VScrollbarPolicy; call GetLookupTable SCROLLBAR; call GetLookupTable SCROLLBAR; get VScrollbarPolicy
      get HScrollbarPolicy; call GetLookupTable SCROLLBAR; call GetLookupTable SCROLLBAR; get HScrollbarPolicy
      get OnRowLabelClick; call GetLookupTable ONROWLABELCLICK; call GetLookupTable ONROWLABELCLICK; get OnRowLabelClick
      get OnColLabelClick; call GetLookupTable ONCOLLABELCLICK; call GetLookupTable ONCOLLABELCLICK; get OnColLabelClick
      get showRowLabels; get showColLabels; get EqualRows; get EqualCols; get moveableRows; get moveableCols
      get resizableRows; get resizableCols; get DefaultColWidth; get DefaultRowHeight; get RowLabelWidth
      get ColLabelHeight; get FixedRows; get FixedCols; get MultipleSelection; get ExtendedSelection; get SelectionMode
      getDiagram.get negativeForeColor; getDiagram.get negativeForeColor)"));
  EXPECT_EQ(seen(page), entries(R"(
      cbShowRowLabels 1; cmbOnRowLabelClick Sort; txtRowLabelWidth 60; txtDefaultRowHeight 20
      cbEqualRows 1; cbMoveableRows 1; cbResizableRows 1; txtFixedRows 1
      cbShowColLabels 0; (cmbOnColLabelClick Select); (txtColLabelHeight 25); txtDefaultColWidth 80
      cbEqualCols 0; cbMoveableCols 0; cbResizableCols 0; txtFixedCols 2
      cmbVScrollbarPolicy Always; cmbHScrollbarPolicy Auto
      rbRows; rbMulti; rbWindowsNT; chkRedNegativeValues 1)"));
  EXPECT_FALSE(page.Changed);
}

TEST_F(TableStylesTest, Applies) {
  chart->values["negativeForeColor"] = "blue";
  load();
  page.rbCols.user_click();
  page.rbExtended.user_click();
  page.txtFixedRows.user_type("-3");
  page.apply();
  EXPECT_EQ(log.take(), entries(R"(
      call GetLookupTable SCROLLBAR; getDiagram.put VScrollbarPolicy Integer 1
      call GetLookupTable SCROLLBAR; getDiagram.put HScrollbarPolicy Integer 0
      call GetLookupTable ONROWLABELCLICK; getDiagram.put OnRowLabelClick Integer 2
      call GetLookupTable ONCOLLABELCLICK; getDiagram.put OnColLabelClick Integer 1
      getDiagram.put showRowLabels Boolean True; getDiagram.put showColLabels Boolean False
      getDiagram.put EqualRows Boolean True; getDiagram.put EqualCols Boolean False
      getDiagram.put moveableRows Boolean True; getDiagram.put moveableCols Boolean False
      getDiagram.put resizableRows Boolean True; getDiagram.put resizableCols Boolean False
      getDiagram.put DefaultColWidth Integer 80; getDiagram.put DefaultRowHeight Integer 20
      getDiagram.put RowLabelWidth Integer 60; getDiagram.put ColLabelHeight Integer 25
      getDiagram.put FixedRows Integer -3; getDiagram.put FixedCols Integer 2
      getDiagram.put MultipleSelection Boolean True; getDiagram.put ExtendedSelection Boolean True
      getDiagram.put SelectionMode Long 1; getDiagram.put negativeForeColor String red
      call Refresh)"));
}

TEST_F(TableStylesTest, ModesThatCannotBeChosenAreWrittenAllTheSame) {
  load();
  EXPECT_TRUE(page.rbNone.user_click());
  EXPECT_EQ(seen(page.fraSelectionMode), "(rbMulti)\n(rbWindowsNT)\n");
  EXPECT_FALSE(page.rbSingle.user_click());
  page.apply();
  EXPECT_EQ(chart->values["MultipleSelection"], Variant(true));
  EXPECT_EQ(chart->values["SelectionMode"], Variant(0));
  EXPECT_EQ(chart->values["negativeForeColor"], Variant("null"));

  EXPECT_TRUE(page.rbCell.user_click());
  EXPECT_TRUE(page.rbSingle.user_click());
  EXPECT_EQ(seen(page.fraSelectionMode), "rbSingle\n(rbWindowsNT)\n");
  EXPECT_FALSE(page.rbExtended.user_click());
  page.cbShowColLabels.user_click();
  page.cbShowRowLabels.user_click();
  EXPECT_TRUE(page.cmbOnColLabelClick.is_usable() && page.txtColLabelHeight.is_usable());
  EXPECT_FALSE(page.cmbOnRowLabelClick.is_usable() || page.txtRowLabelWidth.is_usable());
  page.apply();
  EXPECT_EQ(chart->values["MultipleSelection"], Variant(false));
  EXPECT_EQ(chart->values["SelectionMode"], Variant(3));
  EXPECT_EQ(chart->values["RowLabelWidth"], Variant(std::int16_t{60}));
}

TEST_F(TableStylesTest, RedIsWhatTheChartItselfShows) {
  load();
  page.chkRedNegativeValues.user_click();
  EXPECT_TRUE(page.Changed);
  page.apply();
  EXPECT_EQ(chart->values["negativeForeColor"], Variant("red"));

  chart->values["negativeForeColor"] = "null";
  page.Changed = false;
  page.chkRedNegativeValues.user_click();
  EXPECT_FALSE(page.Changed) << "the chart has no colour for them any more";
}

// Does something to a control that changes what it shows. False when it cannot be used.
bool edit(FormControl& control) {
  if (auto* box = dynamic_cast<CheckBox*>(&control)) return box->user_click();
  if (auto* box = dynamic_cast<TextBox*>(&control)) return box->user_type("5");
  if (auto* list = dynamic_cast<ListBox*>(&control)) return list->user_select(1 - list->list_index());
  return dynamic_cast<OptionButton&>(control).user_click();
}

TEST_F(TableStylesTest, EveryEditMarksThePage) {
  control->values["showColLabels"] = true;  // so that all of them can be used
  const StringList selected = {"rbMulti", "rbRows", "rbWindowsNT"};
  for (const Frame* frame : {&page.fraRows, &page.fraColumns, &page.fraScrollbars, &page.fraSelectionStyle,
                             &page.fraMultiple, &page.fraExtended}) {
    for (const auto& edited : frame->controls()) {
      load();
      ASSERT_TRUE(edit(*edited)) << edited->name();
      const bool was_selected = std::ranges::find(selected, edited->name()) != selected.end();
      EXPECT_EQ(page.Changed, !was_selected) << edited->name();
    }
  }
}

TEST_F(TableStylesTest, TextThatIsNoSizeGivesTheOneBefore) {
  struct Case {
    const char* name;
    const char* width;
    const char* height;
    const char* applied;  // DefaultColWidth, DefaultRowHeight
  };
  const Case cases[] = {
      {"letters", "40", "high", "40 40"},
      {"nothing before it", "wide", "30", "0 30"},
      {"empty", "", "", "0 0"},
      {"more than fits", "40", "32768", "40 40"},
      {"the most that fits", "-32768", "32767", "-32768 32767"},
      {"halves go to even", "2.5", "3.5", "2 4"},
  };
  for (const Case& c : cases) {
    load();
    page.txtDefaultColWidth.user_type(c.width);
    page.txtDefaultRowHeight.user_type(c.height);
    page.apply();
    EXPECT_EQ(chart->values["DefaultColWidth"].to_text() + " " + chart->values["DefaultRowHeight"].to_text(), c.applied)
        << c.name;
  }
}

}  // namespace
}  // namespace plexoras
