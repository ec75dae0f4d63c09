// How values are shown: locales, lists to choose them from, dates, formats, and the chart's members for them.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "applet/date_text.h"
#include "applet/diagram_applet.h"
#include "applet/locale_name.h"
#include "applet/value_format.h"
#include "fixtures/fixtures.h"
#include "host/environment.h"
#include "refusal.h"

namespace plexoras {
namespace {

using Settings = FormatSettings;

// No locale but the one that a test sets.
struct Environment {
  EnvironmentVariable all{"LC_ALL", nullptr}, numbers{"LC_NUMERIC", nullptr}, money{"LC_MONETARY", nullptr},
      dates{"LC_TIME", nullptr}, language{"LANG", nullptr};
};

// "de_DE" or "en_US_POSIX" as settings.
Settings in_locale(std::string_view locale, std::int32_t type) {
  Settings settings;
  settings.type = type;
  settings.use_current_locale = false;
  for (std::string* code : {&settings.language, &settings.country, &settings.variant}) {
    const std::size_t end = std::min(locale.find('_'), locale.size());
    *code = locale.substr(0, end);
    locale.remove_prefix(std::min(end + 1, locale.size()));
  }
  return settings;
}

TEST(LocaleName, TakesAnyCodes) {
  struct Case {
    std::string_view language, country, variant, name;
  };
  const std::string_view embedded_end("de\0DE", 5);
  const Case cases[] = {
      {"de", "DE", "", "de_DE"},
      {"DE", "de", "", "de_DE"},
      {"en", "US", "posix", "en_US_POSIX"},
      {"en", "", "POSIX", "en__POSIX"},
      {"es", "419", "", "es_419"},
      {"iw", "IL", "", "he_IL"},  // an old code
      {"zz", "DE", "", "en_DE"},  // a language that nobody knows
      {"", "", "", "en"},
      {"Deutsch", "DE", "", "en_DE"},
      {"de@currency=JPY", "DE", "", "en_DE"},
      {"de", "DEU", "", "de"},
      {"de", "D_@x=y", "@numbers=thai", "de"},
      {embedded_end, embedded_end, embedded_end, "en"},
      {"../../x", "\xff\xfe", "a b", "en"},
  };
  EnvironmentVariable german("LC_ALL", "de_DE.UTF-8");
  for (const Case& c : cases) EXPECT_EQ(locale_name(c.language, c.country, c.variant), c.name) << c.language;
}

TEST(LocaleName, TakesTheEnvironments) {
  Environment none;
  EXPECT_EQ(current_locale_name(LocaleUse::Numbers), "en_US");
  EnvironmentVariable language("LANG", "fr_CA.UTF-8");
  EnvironmentVariable money("LC_MONETARY", "de_AT@euro");
  EXPECT_EQ(current_locale_name(LocaleUse::Numbers), "fr_CA");
  EXPECT_EQ(current_locale_name(LocaleUse::Dates), "fr_CA");
  EXPECT_EQ(current_locale_name(LocaleUse::Money), "de_AT");
  for (const auto& [value, name] : {std::pair{"C.UTF-8", "en_US"},
                                    {"POSIX", "en_US"},
                                    {"", "fr_CA"},
                                    {"ja", "ja"},
                                    {"none-such.thing@at_all", "en"},
                                    {"_._", "en"}}) {
    EnvironmentVariable all("LC_ALL", value);
    EXPECT_EQ(current_locale_name(LocaleUse::Numbers), name) << value;
  }
}

TEST(LocaleLists, NameLanguagesAndCountriesInTheirOwnTongue) {
  LocaleLists lists;
  EnvironmentVariable french("LC_ALL", "fr_FR.UTF-8");
  for (const char* entry : {"de-Deutsch", "en-English", "es-español", "ja-日本語", "nb-norsk bokmål", "yue-粵語"}) {
    EXPECT_EQ(std::ranges::count(lists.languages(), entry), 1) << entry;
  }
  EXPECT_TRUE(std::ranges::is_sorted(lists.languages()));
  EXPECT_EQ(&lists.languages(), &lists.languages()) << "made once";

  struct Case {
    std::string_view language, entry, last;
  };
  const Case cases[] = {
      {"de", "DE-Deutschland", "LU-Luxemburg"},  {"DE", "AT-Österreich", "LU-Luxemburg"},
      {"en", "US-United States", "ZW-Zimbabwe"}, {"no", "NO-Norge", "NO-Norge"},
      {"eo", "DE-Germanujo", "ZW-Zimbabvo"},  // at home nowhere
      {"zz", "DE-Germany", "ZW-Zimbabwe"},       {"", "DE-Germany", "ZW-Zimbabwe"},
      {"de-DE", "DE-Germany", "ZW-Zimbabwe"},
  };
  for (const Case& c : cases) {
    const StringList& countries = lists.countries(c.language);
    EXPECT_EQ(std::ranges::count(countries, c.entry), 1) << c.language;
    EXPECT_EQ(countries.back(), c.last) << c.language;
    EXPECT_TRUE(std::ranges::is_sorted(countries)) << c.language;
    EXPECT_EQ(&lists.countries(c.language), &countries) << c.language;
  }
  EXPECT_EQ(lists.variants("en", "US"), (StringList{"", "POSIX-Computer"}));
  EXPECT_EQ(lists.variants("de", "DE"), StringList{""});
  EXPECT_EQ(lists.variants("?", "?"), StringList{""});
  EXPECT_EQ(&lists.variants("EN", "us"), &lists.variants("en", "US"));
}

TEST(LocaleLists, EveryLanguageHasEntriesThatFormat) {
  LocaleLists lists;
  std::set<std::string> codes;
  for (const std::string& language : lists.languages()) {
    const std::string code = language.substr(0, language.find('-'));
    EXPECT_TRUE(codes.insert(code).second) << language;
    EXPECT_LT(code.size() + 1, language.size()) << language;
    ASSERT_FALSE(lists.countries(code).empty()) << language;
    const std::string likeliest = lists.likeliest_country(code);
    EXPECT_TRUE(likeliest.empty() || has_entry(lists.countries(code), likeliest)) << language << " " << likeliest;
    EXPECT_FALSE(ValueFormat().show("1234.5", in_locale(code, Settings::Currency)).empty()) << language;
  }
}

TEST(DateText, ReadsDaysAndMilliseconds) {
  constexpr double day = 86400000.0;
  struct Case {
    std::string_view text;
    std::optional<double> date;
  };
  const Case cases[] = {
      {"1970-01-01", 0.0},
      {"2024-05-17", 19860 * day},
      {"2024-05-17T23:30:00.5-05:00", 19860 * day},
      {"0001-01-01", -719162 * day},
      {"2024-02-29", 19782 * day},
      {"-000-01-01", {}},
      {"-000", 0.0},  // a number
      {"1715904000000", 1715904000000.0},
      {"-1.5e3", -1500.0},
      {"8.64e15", 8.64e15},
  };
  for (const Case& c : cases) EXPECT_EQ(date_of(c.text), c.date) << c.text;
}

TEST(ValueFormat, ShowsNumbersAndDates) {
  EnvironmentVariable zone("TZ", "Pacific/Kiritimati");
  ValueFormat format;
  for (const nlohmann::json& c : fixtures("formats.json")) {
    Settings settings = in_locale(text_of(c, "locale"), c["type"].get<std::int32_t>());
    settings.date_style = c.value("dateStyle", std::int32_t{Settings::Medium});
    settings.pattern = text_of(c, "pattern");
    EXPECT_EQ(format.show(text_of(c, "text"), settings), text_of(c, "shown")) << c;
  }
}

TEST(ValueFormat, TakesBytesThatAreNoText) {
  ValueFormat format;
  EXPECT_EQ(format.show("\xff", in_locale("de_DE", Settings::Default)), "\xff");
  Settings settings = in_locale("en_US", Settings::Pattern);
  settings.pattern = "\xff";
  EXPECT_EQ(format.show("-1234.567", settings), "-\uFFFD1235");
}

TEST(ValueFormat, TakesTheCurrentLocaleByUse) {
  Environment none;
  EnvironmentVariable numbers("LC_NUMERIC", "de_DE.UTF-8"), money("LC_MONETARY", "en_GB.UTF-8"),
      dates("LC_TIME", "fr_FR.UTF-8");
  const auto shown = [](std::int32_t type, std::string_view text) {
    Settings settings = in_locale("ja_JP", type);
    settings.use_current_locale = true;
    settings.date_style = Settings::Long;
    return ValueFormat().show(text, settings);
  };
  EXPECT_EQ(shown(Settings::Number, "1234.5"), "1.234,5");
  EXPECT_EQ(shown(Settings::Currency, "1234.5"), "£1,234.50");
  EXPECT_EQ(shown(Settings::Date, "2024-05-17"), "17 mai 2024");
}

std::string place(DiagramApplet& chart) {
  return chart.get("FormatLanguage").to_text() + "/" + chart.get("FormatCountry").to_text() + "/" +
         chart.get("FormatVariant").to_text();
}

TEST(FormatMembers, AChoiceBringsWhatFollowsFromIt) {
  DiagramApplet chart;
  struct Case {
    std::string_view member, code, place;
  };
  const Case cases[] = {
      {"chooseLanguage", "de", "de/DE/"},                                      // US is not among its countries
      {"chooseCountry", "AT", "de/AT/"},  {"chooseLanguage", "en", "en/AT/"},  // English is at home in Austria too
      {"chooseLanguage", "pt", "pt/BR/"}, {"chooseLanguage", "eo", "eo/BR/"},  // at home nowhere: the country stays
      {"chooseLanguage", "z", "z/BR/"},                                        // half typed
      {"chooseLanguage", "", "/BR/"},     {"chooseLanguage", "no", "no/NO/"},
      {"chooseCountry", "?", "no/?/"},    {"chooseLanguage", "en", "en/US/"},
  };
  for (const Case& c : cases) {
    chart.call_with(c.member, {c.code});
    EXPECT_EQ(place(chart), c.place) << c.member << " " << c.code;
  }
  chart.put("FormatVariant", "POSIX");
  for (const char* typed : {"US", "", "U", "us"}) {
    chart.call_with("chooseCountry", {typed});
    EXPECT_EQ(place(chart), "en/" + std::string(typed) + "/POSIX") << "half typed, it changes nothing else";
  }
  chart.call_with("chooseLanguage", {"e"});
  EXPECT_EQ(place(chart), "e/us/POSIX");
  chart.call_with("chooseLanguage", {"en"});
  EXPECT_EQ(place(chart), "en/us/POSIX");
  chart.call_with("chooseCountry", {"GB"});
  EXPECT_EQ(place(chart), "en/GB/");

  // The properties themselves stay what they are put to, in any order.
  chart.put("FormatVariant", "x");
  chart.put("FormatCountry", "ZZ");
  chart.put("FormatLanguage", "de");
  EXPECT_EQ(place(chart), "de/ZZ/x");
}

TEST(FormatMembers, ShowTheChartsOwnFormat) {
  DiagramApplet chart(std::make_shared<LocaleLists>());
  EXPECT_EQ(chart.get("FormatDateStyle"), Variant(std::int32_t{2}));
  const auto sample = [&](std::string_view text) { return chart.call_with("formatSample", {text}).to_text(); };
  EXPECT_EQ(sample("1234.50"), "1234.5");
  chart.put("FormatUseDefaultLocale", "No such word");
  chart.call_with("chooseLanguage", {"de"});
  chart.put("FormatType", 0);
  EXPECT_EQ(sample("1234.5"), "1.234,50");
  chart.put("FormatPattern", "0.0");
  EXPECT_EQ(sample("1234.5"), "1234,5") << "a change of format is noticed";
  chart.put("FormatType", 5);
  chart.put("FormatDateStyle", "1");
  EXPECT_EQ(sample("2024-05-17"), "17. Mai 2024");
  EXPECT_EQ(chart.get("FormatPattern"), Variant("0.0")) << "the author's own, whatever the type";
  EXPECT_EQ(chart.call("getCountries").to_text_list().front(), "AT-Österreich");
  EXPECT_EQ(chart.call("getVariants"), Variant(StringList{""}));
  EXPECT_GT(chart.call("getLanguages").to_text_list().size(), 100u);

  DiagramApplet old;
  old.put("FormatDateStyle", 0);
  old.put("XmlStyle", "<xml><FormatType>5</></xml>");
  EXPECT_EQ(old.get("FormatDateStyle"), Variant(std::int32_t{0})) << "a document of before leaves the style alone";
  old.put("XmlStyle", chart.get("XmlStyle"));
  EXPECT_EQ(old.get("FormatDateStyle"), Variant(std::int32_t{1}));

  EXPECT_EQ(refusal([&] { chart.call("formatSample"); }), "5 formatSample cannot be called with 0 arguments");
  EXPECT_EQ(refusal([&] { chart.call_with("chooseLanguage", {StringList{}}); }).substr(0, 18), "13 chooseLanguage:");
}

}  // namespace
}  // namespace plexoras
