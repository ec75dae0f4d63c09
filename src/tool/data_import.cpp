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

struct ByteOrderMark {
  std::string_view bytes;
  const char* encoding;
};
using namespace std::string_view_literals;
constexpr ByteOrderMark byte_order_marks[] = {{"\xEF\xBB\xBF"sv, "UTF-8"},
                                              {"\xFF\xFE\0\0"sv, "UTF-32"},  // before UTF-16, whose mark begins it
                                              {"\0\0\xFE\xFF"sv, "UTF-32"},
                                              {"\xFF\xFE"sv, "UTF-16"},
                                              {"\xFE\xFF"sv, "UTF-16"}};

// Settings that do what they say, but hardly what was meant.
void warn(const std::string& name, const ImportSettings& settings, std::string_view beginning, Console& console) {
  if (settings.format.qualifier.size() > 1) {
    console.problem(name + ": warning: no field can begin with the qualifier \"" + settings.format.qualifier +
                    "\": one byte is compared; give one byte, doublequote, singlequote or none\n");
  }
  if (!settings.encoding.empty()) return;
  for (const ByteOrderMark& mark : byte_order_marks) {
    if (!beginning.starts_with(mark.bytes)) continue;
    console.problem(name + ": warning: the bytes are taken as they are, and they begin with the mark of " +
                    mark.encoding + "; give --encoding " + mark.encoding + " or --guess\n");
    return;
  }
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

FileImport import_file(const std::string& file, const ImportFlags& flags, FileSystem& files, Console& console) {
  ImportRequest request{{.encoding = flags.encoding, .first_row = flags.first_row, .first_col = flags.first_col},
                        flags.guess};
  if (flags.delimiter) request.named.delimiter = delimiter_from_word(*flags.delimiter);
  if (flags.qualifier) request.named.qualifier = qualifier_from_word(*flags.qualifier);

  FileImport imported;
  const auto tell = [&](const DelimitedGuess& guess) {
    for (const DelimitedGuess::Choice& choice : guess.choices) {
      console.say(choice.setting + " " + choice.chosen + ": " + choice.reason);
    }
    console.say("the same without guessing: " + as_flags({guess.format, guess.encoding}));
    imported.choices = guess.choices;
  };
  const DataBytes bytes = file == "-" ? standard_input() : file_bytes(files, file);
  std::string beginning;
  const DataBytes watched{bytes.name, [&](const auto& take) {
                            bytes.read([&](std::string_view piece) {
                              constexpr std::size_t longest_mark = 4;
                              if (beginning.size() < longest_mark) {
                                beginning += piece.substr(0, longest_mark - beginning.size());
                              }
                              take(piece);
                            });
                          }};
  imported.data = import_data(watched, request, tell);
  warn(bytes.name, imported.data.settings, beginning, console);
  return imported;
}

nlohmann::json to_json(const FileImport& imported) {
  const ImportSettings& settings = imported.data.settings;
  nlohmann::json choices = nlohmann::json::array();
  for (const DelimitedGuess::Choice& choice : imported.choices) {
    choices.push_back({{"setting", choice.setting}, {"chosen", choice.chosen}, {"reason", choice.reason}});
  }
  return {{"delimiter", settings.format.delimiter}, {"qualifier", settings.format.qualifier},
          {"first_row", settings.format.first_row}, {"first_col", settings.format.first_col},
          {"encoding", settings.encoding},          {"choices", choices}};
}

}  // namespace plexoras
