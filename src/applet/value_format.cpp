#include "applet/value_format.h"

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

#include <optional>

#include "applet/date_text.h"
#include "applet/locale_name.h"
#include "host/automation.h"

namespace plexoras {
namespace {

struct Refusal {
  UErrorCode code;
  std::string_view reason;
};

constexpr Refusal refusals[] = {
    {U_UNQUOTED_SPECIAL, "a character that has a meaning of its own stands where it has none; quote it with '"},
    {U_UNEXPECTED_TOKEN, "\"#\" comes before \"0\" left of the point and after it to the right, \",\" between digits"},
    {U_PATTERN_SYNTAX_ERROR, "a quote (') or a fill (*) is not complete"},
    {U_MALFORMED_EXPONENTIAL_PATTERN, "an exponent and \",\" do not go together"},
    {U_MULTIPLE_PAD_SPECIFIERS, "there is more than one fill (*)"},
};

std::string refusal(UErrorCode code) {
  for (const Refusal& row : refusals) {
    if (row.code == code) return "Pattern: " + std::string(row.reason);
  }
  return std::string("No format: ") + u_errorName(code);
}

LocaleUse use_of(std::int32_t type) {
  if (type == FormatSettings::Currency) return LocaleUse::Money;
  return type == FormatSettings::Date ? LocaleUse::Dates : LocaleUse::Numbers;
}

// The sign that stands for the currency in a pattern, U+00A4 in UTF-8.
constexpr std::string_view currency_sign = "\xC2\xA4";

bool shows_currency(const FormatSettings& settings) {
  if (settings.type == FormatSettings::Pattern) return settings.pattern.find(currency_sign) != std::string::npos;
  return settings.type == FormatSettings::Currency;
}

icu::Locale locale_of(const FormatSettings& settings) {
  const std::string name = settings.use_current_locale
                               ? current_locale_name(use_of(settings.type))
                               : locale_name(settings.language, settings.country, settings.variant);
  icu::Locale locale(name.c_str());
  if (shows_currency(settings) && *locale.getCountry() == '\0') {
    UErrorCode status = U_ZERO_ERROR;
    locale.addLikelySubtags(status);
  }
  return locale;
}

std::unique_ptr<icu::NumberFormat> make_number_format(const FormatSettings& settings, UErrorCode& status) {
  const icu::Locale locale = locale_of(settings);
  std::unique_ptr<icu::NumberFormat> format;
  switch (settings.type) {
    case FormatSettings::Pattern:
      format = std::make_unique<icu::DecimalFormat>("", icu::DecimalFormatSymbols(locale, status), status);
      // Applied afterwards, a pattern with a currency in it keeps its own number of decimals.
      if (U_SUCCESS(status)) {
        static_cast<icu::DecimalFormat&>(*format).applyPattern(icu::UnicodeString::fromUTF8(settings.pattern), status);
      }
      break;
    case FormatSettings::Currency:
      format.reset(icu::NumberFormat::createCurrencyInstance(locale, status));
      break;
    case FormatSettings::Percent:
      format.reset(icu::NumberFormat::createPercentInstance(locale, status));
      break;
    default:
      format.reset(icu::NumberFormat::createInstance(locale, status));
      break;
  }
  // As browsers do, which show the published chart.
  if (U_SUCCESS(status)) format->setRoundingMode(icu::NumberFormat::kRoundHalfUp);
  return format;
}

std::unique_ptr<icu::DateFormat> make_date_format(const FormatSettings& settings) {
  constexpr icu::DateFormat::EStyle styles[] = {icu::DateFormat::kFull, icu::DateFormat::kLong,
                                                icu::DateFormat::kMedium, icu::DateFormat::kShort};
  const bool is_style = settings.date_style >= 0 && settings.date_style < std::ssize(styles);
  const std::int32_t style = is_style ? settings.date_style : FormatSettings::Medium;
  std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateInstance(styles[style], locale_of(settings)));
  if (format == nullptr) return format;
  format->setTimeZone(*icu::TimeZone::getGMT());
  // One calendar for all of history, as in the dates that are read.
  if (const auto* calendar = dynamic_cast<const icu::GregorianCalendar*>(format->getCalendar())) {
    std::unique_ptr<icu::GregorianCalendar> proleptic(calendar->clone());
    constexpr UDate long_ago = -1e17;
    UErrorCode status = U_ZERO_ERROR;
    proleptic->setGregorianChange(long_ago, status);
    format->adoptCalendar(proleptic.release());
  }
  return format;
}

std::optional<double> number_of(std::string_view text) {
  try {
    // Without the sign of a zero.
    return Variant(text).to_double() + 0.0;
  } catch (const AutomationError&) {
    return std::nullopt;
  }
}

bool is_formatted_number(std::int32_t type) {
  return type >= FormatSettings::Pattern && type <= FormatSettings::Number;
}

}  // namespace

// What the locale data gave for these settings.
struct ValueFormat::Formatter {
  explicit Formatter(const FormatSettings& made_for) : settings(made_for) {
    UErrorCode status = U_ZERO_ERROR;
    if (is_formatted_number(settings.type)) number = make_number_format(settings, status);
    if (settings.type == FormatSettings::Date) date = make_date_format(settings);
    if (settings.type == FormatSettings::Date && date == nullptr) status = U_MISSING_RESOURCE_ERROR;
    if (U_FAILURE(status)) refused = refusal(status);
  }

  FormatSettings settings;
  std::unique_ptr<icu::NumberFormat> number;
  std::unique_ptr<icu::DateFormat> date;
  std::string refused;  // why there is none
};

ValueFormat::ValueFormat() = default;
ValueFormat::~ValueFormat() = default;

std::string ValueFormat::show(std::string_view text, const FormatSettings& settings) {
  const bool is_date = settings.type == FormatSettings::Date;
  const std::optional<double> value = is_date ? date_of(text) : number_of(text);
  if (!is_date && !is_formatted_number(settings.type)) return value ? Variant(*value).to_text() : std::string(text);

  if (formatter_ == nullptr || formatter_->settings != settings) formatter_ = std::make_unique<Formatter>(settings);
  if (!formatter_->refused.empty()) return formatter_->refused;
  if (!value) return std::string(text);
  icu::UnicodeString shown;
  if (is_date) {
    formatter_->date->format(*value, shown);
  } else {
    formatter_->number->format(*value, shown);
  }
  std::string utf8;
  return shown.toUTF8String(utf8);
}

}  // namespace plexoras
