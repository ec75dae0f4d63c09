#include "pages/format_page.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "page_fixture.h"

namespace plexoras {
namespace {

// A chart that has two languages and shows a sample with its settings around it.
class LoggedChart final : public LoggedObject {
public:
  using LoggedObject::LoggedObject;

protected:
  Variant answer(std::string_view member, Arguments arguments) override {
    const auto text = [&](std::string_view name) { return values.find(name)->second.to_text(); };
    if (member == "getLanguages") return StringList{"de-Deutsch", "en-English"};
    if (member == "getCountries") {
      return text("FormatLanguage") == "de" ? StringList{"AT-Österreich", "DE-Deutschland"}
                                            : StringList{"GB-United Kingdom", "US-United States"};
    }
    if (member == "getVariants") return text("FormatCountry") == "US" ? StringList{"", "POSIX-Computer"} : StringList{};
    if (member == "chooseLanguage") {
      values["FormatLanguage"] = arguments[0];
      values["FormatCountry"] = arguments[0] == Variant("de") ? "DE" : "US";
    }
    if (member == "chooseCountry") values["FormatCountry"] = arguments[0];
    if (member == "formatSample")
      return text("FormatType") + "|" + text("FormatPattern") + "|" + arguments[0].to_text();
    return {};
  }
};

struct FormatTest : testing::Test, PageFixture {
  FormatTest() {
    control->values["diagram"] = Variant(ObjectRef(live_chart));
    live_chart->values = {{"FormatType", std::int32_t{0}},
                          {"FormatUseDefaultLocale", "False"},
                          {"FormatLanguage", "en"},
                          {"FormatCountry", "GB"},
                          {"FormatVariant", ""},
                          {"FormatPattern", "0.0"},
                          {"FormatDateStyle", std::int32_t{1}}};
  }

  void load() {
    page.select({control});
    log.take();
  }

  /// What the chart and the control were told since the last call.
  std::string told() {
    std::string told;
    std::istringstream lines(log.take());
    for (std::string line; std::getline(lines, line);) {
      if (line.find("put ") != std::string::npos || line.find("call choose") != std::string::npos) told += line + "\n";
    }
    return entries(told);
  }

  std::string saved(std::string_view key) { return host.settings[std::string("Format/").append(key)]; }

