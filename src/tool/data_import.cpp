#include "tool/data_import.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>

namespace plexoras {
namespace {

// The stream itself: a path to it would begin a file anew, and cannot be opened for a socket.
DataBytes standard_input() {
  return {"-", [](const auto& take) {
            std::vector<char> piece(262144);
            while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), stdin)) {
              take({piece.data(), count});
            }
            if (std::ferror(stdin) == 0) return;
            throw AutomationError(RunTimeError::PathFileAccess,
                                  std::string("standard input cannot be read: ") + std::strerror(errno));
          }};
}

// `text` as a shell takes it.
std::string quoted_for_shell(const std::string& text) {
  constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._,:/@%+=-";
  if (!text.empty() && text.find_first_not_of(plain) == std::string::npos) return text;
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

std::string as_flags(const ImportSettings& settings) {
  std::string flags;
  for (const NamedSetting& setting : named_settings(settings)) {
    flags.append(flags.empty() ? "--" : " --").append(setting.name);
    if (!setting.value.empty()) flags.append(" ").append(quoted_for_shell(setting.value));
  }
  return flags.empty() ? "no flags" : flags;
}

}  // namespace

FileImport import_file(const std::string& file, const ImportRequest& request, FileSystem& files, Console& console) {
  const DataBytes bytes = file == "-" ? standard_input() : file_bytes(files, file);
  FileImport imported{bytes.name};
  const auto tell = [&](const DelimitedGuess& guess) {
    for (const DelimitedGuess::Choice& choice : guess.choices) {
      console.say(choice.setting + " " + choice.chosen + ": " + choice.reason);
    }
    console.say("the same without guessing: " + as_flags({guess.format, guess.encoding}));
    imported.choices = guess.choices;
  };
  imported.data = import_data(bytes, request, tell);
  for (const ImportWarning& warning : imported.data.warnings) {
    if (console.options().json) break;  // they are in the object
    const std::string line = warning.line == 0 ? "" : ":" + std::to_string(warning.line);
    console.problem(bytes.name + line + ": warning: " + warning.what + "\n");
  }
  return imported;
}

nlohmann::json to_json(const FileImport& imported) {
  const ImportSettings& settings = imported.data.settings;
  nlohmann::json choices = nlohmann::json::array();
  for (const DelimitedGuess::Choice& choice : imported.choices) {
    choices.push_back({{"setting", choice.setting}, {"chosen", choice.chosen}, {"reason", choice.reason}});
  }
  nlohmann::json warnings = nlohmann::json::array();
  for (const ImportWarning& warning : imported.data.warnings) {
    warnings.push_back({{"severity", "warning"}, {"message", warning.what}, {"file", imported.name}});
    if (warning.line != 0) warnings.back()["line"] = warning.line;
  }
  return {{"delimiter", settings.format.delimiter},
          {"qualifier", settings.format.qualifier},
          {"first_row", settings.format.first_row},
          {"first_col", settings.format.first_col},
          {"encoding", settings.encoding},
          {"choices", choices},
          {"warnings", warnings}};
}

}  // namespace plexoras
