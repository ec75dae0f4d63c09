#include "applet/locale_lists.h"

#include <unicode/locid.h>

#include <algorithm>
#include <set>
#include <span>

#include "applet/locale_name.h"

namespace plexoras {
namespace {

// Regions of several countries have codes of three digits.
constexpr std::size_t country_size = 2;

std::span<const icu::Locale> available_locales() {
  std::int32_t count = 0;
  const icu::Locale* const first = icu::Locale::getAvailableLocales(count);
  return {first, static_cast<std::size_t>(count)};
}

icu::Locale locale_of(std::string_view language, std::string_view country = {}) {
  return icu::Locale(locale_name(language, country, {}).c_str());
}

std::string entry(std::string_view code, const icu::UnicodeString& name) {
  std::string text(code);
  text += "-";
  return name.toUTF8String(text);
}

std::set<std::string> country_codes(const icu::Locale& language) {
  std::set<std::string> codes;
  for (const icu::Locale& locale : available_locales()) {
    const std::string_view country = locale.getCountry();
    const bool is_its_own = std::string_view(locale.getLanguage()) == language.getLanguage();
    if (is_its_own && country.size() == country_size) codes.emplace(country);
  }
  return codes;
}

}  // namespace

const StringList& LocaleLists::languages() {
  if (!languages_.empty()) return languages_;
  std::set<std::string> codes;
  for (const icu::Locale& locale : available_locales()) codes.emplace(locale.getLanguage());
  for (const std::string& code : codes) {
    const icu::Locale locale(code.c_str());
    icu::UnicodeString name;
    languages_.push_back(entry(code, locale.getDisplayLanguage(locale, name)));
  }
  return languages_;
}

const StringList& LocaleLists::countries(std::string_view language) {
  const std::string known = known_language(language);
  StringList& entries = countries_[known];
  if (!entries.empty()) return entries;

  const icu::Locale locale = locale_of(language);
  std::set<std::string> codes;
  if (!known.empty()) codes = country_codes(locale);
  const std::string likeliest = likeliest_country(language);
  if (codes.empty() && !likeliest.empty()) codes.insert(likeliest);
  if (codes.empty()) {
    for (const char* const* code = icu::Locale::getISOCountries(); *code != nullptr; ++code) codes.emplace(*code);
  }
  for (const std::string& code : codes) {
    icu::UnicodeString name;
    entries.push_back(entry(code, icu::Locale("", code.c_str()).getDisplayCountry(locale, name)));
  }
  return entries;
}

const StringList& LocaleLists::variants(std::string_view language, std::string_view country) {
  const icu::Locale place = locale_of(language, country);
  StringList& entries = variants_[place.getName()];
  if (!entries.empty()) return entries;

  entries.emplace_back();
  for (const icu::Locale& locale : available_locales()) {
    const std::string_view variant = locale.getVariant();
    if (variant.empty() || std::string_view(locale.getLanguage()) != place.getLanguage() ||
        std::string_view(locale.getCountry()) != place.getCountry()) {
      continue;
    }
    icu::UnicodeString name;
    entries.push_back(entry(variant, locale.getDisplayVariant(place, name)));
  }
  return entries;
}

std::string LocaleLists::likeliest_country(std::string_view language) const {
  const std::string known = known_language(language);
  if (known.empty()) return {};
  icu::Locale locale(known.c_str());
  UErrorCode status = U_ZERO_ERROR;
  locale.addLikelySubtags(status);
  const std::string_view country = locale.getCountry();
  return U_SUCCESS(status) && country.size() == country_size ? std::string(country) : std::string();
}

bool has_entry(const StringList& entries, std::string_view code) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::ranges::any_of(entries, [&](std::string_view entry) {
    return std::ranges::equal(entry.substr(0, entry.find('-')), code, {}, lower, lower);
  });
}

}  // namespace plexoras
