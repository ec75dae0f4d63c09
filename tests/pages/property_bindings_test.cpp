// What all pages do alike, and tables that do not suit their page.

#include "pages/property_bindings.h"

#include <gtest/gtest.h>

#include <functional>

#include "page_fixture.h"
#include "pages/chart_styles_page.h"
#include "pages/format_page.h"
#include "pages/styles_page.h"
#include "pages/table_styles_page.h"

namespace plexoras {
namespace {

// A control and a chart that have every property.
struct PagesTest : testing::Test, PageFixture {
  PagesTest() {
    for (const char* name : {"DIAGRAMTYPE", "PIESTYLE", "PIETYPE", "SCROLLBAR", "ONROWLABELCLICK", "ONCOLLABELCLICK"}) {
      table(name, "First=0");
    }
    control->otherwise = chart->otherwise = std::int16_t{0};
  }
};

struct PageCase {
  const char* name;
  std::function<std::unique_ptr<PropertyPage>(PagesTest&)> make;
  const char* refused;
  const char* written_before;
  const char* object;  // that is written to
};

const PageCase pages[] = {
    {"Styles", [](PagesTest& t) { return std::make_unique<Styles>(t.session); }, "FontSize", "FontName", "getDiagram"},
    {"Styles after Refresh", [](PagesTest& t) { return std::make_unique<Styles>(t.session); }, "ColSelection",
     "RowSelection", "getDiagram"},
    {"Chart Styles", [](PagesTest&) { return std::make_unique<ChartStyles>(); }, "HasStatistics", "HasSecondYAxis",
     "getDiagram"},
    {"Table Styles", [](PagesTest&) { return std::make_unique<TableStyles>(); }, "negativeForeColor", "SelectionMode",
     "getDiagram"},
    {"Format", [](PagesTest& t) { return std::make_unique<Format>(t.host); }, "FormatCountry", "FormatLanguage", ""},
};

TEST_F(PagesTest, WhatIsWrittenBeforeARefusalStays) {
  for (const PageCase& c : pages) {
    const std::unique_ptr<PropertyPage> page = c.make(*this);
    page->select({control});
    page->Changed = true;
    log.failing = {c.refused};
    log.take();
    EXPECT_EQ(outcome([&] { return page->apply(), ""; }), "error 5: refused") << c.name;

    const std::string told = "\n" + log.take();
    const std::string prefix = "\n" + std::string(c.object) + (*c.object == '\0' ? "put " : ".put ");
    const std::size_t before = told.find(prefix + c.written_before + " ");
    const std::size_t refused = told.find(prefix + c.refused + " ");
    EXPECT_LT(before, refused) << c.name << told;
    ASSERT_NE(refused, std::string::npos) << c.name << told;
    EXPECT_EQ(told.find('\n', refused + 1), told.size() - 1) << c.name << ": nothing follows" << told;
    const LoggedObject& written = *c.object == '\0' ? static_cast<LoggedObject&>(*control) : *chart;
    EXPECT_TRUE(written.values.contains(c.written_before)) << c.name;
    EXPECT_TRUE(page->Changed) << c.name;
    log.failing.clear();
  }
}

TEST_F(PagesTest, SaysWhatIsMissing) {
  for (const PageCase& c : pages) {
    const std::unique_ptr<PropertyPage> page = c.make(*this);
    EXPECT_EQ(outcome([&] { return page->select({}), ""; }), "error 91: No control is selected") << c.name;

    page->select({control});
    const auto bare = std::make_shared<LoggedControl>(*control);
    bare->values["getDiagram"] = bare->values["diagram"] = ObjectRef();
    page->SelectedControls = {bare};
    const std::string member = *c.object == '\0' ? "diagram" : c.object;
    EXPECT_EQ(outcome([&] { return *c.object == '\0' ? page->select({bare}) : page->apply(), ""; }),
              "error 91: The selected control has no chart (" + member + "): open it in design view")
        << c.name;
  }
}

TEST(PropertyBindings, TellOfRowsThatDoNotSuitThePage) {
  struct Page final : PropertyPage {
    Page() {
      caption = "Mine";
      add<Button>("cmd");
      add<CheckBox>("check");
      add<TextBox>("text");
      add<ListBox>("list");
      add<OptionButton>("option");
    }
    void SelectionChanged() override {}
    void ApplyChanges() override {}
  } page;
  static constexpr OptionCode options[] = {{"option", 0}, {"check", 1}};
  struct Case {
    PropertyRow row;
    const char* fault;
  };
  const Case cases[] = {
      {{"P", Encoding::Check, "text"}, "control \"text\" for the property P is of the kind TextBox"},
      {{"P", Encoding::CheckOrGrayed, "option"}, "control \"option\" for the property P is of the kind OptionButton"},
      {{"P", Encoding::Real, "check"}, "control \"check\" for the property P is of the kind CheckBox"},
      {{"P", Encoding::Text, "cmd"}, "control \"cmd\" for the property P is of the kind Button"},
      {{"P", Encoding::Lookup, "list", "T"}, "control \"list\" for the property P is of the kind ListBox"},
      {{"P", Encoding::Integer, "gone"}, "control \"gone\" for the property P is not there"},
      {{.property = "P", .encoding = Encoding::Options, .options = options},
       "control \"check\" for the property P is of the kind CheckBox"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(outcome([&] {
                return PropertyBindings(page, {&c.row, 1}), "";
              }),
              "error 9: The " + std::string(c.fault) + ": correct the page's table");
  }
}

}  // namespace
}  // namespace plexoras
