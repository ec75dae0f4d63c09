#include "pages/format_page.h"

#include <algorithm>

#include "host/format_defaults.h"

namespace plexoras {
namespace {

constexpr std::string_view date_styles[] = {"Full", "Long", "Medium", "Short"};
constexpr std::string_view first_sample = "1234.5";

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

bool equal_but_for_case(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

// The entry that `text` means: the one of that text or code, else the one of that name; -1 when there is none.
int find_entry(const StringList& entries, std::string_view text) {
  const auto index_if = [&](auto is_meant) {
    const auto found = std::ranges::find_if(entries, is_meant);
    return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
  };
  const int by_code = index_if([&](std::string_view entry) {
    return entry == text || equal_but_for_case(entry.substr(0, entry.find('-')), text);
  });
  if (by_code >= 0) return by_code;
  return index_if([&](std::string_view entry) { return equal_but_for_case(name_of(entry), text); });
}

// Selects the entry that the text of `list` means, which counts as a click. False when there is none.
bool select_typed_entry(ComboBox& list) {
  const int entry = find_entry(list.entries(), list.text());
  if (entry < 0) return false;
  list.set_list_index(entry);
  return true;
}

// A text with this code, for one without an entry: the code itself or, where that is cut short, "code-code".
std::string text_of(const std::string& code) { return code_of(code) == code ? code : code + "-" + code; }

// Fills `list` with what `method` of the chart returns, and shows the entry of the code that `property` holds. When
// there is none it shows the code, but a text that is being typed and has this code stays, so that typing can go on.
void show_entries(ComboBox& list, AutomationObject& chart, std::string_view method, std::string_view property) {
  const Variant entries = chart.call(method);
  const std::string code = chart.get(property).to_text();
  const std::string typed = list.list_index() < 0 ? list.text() : "";
  list.clear();
  for (const std::string& entry : entries.to_text_list()) list.add(entry);
  if (const int current = find_entry(list.entries(), code); current >= 0) {
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

Format::Format(SettingsStore& settings)
    : settings_(settings), types_{{cbPattern, 0}, {cbNumber, 3},  {cbCurrency, 1},
                                  {cbPercent, 2}, {cbDefault, 4}, {cbDate, 5}} {
  caption = "Format";
  for (const std::string_view style : date_styles) cmbDateStyle.add(std::string(style));
  fraDateStyle.enabled = fraDateStyle.visible = false;
  txtFormatted.locked = true;
  txtRaw.set_text(first_sample);

  for (const Option& type : types_) {
    type.button.on_click = [this, code = type.code] { edit("FormatType", code); };
  }
  chkUseDefaultLocale.on_click = [this] { chkUseDefaultLocale_Click(); };
  cmbLanguage.on_click = [this] { cmbLanguage_Click(); };
  cmbLanguage.on_change = [this] { cmbLanguage_Change(); };
  cmbCountry.on_click = [this] { cmbCountry_Click(); };
  cmbCountry.on_change = [this] { cmbCountry_Change(); };
  cmbVariant.on_click = [this] { cmbVariant_Click(); };
  cmbDateStyle.on_click = [this] { cmbDateStyle_Click(); };
  txtPattern.on_change = [this] { txtPattern_Change(); };
  txtRaw.on_change = [this] { txtRaw_Change(); };
  cmdSetDefault.on_click = [this] { cmdSetDefault_Click(); };
  cmdGetdefault.on_click = [this] { cmdGetdefault_Click(); };
}

ObjectRef Format::chart() const { return selected_control().get("diagram").to_object(); }

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

// An edit goes to the chart; an event that showing the chart's state has fired is none.
void Format::edit(std::string_view property, const Variant& value) {
  if (may_reload_) chart()->put(property, value);
  reload();
}

void Format::choose(std::string_view method, const ComboBox& list) {
  if (may_reload_) chart()->call_with(method, {code_of(list.text())});
  reload();
}

void Format::chkUseDefaultLocale_Click() {
  const bool use_current = chkUseDefaultLocale.value() == 1;
  if (may_reload_ && use_current != is_true(chart()->get("FormatUseDefaultLocale"))) {
    chart()->put("FormatUseDefaultLocale", Variant(use_current).to_text());
    chart()->put("FormatLanguage", code_of(cmbLanguage.text()));
    chart()->put("FormatCountry", code_of(cmbCountry.text()));
    chart()->put("FormatVariant", code_of(cmbVariant.text()));
  }
  reload();
}

void Format::cmbLanguage_Click() { choose("chooseLanguage", cmbLanguage); }
void Format::cmbCountry_Click() { choose("chooseCountry", cmbCountry); }
void Format::cmbVariant_Click() { edit("FormatVariant", code_of(cmbVariant.text())); }
void Format::cmbDateStyle_Click() { edit("FormatDateStyle", std::int32_t{cmbDateStyle.list_index()}); }

void Format::cmbLanguage_Change() {
  if (!may_reload_ || !select_typed_entry(cmbLanguage)) cmbLanguage_Click();
}

void Format::cmbCountry_Change() {
  if (!may_reload_ || !select_typed_entry(cmbCountry)) cmbCountry_Click();
}

void Format::txtPattern_Change() {
  if (!may_reload_) return;
  chart()->put("FormatPattern", txtPattern.text());
  refresh_sample();
  Changed = true;
}

void Format::txtRaw_Change() { refresh_sample(); }

void Format::cmdSetDefault_Click() {
  save_format_defaults(settings_, {.type = chart()->get("FormatType").to_long(),
                                   .use_default_locale = is_true(chart()->get("FormatUseDefaultLocale")),
                                   .language = std::string(code_of(cmbLanguage.text())),
                                   .country = std::string(code_of(cmbCountry.text())),
                                   .variant = std::string(code_of(cmbVariant.text())),
                                   .pattern = txtPattern.text()});
}

void Format::cmdGetdefault_Click() {
  const FormatDefaults saved = read_format_defaults(settings_);
  chart()->put("FormatType", saved.type);
  chart()->put("FormatUseDefaultLocale", Variant(saved.use_default_locale).to_text());
  cmbLanguage.set_text(saved.language);
  cmbCountry.set_text(saved.country);
  cmbVariant.set_text(saved.variant);
  // A variant's text has no event.
  edit("FormatVariant", saved.variant);
  chart()->put("FormatPattern", saved.pattern);
  reload();
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
    Changed = true;
  }
  fraDateStyle.enabled = fraDateStyle.visible = cbDate.value();
}

void Format::show_chart() {
  const ObjectRef object = chart();
  show_entries(cmbLanguage, *object, "getLanguages", "FormatLanguage");
  show_entries(cmbCountry, *object, "getCountries", "FormatCountry");
  show_entries(cmbVariant, *object, "getVariants", "FormatVariant");

  select_option(types_, object->get("FormatType").to_long());

  const bool use_current = is_true(object->get("FormatUseDefaultLocale"));
  chkUseDefaultLocale.set_value(use_current ? 1 : 0);
  for (ComboBox* const list : {&cmbLanguage, &cmbCountry, &cmbVariant}) list->enabled = !use_current;

  const std::int32_t style = object->get("FormatDateStyle").to_long();
  cmbDateStyle.set_list_index(style >= 0 && style < std::ssize(date_styles) ? style : -1);

  txtPattern.enabled = cbPattern.value();
  txtPattern.set_text(object->get("FormatPattern").to_text());
  refresh_sample();
}

void Format::refresh_sample() { txtFormatted.set_text(chart()->call_with("formatSample", {txtRaw.text()}).to_text()); }

}  // namespace plexoras
