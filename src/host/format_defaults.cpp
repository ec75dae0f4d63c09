#include "host/format_defaults.h"

#include <iterator>
#include <string_view>

namespace plexoras {
namespace {

constexpr std::string_view section = "Format";

// The names under which format types are saved, by code. The date type has none: it is never saved.
constexpr std::string_view type_names[] = {"Pattern", "Currency", "Percent", "Number", "Default"};

// Kept: a name that is not in the table reads as 0, the pattern type.
std::int32_t type_code(std::string_view name) {
  for (std::size_t code = 0; code < std::size(type_names); ++code) {
    if (type_names[code] == name) return static_cast<std::int32_t>(code);
  }
  return 0;
}

}  // namespace

FormatDefaults read_format_defaults(SettingsStore& settings) {
  const auto read = [&](std::string_view key, std::string_view otherwise) {
    return settings.read(section, key, otherwise);
  };
  FormatDefaults saved;
  saved.type = type_code(read("Format", type_names[4]));
  // Kept: only exactly "true" is true.
  saved.use_default_locale = read("UseDefaultLocale", "true") == "true";
  saved.language = read("Language", saved.language);
  saved.country = read("Country", saved.country);
  saved.variant = read("Variant", saved.variant);
  saved.pattern = read("Pattern", saved.pattern);
  return saved;
}

void save_format_defaults(SettingsStore& settings, const FormatDefaults& defaults) {
  const auto write = [&](std::string_view key, std::string_view value) { settings.write(section, key, value); };
  if (defaults.type >= 0 && defaults.type < std::ssize(type_names)) write("Format", type_names[defaults.type]);
  write("UseDefaultLocale", defaults.use_default_locale ? "true" : "false");
  write("Language", defaults.language);
  write("Country", defaults.country);
  write("Variant", defaults.variant);
  write("Pattern", defaults.pattern);
}

}  // namespace plexoras
