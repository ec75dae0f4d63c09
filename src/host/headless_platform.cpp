#include "host/headless_platform.h"

#include <fcntl.h>
#include <locale.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <system_error>
#include <type_traits>
#include <utility>

#include "host/atomic_file.h"

namespace plexoras {

namespace {

using Locale = std::shared_ptr<std::remove_pointer_t<locale_t>>;

// The user's locale for dates, or the plain one when the environment names none that is installed.
Locale date_locale() {
  locale_t locale = ::newlocale(LC_TIME_MASK, "", nullptr);
  if (locale == nullptr) locale = ::newlocale(LC_TIME_MASK, "C", nullptr);
  return {locale, ::freelocale};
}

std::string short_date(const std::tm& day, locale_t locale) {
  char text[256];
  return {text, ::strftime_l(text, sizeof text, "%x", &day, locale)};
}

// The instant that the environment fixes for reproducible results.
std::optional<std::time_t> fixed_instant() {
  const char* variable = std::getenv("SOURCE_DATE_EPOCH");
  if (variable == nullptr) return std::nullopt;
  const std::string_view text = variable;
  std::time_t seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw AutomationError(
        RunTimeError::InvalidCall,
        "SOURCE_DATE_EPOCH must be a whole number of seconds since 1970, not \"" + std::string(text) + "\"");
  }
  return seconds;
}

std::uint64_t system_seed() {
  std::random_device device;
  return std::uint64_t{device()} << 32 | device();
}

}  // namespace

std::string native_path(std::string_view path) {
  std::string native(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

std::string found_path(std::string_view path) {
  std::string given(path);
  struct stat status {};
  const bool is_one_way = path.find('\\') == std::string_view::npos;
  return is_one_way || ::stat(given.c_str(), &status) == 0 ? given : native_path(path);
}

std::string default_module_directory() {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error).parent_path();
  const fs::path installed = (program / "../share/plexoras/DTC").lexically_normal();
  return (fs::is_directory(installed, error) ? installed : program).string() + "/";
}

std::function<std::string()> short_date_source() {
  Locale locale = date_locale();
  std::tm day{};
  if (const std::optional<std::time_t> instant = fixed_instant()) {
    if (::gmtime_r(&*instant, &day) == nullptr) {
      throw AutomationError(RunTimeError::Overflow, "Overflow: SOURCE_DATE_EPOCH lies outside the calendar");
    }
    return [text = short_date(day, locale.get())] { return text; };
  }
  return [locale = std::move(locale)] {
    const std::time_t now = std::time(nullptr);
    std::tm today{};
    ::localtime_r(&now, &today);
    return short_date(today, locale.get());
  };
}

std::function<double()> random_source(std::uint64_t seed) {
  return [engine = std::make_shared<std::mt19937_64>(seed)] {
    // The upper 53 bits as a fraction: exact, and unlike the standard distributions the same on every system.
    constexpr double unit = 1.0 / (std::uint64_t{1} << 53);
    return static_cast<double>((*engine)() >> 11) * unit;
  };
}

NativeFileSystem::NativeFileSystem(std::string_view module_directory)
    : module_directory_(native_path(module_directory)) {
  if (!module_directory_.ends_with('/')) module_directory_ += '/';
}

bool NativeFileSystem::can_read(std::string_view path) {
  const std::string native = found_path(path);
  struct stat status {};
  if (::stat(native.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) return false;
  // Opening and closing a pipe would be noticed at its other end, so that only files are opened.
  if (!S_ISREG(status.st_mode)) return ::access(native.c_str(), R_OK) == 0;
  const int descriptor = ::open(native.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  ::close(descriptor);
  return true;
}

std::string NativeFileSystem::read(std::string_view path) { return read_file(found_path(path)); }

void NativeFileSystem::read_pieces(std::string_view path, const std::function<void(std::string_view)>& take) {
  read_file_pieces(found_path(path), take);
}

HeadlessPlatform::HeadlessPlatform() : HeadlessPlatform(Options()) {}

HeadlessPlatform::HeadlessPlatform(const Options& options)
    : settings_(options.settings_path),
      files_(options.module_directory),
      platform_{.settings = settings_,
                .files = files_,
                .components = components_,
                .short_date = short_date_source(),
                .random = random_source(options.seed != 0 ? options.seed : system_seed())} {}

}  // namespace plexoras
