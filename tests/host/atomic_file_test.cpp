#include "host/atomic_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

#include "outcome.h"
#include "temporary_directory.h"

namespace plexoras {
namespace {

namespace fs = std::filesystem;

unsigned mode_of(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::string replaced(const std::string& path) {
  return outcome([&] {
    replace_file(path, "new");
    return "done";
  });
}

TEST(ReplaceFile, KeepsPermissionsAndLeavesNothingBeside) {
  const TemporaryDirectory folder;
  const mode_t mask = ::umask(027);
  replace_file(folder.path("fresh"), "1");
  ::umask(mask);
  EXPECT_EQ(mode_of(folder.path("fresh")), 0640U) << "as the process makes files";

  const std::string secret = folder.write("secret", "a longer old content");
  fs::permissions(secret, fs::perms(0604));
  replace_file(secret, std::string_view("n\0w", 3));
  EXPECT_EQ(mode_of(secret), 0604U);
  EXPECT_EQ(read_file(secret), std::string("n\0w", 3));
  EXPECT_EQ(folder.listing(), "fresh secret ");

  const std::string long_name(255, 'n');
  replace_file(folder.path(long_name), "new");
  EXPECT_EQ(folder.read(long_name), "new");
}

TEST(ReplaceFile, FollowsLinks) {
  const TemporaryDirectory folder;
  fs::create_directory(folder.path("real"));
  folder.write("real/page", "old");
  fs::create_symlink("real/page", folder.path("link"));
  fs::create_symlink(folder.path("link"), folder.path("link-to-link"));
  fs::create_symlink("real/later", folder.path("dangling"));
  fs::create_symlink("circle", folder.path("circle"));

  replace_file(folder.path("link-to-link"), "new");
  EXPECT_EQ(folder.read("real/page"), "new");
  EXPECT_TRUE(fs::is_symlink(folder.path("link")));
  replace_file(folder.path("dangling"), "new");
  EXPECT_EQ(folder.read("real/later"), "new");
  EXPECT_EQ(replaced(folder.path("circle")),
            "error 75: Path/File access error: " + folder.path("circle") + ": Too many levels of symbolic links");
}

TEST(ReplaceFile, RefusesWhatIsNoFileAndCleansUp) {
  const TemporaryDirectory folder;
  fs::create_directory(folder.path("folder"));
  ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
  const std::string start = "error 75: Path/File access error: ";
  EXPECT_EQ(replaced(folder.path("folder")), start + folder.path("folder") + ": Is a directory");
  EXPECT_EQ(replaced(folder.path("pipe")), start + folder.path("pipe") + ": Invalid argument");
  EXPECT_EQ(replaced(folder.path("none/x")),
            start + folder.path("none/x") + ": No such file or directory; make its folder first");
  EXPECT_EQ(folder.listing(), "folder pipe ");
}

TEST(ReplaceFile, LeavesTheOldContentWhenTheDiskIsFull) {
  const TemporaryDirectory folder;
  const std::string page = folder.write("page", "old");
  // A limit on the size of files stands in for the full disk.
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit tight{.rlim_cur = 2, .rlim_max = before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
  const std::string result = replaced(page);
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(result, "error 75: Path/File access error: " + page + ": File too large");
  EXPECT_EQ(folder.read("page"), "old");
  EXPECT_EQ(folder.listing(), "page ");
}

TEST(ReadFile, GivesEveryByteOrTheReason) {
  const TemporaryDirectory folder;
  const std::string bytes = std::string(70000, 'x') + std::string("\0\r\n", 3);
  EXPECT_EQ(read_file(folder.write("large", bytes)), bytes);
  EXPECT_EQ(read_file(folder.write("empty", "")), "");
  // Files of the system tell no size; they are read until they end.
  EXPECT_TRUE(read_file("/proc/self/status").ends_with('\n'));
  EXPECT_EQ(outcome([&] { return read_file(folder.path("none")); }),
            "error 53: File not found: " + folder.path("none") + ": No such file or directory");
  EXPECT_EQ(outcome([&] { return read_file(folder.path()); }),
            "error 75: Path/File access error: " + folder.path() + ": Is a directory");
}

TEST(ReadFilePieces, GivesTheBytesInOrderOrTheReason) {
  const TemporaryDirectory folder;
  const auto in_pieces = [](const std::string& path) {
    return outcome([&] {
      std::string bytes;
      read_file_pieces(path, [&](std::string_view piece) { bytes += piece; });
      return bytes;
    });
  };
  std::string text("\0\r\n", 3);
  for (int i = 0; i < 200'000; ++i) text += std::to_string(i);
  EXPECT_TRUE(in_pieces(folder.write("long", text)) == text);
  EXPECT_EQ(in_pieces(folder.write("empty", "")), "");
  for (const std::string& path : {folder.path("none"), folder.path()}) {
    EXPECT_EQ(in_pieces(path), outcome([&] { return read_file(path); })) << path;
  }
  EXPECT_EQ(outcome([&] {
              read_file_pieces(folder.path("long"),
                               [](std::string_view) { throw AutomationError(RunTimeError::Overflow); });
              return "done";
            }),
            "error 6: Overflow");
}

}  // namespace
}  // namespace plexoras
