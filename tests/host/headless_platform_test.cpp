#include "host/headless_platform.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "environment.h"
#include "host/headless_site.h"
#include "outcome.h"
#include "temporary_directory.h"

namespace plexoras {
namespace {

class Widget : public AutomationObject {
public:
  Variant get(std::string_view) override { return "widget"; }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "Widget"); }
  Variant call(std::string_view member, Arguments) override { no_such_member(member, "Widget"); }
};

TEST(NativeFileSystem, TakesEitherSeparator) {
  const TemporaryDirectory folder;
  std::filesystem::create_directory(folder.path("DTC"));
  folder.write("DTC/DIAGRAM.DAT", "[TEMPLATE]");
  ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
  NativeFileSystem files(folder.path("DTC"));
  EXPECT_EQ(files.module_directory(), folder.path("DTC") + "/");
  EXPECT_EQ(files.read(folder.path("") + "\\DTC\\DIAGRAM.DAT"), "[TEMPLATE]");
  EXPECT_TRUE(files.can_read(folder.path("DTC\\DIAGRAM.DAT")));
  EXPECT_TRUE(files.can_read(folder.path("pipe"))) << "and it must not wait for a writer";
  EXPECT_FALSE(files.can_read(folder.path("DTC"))) << "a directory is no file";
  EXPECT_FALSE(files.can_read(folder.path("none")));
  EXPECT_FALSE(files.can_read(""));
  EXPECT_EQ(brief_outcome([&] { return files.read(folder.path("none")); }), "error 53");
}

TEST(DefaultModuleDirectory, IsTheProgramsWhenNothingIsInstalled) {
  const std::string directory = default_module_directory();
  EXPECT_TRUE(directory.starts_with('/') && directory.ends_with('/')) << directory;
  EXPECT_TRUE(std::filesystem::is_directory(directory)) << directory;
}

TEST(ShortDate, FollowsTheEnvironment) {
  const EnvironmentVariable locale("LC_ALL", "C");
  struct Case {
    const char *epoch, *date;
  };
  const Case cases[] = {
      {"1763769599", "11/21/25"},
      {"0", "01/01/70"},
      {"today", "error 5: SOURCE_DATE_EPOCH must be a whole number of seconds since 1970, not \"today\""},
      {"1e9", "error 5: SOURCE_DATE_EPOCH must be a whole number of seconds since 1970, not \"1e9\""},
      {"9223372036854775807", "error 6: Overflow: SOURCE_DATE_EPOCH lies outside the calendar"},
  };
  for (const Case& c : cases) {
    const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", c.epoch);
    const EnvironmentVariable zone("TZ", "UTC-14");
    EXPECT_EQ(outcome([] { return short_date_source()(); }), c.date);
  }
  const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", nullptr);
  const EnvironmentVariable unknown("LC_ALL", "xx_XX.nowhere");
  const std::string today = short_date_source()();
  EXPECT_EQ(today.size(), 8U) << today;
  EXPECT_NE(today, "01/01/70");
}

TEST(RandomSource, RepeatsWithItsSeed) {
  const std::function<double()> one = random_source(7);
  const std::function<double()> copy = one;
  const std::function<double()> same = random_source(7);
  const double first = one();
  EXPECT_EQ(first, same());
  EXPECT_EQ(copy(), same()) << "a copy goes on, it does not begin again";
  for (int i = 0; i < 1000; ++i) {
    const double number = one();
    EXPECT_TRUE(number >= 0 && number < 1) << number;
  }
}

TEST(HeadlessPlatform, OwnsWhatItGives) {
  const TemporaryDirectory folder;
  HeadlessPlatform host({.settings_path = folder.path("settings"), .module_directory = folder.path(), .seed = 1});
  host.platform().settings.write("Default", "PATH", "/opt");
  EXPECT_EQ(folder.read("settings"), "[Default]\nPATH=/opt\n");
  EXPECT_EQ(host.platform().files.module_directory(), folder.path() + "/");
  EXPECT_EQ(host.platform().random(), random_source(1)());

  host.components().add("Plexoras.Widget", [] { return std::make_shared<Widget>(); });
  EXPECT_EQ(host.platform().components.create("Plexoras.Widget")->get("name"), Variant("widget"));
  EXPECT_EQ(outcome([&] { return host.components().create("Plexoras.None")->get("name").to_text(); }),
            "error 429: Component can't create object: \"Plexoras.None\" is not a component of this program");

  ::testing::internal::CaptureStderr();
  host.platform().show_message("It failed.", "Error");
  host.platform().show_message("Untitled");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Error\nIt failed.\nUntitled\n");
}

TEST(HeadlessSite, TellsItsDataAndRefusesWhatItDoesNotKnow) {
  ComponentRegistry components;
  components.add("Plexoras.Widget", [] { return std::make_shared<Widget>(); });
  HeadlessSite site(components);
  site.set_extender_name("Sales");
  EXPECT_EQ(site.extender_name(), "Sales");
  EXPECT_FALSE(site.user_mode());

  site.name.reset();
  site.visible.reset();
  const char* no_member = "error 438: Object doesn't support this property or method: ";
  EXPECT_EQ(outcome([&] { return site.extender_name(); }), std::string(no_member) + "\"Name\"");
  EXPECT_THROW(site.set_extender_name("Costs"), AutomationError);
  EXPECT_THROW(site.extender_visible(), AutomationError);

  const ObjectRef child = site.add_child("Plexoras.Widget", "diagram");
  site.show_child("diagram", true);
  EXPECT_TRUE(site.children.at("diagram").visible);
  EXPECT_EQ(site.children.at("diagram").object, child);
  const auto added = [&](const char* component, const char* name) {
    return brief_outcome([&] { return site.add_child(component, name)->get("name").to_text(); });
  };
  EXPECT_EQ(added("Plexoras.Widget", "diagram"), "error 5");
  EXPECT_EQ(added("Plexoras.None", "other"), "error 429");
  site.remove_child("diagram");
  EXPECT_THROW(site.remove_child("diagram"), AutomationError);
  EXPECT_THROW(site.show_child("diagram", true), AutomationError);
  EXPECT_TRUE(site.children.empty());
}

}  // namespace
}  // namespace plexoras
