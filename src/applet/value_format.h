#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace plexoras {

/// How a chart is to show its values: what its format properties hold, whatever that is.
struct FormatSettings {
  enum Type : std::int32_t { Pattern, Currency, Percent, Number, Default, Date };
  enum DateStyle : std::int32_t { Full, Long, Medium, Short };

  std::int32_t type = Default;     ///< a `Type`; others count as `Default`
  bool use_current_locale = true;  ///< the environment's, in place of the codes below
  std::string language = {};       ///< see `locale_name`
  std::string country = {};
  std::string variant = {};
  std::int32_t date_style = Medium;  ///< a `DateStyle`; others count as `Medium`
  std::string pattern = {};          ///< "#,##0.00", in UTF-8

  friend bool operator==(const FormatSettings&, const FormatSettings&) = default;
};

/// Shows values in a format. It keeps what it made for the last settings, so that many values, or a value after each
/// key, cost little; it reads the environment's locale when it makes it.
///
///     ValueFormat format;
///     format.show("1234.5", {.type = FormatSettings::Currency, .use_current_locale = false,
///                            .language = "de", .country = "DE"});  // "1.234,50 €"
class ValueFormat {
public:
  ValueFormat();
  ~ValueFormat();
  ValueFormat(const ValueFormat&) = delete;
  ValueFormat& operator=(const ValueFormat&) = delete;

  /// `text` as the chart shows it, in UTF-8. Numbers are read as everywhere in the library, dates by `date_of`, and
  /// both are shown as of UTC. A text that is neither comes back as it is. With a pattern that is none the result says
  /// so, for a pattern is such while it is being typed.
  ///
  /// A tie rounds away from zero. The default type shows a number plainly, with a point, in every locale. A currency,
  /// also the one that "¤" stands for in a pattern, is that of the country, or of the likeliest one where none is
  /// given.
  std::string show(std::string_view text, const FormatSettings& settings);

private:
  struct Formatter;

  std::unique_ptr<Formatter> formatter_;
};

}  // namespace plexoras
