#include "pages/format_page.h"

#include <algorithm>

#include "host/ascii.h"
#include "host/format_defaults.h"

namespace plexoras {
namespace {

constexpr std::string_view date_styles[] = {"Full", "Long", "Medium", "Short"};
constexpr std::string_view first_sample = "1234.5";

// In the order in which applying looks at them.
constexpr OptionCode format_types[] = {{"cbPattern", 0}, {"cbNumber", 3},  {"cbCurrency", 1},
                                       {"cbPercent", 2}, {"cbDefault", 4}, {"cbDate", 5}};

// For those who ask what stands where. The page itself shows what the chart reports.
constexpr PropertyRow rows[] = {
    {.property = "FormatType", .encoding = Encoding::Options, .options = format_types},
    {"FormatPattern", Encoding::Text, "txtPattern"},
    {"FormatUseDefaultLocale", Encoding::Check, "chkUseDefaultLocale"},
    {"FormatLanguage", Encoding::Text, "cmbLanguage"},
    {"FormatCountry", Encoding::Text, "cmbCountry"},
    {"FormatVariant", Encoding::Text, "cmbVariant"},
    {"FormatDateStyle", Encoding::Lookup, "cmbDateStyle"},
};

// The code at the front of an entry or a typed text: what stands before the first "-" or, without one, two characters.
std::string_view code_of(std::string_view text) {
  if (const std::size_t dash = text.find('-'); dash != std::string_view::npos) return text.substr(0, dash);
  const auto continues_character = [&](std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
  };
  std::size_t end = 0;
  for (int characters = 0; characters < 2 && end < text.size(); ++characters) {
    do ++end;
    while (continues_character(end));
  }
  return text.substr(0, end);
}

std::string_view name_of(std::string_view entry) {
  const std::size_t dash = entry.find('-');
  return dash == std::string_view::npos ? entry : entry.substr(dash + 1);
}

// The first entry that is meant, or -1.
template <class IsMeant>
int index_if(const StringList& entries, IsMeant is_meant) {
  const auto found = std::ranges::find_if(entries, is_meant);
  return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
}

int find_code(const StringList& entries, std::string_view code) {
  return index_if(entries, [&](std::string_view entry) { return equal_but_for_case(code_of(entry), code); });
}

// The entry that a typed text means: the same, else the one of its code, else the one of that name; -1 for none.
int find_typed(const StringList& entries, std::string_view text) {
  const int same = index_if(entries, [&](std::string_view entry) { return entry == text; });
  if (same >= 0) return same;
  const int by_code = find_code(entries, text.substr(0, text.find('-')));
  if (by_code >= 0) return by_code;
  return index_if(entries, [&](std::string_view entry) { return equal_but_for_case(name_of(entry), text); });
}

// A text with this code, for one without an entry: the code itself or, where its first two characters would count,
// "code-code". No text has a code with a "-" in it, so such a code is shown as it is.
std::string text_of(const std::string& code) {
  return code_of(code) == code || code.find('-') != std::string::npos ? code : code + "-" + code;
}

// Fills `list` with what `method` of the chart returns, and shows the entry of the code that `property` holds. When
// there is none it shows the code, but a text that is being typed and has this code stays, so that typing can go on.
void show_entries(ComboBox& list, AutomationObject& chart, std::string_view method, std::string_view property) {
  const Variant entries = chart.call(method);
  const std::string code = chart.get(property).to_text();
  const std::string typed = list.list_index() < 0 ? list.text() : "";
  list.clear();
  for (const std::string& entry : entries.to_text_list()) list.add(entry);
  if (const int current = find_code(list.entries(), code); current >= 0) {
    list.set_list_index(current);
  } else {
    list.set_text(code_of(typed) == code ? typed : text_of(code));
  }
}

// The chart's locale flag is a text, and may be any.
bool is_true(const Variant& text) {
  bool value = false;
  ignoring_errors([&] { value = text.to_boolean(); });
  return value;
}

}  // namespace

Format::Format(SettingsStore& settings) : settings_(settings) {
  caption = "Format";
  for (const std::string_view style : date_styles) cmbDateStyle.add(std::string(style));
  fraDateStyle.enabled = fraDateStyle.visible = false;
  txtFormatted.locked = true;
  txtRaw.set_text(first_sample);

  for (const auto& [button, code] : format_types) types_.push_back({dynamic_cast<OptionButton&>(*find(button)), code});
  for (const Option& type : types_) {
    type.button.on_click = [this, code = type.code] {
      edit([&](AutomationObject& chart) { chart.put("FormatType", code); });
    };
  }
  chkUseDefaultLocale.on_click = [this] { chkUseDefaultLocale_Click(); };
  cmbLanguage.on_click = [this] { cmbLanguage_Click(); };
  cmbLanguage.on_change = [this] { cmbLanguage_Change(); };
  cmbCountry.on_click = [this] { cmbCountry_Click(); };
  cmbCountry.on_change = [this] { cmbCountry_Change(); };
  cmbVariant.on_click = [this] { cmbVariant_Click(); };
  cmbVariant.on_change = [this] { cmbVariant_Change(); };
  cmbDateStyle.on_click = [this] { cmbDateStyle_Click(); };
  txtPattern.on_change = [this] { txtPattern_Change(); };
  txtRaw.on_change = [this] { txtRaw_Change(); };
  cmdSetDefault.on_click = [this] { cmdSetDefault_Click(); };
  cmdGetdefault.on_click = [this] { cmdGetdefault_Click(); };
}

std::span<const PropertyRow> Format::property_rows() { return rows; }

ObjectRef Format::live_chart() const { return chart_of(selected_control(), "diagram"); }

void Format::SelectionChanged() {
  reload();
  Changed = false;
}

void Format::ApplyChanges() {
  selected_control().put("FormatLanguage", code_of(cmbLanguage.text()));
  selected_control().put("FormatCountry", code_of(cmbCountry.text()));
  selected_control().put("FormatVariant", code_of(cmbVariant.text()));
  selected_control().put("FormatUseDefaultLocale", chkUseDefaultLocale.value() == 1);
  for (const Option& type : types_) {
    if (type.button.value()) selected_control().put("FormatType", type.code);
  }
}

// An edit goes to the chart; an event that showing the chart's state has fired is none. The page counts as changed even
// when the chart refuses, for its controls then say other than the chart.
void Format::edit(const std::function<void(AutomationObject& chart)>& tell) {
  if (may_reload_) {
    Changed = true;
    tell(*live_chart());
  }
  reload();
}

// A click that leaves nothing selected chooses nothing: the page shows again what the chart has.
void Format::choose(const ListBox& list, Tell tell) {
  if (list.list_index() < 0) return reload();
  edit([&](AutomationObject& chart) { (this->*tell)(chart); });
}

// A typed text becomes the entry that it means, which counts as a click. Without one, its code is the choice.
void Format::choose_typed(ComboBox& list, Tell tell) {
  const int entry = may_reload_ ? find_typed(list.entries(), list.text()) : -1;
  if (entry >= 0) return list.set_list_index(entry);
  edit([&](AutomationObject& chart) { (this->*tell)(chart); });
}

void Format::tell_language(AutomationObject& chart) const {
  chart.call_with("chooseLanguage", {code_of(cmbLanguage.text())});
}

void Format::tell_country(AutomationObject& chart) const {
  chart.call_with("chooseCountry", {code_of(cmbCountry.text())});
}

void Format::tell_variant(AutomationObject& chart) const { chart.put("FormatVariant", code_of(cmbVariant.text())); }

void Format::tell_date_style(AutomationObject& chart) const {
  chart.put("FormatDateStyle", std::int32_t{cmbDateStyle.list_index()});
}

void Format::chkUseDefaultLocale_Click() {
  edit([this](AutomationObject& chart) {
    const bool use_current = chkUseDefaultLocale.value() == 1;
    if (use_current == is_true(chart.get("FormatUseDefaultLocale"))) return;
    chart.put("FormatUseDefaultLocale", Variant(use_current).to_text());
    chart.put("FormatLanguage", code_of(cmbLanguage.text()));
    chart.put("FormatCountry", code_of(cmbCountry.text()));
    chart.put("FormatVariant", code_of(cmbVariant.text()));
  });
}

void Format::cmbLanguage_Click() { choose(cmbLanguage, &Format::tell_language); }
void Format::cmbCountry_Click() { choose(cmbCountry, &Format::tell_country); }
void Format::cmbVariant_Click() { choose(cmbVariant, &Format::tell_variant); }
void Format::cmbDateStyle_Click() { choose(cmbDateStyle, &Format::tell_date_style); }

void Format::cmbLanguage_Change() { choose_typed(cmbLanguage, &Format::tell_language); }
void Format::cmbCountry_Change() { choose_typed(cmbCountry, &Format::tell_country); }
void Format::cmbVariant_Change() { choose_typed(cmbVariant, &Format::tell_variant); }

void Format::txtPattern_Change() {
  if (!may_reload_) return;
  Changed = true;
  live_chart()->put("FormatPattern", txtPattern.text());
  refresh_sample();
}

void Format::txtRaw_Change() { refresh_sample(); }

void Format::cmdSetDefault_Click() {
  const ObjectRef chart = live_chart();
  save_format_defaults(settings_, {.type = chart->get("FormatType").to_long(),
                                   .use_default_locale = is_true(chart->get("FormatUseDefaultLocale")),
                                   .language = std::string(code_of(cmbLanguage.text())),
                                   .country = std::string(code_of(cmbCountry.text())),
                                   .variant = std::string(code_of(cmbVariant.text())),
                                   .pattern = txtPattern.text()});
}

// The lists get their texts from the chart, so that a saved code of any length arrives whole.
void Format::cmdGetdefault_Click() {
  const FormatDefaults saved = read_format_defaults(settings_);
  edit([&](AutomationObject& chart) {
    chart.put("FormatType", saved.type);
    chart.put("FormatUseDefaultLocale", Variant(saved.use_default_locale).to_text());
    chart.call_with("chooseLanguage", {saved.language});
    chart.call_with("chooseCountry", {saved.country});
    chart.put("FormatVariant", saved.variant);
    chart.put("FormatPattern", saved.pattern);
  });
}

void Format::reload() {
  if (may_reload_) {
    // The flag stands again however this ends.
    struct Reloading {
      bool& may_reload;
      ~Reloading() { may_reload = true; }
    } const reloading{may_reload_};
    may_reload_ = false;
    show_chart();
  }
  fraDateStyle.enabled = fraDateStyle.visible = cbDate.value();
}

void Format::show_chart() {
  const ObjectRef chart = live_chart();
  show_entries(cmbLanguage, *chart, "getLanguages", "FormatLanguage");
  show_entries(cmbCountry, *chart, "getCountries", "FormatCountry");
  show_entries(cmbVariant, *chart, "getVariants", "FormatVariant");

  select_option(types_, chart->get("FormatType").to_long());

  const bool use_current = is_true(chart->get("FormatUseDefaultLocale"));
  chkUseDefaultLocale.set_value(use_current ? 1 : 0);
  for (ComboBox* const list : {&cmbLanguage, &cmbCountry, &cmbVariant}) list->enabled = !use_current;

  const std::int32_t style = chart->get("FormatDateStyle").to_long();
  cmbDateStyle.set_list_index(style >= 0 && style < std::ssize(date_styles) ? style : -1);

  txtPattern.enabled = cbPattern.value();
  txtPattern.set_text(chart->get("FormatPattern").to_text());
  refresh_sample();
}

void Format::refresh_sample() {
  txtFormatted.set_text(live_chart()->call_with("formatSample", {txtRaw.text()}).to_text());
}

}  // namespace plexoras
