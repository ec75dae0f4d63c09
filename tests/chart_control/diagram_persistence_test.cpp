#include <gtest/gtest.h>

#include <set>

#include "chart_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

using View = ChartFixture::View;

constexpr std::string_view properties = "[PROPERTY]\n#DEFINE Contents x\n#DEFINE Contents ''\n#DEFINE TITLE Chart\n";

/// A bag of texts that tells of every use, as in "TITLE" (read) and "TITLE=Sales(Chart)" (written over a default).
class LoggingBag final : public PropertyBag {
public:
  Variant read(std::string_view key, const Variant& default_value) override {
    log += std::string(key) + "(" + default_value.to_text() + ") ";
    if (key == failing) throw AutomationError(RunTimeError::PathFileAccess, "no " + std::string(key));
    const auto value = values.find(key);
    return value == values.end() ? default_value : Variant(value->second);
  }
  void write(std::string_view key, const Variant& value, const Variant& default_value) override {
    const std::string default_text = default_value.is_nothing() ? "always" : default_value.to_text();
    log += std::string(key) + "=" + value.to_text() + "(" + default_text + ") ";
  }
  std::vector<std::string> keys() const override {
    std::vector<std::string> keys;
    for (const auto& [key, value] : values) keys.push_back(key);
    return keys;
  }
  bool keeps_every_byte() const override { return keeps_bytes; }

  bool keeps_bytes = true;
  std::string failing;
  std::map<std::string, std::string, std::less<>> values;
  std::string log;
};

TEST(DiagramPersistence, WritesInItsOrderAgainstItsDefaults) {
  ChartFixture f(View::Design, properties);
  f.initialised();
  f.chart.put("XmlStyle", "<style/>");
  f.chart.put("ColSelection", "2");
  f.chart.SetProperty("TITLE", "Sales");
  f.chart.SetProperty("MENU", "<MENU/>");
  f.chart.SetProperty("Contents", "a\x02");
  f.chart.appletId();

  LoggingBag bag;
  f.chart.WriteProperties(bag);
  EXPECT_EQ(bag.log,
            "AppletID=Sales() XmlStyle=<style/>(always) ColSelection=2(-1) RowSelection=-1(-1) "
            "Contents=a\x02() TITLE=Sales(Chart) MENU=<MENU/>() ");

  LoggingBag texts;
  texts.keeps_bytes = false;
  f.chart.SetProperty("Contents", "a\x02\x03\x04<row>");
  f.chart.WriteProperties(texts);
  EXPECT_NE(texts.log.find("Contents=a<row><col><value><row>() "), std::string::npos) << texts.log;
}

TEST(DiagramPersistence, DropsDefaults) {
  ChartFixture f(View::Design, properties);
  f.initialised();
  MemoryPropertyBag bag;
  f.chart.WriteProperties(bag);
  EXPECT_EQ(bag.keys(), (StringList{"AppletID", "XmlStyle"}));
}

TEST(DiagramPersistence, ReadsInItsOrder) {
  struct Case {
    const char* name;
    View view;
    std::string_view contents, log;
  };
  const Case cases[] = {
      {"a design view shows samples first, then what is accepted", View::Design, "<xml>1</xml>",
       "get XmlStyle\nput XmlStyle String <s/>\nid 367\ncall UseSampleContents\n"
       "call isValidXmlContents <xml>1</xml>\nput XmlContents String <xml>1</xml>\nid 367\n"
       "put ColSelection Integer 4\nput RowSelection Integer -1\nid 367\n"},
      {"refused contents leave the samples", View::Design, "bad",
       "get XmlStyle\nput XmlStyle String <s/>\nid 367\ncall UseSampleContents\ncall isValidXmlContents bad\n"
       "put ColSelection Integer 4\nput RowSelection Integer -1\nid 367\n"},
      {"without a view there is an object all the same", View::None, "",
       "get XmlStyle\nput XmlStyle String <s/>\ncall isValidXmlContents \n"
       "put ColSelection Integer 4\nput RowSelection Integer -1\n"},
  };
  for (const Case& c : cases) {
    ChartFixture f(c.view, properties);
    if (c.view == View::None) f.initialised();
    LoggingBag bag;
    bag.values = {{"XmlStyle", "<s/>"}, {"ColSelection", "4"}, {"AppletID", "Old"}};
    if (!c.contents.empty()) bag.values.emplace("Contents", c.contents);
    f.chart.ReadProperties(bag);
    EXPECT_EQ(f.log.take(), c.log) << c.name;
    EXPECT_EQ(bag.log, "AppletID() XmlStyle() Contents() TITLE(Chart) ColSelection(-1) RowSelection(-1) ") << c.name;
    EXPECT_EQ(f.site.name, "Sales") << c.name;
  }
}

