#include "pages/styles_page.h"

#include <gtest/gtest.h>

#include <functional>

#include "page_fixture.h"

namespace plexoras {
namespace {

struct StylesTest : testing::Test, PageFixture, ModalPresenter {
  StylesTest() {
    table("DIAGRAMTYPE", "Histogram=0 Bar=5 Table=9 Cumulative=10 Heat=11");
    host.platform.presenter = this;
    host.files["T.DAT"] = "[MENUITEMS]\r\n#DEFINE Print java:print\r\n";
    const auto integer = [](int number) { return Variant(static_cast<std::int16_t>(number)); };
    for (const auto& [name, value] : std::initializer_list<std::pair<const char*, Variant>>{
             {"DiagramType", 10},          {"AutoResize", true},         {"IsTransposed", false},
             {"IsAbsolute", false},        {"HasBorder", true},          {"HasLegend", false},
             {"HasPopupMenu", true},       {"yGridVisible", false},      {"xGridVisible", true},
             {"yScaleMin", -1.5},          {"yScaleMax", 100.0},         {"xScaleMin", 0.0},
             {"xScaleMax", 2.25},          {"BucketCount", integer(12)}, {"RowSelection", integer(-1)},
             {"ColSelection", integer(3)}, {"FontName", "Georgia"},      {"FontSize", integer(13)},
             {"FontBold", true},           {"FontItalic", false}}) {
      control->values[name] = value;
    }
  }

  void run(Form& form) override { author(dynamic_cast<MenuBuilder&>(form)); }

  void load() {
    page.select({control});
    log.take();
  }

  /// Opens the menu builder, where the author does what `acts` says.
  void build_menu(std::function<void(MenuBuilder&)> acts) {
    author = std::move(acts);
    ASSERT_TRUE(page.cmdMenuBuilder.user_click());
  }

  std::string custom(std::string_view key) { return control->custom->entries.atGet(key); }