  std::shared_ptr<LoggedChart> live_chart = std::make_shared<LoggedChart>(log);
  Format page{host};
};

TEST_F(FormatTest, ShowsWhatTheChartReports) {
  page.select({control});
  EXPECT_EQ(log.take(), entries(R"(
      diagram.call getLanguages; get FormatLanguage; call getCountries; get FormatCountry
      call getVariants; get FormatVariant; get FormatType; get FormatUseDefaultLocale; get FormatDateStyle
      get FormatPattern; diagram.call formatSample 1234.5)"));
  EXPECT_EQ(entries(seen(page)), entries(R"(
      cbPattern; txtPattern 0.0; chkUseDefaultLocale 0; cmbLanguage en-English; cmbCountry GB-United Kingdom
      cmbVariant; (cmbDateStyle Long); txtRaw 1234.5; txtFormatted 0|0.0|1234.5)"));
  EXPECT_FALSE(page.Changed);

  live_chart->values["FormatType"] = std::int32_t{5};
  live_chart->values["FormatUseDefaultLocale"] = "True";
  live_chart->values["FormatCountry"] = "FR";
  page.select({control});
  EXPECT_EQ(told(), "") << "loading tells the chart nothing, whatever it selects";
  EXPECT_EQ(entries(seen(page)), entries(R"(
      cbDate; (txtPattern 0.0); chkUseDefaultLocale 1; (cmbLanguage en-English); (cmbCountry FR)
      (cmbVariant ); cmbDateStyle Long; txtRaw 1234.5; txtFormatted 5|0.0|1234.5)"));
  EXPECT_FALSE(page.Changed);
}

TEST_F(FormatTest, AnEditReachesTheChartAndMarksThePage) {
  struct Case {
    const char* name;
    std::function<bool(Format&)> act;
    std::string_view told, shown;
  };
  const Case cases[] = {
      {"currency", [](Format& p) { return p.cbCurrency.user_click(); }, "diagram.put FormatType Long 1",
       "(txtPattern 0.0)"},
      {"percent", [](Format& p) { return p.cbPercent.user_click(); }, "diagram.put FormatType Long 2", "cbPercent"},
      {"number", [](Format& p) { return p.cbNumber.user_click(); }, "diagram.put FormatType Long 3", "cbNumber"},
      {"default", [](Format& p) { return p.cbDefault.user_click(); }, "diagram.put FormatType Long 4", "cbDefault"},
      {"date", [](Format& p) { return p.cbDate.user_click(); }, "diagram.put FormatType Long 5", "cmbDateStyle Long"},
      {"date style", [](Format& p) { return p.cbDate.user_click() && p.cmbDateStyle.user_select(3); },
       "diagram.put FormatType Long 5; diagram.put FormatDateStyle Long 3", "cmbDateStyle Short"},
      {"current locale", [](Format& p) { return p.chkUseDefaultLocale.user_click(); },
       "put FormatUseDefaultLocale String True; put FormatLanguage String en; put FormatCountry String GB; "
       "put FormatVariant String",
       "(cmbLanguage en-English)"},
      {"language", [](Format& p) { return p.cmbLanguage.user_select(0); }, "diagram.call chooseLanguage de",
       "cmbCountry DE-Deutschland"},
      {"country", [](Format& p) { return p.cmbCountry.user_select(1); }, "diagram.call chooseCountry US",
       "cmbCountry US-United States"},
      {"variant", [](Format& p) { return p.cmbCountry.user_select(1) && p.cmbVariant.user_select(1); },
       "diagram.call chooseCountry US; diagram.put FormatVariant String POSIX", "cmbVariant POSIX-Computer"},
      {"a typed code", [](Format& p) { return p.cmbLanguage.user_type("DE"); }, "diagram.call chooseLanguage de",
       "cmbLanguage de-Deutsch"},
      {"a typed name", [](Format& p) { return p.cmbCountry.user_type("united states"); },
       "diagram.call chooseCountry US", "cmbCountry US-United States"},
      {"a typed variant", [](Format& p) { return p.cmbCountry.user_select(1) && p.cmbVariant.user_type("posix"); },
       "diagram.call chooseCountry US; diagram.put FormatVariant String POSIX", "cmbVariant POSIX-Computer"},
      {"a variant without an entry", [](Format& p) { return p.cmbVariant.user_type("1901-x"); },
       "diagram.put FormatVariant String 1901", "cmbVariant 1901-x"},
      {"a code and the beginning of a name", [](Format& p) { return p.cmbLanguage.user_type("de-D"); },
       "diagram.call chooseLanguage de", "cmbLanguage de-Deutsch"},
      {"a typed text without an entry", [](Format& p) { return p.cmbCountry.user_type("éàü"); },
       "diagram.call chooseCountry éà", "cmbCountry éàü"},
      {"no country", [](Format& p) { return p.cmbCountry.user_type(""); }, "diagram.call chooseCountry ''",
       "cmbCountry"},
      {"pattern", [](Format& p) { return p.txtPattern.user_type("#'"); }, "diagram.put FormatPattern String #'",
       "txtFormatted 0|#'|1234.5"},
  };
  const auto original = live_chart->values;
  for (const Case& c : cases) {
    live_chart->values = original;
    load();
    EXPECT_TRUE(c.act(page)) << c.name;
    EXPECT_EQ(told(), entries(c.told)) << c.name;
    const std::string shown = "\n" + entries(seen(page));
    EXPECT_NE(shown.find("\n" + std::string(c.shown) + "\n"), std::string::npos) << c.name << shown;
    EXPECT_TRUE(page.Changed) << c.name;
  }
}

TEST_F(FormatTest, ASampleIsNoEdit) {
  load();
  EXPECT_TRUE(page.txtRaw.user_type("7"));
  EXPECT_EQ(log.take(), "diagram.call formatSample 7\n") << "a key asks for no lists";
  EXPECT_EQ(page.txtFormatted.text(), "0|0.0|7");
  EXPECT_FALSE(page.txtFormatted.user_type("8"));
  EXPECT_FALSE(page.Changed);
}

TEST_F(FormatTest, AppliesToTheControlInOrder) {
  load();
  page.cmbLanguage.user_select(0);
  page.cbPercent.user_click();
  log.take();
  page.apply();
  EXPECT_EQ(entries(log.take()), entries(R"(
      put FormatLanguage String de; put FormatCountry String DE; put FormatVariant String
      put FormatUseDefaultLocale Boolean False; put FormatType Long 2)"));
  EXPECT_FALSE(page.Changed);
}

TEST_F(FormatTest, AClickThatLeavesNothingSelectedChoosesNothing) {
  live_chart->values["FormatType"] = std::int32_t{5};
  load();
  const std::string before = seen(page);
  for (ComboBox* list : {&page.cmbLanguage, &page.cmbCountry, &page.cmbDateStyle}) {
    EXPECT_TRUE(list->user_select(-1)) << list->name();
    EXPECT_EQ(told(), "") << list->name();
    EXPECT_EQ(seen(page), before) << list->name();
    EXPECT_FALSE(page.Changed) << list->name();
  }
}

TEST_F(FormatTest, ShowsTheChartsCodesByTheirEntriesOrThemselves) {
  struct Case {
    const char* code;
    const char* shown;
  };
  for (const auto& [code, shown] : {Case{"DE", "de-Deutsch"}, Case{"tlh", "tlh-tlh"}, Case{"zz", "zz"},
                                    Case{"deutsch", "deutsch-deutsch"}, Case{"zh-Hant", "zh-Hant"}}) {
    live_chart->values["FormatLanguage"] = code;
    load();
    EXPECT_EQ(page.cmbLanguage.text(), shown) << code;
  }
}

TEST_F(FormatTest, CodesWithoutEntriesStayWhole) {
  live_chart->values["FormatLanguage"] = "tlh";
  live_chart->values["FormatCountry"] = "ZZ";
  live_chart->values["FormatVariant"] = "1901";
  load();
  EXPECT_EQ(page.cmbLanguage.text() + " " + page.cmbCountry.text() + " " + page.cmbVariant.text(),
            "tlh-tlh ZZ 1901-1901");
  page.apply();
  EXPECT_EQ(told(), entries(R"(
      put FormatLanguage String tlh; put FormatCountry String ZZ; put FormatVariant String 1901
      put FormatUseDefaultLocale Boolean False; put FormatType Long 0)"));
}

TEST_F(FormatTest, SavesTheDefaults) {
  load();
  page.cmbCountry.user_select(1);
  page.cmbVariant.user_select(1);
  page.cbPercent.user_click();
  page.cmdSetDefault.user_click();
  EXPECT_EQ(saved("Format") + "/" + saved("UseDefaultLocale") + "/" + saved("Language") + "/" + saved("Country") + "/" +
                saved("Variant") + "/" + saved("Pattern"),
            "Percent/false/en/US/POSIX/0.0");

  page.cmbLanguage.user_select(0);
  page.cbDate.user_click();
  page.chkUseDefaultLocale.user_click();
  page.cmdSetDefault.user_click();
  EXPECT_EQ(saved("Format") + "/" + saved("UseDefaultLocale") + "/" + saved("Language"), "Percent/true/de");
}

TEST_F(FormatTest, ResetsToTheDefaults) {
  load();
  page.cmbLanguage.user_select(0);
  live_chart->values["FormatVariant"] = "POSIX";
  page.select({control});
  log.take();
  page.cmdGetdefault.user_click();
  EXPECT_EQ(told(), entries(R"(
      diagram.put FormatType Long 4; put FormatUseDefaultLocale String True
      call chooseLanguage en; call chooseCountry US
      put FormatVariant String; put FormatPattern String #,##0.00)"));
  EXPECT_EQ(entries(seen(page)), entries(R"(
      cbDefault; (txtPattern #,##0.00); chkUseDefaultLocale 1; (cmbLanguage en-English); (cmbCountry US-United States)
      (cmbVariant ); (cmbDateStyle Long); txtRaw 1234.5; txtFormatted 4|#,##0.00|1234.5)"));
  EXPECT_TRUE(page.Changed);

  // What is saved need not be among the entries.
  host.settings = {{"Format/Format", "Number"},
                   {"Format/UseDefaultLocale", "True"},
                   {"Format/Language", "tlh"},
                   {"Format/Country", "419"},
                   {"Format/Variant", "POSIX"}};
  page.cmdGetdefault.user_click();
  EXPECT_EQ(page.cmbLanguage.text() + " " + page.cmbCountry.text() + " " + page.cmbVariant.text(),
            "tlh-tlh 419-419 POSIX-POSIX");
  EXPECT_TRUE(page.cmbLanguage.is_usable());
  EXPECT_TRUE(page.cbNumber.value());
}

TEST_F(FormatTest, AnErrorComesOutAndLeavesThePageInUse) {
  load();
  log.failing = {"FormatType"};
  EXPECT_EQ(outcome([&] { return page.cbNumber.user_click() ? "" : "unusable"; }), "error 5: refused");
  EXPECT_TRUE(page.Changed) << "the page shows other than the chart";

  log.failing = {"FormatPattern"};
  load();
  page.cbPattern.user_click();
  page.Changed = false;
  EXPECT_EQ(outcome([&] { return page.txtPattern.user_type("0") ? "" : "unusable"; }), "error 5: refused");
  EXPECT_TRUE(page.Changed);

  log.failing.clear();
  page.Changed = false;
  const Variant style = live_chart->values["FormatDateStyle"];
  live_chart->values.erase("FormatDateStyle");
  EXPECT_EQ(brief_outcome([&] { return page.cbCurrency.user_click() ? "" : "unusable"; }), "error 438");
  EXPECT_TRUE(page.Changed) << "the edit has reached the chart";
  live_chart->values["FormatDateStyle"] = style;
  page.cbPercent.user_click();
  EXPECT_EQ(live_chart->values["FormatType"], Variant(std::int32_t{2})) << "the guard stands again";

  Format unselected(host);
  EXPECT_EQ(brief_outcome([&] { return unselected.cbDate.user_click() ? "" : "unusable"; }), "error 91");
}

}  // namespace
}  // namespace plexoras
