#include "authoring/data_source.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <new>

#include "authoring/refresher.h"
#include "authoring_fixture.h"
#include "host/atomic_file.h"
#include "host/temporary_directory.h"

namespace plexoras {
namespace {

// The text of `bytes`, given in pieces of `size`.
DataBytes in_pieces(std::string bytes, std::size_t size) {
  return {"d.csv", [=](const auto& take) {
            for (std::size_t at = 0; at < bytes.size(); at += size) take(std::string_view(bytes).substr(at, size));
          }};
}

TEST(DataSource, ImportsPiecesAsAskedFor) {
  const std::string utf16(
      "\xFF\xFE"
      "a\0;\0\xE9\0\n\0"
      "1\0;\0"
      "2\0",
      16);
  const auto document = [](const std::string& corner, const std::string& column) {
    return "<xml><rows>" + corner + "<row>1</></><cols><col>" + column + "</></><data><value>2</></></xml>";
  };
  struct Case {
    const char* name;
    std::string bytes;
    ImportRequest request;
    std::string result;
  };
  const DelimitedHints labels{.first_row = true, .first_col = true};
  DelimitedHints semicolon = labels, encoded = labels;
  semicolon.delimiter = ";";
  encoded.delimiter = ";";
  encoded.encoding = "UTF-16";
  const Case cases[] = {
      {"defaults", "a;b", {}, "<xml><rows><row/></><cols></><data><value>a;b</></></xml>"},
      {"named", "a;b\n1;2\n", {semicolon}, document("a", "b")},
      {"an encoding", utf16, {encoded}, document("a", "\xC3\xA9")},
      {"nothing, guessed", "", {{}, true}, "<xml><cols/><rows/><data/></>"},
      {"guessed", utf16, {labels, true}, document("a", "\xC3\xA9")},
      {"a guess is overridden",
       "a;b\n1;2\n",
       {{.delimiter = ",", .first_row = false, .first_col = false}, true},
       "<xml><rows><row/><row/></><cols></><data><value>a;b</><value>1;2</></></xml>"},
      {"an unknown encoding", "a", {{.encoding = "UTF-9"}}, "error 5: Cannot Import File: "},
      {"a cut-off character", utf16.substr(0, 15), {encoded}, "error 5: Cannot Import File: d.csv: "},
      {"a line without its label", "a\n\nb\n", {{.first_col = true}}, "error 9: Cannot Import File: d.csv:2: "},
  };
  for (const Case& c : cases) {
    for (const std::size_t size : {1U, 3U, 1000U}) {
      const std::string result =
          outcome([&] { return import_data(in_pieces(c.bytes, size), c.request).document.take_text(); });
      const bool fails = c.result.starts_with("error");
      EXPECT_EQ(fails ? result.substr(0, c.result.size()) : result, c.result) << c.name << ", pieces of " << size;
    }
  }
}

TEST(DataSource, AGuessedImportIsThatOfTheSettingsItNames) {
  std::string bytes = "day;price\n";
  while (bytes.size() < 3'000'000) bytes += "2024-01-01;1,5\n";
  ImportedData guessed = import_data(in_pieces(bytes, 70'000), {{}, true});
  const ImportSettings& used = guessed.settings;
  EXPECT_EQ(used.format.delimiter, ";");
  EXPECT_EQ(guessed.document.take_text(),
            import_data(in_pieces(bytes, bytes.size()), request_for(used)).document.take_text());
}

TEST(DataSource, WarnsOnceOfBytesThatAPageCannotShow) {
  struct Case {
    std::string bytes;
    std::size_t line;  // 0: no warning
  };
  const Case cases[] = {
      {"a\r\nb\rc\nd\xC3\xA9 \xF0\x9F\x98\x80\n", 0},
      {"a\r\nb\rc\nd\xE9\ne\xE9\n", 4},
      {"\xE9", 1},
      {"a\n\nb \xC3", 3},
      {"a\n" + std::string(5000, 'x') + "\nb\xC3\n", 3},
      {"\xEF\xBB\xBF\xFF\n\xFF", 1},
  };
  for (const Case& c : cases) {
    for (const std::size_t size : {1U, 2U, 3U, 10000U}) {
      const std::vector<ImportWarning> warnings = import_data(in_pieces(c.bytes, size), {}).warnings;
      ASSERT_EQ(warnings.size(), c.line == 0 ? 0U : 1U) << c.bytes.substr(0, 20) << ", pieces of " << size;
      EXPECT_EQ(warnings.empty() ? 0 : warnings[0].line, c.line) << c.bytes.substr(0, 20) << ", pieces of " << size;
    }
  }
}

TEST(DataSource, TooLittleMemoryIsAFailedImport) {
  const DataBytes bytes{"d.csv", [](const auto&) { throw std::bad_alloc(); }};
  EXPECT_EQ(outcome([&] { return import_data(bytes, {}).document.take_text(); }).substr(0, 43),
            "error 14: Cannot Import File: out of memory");
}

// The custom properties of a data source, a line each.
std::string remembered(LiveControl& control) {
  std::string text;
  for (const std::string_view key : data_source_keys) {
    const std::string value = control.control().GetProperty(key);
    if (!value.empty()) text += std::string(key) + "=" + value + "\n";
  }
  return text;
}

TEST(DataSource, IsKeptInThePage) {
  Author author;
  struct Case {
    ImportSettings settings;
    const char* text;
  };
  const Case cases[] = {
      {{}, "DATASOURCE=a b.csv\n"},
      {{{"\t", "\"", true, true}, "UTF-16LE"},
       "DATASOURCE=a b.csv\nDATADELIMITER=tab\nDATAQUALIFIER=doublequote\nDATALABELS=first-row first-col\n"
       "DATAENCODING=UTF-16LE\n"},
      {{{"::", "~", false, true}, ""}, "DATASOURCE=a b.csv\nDATADELIMITER=::\nDATAQUALIFIER=~\nDATALABELS=first-col\n"},
      {{{" ", "", true, false}, ""}, "DATASOURCE=a b.csv\nDATADELIMITER=blank\nDATALABELS=first-row\n"},
  };
  LiveControl control = author.make();
  for (const Case& c : cases) {
    remember_source(control.control(), DataSource{"a b.csv", c.settings});
    LiveControl again(author.session, control.record());
    EXPECT_EQ(remembered(again), c.text);
    const std::optional<DataSource> source = remembered_source(again.control());
    ASSERT_TRUE(source);
    EXPECT_EQ(source->path, "a b.csv");
    EXPECT_EQ(source->settings.format.delimiter, c.settings.format.delimiter);
    EXPECT_EQ(source->settings.format.qualifier, c.settings.format.qualifier);
    EXPECT_EQ(source->settings.format.first_row, c.settings.format.first_row);
    EXPECT_EQ(source->settings.format.first_col, c.settings.format.first_col);
    EXPECT_EQ(source->settings.encoding, c.settings.encoding);
  }
  remember_source(control.control(), std::nullopt);
  EXPECT_EQ(control.record(), author.make().record());
  EXPECT_FALSE(remembered_source(control.control()));
}

TEST(DataSource, IsFoundFromThePagesFolder) {
  const TemporaryDirectory folder;
  for (const char* name : {"site/data", "site/sub", "elsewhere/deep"}) {
    std::filesystem::create_directories(folder.path(name));
  }
  folder.write("site/data/x.csv", "1");
  folder.write("elsewhere/deep/y.csv", "1");
  folder.write("site/data/p.html", "");
  folder.write("site/a\\b.csv", "1");
  std::filesystem::create_symlink("../data/p.html", folder.path("site/sub/linked.html"));
  std::filesystem::create_directory_symlink(folder.path("elsewhere/deep"), folder.path("site/link"));
  struct Case {
    const char* name;
    std::string page, file, remembered;
  };
  const Case cases[] = {
      {"beside the page", "site/data/p.html", "site/data/x.csv", "x.csv"},
      {"below it", "site/p.html", "site/data/x.csv", "data/x.csv"},
      {"above it", "site/sub/p.html", "site/data/x.csv", "../data/x.csv"},
      {"written with detours", "site/sub/../p.html", "site/sub/../data/x.csv", "data/x.csv"},
      {"with backslashes", "site/p.html", "site\\data\\x.csv", "data/x.csv"},
      {"through a link as it is written", "site/p.html", "site/link/y.csv", "link/y.csv"},
      {"a name with a backslash", "site/p.html", "site/a\\b.csv", "a\\b.csv"},
      {"from a page that is a link", "site/sub/linked.html", "site/data/x.csv", "x.csv"},
      {"from behind a link", "site/link/p.html", "site/data/x.csv", "../../site/data/x.csv"},
  };
  for (const Case& c : cases) {
    const std::string page = folder.path(c.page);
    const std::string way = path_to_remember(page, folder.path(c.file));
    EXPECT_EQ(way, c.remembered) << c.name;
    EXPECT_EQ(outcome([&] { return read_file(path_of_source(page, way)); }), "1") << c.name;
  }
  EXPECT_EQ(path_of_source("p.html", "/a/b.csv"), "/a/b.csv");
  EXPECT_EQ(path_of_source("site/p.html", "..\\b.csv"), "site/../b.csv");
}

TEST(Refresher, ReadsASourceOncePerPageAndKeepsTitles) {
  const TemporaryDirectory folder;
  const std::string data = folder.path("d.csv");
  Author author;
  author.host.files[data] = "c,x\nr,1\n";
  const auto chart = [&](std::string_view name, bool has_titles) {
    LiveControl control = author.make(name);
    ContentsTable table = read_contents("<xml><rows>c<row>r</></><cols><col>x</></><data><value>1</></></xml>");
    if (has_titles) table.value_title = "euros";
    ControlProperties(control).set("Contents", write_contents(table));
    remember_source(control.control(), DataSource{"d.csv", {{",", "", true, true}, ""}});
    return page_of(control.record());
  };
  const std::string page = folder.write("p.html", chart("A", true) + chart("B", false));
  const std::string bytes = read_file(page);
  const auto refresh = [&] {
    std::string text;
    for (const RefreshedChart& each : Refresher(author.session).refresh_page(page).charts) {
      text += each.name + ": " + to_text(each.changes) + "\n";
    }
    return text;
  };
  EXPECT_EQ(refresh(), "A: unchanged\nB: unchanged\n");
  EXPECT_EQ(read_file(page), bytes);

  author.host.files[data] = "c,x\nr,2\n";
  author.host.reads.clear();
  EXPECT_EQ(refresh(), "A: 1 cell changed\nB: 1 cell changed\n");
  EXPECT_EQ(author.host.reads, std::vector<std::string>{data});
  const Page after = Page::read(page);
  const auto contents = [&](std::size_t index) {
    return LiveControl(author.session, after.controls()[index].record).control().GetProperty("Contents");
  };
  EXPECT_EQ(contents(0), "<xml><rows>c<row>r</></><cols><col>x</></><data>euros<value>2</></></xml>");
  EXPECT_EQ(contents(1), "<xml><rows>c<row>r</></><cols><col>x</></><data><value>2</></></xml>");
  EXPECT_EQ(refresh(), "A: unchanged\nB: unchanged\n");
}

}  // namespace
}  // namespace plexoras
