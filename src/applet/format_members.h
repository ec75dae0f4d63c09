#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "applet/locale_lists.h"
#include "applet/value_format.h"
#include "host/automation.h"

namespace plexoras {

/// The members with which a chart component serves those who choose a format, beside the properties that keep it.
/// A component has one; `docs/formats.md` explains the formats.
///
/// | member | does |
/// |---|---|
/// | `getLanguages()` | a list of entries "code-name": the languages that formats can be chosen from |
/// | `getCountries()` | the same for the countries of `FormatLanguage` |
/// | `getVariants()` | the same for the variants of these two; the empty entry is for none |
/// | `chooseLanguage(code)` | sets `FormatLanguage`; the country too, see below |
/// | `chooseCountry(code)` | sets `FormatCountry` |
/// | `formatSample(text)` | the text as the chart shows such a value, see `ValueFormat::show` |
///
/// A language that is not at home in the present country brings the country that it is likeliest used in.
/// After either choice a variant that there is none of here gives way to none. A code that is in no list, as while it
/// is being typed, changes nothing else, and neither does putting the properties themselves or a style document, so
/// that settings come back as they were saved.
class FormatMembers {
public:
  /// `lists` may serve many components.
  explicit FormatMembers(std::shared_ptr<LocaleLists> lists) : lists_(std::move(lists)) {}

  static bool has(std::string_view member);
  /// Calls a member that there is. `style` has one value for each row of `style_properties()`.
  Variant call(std::string_view member, Arguments arguments, std::vector<Variant>& style);

private:
  std::shared_ptr<LocaleLists> lists_;
  ValueFormat format_;
};

}  // namespace plexoras
