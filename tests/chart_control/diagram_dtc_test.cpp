#include "chart_control/diagram_dtc.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "chart_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

using View = ChartFixture::View;

TEST(DiagramDTC, ForwardsEveryPropertyInItsType) {
  ChartFixture f;
  f.initialised();
  std::map<ValueType, int> rows_of_type;
  for (const ForwardedProperty& row : forwarded_properties()) {
    ++rows_of_type[row.type];
    if (row.name == "DiagramType") continue;
    const Variant value = Variant("1").converted_to(row.type);
    const std::string put = "put " + std::string(row.name) + " " + std::string(type_name(row.type)) + " ";
    const std::string repaint = row.after_put == AfterPut::RefreshAndNotify ? "id 367\n" : "";

    f.chart.put(row.name, "1");
    EXPECT_EQ(f.log.take(), put + value.to_text() + "\n" + repaint);
    EXPECT_EQ(f.announced(), std::string(row.notification()) + " ");

    f.chart.diagram()->put(row.name, "1");
    f.forget();
    EXPECT_EQ(f.chart.get(row.name), value) << row.name;
    EXPECT_EQ(f.log.take(), "get " + std::string(row.name) + "\n");
  }
  const std::map<ValueType, int> expected = {{ValueType::Integer, 11},
                                             {ValueType::Long, 15},
                                             {ValueType::Double, 5},
                                             {ValueType::Boolean, 27},
                                             {ValueType::String, 19}};
  EXPECT_EQ(rows_of_type, expected);
}

TEST(DiagramDTC, KeepsTheOdditiesOfSomeProperties) {
  struct Case {
    std::string_view name;
    Variant value;
    std::string_view log, announced;
  };
  const Case cases[] = {
      {"xScaleMin", 2.5, "put xScaleMin Double 2.5\nid 367\n", "XScaleMin "},
      {"xScaleMax", "7", "put xScaleMax Double 7\nid 367\n", "XScaleMax "},
      {"yScaleMin", -1.5, "put yScaleMin Double -1.5\nid 367\n", "YScaleMin "},
      {"yScaleMax", 1e20, "put yScaleMax Double 1e+20\nid 367\n", "YScaleMax "},
      {"Thickness", std::int32_t{3}, "put Thickness Integer 3\nid 367\n", "thickness "},
      {"RowSelection", 2.5, "put RowSelection Integer 2\n", "RowSelection "},
      {"ColSelection", "-1", "put ColSelection Integer -1\n", "ColSelection "},
      {"HasPopupMenu", std::int16_t{1}, "put HasPopupMenu Boolean True\n", "HasPopupMenu "},
      {"FormatUseDefaultLocale", true, "put FormatUseDefaultLocale String True\nid 367\n", "FormatUseDefaultLocale "},
  };
  ChartFixture f;
  f.initialised();
  for (const Case& c : cases) {
    f.chart.put(c.name, c.value);
    EXPECT_EQ(f.log.take(), c.log);
    EXPECT_EQ(f.announced(), c.announced);
  }
}

TEST(DiagramDTC, AnnouncesNothingThatDidNotHappen) {
  ChartFixture f;
  f.initialised();
  f.log.failing = {"FontName", "UseSampleContents"};
  EXPECT_EQ(brief_outcome([&] { return f.chart.put("FontSize", "many"), ""; }), "error 13");
  EXPECT_EQ(brief_outcome([&] { return f.chart.put("FontSize", "32768"), ""; }), "error 6");
  EXPECT_EQ(f.log.take(), "");
  EXPECT_EQ(outcome([&] { return f.chart.put("FontName", "Arial"), ""; }), "error 5: FontName fails");
  EXPECT_EQ(outcome([&] { return f.chart.get("FontName").to_text(); }), "error 5: FontName fails");
  EXPECT_EQ(outcome([&] { return f.chart.put("DiagramType", "2"), ""; }), "error 5: UseSampleContents fails");
  EXPECT_EQ(f.announced(), "");
}