  std::function<void(MenuBuilder&)> author;
  Styles page{session};
};

TEST_F(StylesTest, Loads) {
  page.select({control});
  EXPECT_EQ(log.take(), entries(R"(
      call GetProperty HASMENU
      get DiagramType; call GetLookupTable DIAGRAMTYPE; call GetLookupTable DIAGRAMTYPE; get DiagramType
      get AutoResize; get IsTransposed; get IsAbsolute; get HasBorder; get HasLegend; get HasPopupMenu
      get yGridVisible; get xGridVisible; get yScaleMin; get yScaleMax; get xScaleMin; get xScaleMax
      get BucketCount; get RowSelection; get ColSelection
      diagram.call getFontList; get FontName; get FontSize; get FontBold; get FontItalic
      get DiagramType)"));
  EXPECT_EQ(seen(page), entries(R"(
      cmbDiagramType Cumulative; (cbAutoResize 1); chkIsTransposed 0; chkHasBorder 1; chkHasLegend 0
      cbYGridVisible 0; cbXGridVisible 1
      cmbFontName Georgia; cmbFontSize 13; chkFontBold 1; chkFontItalic 0
      chkIsAbsolute 0; (yScaleMin -1.5); (yScaleMax 100); xScaleMin 0; xScaleMax 2.25
      txtSelectedRow -1; txtSelectedCol 3; txtBucketCount 12; chkHasPopupMenu 1)"));
  EXPECT_EQ(page.cmbFontName.entries(), (StringList{"serif", "sans-serif"}));
  EXPECT_FALSE(page.Changed);

  page.select({control});
  page.select({control});
  const StringList& sizes = page.cmbFontSize.entries();
  ASSERT_EQ(sizes.size(), 45U) << "every load adds the sizes once more";
  EXPECT_EQ(sizes[14] + sizes[15] + sizes[29] + sizes[44], "4884848");
  EXPECT_EQ(page.cmbFontName.entries().size(), 2U) << "but not the fonts";
}

TEST_F(StylesTest, Applies) {
  load();
  page.cmbDiagramType.user_select(1);
  page.chkFontItalic.set_value(2);
  page.chkHasLegend.set_value(2);
  page.cmbFontSize.user_select(0);
  page.txtSelectedRow.user_type("4");
  log.take();
  page.apply();
  EXPECT_EQ(log.take(), entries(R"(
      call GetLookupTable DIAGRAMTYPE; getDiagram.put DiagramType Integer 5
      getDiagram.put AutoResize Boolean True; getDiagram.put IsTransposed Boolean False
      getDiagram.put IsAbsolute Boolean False; getDiagram.put HasBorder Boolean True
      getDiagram.put HasLegend Boolean False; getDiagram.put HasPopupMenu Boolean True
      getDiagram.put yGridVisible Boolean False; getDiagram.put xGridVisible Boolean True
      getDiagram.put yScaleMin Double -1.5; getDiagram.put yScaleMax Double 100
      getDiagram.put xScaleMin Double 0; getDiagram.put xScaleMax Double 2.25
      getDiagram.put BucketCount Integer 12
      getDiagram.put FontName String Georgia; getDiagram.put FontSize Integer 8
      getDiagram.put FontBold Boolean True; getDiagram.put FontItalic Boolean True
      CustomProperties.call atPut MENU ''; CustomProperties.call atPut USEMENU ''
      call Refresh
      getDiagram.put RowSelection Integer 4; getDiagram.put ColSelection Integer 3
      call FireCustomPropertyChange)"));
  EXPECT_FALSE(page.Changed);
}

TEST_F(StylesTest, TextThatIsNoNumber) {
  struct Case {
    const char* control;
    const char* text;
    const char* property;
    const char* applied;
  };
  const Case cases[] = {
      {"yScaleMin", "low", "yScaleMin", "Double 0"},
      {"yScaleMax", "1e999", "yScaleMax", "Double 0"},
      {"xScaleMin", "1,5", "xScaleMin", "Double 0"},
      {"xScaleMax", "", "xScaleMax", "Double 0"},
      {"xScaleMax", " 1e3 ", "xScaleMax", "Double 1000"},
      {"txtBucketCount", "many", "BucketCount", "Integer 1"},
      {"txtBucketCount", "0", "BucketCount", "Integer 1"},
      {"txtBucketCount", "-5", "BucketCount", "Integer 1"},
      {"txtBucketCount", "99999", "BucketCount", "Integer 1"},
      {"cmbFontSize", "big", "FontSize", "Integer 12"},
      {"cmbFontSize", "-1", "FontSize", "Integer 1"},
      {"txtSelectedRow", "first", "RowSelection", "Integer 13"},
      {"txtSelectedCol", "last", "ColSelection", "Integer -1"},
  };
  control->values["IsAbsolute"] = true;
  for (const Case& c : cases) {
    load();
    FormControl& box = *page.find(c.control);
    auto* const text = dynamic_cast<TextBox*>(&box);
    EXPECT_TRUE(text != nullptr ? text->user_type(c.text) : dynamic_cast<ComboBox&>(box).user_type(c.text));
    EXPECT_TRUE(page.Changed) << c.control;
    page.apply();
    const Variant& value = chart->values[c.property];
    EXPECT_EQ(std::string(type_name(value.type())) + " " + value.to_text(), c.applied) << c.control << " " << c.text;
  }
}

TEST_F(StylesTest, TheChartTypeEnables) {
  struct Case {
    std::int32_t type;
    bool buckets, resize;
  };
  for (const auto& [type, buckets, resize] : {Case{0, true, false}, Case{5, false, false}, Case{9, false, true},
                                              Case{10, true, false}, Case{11, false, true}}) {
    control->values["DiagramType"] = type;
    load();
    EXPECT_EQ(page.txtBucketCount.enabled, buckets) << type;
    EXPECT_EQ(page.cbAutoResize.enabled, resize) << type;
  }
  page.cmbDiagramType.user_select(0);
  EXPECT_TRUE(page.Changed);
  EXPECT_FALSE(page.txtBucketCount.enabled) << "the type is not applied yet";
  page.Changed = false;
  page.cmbDiagramType.user_select(4);
  EXPECT_FALSE(page.Changed) << "the control's own type";

  page.chkIsAbsolute.user_click();
  EXPECT_TRUE(page.Changed && page.yScaleMin.is_usable() && page.yScaleMax.is_usable());
}

TEST_F(StylesTest, FontsThatTheControlHasAlreadyAreNoEdit) {
  control->values["FontName"] = "serif";
  control->values["FontSize"] = std::int16_t{9};
  load();
  page.cmbFontName.user_select(0);
  page.cmbFontSize.user_select(1);
  EXPECT_FALSE(page.Changed);
  page.cmbFontName.user_select(1);
  EXPECT_TRUE(page.Changed);
  page.Changed = false;
  page.cmbFontSize.user_select(2);
  EXPECT_TRUE(page.Changed);
}

TEST_F(StylesTest, MenusAreThereUnlessTheTemplateSaysOtherwise) {
  struct Case {
    const char* has_menu;
    bool supported;
  };
  for (const auto& [has_menu, supported] :
       {Case{"", true}, Case{"True", true}, Case{"no", true}, Case{"false", false}, Case{"FALSE", false}}) {
    control->custom->entries.atPut("HASMENU", has_menu);
    load();
    EXPECT_EQ(page.cmdMenuBuilder.enabled, supported) << has_menu;
    EXPECT_EQ(page.chkHasPopupMenu.enabled, supported) << has_menu;
  }
  page.chkHasPopupMenu.set_value(0);
  EXPECT_FALSE(page.Changed) << "the template has no menus";

  control->custom->entries.atPut("HASMENU", "True");
  load();
  page.chkHasPopupMenu.user_click();
  EXPECT_TRUE(page.Changed);
  EXPECT_FALSE(page.cmdMenuBuilder.enabled) << "the chart is to have no menu";
  page.chkHasPopupMenu.user_click();
  EXPECT_TRUE(page.cmdMenuBuilder.enabled);

  for (const bool has_popup : {false, false, true, false}) {
    control->values["HasPopupMenu"] = has_popup;
    load();
    EXPECT_TRUE(page.cmdMenuBuilder.enabled) << "whatever chart was loaded before";
  }
}

TEST_F(StylesTest, BuildsAMenuAndStoresItWhenApplied) {
  load();
  build_menu([](MenuBuilder& builder) {
    EXPECT_EQ(builder.cmbProperty.entries(), StringList{"Print"});
    EXPECT_FALSE(builder.use_custom_menu());
    builder.cmdOK.user_click();
  });
  EXPECT_TRUE(page.Changed) << "an empty menu is a document as well";
  EXPECT_EQ(custom("MENU"), "");
  page.apply();
  EXPECT_EQ(custom("MENU"), "<xml></>");

  const Dictionary* const catalogue = &session.contents.menu_builder.command_table();
  load();
  build_menu([](MenuBuilder& builder) { builder.cmdOK.user_click(); });
  EXPECT_FALSE(page.Changed) << "nothing was changed";
  build_menu([](MenuBuilder& builder) {
    builder.rbCustomMenu.user_click();
    builder.cmdOK.user_click();
  });
  EXPECT_TRUE(page.Changed) << "the flag alone";
  page.apply();
  EXPECT_EQ(custom("USEMENU"), "Yes");

  build_menu([](MenuBuilder& builder) {
    EXPECT_TRUE(builder.use_custom_menu());
    builder.txtCaption.user_type("Print it");
    builder.rbBuiltIn.user_click();
    builder.cmbProperty.user_select(0);
    builder.cmdOK.user_click();
  });
  page.apply();
  EXPECT_EQ(custom("MENU"), "<xml><ITEM type=\"java\" param=\"print\">Print it</></>");
  EXPECT_EQ(&session.contents.menu_builder.command_table(), catalogue) << "it is read once";

  // Kept: the builder is one for all charts, and so is the menu that it holds.
  const auto other = std::make_shared<LoggedControl>(*control);
  other->custom = std::make_shared<LoggedDictionary>(log);
  other->values["CustomProperties"] = ObjectRef(other->custom);
  other->custom->entries.atPut("MENU", "<xml><ITEM type=\"script\" param=\"f()\">Other</></>");
  Styles second(session);
  second.select({other});
  second.apply();
  EXPECT_EQ(other->custom->entries.atGet("MENU"), custom("MENU"));
}

TEST_F(StylesTest, LooksForTheCommandsUntilThereIsATemplate) {
  for (const auto& [file, commands] : {std::pair{"NONE.DAT", StringList{}}, {"T.DAT", StringList{"Print"}}}) {
    control->values["templateFile"] = file;
    load();
    build_menu([](MenuBuilder& builder) { builder.cmdCancel.user_click(); });
    EXPECT_EQ(session.contents.menu_builder.cmbProperty.entries(), commands) << file;
  }
}

TEST_F(StylesTest, CancelledMenusAndAboutBoxes) {
  control->custom->entries.atPut("MENU", "<xml><ITEM type=\"script\" param=\"f()\">A</></>");
  control->custom->entries.atPut("USEMENU", "Yes");
  load();
  build_menu([](MenuBuilder& builder) {
    EXPECT_EQ(builder.nodes().size(), 1U);
    builder.cmdDelete.user_click();
    builder.rbSystemMenu.user_click();
    builder.cmdCancel.user_click();
  });
  EXPECT_FALSE(page.Changed);

  EXPECT_TRUE(page.cmdAbout.user_click()) << "without an about box nothing happens";
  std::string shown;
  session.show_about_box = [&](std::string_view file) { shown = file; };
  page.cmdAbout.user_click();
  EXPECT_EQ(shown, "T.DAT");
}

}  // namespace
}  // namespace plexoras
