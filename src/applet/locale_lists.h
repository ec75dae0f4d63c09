#pragma once

#include <map>
#include <string>
#include <string_view>

#include "host/automation.h"

namespace plexoras {

/// The languages, countries and variants that formats can be chosen from, as entries "code-name" for lists.
///
///     lists.languages()           "de-Deutsch", "en-English", "es-Español", ...
///     lists.countries("de")       "AT-Österreich", "DE-Deutschland", ...
///     lists.variants("en", "US")  "", "POSIX-Computer"
///
/// Languages and countries are named in the language in question, in UTF-8, and stand in the order of their codes.
/// Lists are made when they are first asked for (about ten milliseconds for the first) and kept. A program makes one
/// object of this class for all its charts. Not for several threads at once.
class LocaleLists {
public:
  /// Every language that there are formats for.
  const StringList& languages();

  /// The countries that there are formats for in the language, or else the likeliest one. A language of no country has
  /// all of them, and so has an unknown one, with English names.
  const StringList& countries(std::string_view language);

  /// The empty entry, which stands for no variant, and the variants of the language in the country.
  const StringList& variants(std::string_view language, std::string_view country);

  /// The code of the country that the language is most likely used in; empty when there is none.
  std::string likeliest_country(std::string_view language) const;

private:
  StringList languages_;
  std::map<std::string, StringList> countries_;  // by `known_language`
  std::map<std::string, StringList> variants_;   // by `locale_name`
};

/// Whether one of `entries` has this code, in any case.
bool has_entry(const StringList& entries, std::string_view code);

}  // namespace plexoras
