#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform.h"
#include "template/ini_section.h"

namespace plexoras {

/// A library's surroundings in memory, with a record of what was shown and read.
///
///     FakePlatform host;
///     host.files["DIAGRAM.DAT"] = "[A]\r\nx\r\n";
///     TemplateSession session(host.platform);
class FakePlatform final : public FileSystem, public SettingsStore, public MessageBox {
public:
  FakePlatform() { platform.message_box = this; }
  FakePlatform(const FakePlatform&) = delete;
  FakePlatform& operator=(const FakePlatform&) = delete;

  bool can_read(std::string_view path) override { return files.find(path) != files.end(); }
  std::string read(std::string_view path) override {
    reads.emplace_back(path);
    const auto found = files.find(path);
    if (found == files.end()) throw AutomationError(RunTimeError::FileNotFound, std::string(path));
    return found->second;
  }
  std::string module_directory() override { return "/library/"; }

  std::string read(std::string_view section, std::string_view key, std::string_view default_value) override {
    const auto found = settings.find(std::string(section) + "/" + std::string(key));
    return found == settings.end() ? std::string(default_value) : found->second;
  }
  void write(std::string_view section, std::string_view key, std::string_view value) override {
    settings[std::string(section) + "/" + std::string(key)] = value;
  }

  void show(std::string_view text, std::string_view title) override {
    messages.push_back(std::string(title) + "|" + std::string(text));
  }

  std::map<std::string, std::string, std::less<>> files;  ///< bytes by path
  std::map<std::string, std::string> settings;            ///< by "Section/Key"
  std::vector<std::string> reads;
  std::vector<std::string> messages;  ///< "title|text"

  ComponentRegistry components;
  Platform platform{*this, *this, components, [] { return std::string("21.11.2026"); }, [] { return 0.5; }};
};

/// `text` with CR LF for every LF: what the engine takes.
inline std::string lines(std::string_view text) { return replaced_all(text, "\n", "\r\n"); }

/// `text` with LF for every CR LF, for reading.
inline std::string readable(std::string_view text) { return replaced_all(text, "\r\n", "\n"); }

/// "NAME=value;" for every entry, in order.
inline std::string listing(const Dictionary& variables) {
  std::string text;
  for (std::int32_t i = 0; i < variables.Count(); ++i) {
    text += variables.keyAtIndex(i) + "=" + variables.valueAtIndex(i) + ";";
  }
  return text;
}

/// `part`, `count` times over.
inline std::string repeated(std::string_view part, std::size_t count) {
  std::string text;
  text.reserve(part.size() * count);
  for (std::size_t i = 0; i < count; ++i) text += part;
  return text;
}

/// One section of "T.DAT" in a fresh session: what most tests of the engine need.
struct Expansion {
  explicit Expansion(ExpansionLimits limits = {}) : session(host.platform, limits), section(session) {}

  /// The result for a section of this text; both with LF for CR LF.
  std::string operator()(std::string_view text) {
    section.SetContents(lines(text));
    return readable(section.GetContents());
  }

  std::string variables() { return listing(*section.GetVariables()); }

  /// The messages shown, without title and opening, with LF for CR LF.
  std::string contexts() const {
    std::string text;
    for (const std::string& message : host.messages) {
      text += readable(replaced_all(message, "Template Build Internal Error|An error occured near \r\n", "<") + ">");
    }
    return text;
  }

  /// Every diagnostic as people see it.
  std::string diagnostics() const {
    std::string text;
    for (const Diagnostic& diagnostic : session.diagnostics) text += to_text(diagnostic);
    return text;
  }

  FakePlatform host;
  TemplateSession session;
  IniSection section;
};

}  // namespace plexoras