TEST(DiagramDTC, SetsTheDiagramTypeInASpecialWay) {
  struct Case {
    const char* name;
    View view;
    std::optional<bool> runs_page;
    std::string_view log;
  };
  constexpr std::string_view live =
      "put Visible Boolean False\nput DiagramType Long 7\ncall UseSampleContents\ncall Refresh\nput Visible Boolean "
      "True\n";
  constexpr std::string_view plain = "put DiagramType Long 7\ncall Refresh\n";
  const Case cases[] = {{"designing", View::Design, false, live},
                        {"the page runs", View::Design, true, plain},
                        {"the host does not tell", View::Design, std::nullopt, plain},
                        {"no design view", View::None, false, plain}};
  for (const Case& c : cases) {
    ChartFixture f(c.view);
    f.initialised();
    f.site.runs_page = c.runs_page;
    f.chart.put("DiagramType", "7");
    EXPECT_EQ(f.log.take(), c.log) << c.name;
    EXPECT_EQ(f.announced(), "DiagramType ") << c.name;
  }
}

TEST(DiagramDTC, BeginsAsTypeFiveWithSampleContents) {
  ChartFixture f(View::Design, "[PROPERTY]\n#DEFINE TITLE Chart\n");
  f.site.name = "";
  f.host.settings = {{"Format/Format", "Percent"}, {"Format/UseDefaultLocale", "True"},
                     {"Format/Language", "de"},    {"Format/Country", "CH"},
                     {"Format/Variant", "x"},      {"Format/Pattern", "0.0"}};
  f.chart.SetProperty("LEFT", "over");
  f.chart.InitProperties();
  EXPECT_EQ(f.log.take(),
            "put Visible Boolean False\nput DiagramType Long 5\ncall UseSampleContents\ncall Refresh\n"
            "put Visible Boolean True\n"
            "call UseSampleContents\n"
            "put FormatType Long 2\nid 367\n"
            "put FormatUseDefaultLocale String False\nid 367\n"
            "put FormatLanguage String de\nid 367\n"
            "put FormatCountry String CH\nid 367\n"
            "put FormatVariant String x\nid 367\n"
            "put FormatPattern String 0.0\nid 367\n"
            "id 367\n");
  EXPECT_EQ(f.announced(),
            "DiagramType AppletID FormatType FormatUseDefaultLocale FormatLanguage FormatCountry FormatVariant "
            "FormatPattern ");
  EXPECT_EQ(listing(*f.chart.CustomProperties()), "TITLE=Chart;");
  EXPECT_TRUE(f.site.children.at("diagram").visible);
  EXPECT_EQ(f.chart.diagram(), f.site.children.at("diagram").object);
  EXPECT_EQ(f.chart.getDiagram(), f.chart.diagram());
}

TEST(DiagramDTC, NamesAControlThatHasNoName) {
  struct Case {
    double random;
    std::string_view name;
  };
  // Halves go to the even number.
  const Case cases[] = {{0.0, "Plexora0"},     {0.0005, "Plexora0"},    {0.0015, "Plexora2"},
                        {0.417, "Plexora417"}, {0.99949, "Plexora999"}, {0.99999, "Plexora1000"}};
  for (const Case& c : cases) {
    ChartFixture f;
    f.site.name = "";
    f.host.platform.random = [&] { return c.random; };
    f.chart.InitProperties();
    EXPECT_EQ(f.site.name, c.name);
    EXPECT_EQ(f.chart.appletId(), c.name);
  }
}

TEST(DiagramDTC, TakesItsIdentifierFromWhatTheHostTells) {
  struct Case {
    std::optional<std::string> name, display_name;
    std::string_view id;
  };
  const Case cases[] = {
      {"Sales", "Shown", "Sales"},      {"", "Shown", "Shown"},           {"", "", "Stored"},
      {std::nullopt, "Shown", "Shown"}, {"Sales", std::nullopt, "Sales"}, {std::nullopt, std::nullopt, "Stored"},
      {std::nullopt, "", "Stored"},
  };
  for (const Case& c : cases) {
    ChartFixture f;
    MemoryPropertyBag bag;
    bag.write("AppletID", "Stored", "");
    f.site.name = c.name;
    f.site.display_name = c.display_name;
    f.chart.ReadProperties(bag);
    EXPECT_EQ(f.site.name, c.name) << "loading leaves the extender's name alone";
    EXPECT_EQ(f.chart.get("appletId"), Variant(c.id));
    // What was learned stays when the host falls silent.
    f.site.name = f.site.display_name = std::nullopt;
    EXPECT_EQ(f.chart.appletId(), c.id);

    f.forget();
    f.chart.put("appletId", "New");
    EXPECT_EQ(f.announced(), "AppletID ");
    EXPECT_EQ(f.chart.appletId(), c.id) << "a host that refuses the name";
  }
}

