#include <gtest/gtest.h>

#include <filesystem>

#include "authoring/publisher.h"
#include "authoring_fixture.h"
#include "host/temporary_directory.h"

namespace plexoras {
namespace {

namespace fs = std::filesystem;
using Outcome = PublishedFile::Outcome;

// Every file with its target, without the folder; pages in brackets.
std::string files_of(const TemporaryDirectory& folder, const std::vector<std::string>& paths, std::string output) {
  std::vector<std::string> full;
  for (const std::string& path : paths) full.push_back(folder.path(path));
  if (!output.empty()) output = folder.path(output);
  std::string text;
  for (const SiteFile& file : site_files(full, output)) {
    const std::string line = file.source + (file.target == file.source ? "" : ">" + file.target);
    text += (file.is_page ? "[" + line + "]" : line) + " ";
  }
  return replaced_all(text, folder.path() + "/", "");
}

TEST(SiteFiles, MirrorASite) {
  Author author;
  const TemporaryDirectory folder;
  for (const std::string_view path : {"s/.git", "s/sub", "s/out"}) fs::create_directories(folder.path(path));
  const std::string page = page_of(author.make("A").record(), "old");
  for (const std::string_view name : {"s/b.html", "s/sub/a.HTM", "s/out/left.html", "s/.git/x.html"}) {
    folder.write(name, page);
  }
  folder.write("s/logo.png", std::string_view("\0\r\n", 3));

  EXPECT_EQ(files_of(folder, {"s"}, ""), "[s/b.html] [s/out/left.html] [s/sub/a.HTM] ");
  EXPECT_EQ(files_of(folder, {"s"}, "s/out"),
            "[s/b.html>s/out/b.html] [s/sub/a.HTM>s/out/sub/a.HTM] s/logo.png>s/out/logo.png ");
  EXPECT_EQ(files_of(folder, {"s/sub", "s/logo.png", "s/sub"}, "o"), "[s/sub/a.HTM>o/a.HTM] [s/logo.png>o/logo.png] ");

  Publisher publisher(author.session);
  std::string outcomes;
  for (int round = 0; round < 2; ++round) {
    for (const SiteFile& file : site_files({folder.path("s")}, folder.path("s/out"))) {
      const PublishedFile result = file.is_page ? publisher.publish_page(file.source, file.target)
                                                : publisher.copy_file(file.source, file.target);
      outcomes += result.outcome == Outcome::Written ? "W" : result.outcome == Outcome::Copied ? "C" : "U";
      EXPECT_TRUE(result.problems.empty()) << file.source;
    }
  }
  EXPECT_EQ(outcomes, "WWCUUU");
  EXPECT_EQ(folder.read("s/b.html"), page) << "the source stays";
  EXPECT_EQ(folder.read("s/out/logo.png"), std::string_view("\0\r\n", 3));
  EXPECT_EQ(folder.read("s/out/sub/a.HTM"), folder.read("s/out/b.html"));
}

TEST(SiteFiles, RefuseWhatCannotBeDone) {
  const TemporaryDirectory folder;
  for (const std::string_view path : {"a", "b"}) {
    fs::create_directory(folder.path(path));
    folder.write(std::string(path) + "/x.html", "");
  }
  const auto refusal = [&](const std::vector<std::string>& paths, const std::string& output) {
    return replaced_all(outcome([&] { return files_of(folder, paths, output); }), folder.path() + "/", "");
  };
  EXPECT_EQ(refusal({"a", "b"}, ""), "[a/x.html] [b/x.html] ");
  EXPECT_EQ(refusal({"a", "b"}, "o"), "error 5: a/x.html and b/x.html would both be written to o/x.html");
  EXPECT_EQ(refusal({"a", "none"}, ""), "[a/x.html] [none] ");  // told when it is published

  // Links are followed once, a second one and one to nothing are told, and what a crash left is no part of the site.
  fs::create_directory_symlink("../b", folder.path("a/link"));
  fs::create_directory_symlink("..", folder.path("a/up"));
  fs::create_symlink("gone", folder.path("a/lost"));
  fs::create_directory_symlink("../b", folder.path("a/twice"));
  folder.write("a/.x.html.plexoras-abcdef", "");
  const auto listed = [&](const std::string& output) {
    std::string text;
    for (const SiteFile& file : site_files({folder.path("a")}, output)) {
      text += file.source + (file.problem.empty() ? " " : "! ");
    }
    return replaced_all(text, folder.path() + "/", "");
  };
  EXPECT_EQ(listed(folder.path("o")), "a/link/x.html a/up/b/x.html a/x.html a/lost! a/twice! ");
  EXPECT_EQ(listed(""), "a/x.html ");  // in place nothing outside the folder is written

  // What another source would be lost by.
  folder.write("a/w.html", "");
  fs::create_directory(folder.path("q"));
  fs::create_symlink("../a/x.html", folder.path("q/w.html"));
  fs::create_symlink("../a/x.html", folder.path("q/x.html"));
  EXPECT_EQ(listed(folder.path("q")), "a/link/x.html a/up/b/x.html a/w.html! a/x.html a/lost! a/twice! ");
}

}  // namespace
}  // namespace plexoras
