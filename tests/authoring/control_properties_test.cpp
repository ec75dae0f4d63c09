#include "authoring/control_properties.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "authoring/suggestion.h"
#include "authoring_fixture.h"

namespace plexoras {
namespace {

using NewKeys = ControlProperties::NewKeys;

constexpr std::string_view table = "<xml><rows>c<row>r</></><cols><col>q</></><data><value>1</></></xml>";

TEST(LiveControl, BeginsWithTheDataItShows) {
  Author author;
  LiveControl control = author.make();
  const Variant shown = control.component()->get("XmlContents");
  EXPECT_EQ(Variant(control.control().GetProperty("Contents")), shown);
  const ControlRecord record = control.record();
  EXPECT_EQ(record.identifier, "PlexorasDTC.DiagramDTC");
  EXPECT_EQ(record.name, "Sales");
  EXPECT_EQ(record.state.at(0), (std::pair<std::string, std::string>("AppletID", "Sales")));

  LiveControl loaded(author.session, record);
  EXPECT_EQ(loaded.record(), record);
  EXPECT_EQ(loaded.component()->get("XmlContents"), shown);

  EXPECT_EQ(outcome([&] { return LiveControl::make_new(author.session, "chat", "A").record().name; }),
            "error 429: there is no control \"chat\" here; known: chart (PlexorasDTC.DiagramDTC), "
            "template (PlexorasDTC.TemplateDTC); did you mean \"chart\"?");
}

TEST(ControlProperties, CoverThePlaceTheChartAndTheTemplate) {
  Author author;
  LiveControl control = author.make();
  const ControlProperties properties(control);
  std::vector<std::string> names = properties.names();
  for (const std::string& name : names) EXPECT_NO_THROW(properties.get(name)) << name;
  for (const std::string_view name : {"width", "FontSize", "negativeForeColor", "WidthRatio", "NOTE"}) {
    EXPECT_EQ(std::count(names.begin(), names.end(), name), 1) << name;
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

TEST(ControlProperties, TakeTextsOfTheirTypes) {
  struct Case {
    std::string_view name, value, result;
  };
  const Case cases[] = {
      {"FontSize", "32767", "32767"},
      {"FontSize", "+7", "7"},
      {"FontSize", "32768", "error 6: FontSize takes a whole number from -32768 to 32767, not \"32768\""},
      {"FontSize", "1.5", "error 13: FontSize takes a whole number from -32768 to 32767, not \"1.5\""},
      {"FontSize", "", "error 13: FontSize takes a whole number from -32768 to 32767, not \"\""},
      {"FormatType", "-2147483648", "-2147483648"},
      {"FormatType", "2147483648",
       "error 6: FormatType takes a whole number from -2147483648 to 2147483647, not \"2147483648\""},
      {"xScaleMin", "-2.50", "-2.5"},
      {"xScaleMin", "1,5", "error 13: xScaleMin takes a number, not \"1,5\""},
      {"HasLegend", "false", "False"},
      {"HasLegend", "maybe", "error 13: HasLegend takes True or False, not \"maybe\""},
      {"FormatUseDefaultLocale", "Whatever", "Whatever"},
      {"negativeForeColor", "red", "red"},
      {"width", "32767", "32767"},
      {"width", "-1", "error 5: a size takes 0 to 32767 pixels, not -1"},
      {"width", "32768", "error 6: width takes a whole number from -32768 to 32767, not \"32768\""},
      {"visible", "False", "False"},
      {"WidthRatio", "80", "80"},
      {"WIDTH", "80%", "80%"},
      {"name", "a.B-c_1:2", "a.B-c_1:2"},
      {"name", "1a",
       "error 5: \"1a\" cannot name a control; use a letter, then letters, digits, \".\", \"-\", \"_\" and \":\""},
      {"NOTE", "", ""},
      {"FontSise", "1", "error 438: there is no property \"FontSise\"; did you mean \"FontSize\"?"},
      {"fontsize", "1", "error 438: there is no property \"fontsize\"; did you mean \"FontSize\"?"},
      {"Unheardof", "1", "error 438: there is no property \"Unheardof\""},
      {"AppletID", "x", "error 438: there is no property \"AppletID\""},
  };
  for (const Case& c : cases) {
    Author author;
    LiveControl control = author.make();
    ControlProperties properties(control);
    const ControlRecord before = control.record();
    const std::string result = outcome([&] { return properties.set(c.name, c.value), properties.get(c.name); });
    EXPECT_EQ(result, c.result);
    if (result.starts_with("error")) {
      EXPECT_EQ(control.record(), before) << c.name;
      continue;
    }
    // What was set is what the page holds.
    LiveControl loaded(author.session, control.record());
    EXPECT_EQ(ControlProperties(loaded).get(c.name), c.result) << c.name;
  }
}

TEST(ControlProperties, TakeNewKeysWhenAsked) {
  Author author;
  LiveControl control = author.make();
  ControlProperties properties(control);
  properties.set("OWN", "1", NewKeys::Accept);
  properties.set("OWN", "2");
  EXPECT_EQ(properties.get("OWN"), "2");
  for (const std::string_view name : {"", "AppletID"}) {
    EXPECT_EQ(brief_outcome([&] { return properties.set(name, "1", NewKeys::Accept), ""; }), "error 438");
  }
  EXPECT_EQ(outcome([&] { return properties.get("OWNE"); }),
            "error 438: there is no property \"OWNE\"; did you mean \"OWN\"?");
}

TEST(ControlProperties, MirrorTheContents) {
  struct Case {
    std::string_view member, value, contents;
  };
  const Case cases[] = {{"XmlContents", table, table},
                        {"Contents", table, table},
                        {"CsvContents", "c,q\r\nr,1\r\n", table},
                        {"Contents", "", ""},
                        {"XmlContents", "", ""}};
  for (const Case& c : cases) {
    Author author;
    LiveControl control = author.make();
    ControlProperties properties(control);
    properties.set(c.member, c.value);
    EXPECT_EQ(properties.get("Contents"), c.contents);
    EXPECT_EQ(properties.get("XmlContents") == c.contents, !c.contents.empty());
    EXPECT_EQ(control.site().changed_properties.back(), "CustomProperties");

    const ControlRecord before = control.record();
    EXPECT_EQ(brief_outcome([&] { return properties.set("XmlContents", "<bad"), ""; }), "error 5");
    EXPECT_EQ(brief_outcome([&] { return properties.set("Contents", "<bad"), ""; }), "error 5");
    EXPECT_EQ(control.record(), before);
  }
}

TEST(ControlProperties, KeepTheTitlesWithTheContents) {
  struct Case {
    const char* name;
    std::string_view contents, stored;
  };
  const Case cases[] = {
      {"a table", table, "<xml><rows>c<row>r</></><cols>C&amp;<col>q</></><data>V<value>1</></></xml>"},
      {"no data, in place of which the component shows a sample", "", "<xml><rows></><cols>C&amp;</><data>V</></xml>"},
      {"data that the component cannot read", "<bad", "<bad"},
  };
  for (const Case& c : cases) {
    Author author;
    LiveControl control = author.make();
    control.control().SetProperty("Contents", c.contents);
    LiveControl loaded(author.session, control.record());
    ControlProperties properties(loaded);
    EXPECT_EQ(properties.get("rowTitle"), c.contents == table ? "c" : "") << c.name;
    for (const auto& [title, text] : {std::pair("colTitle", "C&"), std::pair("valueTitle", "V")}) {
      const std::string result =
          brief_outcome([&, title = title, text = text] { return properties.set(title, text), properties.get(title); });
      EXPECT_EQ(result, c.contents == "<bad" ? "error 5" : text) << c.name;
    }
    EXPECT_EQ(properties.get("Contents"), c.stored) << c.name;
  }
}

TEST(ControlProperties, NoTitleOfNoDataIsStored) {
  Author author;
  LiveControl control = author.make();
  ControlProperties properties(control);
  properties.set("Contents", "");
  const ControlRecord before = control.record();
  properties.set("rowTitle", "");
  EXPECT_EQ(properties.get("Contents"), "");
  EXPECT_EQ(control.record(), before);
}

TEST(ControlProperties, ANewNameIsSaved) {
  Author author;
  LiveControl control = author.make();
  ControlProperties(control).set("name", "Other");
  const ControlRecord record = control.record();
  EXPECT_EQ(record.name, "Other");
  EXPECT_EQ(record.state.front(), (std::pair<std::string, std::string>("AppletID", "Other")));
}

TEST(ControlProperties, ChangesMakeAFreshControlTheSame) {
  struct Case {
    const char* name;
    std::vector<std::pair<std::string, std::string>> set;
  };
  const Case cases[] = {
      {"nothing", {}},
      {"the type alone", {{"DiagramType", "3"}}},
      {"the type and data", {{"CsvContents", "a,b\r\nc,1\r\n"}, {"DiagramType", "2"}}},
      {"no data", {{"Contents", ""}}},
      {"a title", {{"colTitle", "x"}}},
      {"a place", {{"width", "7"}, {"height", "9"}, {"visible", "False"}}},
      {"texts and numbers",
       {{"FontName", "x\n<y>"}, {"xScaleMax", "0.1"}, {"negativeForeColor", "red"}, {"Reverse", "-1"}}},
      {"ratios", {{"WidthRatio", "50"}, {"HeightRatio", "33.25"}}},
      {"a selection", {{"RowSelection", "2"}, {"ColSelection", "0"}}},
      {"custom properties", {{"NOTE", "n"}, {"OWN", "2"}}},
  };
  for (const Case& c : cases) {
    Author author;
    LiveControl control = author.make();
    ControlProperties properties(control);
    for (const auto& [name, value] : c.set) properties.set(name, value, NewKeys::Accept);
    LiveControl loaded(author.session, control.record());

    LiveControl fresh = author.make();
    const auto changes = ControlProperties(loaded).changes_from(ControlProperties(fresh));
    EXPECT_EQ(changes.size(), c.set.size()) << c.name;
    for (const auto& [name, value] : changes) ControlProperties(fresh).set(name, value, NewKeys::Accept);
    EXPECT_EQ(fresh.record(), control.record()) << c.name;
  }
}

TEST(Suggestion, IsANearWord) {
  const std::vector<std::string> known = {"publish", "get", "set", "studio"};
  struct Case {
    std::string_view word, match;
  };
  const Case cases[] = {
      {"pubilsh", "publish"}, {"PUBLISH", "publish"}, {"gett", "get"}, {"stdio", "studio"}, {"xyz", ""}, {"", ""}};
  for (const Case& c : cases) EXPECT_EQ(closest_match(c.word, known), c.match) << c.word;
  EXPECT_EQ(closest_match(std::string(10000, 'x'), known), "");
}

}  // namespace
}  // namespace plexoras
