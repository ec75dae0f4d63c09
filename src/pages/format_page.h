#pragma once

#include <functional>

#include "host/property_page.h"
#include "pages/page_conversions.h"
#include "pages/property_bindings.h"

namespace plexoras {

/// The page "Format": how a chart shows its values, with a sample of it.
///
/// While the author edits, the chart itself holds the format: each edit goes to the object that the selected control
/// returns as `diagram`, and the page then shows what this object reports. Applying writes the format to the control,
/// except for the pattern and the date style, which have reached the chart already. What the chart, the control or the
/// settings store raise comes through; an edit that the chart refuses has changed the page all the same.
///
/// Made by the host that shows it; lives as long as that needs it, for any number of selections.
class Format final : public PropertyPage {
public:
  Frame& fraType = add<Frame>("fraType", "Format");
  OptionButton& cbPattern = fraType.add<OptionButton>("cbPattern", "Pattern");
  OptionButton& cbCurrency = fraType.add<OptionButton>("cbCurrency", "Currency");
  OptionButton& cbPercent = fraType.add<OptionButton>("cbPercent", "Percent");
  OptionButton& cbNumber = fraType.add<OptionButton>("cbNumber", "Number");
  OptionButton& cbDefault = fraType.add<OptionButton>("cbDefault", "Default");
  OptionButton& cbDate = fraType.add<OptionButton>("cbDate", "Date");
  TextBox& txtPattern = add<TextBox>("txtPattern", "Pattern:");

  Frame& fraLocale = add<Frame>("fraLocale", "Locale");
  CheckBox& chkUseDefaultLocale = fraLocale.add<CheckBox>("chkUseDefaultLocale", "Use current locale");
  // Entries are "code-name", as in "de-Deutsch"; a text that is typed may be a code alone.
  ComboBox& cmbLanguage = fraLocale.add<ComboBox>("cmbLanguage", ComboBox::Style::Typed, "Language:");
  ComboBox& cmbCountry = fraLocale.add<ComboBox>("cmbCountry", ComboBox::Style::Typed, "Country:");
  ComboBox& cmbVariant = fraLocale.add<ComboBox>("cmbVariant", ComboBox::Style::Typed, "Variant:");

  Frame& fraDateStyle = add<Frame>("fraDateStyle");
  ComboBox& cmbDateStyle = fraDateStyle.add<ComboBox>("cmbDateStyle", ComboBox::Style::ListOnly, "Date Style:");

  Frame& fraSample = add<Frame>("fraSample", "Sample");
  TextBox& txtRaw = fraSample.add<TextBox>("txtRaw", "Value:");
  TextBox& txtFormatted = fraSample.add<TextBox>("txtFormatted", "Formatted:");

  Button& cmdSetDefault = add<Button>("cmdSetDefault", "Set As Default");
  Button& cmdGetdefault = add<Button>("cmdGetdefault", "Reset To Default");

  /// `settings` keeps the author's defaults and outlives the page.
  explicit Format(SettingsStore& settings);
  /// The properties that it shows, and where; a list without a lookup table stands for its indexes. Lives as long as
  /// the program.
  static std::span<const PropertyRow> property_rows();

  void SelectionChanged() override;
  void ApplyChanges() override;

  void chkUseDefaultLocale_Click();
  void cmbLanguage_Click();
  void cmbCountry_Click();
  void cmbVariant_Click();
  void cmbLanguage_Change();
  void cmbCountry_Change();
  void cmbVariant_Change();
  void cmbDateStyle_Click();
  void txtPattern_Change();
  void txtRaw_Change();
  void cmdSetDefault_Click();
  void cmdGetdefault_Click();

private:
  // Tells the chart what a control says.
  using Tell = void (Format::*)(AutomationObject& chart) const;

  ObjectRef live_chart() const;
  void edit(const std::function<void(AutomationObject& chart)>& tell);
  void choose(const ListBox& list, Tell tell);
  void choose_typed(ComboBox& list, Tell tell);
  void tell_language(AutomationObject& chart) const;
  void tell_country(AutomationObject& chart) const;
  void tell_variant(AutomationObject& chart) const;
  void tell_date_style(AutomationObject& chart) const;
  void reload();
  void show_chart();
  void refresh_sample();

  SettingsStore& settings_;
  OptionGroup types_;
  // False while the page shows what the chart reports: selecting an option or an entry then fires its event too.
  bool may_reload_ = true;
};

}  // namespace plexoras
