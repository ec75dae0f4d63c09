#include "host/settings_file.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

#include "host/atomic_file.h"
#include "host/property_bag.h"

namespace plexoras {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view blanks = " \t";

// The escapes of one letter; every other byte is written "\xHH".
constexpr std::pair<char, char> short_escapes[] = {{'\\', '\\'}, {'r', '\r'}, {'n', '\n'}, {'t', '\t'}};

// What would end the text early, or make another kind of line of it, if it were written as it is.
constexpr std::string_view special_in_section = "]";
constexpr std::string_view special_in_key = "=[#;";
constexpr std::string_view special_in_value;

std::string_view without_outer_blanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string escape_of(char c) {
  for (const auto& [letter, byte] : short_escapes) {
    if (byte == c) return {'\\', letter};
  }
  return "\\x" + to_hex({&c, 1});
}

std::string escaped(std::string_view text, std::string_view special) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool is_control = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    const bool is_outer_blank = c == ' ' && (i == 0 || i + 1 == text.size());
    const bool is_special = c == '\\' || special.find(c) != std::string_view::npos;
    if (is_control || is_outer_blank || is_special) {
      result += escape_of(c);
    } else {
      result += c;
    }
  }
  return result;
}

// The text behind the escapes, or nothing when one of them is malformed.
std::optional<std::string> unescaped(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t backslash = std::min(text.find('\\'), text.size());
    result += text.substr(0, backslash);
    text.remove_prefix(backslash);
    if (text.empty()) break;

    const char letter = text.size() > 1 ? text[1] : '\0';
    if (letter == 'x') {
      const std::string_view digits = text.substr(2, 2);
      if (digits.size() != 2 || digits.find_first_not_of("0123456789ABCDEFabcdef") != std::string_view::npos) {
        return std::nullopt;
      }
      result += from_hex(digits);
      text.remove_prefix(4);
    } else {
      const auto* row = std::find_if(std::begin(short_escapes), std::end(short_escapes),
                                     [&](const auto& escape) { return escape.first == letter; });
      if (row == std::end(short_escapes)) return std::nullopt;
      result += row->second;
      text.remove_prefix(2);
    }
  }
  return result;
}

std::optional<std::string> trimmed_and_unescaped(std::string_view text) {
  return unescaped(without_outer_blanks(text));
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

std::string setting_line(std::string_view key, std::string_view value) {
  return escaped(key, special_in_key) + "=" + escaped(value, special_in_value);
}

// Missing directories are made for this user alone, as is the custom for configuration.
void make_directories(const fs::path& directory) {
  if (directory.empty() || fs::exists(directory)) return;
  make_directories(directory.parent_path());
  fs::create_directory(directory);
  fs::permissions(directory, fs::perms::owner_all);
}

}  // namespace

SettingsFile::SettingsFile(std::string path) : path_(std::move(path)) {}

std::string SettingsFile::default_path() {
  std::string base = environment("XDG_CONFIG_HOME");
  if (!base.starts_with('/')) {
    base = environment("HOME");
    if (base.empty()) return {};
    base += "/.config";
  }
  return base + "/PlexorasDTC/settings";
}

std::string SettingsFile::read(std::string_view section, std::string_view key, std::string_view default_value) {
  if (!loaded_) load();
  const Line* line = line_of(section, key);
  return line == nullptr ? std::string(default_value) : line->value;
}

void SettingsFile::write(std::string_view section, std::string_view key, std::string_view value) {
  if (path_.empty()) {
    throw AutomationError(RunTimeError::PathFileAccess,
                          "Path/File access error: there is no place for settings; set HOME or XDG_CONFIG_HOME");
  }
  load();
  loaded_ = false;  // until what is in memory is in the file as well
  Line line{.text = setting_line(key, value),
            .section = std::string(section),
            .key = std::string(key),
            .value = std::string(value)};
  if (Line* existing = line_of(section, key)) {
    *existing = std::move(line);
  } else {
    insert(section, std::move(line));
  }

  std::string bytes;
  for (const Line& each : lines_) {
    bytes += each.text;
    bytes += '\n';
  }
  try {
    make_directories(fs::path(path_).parent_path());
  } catch (const fs::filesystem_error& error) {
    throw AutomationError(RunTimeError::PathFileAccess, std::string("Path/File access error: ") + error.what());
  }
  replace_file(path_, bytes);
  loaded_ = true;
}

void SettingsFile::load() {
  loaded_ = false;
  lines_.clear();
  if (!path_.empty()) {
    try {
      lines_ = parsed(read_file(path_));
    } catch (const AutomationError& error) {
      if (error.number() != RunTimeError::FileNotFound) throw;
    }
  }
  loaded_ = true;
}

std::vector<SettingsFile::Line> SettingsFile::parsed(std::string_view bytes) const {
  std::vector<Line> lines;
  std::optional<std::string> section;  // none before the first header
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    Line line{.text = std::string(bytes.substr(0, end)), .section = section.value_or("")};
    bytes.remove_prefix(std::min(end + 1, bytes.size()));

    std::string_view text = line.text;
    if (text.ends_with('\r')) text.remove_suffix(1);  // an editor's doing: a CR of ours is escaped
    text = without_outer_blanks(text);
    const std::size_t equals = text.find('=');
    if (text.starts_with('[') && text.ends_with(']')) {
      section = trimmed_and_unescaped(text.substr(1, text.size() - 2));
      line.section = section.value_or("");
      line.is_header = section.has_value();
    } else if (section && equals != std::string_view::npos && text.find_first_of("#;[") != 0) {
      std::optional<std::string> value = trimmed_and_unescaped(text.substr(equals + 1));
      if (value) {
        line.key = trimmed_and_unescaped(text.substr(0, equals));
        line.value = std::move(*value);
      }
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

SettingsFile::Line* SettingsFile::line_of(std::string_view section, std::string_view key) {
  const auto found = std::find_if(lines_.rbegin(), lines_.rend(),
                                  [&](const Line& line) { return line.key == key && line.section == section; });
  return found == lines_.rend() ? nullptr : &*found;
}

// Puts a new line after the last setting of its section, or after a new header at the end.
void SettingsFile::insert(std::string_view section, Line line) {
  const auto last = std::find_if(lines_.rbegin(), lines_.rend(), [&](const Line& each) {
    return (each.is_header || each.key) && each.section == section;
  });
  if (last == lines_.rend()) {
    lines_.push_back(
        {.text = "[" + escaped(section, special_in_section) + "]", .section = std::string(section), .is_header = true});
    lines_.push_back(std::move(line));
  } else {
    lines_.insert(last.base(), std::move(line));
  }
}

}  // namespace plexoras
