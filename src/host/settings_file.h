#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform.h"

namespace plexoras {

/// Per-user settings in one text file, which people may read and edit as well:
///
///     # where the templates are
///     [Default]
///     PATH=/opt/plexoras
///     [Format]
///     Pattern=#,##0.00
///
/// Blanks around a section's name, a key and a value do not count, and the last line for a key is the valid one.
/// "\\", "\r", "\n", "\t" and "\xHH" stand for a backslash, CR, LF, tab and the byte with that hexadecimal code, so
/// that every section, key and value survives. A line that is none of this (a comment, a bad escape, a key before
/// the first section) is no setting; it stays in the file as it is.
///
/// The file is read when it is first needed. A missing file is an empty one.
class SettingsFile final : public SettingsStore {
public:
  /// Settings in the file at `path`. With an empty path nothing is set, and writing fails.
  explicit SettingsFile(std::string path);

  /// "$XDG_CONFIG_HOME/PlexorasDTC/settings", with "$HOME/.config" when that variable is unset or relative; empty when
  /// the user has no home either.
  static std::string default_path();

  /// Error 75 when the file is there but cannot be read.
  std::string read(std::string_view section, std::string_view key, std::string_view default_value) override;
  /// Reads the file again, changes the one key and replaces the file, so that what other programs have written since is
  /// kept. Makes the missing directories of the path, for this user alone.
  void write(std::string_view section, std::string_view key, std::string_view value) override;

private:
  struct Line {
    std::string text;                  // as it stands in the file, without the line end
    std::string section;               // the section that it stands in or, for a header, opens
    std::optional<std::string> key{};  // absent when the line is no setting
    std::string value{};
    bool is_header = false;
  };

  void load();
  std::vector<Line> parsed(std::string_view bytes) const;
  Line* line_of(std::string_view section, std::string_view key);
  void insert(std::string_view section, Line line);

  std::string path_;
  bool loaded_ = false;
  std::vector<Line> lines_;
};

}  // namespace plexoras
