#pragma once

#include "host/property_page.h"
#include "pages/page_conversions.h"

namespace plexoras {

/// The page "Format": how a chart shows its values, with a sample of it.
///
/// While the author edits, the chart itself holds the format: each edit goes to the object that the selected control
/// returns as `diagram`, and the page then shows what this object reports. Applying writes the format to the control,
/// except for the pattern and the date style, which have reached the chart already. What the chart, the control or the
/// settings store raise comes through.
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

  void SelectionChanged() override;
  void ApplyChanges() override;

  void chkUseDefaultLocale_Click();
  void cmbLanguage_Click();
  void cmbCountry_Click();
  void cmbVariant_Click();
  void cmbLanguage_Change();
  void cmbCountry_Change();
  void cmbDateStyle_Click();
  void txtPattern_Change();
  void txtRaw_Change();
  void cmdSetDefault_Click();
  void cmdGetdefault_Click();

private:
  ObjectRef chart() const;
  void edit(std::string_view property, const Variant& value);
  void choose(std::string_view method, const ComboBox& list);
  void reload();
  void show_chart();
  void refresh_sample();

  SettingsStore& settings_;
  OptionGroup types_;  // in the order in which applying looks at them
  // False while the page shows what the chart reports: selecting an option or an entry then fires its event too.
  bool may_reload_ = true;
};

}  // namespace plexoras
