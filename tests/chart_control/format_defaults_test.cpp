#include "chart_control/format_defaults.h"

#include <gtest/gtest.h>

#include "template/engine_fixture.h"

namespace plexoras {
namespace {

TEST(FormatDefaults, AreTheProductsOwnWhereNothingIsSaved) {
  FakePlatform host;
  const FormatDefaults saved = read_format_defaults(host);
  EXPECT_EQ(saved.type, 4);
  EXPECT_TRUE(saved.use_default_locale);
  EXPECT_EQ(saved.language + "/" + saved.country + "/" + saved.variant + "/" + saved.pattern, "en/US//#,##0.00");
}

TEST(FormatDefaults, ReadTypesAndTruthStrictly) {
  struct Case {
    std::string_view type;
    std::int32_t code;
    std::string_view locale;
    bool use_default;
  };
  const Case cases[] = {
      {"Pattern", 0, "true", true}, {"Currency", 1, "True", false}, {"Percent", 2, "false", false},
      {"Number", 3, "", false},     {"Default", 4, "1", false},     {"Date", 0, " true", false},
      {"percent", 0, "true", true}, {"", 0, "true", true},
  };
  for (const Case& c : cases) {
    FakePlatform host;
    host.settings = {{"Format/Format", std::string(c.type)}, {"Format/UseDefaultLocale", std::string(c.locale)}};
    EXPECT_EQ(read_format_defaults(host).type, c.code) << c.type;
    EXPECT_EQ(read_format_defaults(host).use_default_locale, c.use_default) << c.locale;
  }
}

}  // namespace
}  // namespace plexoras
