#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/platform.h"
#include "host/settings_file.h"

namespace plexoras {

/// `path` as this system writes it: every "\" as "/".
std::string native_path(std::string_view path);

/// `path` itself where something of that name is there, else its `native_path`: a "\" may be part of a name, too.
std::string found_path(std::string_view path);

/// The directory of the library's own files, ending in "/": "../share/plexoras/DTC/" from the program's directory
/// when that exists, as in an installation, else the program's directory itself.
std::string default_module_directory();

/// Gives the day in the short date format of the user's locale ("11/21/25" where none is set).
///
/// It is today's date in the local time zone or, when SOURCE_DATE_EPOCH is set, the UTC date of that many seconds
/// after the start of 1970, so that a site publishes to the same bytes on every day. The environment is read once,
/// by this call; error 5 when SOURCE_DATE_EPOCH is not a whole number.
std::function<std::string()> short_date_source();

/// Gives uniform random numbers in [0, 1); the same seed gives the same numbers. Copies share one sequence.
std::function<double()> random_source(std::uint64_t seed);

/// The files of this machine.
class NativeFileSystem final : public FileSystem {
public:
  /// The separator at the end of `module_directory` is added where it is missing.
  explicit NativeFileSystem(std::string_view module_directory = default_module_directory());

  bool can_read(std::string_view path) override;
  std::string read(std::string_view path) override;
  void read_pieces(std::string_view path, const std::function<void(std::string_view)>& take) override;
  std::string shown(std::string_view path) override { return found_path(path); }
  std::string module_directory() override { return module_directory_; }

private:
  std::string module_directory_;
};

/// Everything that a program without windows gives the library: its files, its settings and its components.
///
///     HeadlessPlatform host;
///     host.components().add("Plexoras.DiagramApplet", [] { return std::make_shared<MyApplet>(); });
///     DiagramDTC control(host.platform(), site);
///
/// The program makes one, which must outlive whatever it was passed to. Dialogs may be added to `platform()`.
class HeadlessPlatform {
public:
  struct Options {
    std::string settings_path = SettingsFile::default_path();
    std::string module_directory = default_module_directory();
    /// Of the random numbers; 0 takes one from the system.
    std::uint64_t seed = 0;
  };

  HeadlessPlatform();
  explicit HeadlessPlatform(const Options& options);
  HeadlessPlatform(const HeadlessPlatform&) = delete;
  HeadlessPlatform& operator=(const HeadlessPlatform&) = delete;

  Platform& platform() { return platform_; }
  ComponentRegistry& components() { return components_; }

private:
  SettingsFile settings_;
  NativeFileSystem files_;
  ComponentRegistry components_;
  Platform platform_;
};

}  // namespace plexoras
