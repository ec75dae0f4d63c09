#include "host/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <span>
#include <system_error>
#include <utility>

#include "host/automation.h"

namespace plexoras {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(RunTimeError number, const std::string& path, int reason, const std::string& hint = {}) {
  throw AutomationError(number, std::string(customary_description(number)) + ": " + path + ": " +
                                    std::generic_category().message(reason) + hint);
}

[[noreturn]] void fail_to_read(const std::string& path, int reason) {
  const bool missing = reason == ENOENT || reason == ENOTDIR;
  fail(missing ? RunTimeError::FileNotFound : RunTimeError::PathFileAccess, path, reason);
}

// How the commonest failures to write are mended.
struct Hint {
  int reason;
  const char* text;
};
constexpr Hint hints[] = {
    {EACCES, "; allow writing to the file and to its folder"},
    {EPERM, "; allow writing to the file and to its folder"},
    {EROFS, "; write to a file system that is not read-only"},
    {ENOENT, "; make its folder first"},
    {ENOSPC, "; make room on the disk"},
};

[[noreturn]] void fail_to_write(const std::string& path, int reason) {
  std::string hint;
  for (const Hint& row : hints) {
    if (row.reason == reason) hint = row.text;
  }
  fail(RunTimeError::PathFileAccess, path, reason, hint);
}

// An open file, closed when it goes.
class Descriptor {
public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }
  bool is_open() const { return number_ >= 0; }
  /// Whether closing went well; some file systems report a failed write only then.
  bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
  int number_;
};

// A new file beside the target, deleted unless it has been renamed.
class TemporaryFile {
public:
  TemporaryFile(const fs::path& target, mode_t mode) : file_(-1) {
    constexpr std::size_t longest_name_part = 200;  // leaves room for the rest within the usual 255 bytes
    const std::string name = target.filename().string().substr(0, longest_name_part);
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
      path_ = target.parent_path() / ("." + name + ".plexoras-" + random_letters());
      const int number = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
      if (number >= 0) {
        file_.emplace(number);
        return;
      }
      if (errno != EEXIST) break;
    }
    const int reason = errno;
    fail_to_write(target.string(), reason);
  }

  ~TemporaryFile() {
    if (!renamed_) ::unlink(path_.c_str());
  }

  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  Descriptor& file() { return *file_; }

  bool rename_to(const fs::path& target) {
    renamed_ = ::rename(path_.c_str(), target.c_str()) == 0;
    return renamed_;
  }

private:
  static std::string random_letters() {
    std::random_device device;
    std::string letters;
    for (int i = 0; i < 6; ++i) letters += "0123456789abcdefghijklmnopqrstuv"[device() % 32];
    return letters;
  }

  fs::path path_;
  std::optional<Descriptor> file_;
  bool renamed_ = false;
};

// The file that `path` names, after every symbolic link: also when the last one points at nothing yet.
fs::path followed(const fs::path& path) {
  constexpr int most_links = 40;
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < most_links; ++i) {
    if (!fs::is_symlink(fs::symlink_status(target, error))) return target;
    const fs::path link = fs::read_symlink(target, error);
    if (error) fail_to_write(path.string(), error.value());
    target = target.parent_path() / link;
  }
  fail_to_write(path.string(), ELOOP);
}

bool write_all(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

// What stands at `target`, if anything; refuses what must not be replaced.
std::optional<struct stat> status_of_existing(const fs::path& target) {
  struct stat status {};
  if (::stat(target.c_str(), &status) != 0) {
    if (errno == ENOENT) return std::nullopt;
    fail_to_write(target.string(), errno);
  }
  if (S_ISDIR(status.st_mode)) fail_to_write(target.string(), EISDIR);
  if (!S_ISREG(status.st_mode)) fail_to_write(target.string(), EINVAL);
  // The rename would succeed without this permission, but a file is protected so that it stays.
  if (::access(target.c_str(), W_OK) != 0) fail_to_write(target.string(), errno);
  return status;
}

void sync_directory_of(const fs::path& target) {
  const fs::path parent = target.parent_path();
  const Descriptor directory(::open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // A directory that may be written but not listed cannot be opened, and some file systems do not sync directories.
  if (!directory.is_open() || ::fsync(directory.number()) == 0) return;
  if (errno != EINVAL && errno != ENOTSUP) fail_to_write(target.string(), errno);
}

// How many bytes of the file were put into `room`; 0 at its end.
std::size_t read_some(const Descriptor& file, std::span<char> room, const std::string& path) {
  while (true) {
    const ssize_t count = ::read(file.number(), room.data(), room.size());
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) fail_to_read(path, errno);
  }
}

// A file that has been opened for reading, and what the system says of it.
struct OpenedFile {
  explicit OpenedFile(const std::string& path) : file(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (!file.is_open() || ::fstat(file.number(), &status) != 0) fail_to_read(path, errno);
    if (S_ISDIR(status.st_mode)) fail_to_read(path, EISDIR);
  }

  Descriptor file;
  struct stat status {};
};

}  // namespace

void read_file_pieces(const std::string& path, const std::function<void(std::string_view)>& take) {
  const OpenedFile opened(path);
  constexpr std::size_t piece_size = 262144;
  const auto piece = std::make_unique_for_overwrite<char[]>(piece_size);
  while (const std::size_t count = read_some(opened.file, {piece.get(), piece_size}, path)) take({piece.get(), count});
}

std::string read_file(const std::string& path) {
  const OpenedFile opened(path);

  // A regular file is read into a text of its size and one byte more, so that its end shows at once; what has no
  // size (a pipe) grows step by step.
  constexpr std::size_t smallest_step = 65536;
  std::string bytes;
  std::size_t filled = 0;
  const bool has_size = S_ISREG(opened.status.st_mode);
  bytes.resize(has_size ? static_cast<std::size_t>(opened.status.st_size) + 1 : smallest_step);
  while (const std::size_t count = read_some(opened.file, std::span(bytes).subspan(filled), path)) {
    filled += count;
    if (filled == bytes.size()) bytes.resize(2 * bytes.size() + smallest_step);
  }
  bytes.resize(filled);
  return bytes;
}

void replace_file(const std::string& path, std::string_view bytes) {
  const fs::path target = followed(path);
  const std::optional<struct stat> existing = status_of_existing(target);

  // Created with the final permissions: nobody may open a protected file's successor before they are set.
  constexpr mode_t new_file = 0666;
  TemporaryFile temporary(target, existing ? existing->st_mode & 0777 : new_file);
  const int descriptor = temporary.file().number();
  if (existing) {
    // Only the superuser can give files away; for everybody else the new file is simply their own.
    [[maybe_unused]] const int given = ::fchown(descriptor, existing->st_uid, existing->st_gid);
    if (::fchmod(descriptor, existing->st_mode & 07777) != 0) fail_to_write(path, errno);
  }
  if (!write_all(descriptor, bytes) || ::fsync(descriptor) != 0 || !temporary.file().close()) {
    fail_to_write(path, errno);
  }
  if (!temporary.rename_to(target)) fail_to_write(path, errno);
  sync_directory_of(target);
}

}  // namespace plexoras