TEST(DiagramDTC, KeepsRatiosAsPercentages) {
  ChartFixture f;
  f.initialised();
  const auto ratio_of = [&](std::string_view width) {
    f.chart.SetProperty("WIDTH", width);
    return f.chart.get("WidthRatio");
  };
  EXPECT_EQ(ratio_of("50%"), Variant("50"));
  EXPECT_EQ(ratio_of("4%0%"), Variant("4"));
  EXPECT_EQ(ratio_of("400"), Variant(std::int16_t{0}));
  EXPECT_EQ(ratio_of(""), Variant(std::int16_t{0}));

  struct Case {
    Variant value;
    std::string_view kept;
  };
  const Case cases[] = {{std::int16_t{75}, "75%"}, {0.0, ""}, {"33.5", "33.5%"}, {std::int32_t{-1}, ""}, {0.5, "0.5%"}};
  for (const Case& c : cases) {
    for (const std::string key : {"Height", "Width"}) {
      f.chart.put(key + "Ratio", c.value);
      EXPECT_EQ(f.announced(), key + "Ratio ");
      const std::string_view kept_as = key == "Height" ? "HEIGHT" : "WIDTH";
      EXPECT_EQ(f.chart.GetProperty(kept_as), c.kept);
      EXPECT_EQ(f.chart.CustomProperties()->includes(kept_as, Dictionary::EmptyValues::Keep), !c.kept.empty());
    }
  }
  EXPECT_EQ(f.log.take(), "") << "a ratio does not repaint";
}

TEST(DiagramDTC, FillsLookupTablesFromTheConstants) {
  ChartFixture f(View::Design,
                 "[CONSTANT]\n#HALT\n#DEFINE PIE_Round 1\n#DEFINE BAR_x 3\n#DEFINE PIEsSquare 2\n#DEFINE pie_Small 4\n"
                 "#DEFINE PIE_Gone 5\n#DEFINE PIE_Gone ''\n#DEFINE PIE 6\n#DEFINE APIE_x 7\n");
  int times_run = 0;
  f.host.platform.halt = [&](const HaltRequest&) { return ++times_run < 0; };
  const auto table = [&](std::string_view name) {
    const ObjectRef object = f.chart.call_with("GetLookupTable", {name}).to_object();
    return listing(dynamic_cast<Dictionary&>(*object));
  };
  EXPECT_EQ(table("PIE"), "Round=1;Square=2;=6;") << "the character behind the name is not looked at";
  EXPECT_EQ(table("NONE"), "");
  EXPECT_EQ(table("BAR_"), "=3;");

  f.chart.GetLookupTable("BAR")->atPut("mine", "1");
  EXPECT_EQ(table("BAR"), "x=3;") << "a table is the caller's own";
  EXPECT_EQ(times_run, 1) << "the section is read once";
}

TEST(DiagramDTC, SharesItsCustomProperties) {
  ChartFixture f(View::Design, "[PROPERTY]\n#DEFINE A 1\n");
  f.initialised();
  const ObjectRef shared = f.chart.get("CustomProperties").to_object();
  shared->call_with("atPut", {"B", "2"});
  EXPECT_EQ(f.chart.call("GetPropertyKeys"), Variant(StringList{"A", "B"}));
  EXPECT_EQ(f.chart.call_with("GetProperty", {"B"}), Variant("2"));
  f.chart.call_with("SetProperty", {"A", std::int16_t{3}});
  EXPECT_EQ(listing(*f.chart.CustomProperties()), "A=3;B=2;");
  EXPECT_EQ(f.announced(), "");

  f.chart.put("CustomProperties", ObjectRef(std::make_shared<Dictionary>()));
  f.chart.put("CustomProperties", "text");
  f.chart.call("FireCustomPropertyChange");
  EXPECT_EQ(f.announced(), "CustomProperties CustomProperties CustomProperties ");
  EXPECT_EQ(f.chart.get("CustomProperties").to_object(), shared);
}

