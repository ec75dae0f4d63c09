#pragma once

#include <string>
#include <string_view>

namespace plexoras {

/// The language by the name that the locale data has for it: its present code ("iw" gives "he"), for some with a script
/// behind it ("sh" gives "sr_Latn"). Case does not matter. Empty when the data do not know it.
std::string known_language(std::string_view code);

/// The locale of these codes by the name that the locale data has for it: "de", "US" and "" give "de_US".
///
/// Any text may stand for a code. A language that the data do not know gives English, never the language of this
/// machine. What can be no country (two letters or three digits) and no variant (a letter, then letters, digits, "_"
/// and "-", 32 at most) is left out.
std::string locale_name(std::string_view language, std::string_view country, std::string_view variant);

/// What a locale of the environment is wanted for: each use has a variable of its own.
enum class LocaleUse { Numbers, Money, Dates };

/// The environment's locale as a name of the same kind: of LC_ALL, the use's own variable (LC_NUMERIC, LC_MONETARY,
/// LC_TIME) and LANG the first one that holds something. "C", "POSIX" and no setting at all are "en_US".
std::string current_locale_name(LocaleUse use);

}  // namespace plexoras
