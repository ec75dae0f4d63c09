#include "pages/chart_styles_page.h"

#include <gtest/gtest.h>

#include "page_fixture.h"

namespace plexoras {
namespace {

struct ChartStylesTest : testing::Test, PageFixture {
  ChartStylesTest() {
    table("PIESTYLE", "Flat=0 Deep=1");
    table("PIETYPE", "Pie=0 Ring=4");
    for (const auto& [name, value] :
         std::initializer_list<std::pair<const char*, Variant>>{{"PieStyle", 1},
                                                                {"PieType", 4},
                                                                {"PieAngle", 12.5},
                                                                {"Thickness", std::int16_t{7}},
                                                                {"HasSecondYAxis", true},
                                                                {"HasStatistics", true},
                                                                {"ShowSelectedRow", false},
                                                                {"ShowRowTitle", true},
                                                                {"ShowColTitle", false},
                                                                {"IsRotated", true},
                                                                {"RectStyle", 3},
                                                                {"Reverse", 2},
                                                                {"TabStyle", 2},
                                                                {"CurveStyle", 1},
                                                                {"LabelStyle", 1},
                                                                {"BarStyle", 2}}) {
      control->values[name] = value;
    }
  }

  /// Loads the page and forgets how.
  void load() {
    page.select({control});
    log.take();
  }

