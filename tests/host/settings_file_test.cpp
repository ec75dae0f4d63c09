#include "host/settings_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "environment.h"
#include "outcome.h"
#include "temporary_directory.h"

namespace plexoras {
namespace {

TEST(SettingsFile, GivesEveryTextBack) {
  const TemporaryDirectory folder;
  const std::string path = folder.path("new/folders/settings");
  const std::string texts[] = {
      "plain",   "",   " ",   " outer ",      "\tx\t", "a=b",          "[a]",
      "]",       "#x", "; x", "C:\\new\\x41", "\\",    "two\r\nlines", std::string("\0\x01\x7F\xC3\xA9", 5),
      "#,##0.00"};
  SettingsFile written(path);
  for (const std::string& text : texts) {
    written.write(text, "key", "as section");
    written.write("section", text, "as key");
    written.write("value", "key", text);
    EXPECT_EQ(SettingsFile(path).read("value", "key", "absent"), text);
  }
  SettingsFile read(path);
  for (const std::string& text : texts) {
    EXPECT_EQ(read.read(text, "key", "absent"), "as section") << text;
    EXPECT_EQ(read.read("section", text, "absent"), "as key") << text;
  }
}

TEST(SettingsFile, ReadsWhatPeopleWrite) {
  const TemporaryDirectory folder;
  SettingsFile settings(folder.write("settings",
                                     "early = lost\r\n"
                                     "[ Format ]\r\n"
                                     "  Pattern = #,##0.00 \r\n"
                                     "Country=\r\n"
                                     "Language=en\n"
                                     "Language=de\n"
                                     "#Variant=no\n"
                                     "bad=\\q\n"
                                     "bad\\x4=\\\n"
                                     "[Default]\n"
                                     "PATH=C:\\\\DTC"));
  struct Case {
    const char *section, *key, *value;
  };
  const Case cases[] = {
      {"Format", "Pattern", "#,##0.00"}, {"Format", "Country", ""},        {"Format", "Language", "de"},
      {"Format", "#Variant", "absent"},  {"Format", "Variant", "absent"},  {"Format", "bad", "absent"},
      {"Format", "bad\\x4", "absent"},   {"Default", "PATH", "C:\\DTC"},   {"", "early", "absent"},
      {"format", "Pattern", "absent"},   {"Default", "Pattern", "absent"},
  };
  for (const Case& c : cases) EXPECT_EQ(settings.read(c.section, c.key, "absent"), c.value) << c.section << c.key;
}

TEST(SettingsFile, ChangesOneLineAndKeepsTheRest) {
  const TemporaryDirectory folder;
  SettingsFile settings(
      folder.write("settings", "# mine\n\n[Default]\nPATH=/a\nwhat is this\n\n[Format]\nX=1\n\\q=\n"));
  settings.write("Default", "PATH", "/b");
  settings.write("Default", "New", "2");
  settings.write("Other", "Y", "3");
  EXPECT_EQ(folder.read("settings"),
            "# mine\n\n[Default]\nPATH=/b\nNew=2\nwhat is this\n\n[Format]\nX=1\n\\q=\n[Other]\nY=3\n");
  EXPECT_EQ(folder.listing(), "settings ");
}

TEST(SettingsFile, KeepsWhatOthersHaveWrittenSince) {
  const TemporaryDirectory folder;
  SettingsFile one(folder.path("settings"));
  SettingsFile other(folder.path("settings"));
  EXPECT_EQ(one.read("s", "theirs", "none"), "none") << "a missing file is empty";
  other.write("s", "theirs", "1");
  one.write("s", "ours", "2");
  EXPECT_EQ(one.read("s", "theirs", "none"), "1");
  EXPECT_EQ(folder.read("settings"), "[s]\ntheirs=1\nours=2\n");
}

TEST(SettingsFile, SaysWhenItCannotKeepASetting) {
  const TemporaryDirectory folder;
  folder.write("file", "");
  const auto written = [](const std::string& path) {
    return brief_outcome([&] {
      SettingsFile(path).write("s", "k", "v");
      return "done";
    });
  };
  EXPECT_EQ(written(""), "error 75");
  EXPECT_EQ(written(folder.path("file/settings")), "error 75");
  EXPECT_EQ(written(folder.path()), "error 75");
  EXPECT_EQ(SettingsFile("").read("s", "k", "default"), "default");
  EXPECT_EQ(SettingsFile(folder.path("file/settings")).read("s", "k", "default"), "default");

  // Readable as missing, but nothing can be made there.
  std::filesystem::create_symlink("nowhere/else", folder.path("link"));
  SettingsFile settings(folder.path("link/settings"));
  EXPECT_EQ(settings.read("s", "k", "default"), "default");
  EXPECT_THROW(settings.write("s", "k", "v"), AutomationError);
  EXPECT_EQ(settings.read("s", "k", "default"), "default") << "what was not kept is not read either";
}

TEST(SettingsFile, LiesWhereConfigurationIsKept) {
  struct Case {
    const char *config_home, *home, *path;
  };
  const Case cases[] = {
      {"/etc/me", "/users/me", "/etc/me/PlexorasDTC/settings"},
      {nullptr, "/users/me", "/users/me/.config/PlexorasDTC/settings"},
      {"relative", "/users/me", "/users/me/.config/PlexorasDTC/settings"},
      {nullptr, nullptr, ""},
  };
  for (const Case& c : cases) {
    const EnvironmentVariable config_home("XDG_CONFIG_HOME", c.config_home);
    const EnvironmentVariable home("HOME", c.home);
    EXPECT_EQ(SettingsFile::default_path(), c.path);
  }
}

}  // namespace
}  // namespace plexoras
