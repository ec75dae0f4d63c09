#include "template/template_files.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

TEST(JoinPath, PutsASeparatorBetween) {
  struct Case {
    std::string_view directory, file, path;
  };
  const Case cases[] = {
      {"", "a", "a"},     {"d", "a", "d\\a"}, {"d\\", "a", "d\\a"},
      {"d/", "a", "d/a"}, {"d", "", "d\\"},   {"/", "DTC\\a", "/DTC\\a"},
  };
  for (const Case& c : cases) EXPECT_EQ(JoinPath(c.directory, c.file), c.path);
}

TEST(TemplateFiles, LooksInThreePlaces) {
  FakePlatform host;
  host.settings["Default/PATH"] = "C:\\Plexoras";
  const auto located = [&] { return TemplateFiles(host.platform).LocateTemplateFile("T.DAT"); };
  EXPECT_EQ(located(), "");
  host.files["T.DAT"] = "";
  EXPECT_EQ(located(), "T.DAT");
  host.files["/library/T.DAT"] = "";
  EXPECT_EQ(located(), "/library/T.DAT");
  host.files["C:\\Plexoras\\DTC\\T.DAT"] = "";
  EXPECT_EQ(located(), "C:\\Plexoras\\DTC\\T.DAT");
  host.settings.clear();
  EXPECT_EQ(located(), "/library/T.DAT");
  host.files["DTC\\T.DAT"] = "";
  EXPECT_EQ(located(), "DTC\\T.DAT");
}

TEST(TemplateFiles, DividesAFileIntoSections) {
  struct Case {
    const char* name;
    std::string_view file, section, text;
  };
  const Case cases[] = {
      {"a section that occurs twice", "[A]\nx\n[B]\ny\n[A]\nz\n", "A", "x\nz\n"},
      {"no line break at the end", "[A]\nx", "A", "x\n"},
      {"no such section", "[A]\nx\n", "B", ""},
      {"lines before the first header", "x\n[A]\ny\n", "A", "y\n"},
      {"a header alone", "[A]", "A", ""},
      {"a comment ends no section", "[A]\nx\n;c\ny\n; [B]\n ;z\n", "A", "x\ny\n ;z\n"},
      {"blank lines and indentation stay", "[A]\n\n  x \n\n", "A", "\n  x \n\n"},
      {"case counts", "[a]\nx\n[A]\ny\n", "A", "y\n"},
      {"blanks in a header count", "[A ]\nx\n[A]\ny\n", "A", "y\n"},
      {"and in what is asked for", "[A ]\nx\n[A]\ny\n", "A ", "x\n"},
      {"blanks behind a header make it a line", "[A]\nx\n[B] \ny\n", "A", "x\n[B] \ny\n"},
      {"blanks before it too", "[A]\nx\n [B]\ny\n", "A", "x\n [B]\ny\n"},
      {"a bracket alone is a line", "[A]\n[\n]\n", "A", "[\n]\n"},
      {"brackets inside a name", "[A]\nx\n[[B]]\ny\n", "[B]", "y\n"},
      {"a header without a name closes a section", "[A]\nx\n[]\ny\n", "A", "x\n"},
      {"the whole file", "x\n;c\n[A]\ny", "", "x\n;c\n[A]\ny\n"},
      {"an empty file", "", "", ""},
      {"a section of an empty file", "", "A", ""},
  };
  for (const Case& c : cases) {
    // The same lines, whatever ends them on the disk.
    for (const std::string_view line_end : {"\r\n", "\n", "\r"}) {
      FakePlatform host;
      host.files["T.DAT"] = replaced_all(c.file, "\n", line_end);
      EXPECT_EQ(TemplateFiles(host.platform).ReadSection("T.DAT", c.section), lines(c.text)) << c.name;
    }
  }
}

TEST(TemplateFiles, TakesEveryByteAndAnyMixOfLineEnds) {
  FakePlatform host;
  host.files["T.DAT"] = std::string("[A]\na\r\r\nb\n\rc\0\xFF\t\r\n\n", 18);
  TemplateFiles files(host.platform);
  EXPECT_EQ(files.ReadSection("T.DAT", "A"), std::string("a\r\n\r\nb\r\n\r\nc\0\xFF\t\r\n\r\n", 18));
}

TEST(TemplateFiles, ReadsAMissingFileAsAComment) {
  FakePlatform host;
  TemplateFiles files(host.platform);
  for (const std::string name : {"NOFILE.DAT", "", "a\\b"}) {
    EXPECT_EQ(files.ReadSection(name, "X"), "<!-- ERROR: NO TEMPLATE FILE " + name + "-->\r\n");
    EXPECT_EQ(files.ReadSection(name, ""), "<!-- ERROR: NO TEMPLATE FILE " + name + "-->\r\n");
  }
  EXPECT_EQ(files.paths_read(), StringList());
}

TEST(TemplateFiles, ReadsEachFileOnce) {
  FakePlatform host;
  host.files["/library/T.DAT"] = "[A]\r\nx\r\n";
  host.files["O.DAT"] = "[A]\r\ny\r\n";
  TemplateFiles files(host.platform);
  for (const char* name : {"T.DAT", "O.DAT", "T.DAT", "NO.DAT"}) files.ReadSection(name, "A");
  host.files["/library/T.DAT"] = "[A]\r\nchanged\r\n";
  bool missing = true;
  EXPECT_EQ(files.section("T.DAT", "A", &missing).text, "x\r\n");
  EXPECT_FALSE(missing);
  files.section("NO.DAT", "A", &missing);
  EXPECT_TRUE(missing);
  EXPECT_EQ(host.reads, (StringList{"/library/T.DAT", "O.DAT"}));
  EXPECT_EQ(files.paths_read(), host.reads);
  EXPECT_EQ(files.bytes_read(), 16u);
}

// The existence test can be followed by a refusal to read.
TEST(TemplateFiles, LeavesAnUnreadableFileToItsCaller) {
  struct Unreadable final : FileSystem {
    bool can_read(std::string_view) override { return true; }
    std::string read(std::string_view) override { throw AutomationError(RunTimeError::PathFileAccess); }
    std::string module_directory() override { return "/"; }
  } files;
  FakePlatform host;
  const Platform platform{host, files, host.components, {}, {}, &host};
  TemplateSession session(platform);
  IniSection section(session);
  EXPECT_EQ(brief_outcome([&] { return section.Read("T.DAT", "A"), std::string(); }), "error 75");
  section.SetContents("#INCLUDE A\r\n");
  EXPECT_EQ(section.GetContents(), "");
  EXPECT_EQ(host.messages, StringList{"Template Build Internal Error|An error occured near \r\n#INCLUDE A\r\n"});
}

}  // namespace
}  // namespace plexoras