  ChartStyles page;
};

TEST_F(ChartStylesTest, Loads) {
  page.select({control});
  // A list that selects an entry asks what its click asks.
  EXPECT_EQ(log.take(), entries(R"(
      get PieStyle; call GetLookupTable PIESTYLE; call GetLookupTable PIESTYLE; get PieStyle
      get PieType; call GetLookupTable PIETYPE; call GetLookupTable PIETYPE; get PieType
      get PieAngle; get Thickness; get HasSecondYAxis; get HasStatistics; get ShowSelectedRow; get ShowColTitle
      get ShowRowTitle; get IsRotated; get RectStyle; get Reverse; get TabStyle; get CurveStyle; get LabelStyle
      get BarStyle)"));
  EXPECT_EQ(seen(page), entries(R"(
      cmbPieStyle Deep; cmbPieType Ring; txtAngle 12.5; txtThickness 7
      (cbHasTwoYAxis 1); cbHasStatistics 1; cbShowSelectedRow 0; cbShowRowTitle 1; cbShowColTitle 0
      rbBarCylII; rbBarStyleDefaultPercent; cbIsRotated 1; rbReverseY; rbtBottom; rbDraw; rbRightBottom)"));
  EXPECT_FALSE(page.Changed);
}

TEST_F(ChartStylesTest, AppliesWhatTheAuthorSet) {
  load();
  page.txtThickness.user_type("9");
  page.cbShowRowTitle.user_click();
  page.rbLeftTop.user_click();
  page.cmbPieStyle.user_select(0);
  page.apply();
  EXPECT_EQ(log.take(), entries(R"(
      call GetLookupTable PIESTYLE; get PieStyle
      call GetLookupTable PIESTYLE; getDiagram.put PieStyle Integer 0
      call GetLookupTable PIETYPE; getDiagram.put PieType Integer 4
      getDiagram.put PieAngle Double 12.5; getDiagram.put Thickness Integer 9
      getDiagram.put HasSecondYAxis Boolean True; getDiagram.put HasStatistics Boolean True
      getDiagram.put ShowSelectedRow Boolean False; getDiagram.put ShowRowTitle Boolean False
      getDiagram.put ShowColTitle Boolean False; getDiagram.put IsRotated Boolean True
      getDiagram.put RectStyle Long 3; getDiagram.put Reverse Long 2; getDiagram.put TabStyle Long 2
      getDiagram.put CurveStyle Long 1; getDiagram.put LabelStyle Long 2; getDiagram.put BarStyle Long 2
      call Refresh)"));
}

TEST_F(ChartStylesTest, EveryButtonStandsForItsCode) {
  const std::map<std::string, std::string> groups = {
      {"RectStyle", "rbBarRect rbBarRect3D rbBarCylI rbBarCylII"},
      {"Reverse", "rbReverseDefault rbReverseX rbReverseY rbReverseXY"},
      {"TabStyle", "rbtNone rbtTop rbtBottom"},
      {"CurveStyle", "rbNone rbDraw rbFill"},
      {"LabelStyle", "rbLeftBottom rbRightBottom rbLeftTop rbRightTop"},
      {"BarStyle", "rbBarStyleDefault rbBarStyleStacked rbBarStyleDefaultPercent rbBarStyleStackedPercent"},
  };
  for (const auto& [property, names] : groups) {
    std::int32_t code = 0;
    for (std::size_t from = 0; from < names.size(); ++code) {
      const std::size_t end = std::min(names.find(' ', from), names.size());
      const std::string name = names.substr(from, end - from);
      from = end + 1;
      control->values[property] = code;
      ChartStyles loaded;
      loaded.select({control});
      EXPECT_TRUE(dynamic_cast<OptionButton&>(*loaded.find(name)).value()) << property << " " << code;

      // The other way round, from a group in which nothing is selected.
      control->values[property] = 99;
      ChartStyles clicked;
      clicked.select({control});
      dynamic_cast<OptionButton&>(*clicked.find(name)).user_click();
      EXPECT_TRUE(clicked.Changed) << name;
      clicked.apply();
      EXPECT_EQ(chart->values[property], Variant(code)) << name;
    }
  }
}

TEST_F(ChartStylesTest, PercentsRuleOutASecondYAxis) {
  load();
  struct Case {
    OptionButton& button;
    bool enabled;
  };
  for (const auto& [button, enabled] :
       {Case{page.rbBarStyleDefault, true}, Case{page.rbBarStyleStackedPercent, false},
        Case{page.rbBarStyleStacked, true}, Case{page.rbBarStyleDefaultPercent, false}}) {
    page.Changed = false;
    EXPECT_TRUE(button.user_click());
    EXPECT_TRUE(page.Changed);
    EXPECT_EQ(page.cbHasTwoYAxis.enabled, enabled) << button.name();
    EXPECT_EQ(page.cbHasTwoYAxis.value(), 1) << "it is disabled, not cleared";
  }
}

TEST_F(ChartStylesTest, ACodeWithoutAButtonLeavesTheGroupAlone) {
  load();
  control->values["TabStyle"] = 7;
  page.select({control});
  EXPECT_TRUE(page.rbtBottom.value());
  page.apply();
  EXPECT_EQ(chart->values["TabStyle"], Variant(2));

  ChartStyles fresh;
  fresh.select({control});
  fresh.apply();
  EXPECT_EQ(chart->values["TabStyle"], Variant(0)) << "no button is selected";
}

TEST_F(ChartStylesTest, AChoiceThatTheControlHasAlreadyIsNoEdit) {
  load();
  page.cmbPieType.user_select(-1);
  EXPECT_FALSE(page.Changed) << "and neither is none";
  page.cmbPieType.user_select(0);
  EXPECT_TRUE(page.Changed);
  page.Changed = false;
  page.cmbPieType.user_select(1);
  EXPECT_FALSE(page.Changed) << "the control's own code";
}

TEST_F(ChartStylesTest, ListsShowWhatTheTableHolds) {
  struct Case {
    const char* name;
    const char* table;
    const char* text;  // what the list shows for code 1
    int entries;
    const char* applied;  // what applying comes to
  };
  const Case cases[] = {
      {"the last entry with the code counts", "A=1 B=1 C=2", "B", 3, "1"},
      {"no entry has the code", "A=5", "", 1, "error 9"},
      {"no entries", "", "", 0, "error 9"},
  };
  for (const Case& c : cases) {
    table("PIESTYLE", c.table);
    load();
    EXPECT_EQ(page.cmbPieStyle.text(), c.text) << c.name;
    EXPECT_EQ(page.cmbPieStyle.entries().size(), static_cast<std::size_t>(c.entries)) << c.name;
    const auto apply = [&] { return page.apply(), chart->values["PieStyle"].to_text(); };
    EXPECT_EQ(brief_outcome(apply), c.applied) << c.name;
  }
  EXPECT_EQ(outcome([&] { return page.apply(), ""; }),
            "error 9: Nothing is selected in the list \"Style:\" (lookup table PIESTYLE): select an entry");

  table("PIESTYLE", "A=first");
  EXPECT_EQ(outcome([&] { return page.select({control}), ""; }),
            "error 13: PieStyle: Type mismatch: \"first\" is not a number");
  control->values["PieStyle"] = 70'000;
  EXPECT_EQ(outcome([&] { return page.select({control}), ""; }), "error 6: PieStyle: Overflow");
}

TEST_F(ChartStylesTest, ReadsTheTableAnewWhenItApplies) {
  load();
  table("PIESTYLE", "Flat=10 Deep=11");
  page.apply();
  EXPECT_EQ(chart->values["PieStyle"], Variant(std::int16_t{11}));
}

TEST_F(ChartStylesTest, WorksOnTheFirstControlAlone) {
  const auto second = std::make_shared<LoggedControl>(log);  // that would refuse whatever it were asked
  page.select({control, second});
  page.apply();
  EXPECT_EQ(chart->values["Thickness"], Variant(std::int16_t{7}));
}

}  // namespace
}  // namespace plexoras
