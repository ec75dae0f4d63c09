// The input as format settings and a value, a line each: language, country, variant, format type, date style, pattern,
// and the value in the rest. Whatever they hold, a chart takes them, shows something and shows it again, and its lists
// have entries.

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "applet/diagram_applet.h"
#include "fuzz.h"

namespace plexoras {
namespace {

std::string_view take_line(std::string_view& input) {
  const std::string_view line = input.substr(0, input.find('\n'));
  input.remove_prefix(std::min(input.size(), line.size() + 1));
  return line;
}

// Numbers that are none leave the property as it is.
void put(DiagramApplet& chart, std::string_view property, std::string_view text) {
  try {
    chart.put(property, text);
  } catch (const AutomationError&) {
  }
}

}  // namespace

void try_input(std::string_view input) {
  static const auto locales = std::make_shared<LocaleLists>();
  DiagramApplet chart(locales);
  chart.put("FormatUseDefaultLocale", "False");
  const std::string_view language = take_line(input), country = take_line(input);
  chart.put("FormatLanguage", language);
  chart.put("FormatCountry", country);
  for (const std::string_view property : {"FormatVariant", "FormatType", "FormatDateStyle", "FormatPattern"}) {
    put(chart, property, take_line(input));
  }

  const Variant shown = chart.call_with("formatSample", {input});
  DiagramApplet other(locales);
  other.put("XmlStyle", chart.get("XmlStyle"));
  require(other.call_with("formatSample", {input}) == shown, "a format comes back with its document");

  chart.call_with("chooseLanguage", {language});
  require(chart.get("FormatLanguage") == Variant(language), "a chosen language is kept");
  chart.call_with("chooseCountry", {country});
  require(!chart.call("getCountries").to_text_list().empty(), "every language has countries");
  require(chart.call("getVariants").to_text_list().front().empty(), "no variant is always an entry");
  require(chart.call_with("formatSample", {input}).type() == ValueType::String, "a sample is a text");
}

}  // namespace plexoras
