#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/platform.h"

namespace plexoras {

/// Settings that are kept back until it is clear that they are wanted, for a program that may yet fail or is only asked
/// what it would do.
///
///     PendingSettings settings(host.platform().settings);
///     // ... what writes settings ...
///     if (succeeded) settings.flush();
///
/// What was written is what `read` returns. Without `flush` it goes when this goes.
class PendingSettings final : public SettingsStore {
public:
  /// `settings` outlives this.
  explicit PendingSettings(SettingsStore& settings) : settings_(settings) {}

  std::string read(std::string_view section, std::string_view key, std::string_view default_value) override;
  void write(std::string_view section, std::string_view key, std::string_view value) override;

  /// Whether there is something that the settings behind this do not have.
  bool is_changed() const { return !pending_.empty(); }
  /// Writes it there, in the order in which it was written here. What they raise comes through; what was not written
  /// then is still pending.
  void flush();

private:
  struct Setting {
    std::string section;
    std::string key;
    std::string value;
  };
  std::vector<Setting>::iterator find(std::string_view section, std::string_view key);

  SettingsStore& settings_;
  std::vector<Setting> pending_;
};

}  // namespace plexoras