TEST(DiagramPersistence, MakesAnObjectWhereThereIsNoDesignView) {
  ChartFixture f(View::None, properties);
  LoggingBag bag;
  f.chart.ReadProperties(bag);
  EXPECT_NE(f.chart.diagram(), nullptr);
  EXPECT_EQ(f.chart.getDiagram(), nullptr);
  EXPECT_EQ(f.log.lines.find("UseSampleContents"), std::string::npos);
}

TEST(DiagramPersistence, KeepsWhatIsMissingFromTheBag) {
  ChartFixture f(View::Design, properties);
  f.initialised();
  f.chart.put("XmlStyle", "<mine/>");
  f.chart.put("RowSelection", "7");
  f.chart.SetProperty("TITLE", "Mine");
  f.chart.SetProperty("EXTRA", "mine");
  MemoryPropertyBag empty;
  f.chart.ReadProperties(empty);
  EXPECT_EQ(f.chart.get("XmlStyle"), Variant("<mine/>"));
  EXPECT_EQ(f.chart.get("RowSelection"), Variant(std::int16_t{-1}));
  EXPECT_EQ(listing(*f.chart.CustomProperties()), "Contents=;TITLE=Chart;") << "custom properties start afresh";
  EXPECT_EQ(f.chart.get("XmlContents"), Variant("<xml>sample</xml>"));
}

TEST(DiagramPersistence, KeepsKeysThatTheTemplateDoesNotKnow) {
  for (const bool keeps_bytes : {true, false}) {
    ChartFixture f(View::Design, properties);
    LoggingBag bag;
    bag.keeps_bytes = keeps_bytes;
    bag.values = {{"AppletID", "A"},  {"ColSelection", "1"}, {"OLD", "a<row>b"}, {"RowSelection", "1"},
                  {"TITLE", "<col>"}, {"XmlStyle", "<s/>"},  {"ZERO", ""}};
    f.chart.ReadProperties(bag);
    const std::string expected = keeps_bytes ? "Contents=;TITLE=<col>;OLD=a<row>b;" : "Contents=;TITLE=\3;OLD=a\2b;";
    EXPECT_EQ(listing(*f.chart.CustomProperties()), expected);
  }
}

TEST(DiagramPersistence, StopsAtTheReadThatFails) {
  ChartFixture f(View::Design, properties);
  LoggingBag bag;
  bag.failing = "TITLE";
  EXPECT_EQ(outcome([&] { return f.chart.ReadProperties(bag), ""; }), "error 75: no TITLE");
  EXPECT_EQ(bag.log, "AppletID() XmlStyle() Contents() TITLE(Chart) ");
  EXPECT_EQ(f.log.lines.find("isValidXmlContents"), std::string::npos);
}

TEST(DiagramPersistence, GoesThroughHexadecimalText) {
  ChartFixture f(View::Design, properties);
  f.initialised();
  f.chart.put("XmlStyle", "\n<s/>");
  f.chart.put("RowSelection", "3");
  f.chart.SetProperty("Contents", std::string("<xml>\0\2\xFF<row>", 13));
  f.chart.SetProperty("OWN", "\n");
  const std::string state = f.chart.call("GetPropertiesBytes").to_text();
  EXPECT_EQ(state.find_first_not_of("0123456789ABCDEF"), std::string::npos);
  EXPECT_NE(state.find("0A3C732F3E"), std::string::npos);

  ChartFixture other(View::None, properties);
  other.chart.call_with("SetPropertiesBytes", {state});
  EXPECT_EQ(listing(*other.chart.CustomProperties()), listing(*f.chart.CustomProperties()));
  EXPECT_EQ(other.chart.get("XmlContents"), Variant(f.chart.GetProperty("Contents")));
  EXPECT_EQ(other.chart.GetPropertiesBytes(), state);

  struct Refused {
    std::string name, text;
  };
  const Refused refused[] = {{"half a byte", state + "0"},
                             {"no digit", "ZZ" + state.substr(2)},
                             {"cut off", state.substr(0, state.size() - 2)},
                             {"more than a bag", state + "00"},
                             {"not a bag", "0A"},
                             {"empty", ""}};
  f.forget();
  for (const Refused& c : refused) {
    EXPECT_EQ(brief_outcome([&] { return f.chart.SetPropertiesBytes(c.text), ""; }), "error 5") << c.name;
    EXPECT_EQ(f.log.take() + f.announced(), "") << c.name;
    EXPECT_EQ(f.chart.GetPropertiesBytes(), state) << c.name;
    f.forget();
  }
}

}  // namespace
}  // namespace plexoras