TEST(DiagramDTC, HasItsComponentForAWhile) {
  ChartFixture f;
  EXPECT_EQ(brief_outcome([&] { return f.chart.get("FontName").to_text(); }), "error 91");
  EXPECT_EQ(brief_outcome([&] { return f.chart.put("DiagramType", "1"), ""; }), "error 91");
  f.chart.Refresh();
  f.chart.DestroyObject();
  EXPECT_EQ(f.log.take(), "");

  f.initialised();
  f.chart.call("InitObject");
  EXPECT_EQ(f.log.take(), "") << "there is one already";
  f.chart.call("DestroyObject");
  EXPECT_TRUE(f.site.children.empty());
  EXPECT_EQ(f.chart.diagram(), nullptr);
  EXPECT_EQ(f.chart.getDiagram(), nullptr);

  f.chart.InitObject();
  EXPECT_NE(f.chart.diagram(), nullptr);
  EXPECT_EQ(f.chart.getDiagram(), nullptr);
  EXPECT_TRUE(f.log.take().starts_with("put FormatType Long 4\nput FormatUseDefaultLocale String True\n"));
  f.chart.Refresh();
  f.chart.DestroyObject();
  EXPECT_EQ(f.chart.diagram(), nullptr);
}

TEST(DiagramDTC, RelaysTheEventsOfItsDesignView) {
  enum class End { Destroyed, Deleted };
  for (const End end : {End::Destroyed, End::Deleted}) {
    ChartFixture f;
    std::string log;
    f.site.on_component_event = [&](std::string_view name, Arguments arguments) {
      log += std::string(name) + " " + std::to_string(arguments.size()) + "; ";
      if (name == "Bad") throw AutomationError(RunTimeError::InvalidCall, "the host fails");
    };
    auto chart = std::make_unique<DiagramDTC>(f.session, f.site);
    chart->InitProperties();
    const ObjectRef sink = f.log.event_sink;
    sink->call("SelectionChange");
    sink->call_with("Moved", {1, "2"});
    EXPECT_EQ(outcome([&] { return sink->call("Bad").to_text(); }), "error 5: the host fails");
    EXPECT_EQ(log, "SelectionChange 0; Moved 2; Bad 0; ");

    // The component may live on, and so may what it was given.
    if (end == End::Destroyed) chart->DestroyObject();
    if (end == End::Deleted) chart.reset();
    EXPECT_EQ(f.log.event_sink, nullptr);
    sink->call("Late");
    EXPECT_EQ(log, "SelectionChange 0; Moved 2; Bad 0; ");
  }
  ChartFixture unseen(View::None);
  unseen.initialised();
  EXPECT_EQ(unseen.log.event_sink, nullptr);
}

TEST(DiagramDTC, LeavesNoDesignViewHalfMade) {
  ChartFixture f;
  f.log.failing = {"setEventSink"};
  EXPECT_EQ(outcome([&] { return f.chart.InitProperties(), ""; }), "error 5: no events");
  EXPECT_EQ(f.chart.diagram(), nullptr);
  EXPECT_TRUE(f.site.children.empty());
  f.log.failing.clear();
  f.chart.InitProperties();
  EXPECT_NE(f.chart.getDiagram(), nullptr);
}

TEST(DiagramDTC, IsReachedByMemberName) {
  ChartFixture f;
  f.initialised();
  EXPECT_EQ(f.chart.get("templateFile"), Variant("DIAGRAM.DAT"));
  EXPECT_EQ(f.chart.get("advancedSpecSection"), Variant("ADVANCED_SPEC"));
  EXPECT_EQ(f.chart.get("constSpecSection"), Variant("CONSTANT"));
  EXPECT_EQ(f.chart.get("hWnd"), Variant(std::int32_t{0}));
  EXPECT_EQ(f.chart.get("getDiagram").to_object(), f.chart.call("getDiagram").to_object());
  for (const std::string_view member : {"XScaleMin", "thickness", "fontname", "Nothing"}) {
    EXPECT_EQ(brief_outcome([&] { return f.chart.get(member).to_text(); }), "error 438");
    EXPECT_EQ(brief_outcome([&] { return f.chart.put(member, "1"), ""; }), "error 438");
    EXPECT_EQ(brief_outcome([&] { return f.chart.call(member).to_text(); }), "error 438");
  }
  for (const std::string_view member : {"templateFile", "hWnd", "getDiagram"}) {
    EXPECT_EQ(brief_outcome([&] { return f.chart.put(member, "1"), ""; }), "error 438") << member;
  }
  EXPECT_EQ(brief_outcome([&] { return f.chart.call("SetProperty").to_text(); }), "error 5");
}

}  // namespace
}  // namespace plexoras
