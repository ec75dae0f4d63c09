#include "applet/format_members.h"

#include <string>

#include "applet/locale_name.h"
#include "applet/style_document.h"
#include "chart_control/chart_component.h"

namespace plexoras {
namespace {

// Where the format stands in a style.
struct FormatRows {
  std::size_t type = find_style_property("FormatType");
  std::size_t use_current_locale = find_style_property("FormatUseDefaultLocale");
  std::size_t language = find_style_property("FormatLanguage");
  std::size_t country = find_style_property("FormatCountry");
  std::size_t variant = find_style_property("FormatVariant");
  std::size_t pattern = find_style_property("FormatPattern");
  std::size_t date_style = find_style_property("FormatDateStyle");
};

const FormatRows& rows() {
  static const FormatRows found;
  return found;
}

// The chart's flag is a text and may be any.
bool is_true(const Variant& text) {
  bool value = false;
  ignoring_errors([&] { value = text.to_boolean(); });
  return value;
}

FormatSettings settings_of(const std::vector<Variant>& style) {
  return {.type = style[rows().type].to_long(),
          .use_current_locale = is_true(style[rows().use_current_locale]),
          .language = style[rows().language].to_text(),
          .country = style[rows().country].to_text(),
          .variant = style[rows().variant].to_text(),
          .date_style = style[rows().date_style].to_long(),
          .pattern = style[rows().pattern].to_text()};
}

// One call at work.
struct FormatCall {
  LocaleLists& lists;
  ValueFormat& format;
  std::vector<Variant>& style;

  std::string language() const { return style[rows().language].to_text(); }
  std::string country() const { return style[rows().country].to_text(); }

  void drop_foreign_variant() {
    // A code that there is no entry of may be half typed, and says nothing yet.
    if (known_language(language()).empty() || !has_entry(lists.countries(language()), country())) return;
    Variant& variant = style[rows().variant];
    if (!has_entry(lists.variants(language(), country()), variant.to_text())) variant = "";
  }

  void choose_language(std::string code) {
    style[rows().language] = std::move(code);
    const std::string likeliest = lists.likeliest_country(language());
    if (!likeliest.empty() && !has_entry(lists.countries(language()), country())) style[rows().country] = likeliest;
    drop_foreign_variant();
  }

  void choose_country(std::string code) {
    style[rows().country] = std::move(code);
    drop_foreign_variant();
  }
};

constexpr Member<FormatCall> members[] = {
    {.name = "getLanguages", .call = [](FormatCall& c, Arguments) { return Variant(c.lists.languages()); }},
    {.name = "getCountries", .call = [](FormatCall& c, Arguments) { return Variant(c.lists.countries(c.language())); }},
    {.name = "getVariants",
     .call = [](FormatCall& c, Arguments) { return Variant(c.lists.variants(c.language(), c.country())); }},
    {.name = "chooseLanguage",
     .call = [](FormatCall& c, Arguments a) { return c.choose_language(a[0].to_text()), Variant(); },
     .arguments = 1},
    {.name = "chooseCountry",
     .call = [](FormatCall& c, Arguments a) { return c.choose_country(a[0].to_text()), Variant(); },
     .arguments = 1},
    {.name = "formatSample",
     .call = [](FormatCall& c, Arguments a) { return Variant(c.format.show(a[0].to_text(), settings_of(c.style))); },
     .arguments = 1},
};

}  // namespace

bool FormatMembers::has(std::string_view member) { return find_member(members, member) != nullptr; }

Variant FormatMembers::call(std::string_view member, Arguments arguments, std::vector<Variant>& style) {
  FormatCall call{*lists_, format_, style};
  return call_member(call, members, member, arguments, chart_component::identifier);
}

}  // namespace plexoras
