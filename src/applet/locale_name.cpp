#include "applet/locale_name.h"

#include <unicode/locid.h>
#include <unicode/ures.h>

#include <algorithm>
#include <cstdlib>

namespace plexoras {
namespace {

constexpr std::string_view fallback_language = "en";
constexpr std::string_view unset_locale = "en_US";

bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_language(std::string_view code) {
  return code.size() >= 2 && code.size() <= 8 && std::ranges::all_of(code, is_letter);
}

bool is_country(std::string_view code) {
  return (code.size() == 2 && std::ranges::all_of(code, is_letter)) ||
         (code.size() == 3 && std::ranges::all_of(code, is_digit));
}

bool is_variant(std::string_view code) {
  constexpr std::size_t longest = 32;
  return !code.empty() && code.size() <= longest && is_letter(code.front()) &&
         std::ranges::all_of(code, [](char c) { return is_letter(c) || is_digit(c) || c == '_' || c == '-'; });
}

bool has_data(const char* language) {
  // A direct look: anything else would go on to the machine's own language.
  UErrorCode status = U_ZERO_ERROR;
  const icu::LocalUResourceBundlePointer bundle(ures_openDirect(nullptr, language, &status));
  return U_SUCCESS(status);
}

std::string_view environment_locale(const char* own_variable) {
  for (const char* variable : {"LC_ALL", own_variable, "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}

const char* variable_of(LocaleUse use) {
  switch (use) {
    case LocaleUse::Money:
      return "LC_MONETARY";
    case LocaleUse::Dates:
      return "LC_TIME";
    case LocaleUse::Numbers:
      break;
  }
  return "LC_NUMERIC";
}

}  // namespace

std::string known_language(std::string_view code) {
  if (!is_language(code)) return {};
  icu::Locale locale(std::string(code).c_str());
  UErrorCode status = U_ZERO_ERROR;
  locale.canonicalize(status);
  return U_SUCCESS(status) && has_data(locale.getLanguage()) ? locale.getName() : std::string();
}

std::string locale_name(std::string_view language, std::string_view country, std::string_view variant) {
  std::string name = known_language(language);
  if (name.empty()) name = fallback_language;
  const bool has_country = is_country(country);
  if (has_country) name.append("_").append(country);
  if (is_variant(variant)) name.append(has_country ? "_" : "__").append(variant);
  return icu::Locale(name.c_str()).getName();
}

std::string current_locale_name(LocaleUse use) {
  // "de_DE.UTF-8@euro": the encoding and what follows it do not concern formats.
  const std::string_view value = environment_locale(variable_of(use));
  const std::string_view place = value.substr(0, value.find_first_of(".@"));
  if (place.empty() || place == "C" || place == "POSIX") return std::string(unset_locale);
  const std::size_t language_end = std::min(place.find_first_of("_-"), place.size());
  const std::size_t country = place.find_last_of("_-");
  return locale_name(place.substr(0, language_end), country < place.size() ? place.substr(country + 1) : "", "");
}

}  // namespace plexoras
