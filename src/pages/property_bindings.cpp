#include "pages/property_bindings.h"

#include <cassert>
#include <string>

namespace plexoras {
namespace {

// Whether a control is of one of these kinds.
template <class... Kinds>
bool is_any_of(const FormControl& control) {
  return ((dynamic_cast<const Kinds*>(&control) != nullptr) || ...);
}

bool can_show(const FormControl& control, Encoding encoding) {
  switch (encoding) {
    case Encoding::Check:
    case Encoding::CheckOrGrayed:
      return is_any_of<CheckBox>(control);
    case Encoding::Real:
    case Encoding::Integer:
    case Encoding::PositiveInteger:
    case Encoding::Text:
      return is_any_of<TextBox, ComboBox>(control);
    case Encoding::Lookup:
      return is_any_of<ComboBox>(control);
    case Encoding::Options:
    case Encoding::OptionPair:
      return is_any_of<OptionButton>(control);
  }
  return false;
}

FormControl& control_named(const PropertyPage& page, std::string_view name, const PropertyRow& row) {
  FormControl* const control = page.find(name);
  if (control != nullptr && can_show(*control, row.encoding)) return *control;
  const std::string fault = control == nullptr ? "is not there" : "is of the kind " + std::string(control->kind());
  throw AutomationError(RunTimeError::SubscriptOutOfRange,
                        "The control \"" + std::string(name) + "\" for the property " + std::string(row.property) +
                            " " + fault + ": correct the page's table",
                        page.caption);
}

// Numbers and texts stand in text boxes and in boxes that drop down a list.

std::string text_in(const FormControl& control) {
  if (const auto* box = dynamic_cast<const ComboBox*>(&control)) return box->text();
  return dynamic_cast<const TextBox&>(control).text();
}

void show_text(FormControl& control, std::string_view text) {
  if (auto* const box = dynamic_cast<ComboBox*>(&control)) return box->set_text(text);
  dynamic_cast<TextBox&>(control).set_text(text);
}

}  // namespace

PropertyBindings::PropertyBindings(PropertyPage& page, std::span<const PropertyRow> rows) : page_(page) {
  bindings_.reserve(rows.size());
  for (const PropertyRow& row : rows) bindings_.push_back(bind(row));
  for (const Binding& binding : bindings_) track(binding);
}

PropertyBindings::Binding PropertyBindings::bind(const PropertyRow& row) const {
  OptionGroup options;
  for (const auto& [button, code] : row.options) {
    options.push_back({dynamic_cast<OptionButton&>(control_named(page_, button, row)), code});
  }
  if (row.control.empty() && !options.empty()) return {row, options.front().button, options};
  return {row, control_named(page_, row.control, row), options};
}

void PropertyBindings::track(const Binding& binding) {
  const auto changed = [this] { page_.Changed = true; };
  for (const Option& option : binding.options) option.button.on_click = changed;
  if (auto* const box = dynamic_cast<CheckBox*>(&binding.control)) box->on_click = changed;
  if (auto* const box = dynamic_cast<TextBox*>(&binding.control)) box->on_change = changed;
  if (auto* const box = dynamic_cast<ComboBox*>(&binding.control)) {
    box->on_change = changed;
    if (binding.row.encoding == Encoding::Lookup) {
      box->on_click = [this, &binding] {
        if (lookup_differs(binding)) page_.Changed = true;
      };
    }
  }
}

void PropertyBindings::load(std::span<const std::string_view> properties) {
  for (const std::string_view property : properties) {
    const Variant value = page_.selected_control().get(property);
    try {
      show(find(property), value);
    } catch (const AutomationError& error) {
      // A value or a lookup table that the page cannot show: say of which property.
      throw AutomationError(error.number(), std::string(property) + ": " + error.description(), error.source());
    }
  }
}

void PropertyBindings::apply(std::span<const std::string_view> properties, std::int16_t& working_value) {
  for (const std::string_view property : properties) write(property, value_of(find(property), working_value));
}

void PropertyBindings::write(std::string_view property, const Variant& value) {
  chart_of(page_.selected_control(), "getDiagram")->put(property, value);
}

bool PropertyBindings::lookup_differs(std::string_view property) const { return lookup_differs(find(property)); }

bool PropertyBindings::lookup_differs(const Binding& binding) const {
  const auto& list = dynamic_cast<const ComboBox&>(binding.control);
  if (list.list_index() < 0) return false;
  AutomationObject& control = page_.selected_control();
  return selected_code(list, control, binding.row.lookup_table) != control.get(binding.row.property).to_long();
}

const PropertyBindings::Binding& PropertyBindings::find(std::string_view property) const {
  const auto found = std::ranges::find_if(bindings_, [&](const Binding& b) { return b.row.property == property; });
  assert(found != bindings_.end() && "a list of properties names one that has no row");
  return *found;
}

void PropertyBindings::show(const Binding& binding, const Variant& value) {
  switch (binding.row.encoding) {
    case Encoding::Check:
      return dynamic_cast<CheckBox&>(binding.control).set_value(value.to_long() & 1);
    case Encoding::CheckOrGrayed:
      return dynamic_cast<CheckBox&>(binding.control).set_value(value.to_boolean() ? 1 : 0);
    case Encoding::Real:
    case Encoding::Integer:
    case Encoding::PositiveInteger:
    case Encoding::Text:
      return show_text(binding.control, value.to_text());
    case Encoding::Lookup:
      return fill_from_lookup(dynamic_cast<ComboBox&>(binding.control), page_.selected_control(),
                              binding.row.lookup_table, value.to_integer());
    case Encoding::Options:
      return select_option(binding.options, value.to_long());
    case Encoding::OptionPair: {
      const int code = value.to_boolean() ? 1 : 0;
      for (const Option& option : binding.options) option.button.set_value(option.code == code);
      return;
    }
  }
}

Variant PropertyBindings::value_of(const Binding& binding, std::int16_t& working_value) const {
  switch (binding.row.encoding) {
    case Encoding::Check:
      return dynamic_cast<const CheckBox&>(binding.control).value() == 1;
    case Encoding::CheckOrGrayed:
      return dynamic_cast<const CheckBox&>(binding.control).value() >= 1;
    case Encoding::Real:
      return number_of_text(text_in(binding.control)).value_or(0);
    case Encoding::Integer:
      return integer_of(text_in(binding.control), working_value);
    case Encoding::PositiveInteger:
      integer_of(text_in(binding.control), working_value);
      return working_value = std::max<std::int16_t>(working_value, 1);
    case Encoding::Text:
      return text_in(binding.control);
    case Encoding::Lookup:
      return selected_code(dynamic_cast<const ComboBox&>(binding.control), page_.selected_control(),
                           binding.row.lookup_table);
    case Encoding::Options:
      return selected_option(binding.options);
    case Encoding::OptionPair: {
      // One button alone is asked, so that a pair of which neither is selected has a value too.
      const auto& asked = dynamic_cast<const OptionButton&>(binding.control);
      const auto option = std::ranges::find_if(binding.options, [&](const Option& o) { return &o.button == &asked; });
      return asked.value() == (option->code == 1);
    }
  }
  return {};
}

}  // namespace plexoras
