#pragma once

#include <cstdint>
#include <string>

#include "host/platform.h"

namespace plexoras {

/// The number and date format that a new chart begins with: what the author saved in the per-user settings, section
/// "Format", or the product's own where nothing is saved.
struct FormatDefaults {
  std::int32_t type = 4;  ///< 0 pattern, 1 currency, 2 percent, 3 number, 4 default
  bool use_default_locale = true;
  std::string language = "en";
  std::string country = "US";
  std::string variant = {};
  std::string pattern = "#,##0.00";
};

/// What the store raises comes through, here and in `save_format_defaults`.
FormatDefaults read_format_defaults(SettingsStore& settings);

/// Saves them one after the other, in the order above. A type that is none of the five, such as 5 for dates, is left
/// out: the one saved before stays.
void save_format_defaults(SettingsStore& settings, const FormatDefaults& defaults);

}  // namespace plexoras
