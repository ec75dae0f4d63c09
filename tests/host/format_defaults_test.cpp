#include "host/format_defaults.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace plexoras {
namespace {

// Settings in memory, which tell of every write.
struct LoggedStore final : SettingsStore {
  std::string read(std::string_view section, std::string_view key, std::string_view default_value) override {
    const auto found = values.find(std::string(section) + "/" + std::string(key));
    return found == values.end() ? std::string(default_value) : found->second;
  }
  void write(std::string_view section, std::string_view key, std::string_view value) override {
    const std::string name = std::string(section) + "/" + std::string(key);
    log += name + "=" + std::string(value) + " ";
    values[name] = value;
  }

  std::map<std::string, std::string> values;
  std::string log;
};

TEST(FormatDefaults, AreTheProductsOwnWhereNothingIsSaved) {
  LoggedStore store;
  const FormatDefaults saved = read_format_defaults(store);
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
    LoggedStore store;
    store.values = {{"Format/Format", std::string(c.type)}, {"Format/UseDefaultLocale", std::string(c.locale)}};
    EXPECT_EQ(read_format_defaults(store).type, c.code) << c.type;
    EXPECT_EQ(read_format_defaults(store).use_default_locale, c.use_default) << c.locale;
  }
}

TEST(FormatDefaults, AreSavedInOrderButNoDateType) {
  LoggedStore store;
  save_format_defaults(store, {.type = 3, .use_default_locale = false, .language = "de", .country = "DE"});
  EXPECT_EQ(store.log,
            "Format/Format=Number Format/UseDefaultLocale=false Format/Language=de Format/Country=DE Format/Variant= "
            "Format/Pattern=#,##0.00 ");
  for (const std::int32_t type : {5, 6, -1}) {
    save_format_defaults(store, {.type = type, .language = "fr", .pattern = "0"});
    const FormatDefaults saved = read_format_defaults(store);
    EXPECT_EQ(std::to_string(saved.type) + "/" + saved.language + "/" + saved.pattern, "3/fr/0") << type;
  }
}

}  // namespace
}  // namespace plexoras
