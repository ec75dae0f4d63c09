// An author at the page "Format" of a real chart.

#include <gtest/gtest.h>

#include "authoring_fixture.h"
#include "host/environment.h"
#include "pages/format_page.h"

namespace plexoras {
namespace {

struct FormatPageAuthor : testing::Test, Author {
  FormatPageAuthor() { select(control); }

  void select(LiveControl& edited) {
    page.select({ObjectRef(ObjectRef(), &edited.control())});  // the control lives longer
  }

  EnvironmentVariable locale{"LC_ALL", "en_GB.UTF-8"};
  LiveControl control = make();
  Format page{host};
};

TEST_F(FormatPageAuthor, SeesEachEditInTheSample) {
  EXPECT_TRUE(page.cbDefault.value());
  EXPECT_EQ(page.txtPattern.text() + " " + page.cmbLanguage.text() + " " + page.cmbCountry.text(),
            "#,##0.00 en-English US-United States");
  EXPECT_FALSE(page.cmbLanguage.user_select(0)) << "the current locale is in use";

  struct Step {
    const char* name;
    std::function<bool(Format&)> act;
    std::string_view formatted;
  };
  const Step steps[] = {
      {"currency of the environment", [](Format& p) { return p.cbCurrency.user_click(); }, "£1,234.50"},
      {"own locale", [](Format& p) { return p.chkUseDefaultLocale.user_click(); }, "$1,234.50"},
      {"half a name", [](Format& p) { return p.cmbLanguage.user_type("d"); }, "$1,234.50"},
      {"a name", [](Format& p) { return p.cmbLanguage.user_type("Deutsch"); }, "1.234,50\u00A0€"},
      {"a code", [](Format& p) { return p.cmbCountry.user_type("ch"); }, "CHF\u00A01’234.50"},
      {"percent", [](Format& p) { return p.cbPercent.user_click() && p.txtRaw.user_type("0.5"); }, "50%"},
      {"text", [](Format& p) { return p.txtRaw.user_type("2024-05-17"); }, "2024-05-17"},
      {"date", [](Format& p) { return p.cbDate.user_click(); }, "17.05.2024"},
      {"full", [](Format& p) { return p.cmbDateStyle.user_select(0); }, "Freitag, 17. Mai 2024"},
      {"number", [](Format& p) { return p.cbNumber.user_click() && p.txtRaw.user_type("1234.5"); }, "1’234.5"},
      {"pattern", [](Format& p) { return p.cbPattern.user_click(); }, "1’234.50"},
      {"an empty one", [](Format& p) { return p.txtPattern.user_type(""); }, "1234.5"},
      {"half a pattern", [](Format& p) { return p.txtPattern.user_type("0.0'"); },
       "Pattern: a quote (') or a fill (*) is not complete"},
      {"a pattern", [](Format& p) { return p.txtPattern.user_type("0.0' h'"); }, "1234.5 h"},
  };
  for (const Step& step : steps) {
    page.Changed = false;
    EXPECT_TRUE(step.act(page)) << step.name;
    EXPECT_EQ(page.txtFormatted.text(), step.formatted) << step.name;
    EXPECT_EQ(page.Changed, std::string_view(step.name) != "text") << step.name;
    EXPECT_EQ(page.cmbDateStyle.is_usable(), page.cbDate.value()) << step.name;
  }
  EXPECT_EQ(page.cmbCountry.text(), "CH-Schweiz");
  EXPECT_TRUE(page.cmbCountry.user_type("AT"));
  EXPECT_TRUE(page.cmbLanguage.user_type("en"));
  EXPECT_EQ(page.cmbCountry.text(), "AT-Austria") << "English is at home there too";
}

TEST_F(FormatPageAuthor, KeepsTheFormatInTheDocumentAndAsTheDefault) {
  LiveControl fresh = make(), copy = make();
  page.chkUseDefaultLocale.user_click();
  page.cmbLanguage.user_type("de");
  page.cmbCountry.user_type("US");  // not among the entries
  page.cbPattern.user_click();
  page.txtPattern.user_type("#,##0.0");
  page.cbDate.user_click();
  page.cmbDateStyle.user_select(3);
  page.cbPattern.user_click();
  page.cmdSetDefault.user_click();
  page.apply();

  LiveControl loaded(session, control.record());
  EXPECT_EQ(loaded.record(), control.record());
  const ControlProperties properties(loaded);
  EXPECT_EQ(properties.get("FormatLanguage") + "/" + properties.get("FormatCountry") + "/" +
                properties.get("FormatUseDefaultLocale") + "/" + properties.get("FormatDateStyle"),
            "de/US/False/3");

  // Property by property it comes out the same, too.
  ControlProperties copied(copy);
  for (const auto& [name, value] : properties.changes_from(ControlProperties(fresh))) copied.set(name, value);
  EXPECT_EQ(copied.get("XmlStyle"), properties.get("XmlStyle"));

  LiveControl next = make();
  select(next);
  EXPECT_EQ(page.txtFormatted.text() + " " + page.cmbLanguage.text() + " " + page.cmbCountry.text(),
            "1.234,5 de-Deutsch US")
      << "a new chart begins with the saved defaults";
  page.cbDefault.user_click();
  page.cmdGetdefault.user_click();
  EXPECT_TRUE(page.cbPattern.value());
}

}  // namespace
}  // namespace plexoras
