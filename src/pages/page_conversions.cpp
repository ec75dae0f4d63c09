#include "pages/page_conversions.h"

#include <string>

namespace plexoras {
namespace {

// The object that `value` is; error 91 with the text `missing` when it is none.
ObjectRef object_in(const Variant& value, const std::string& missing) {
  try {
    return value.to_object();
  } catch (const AutomationError& error) {
    throw AutomationError(error.number(), missing, error.source());
  }
}

ObjectRef lookup_table(AutomationObject& control, std::string_view name) {
  return object_in(control.call_with("GetLookupTable", {name}),
                   "The selected control returns no lookup table " + std::string(name) + " (GetLookupTable)");
}

}  // namespace

ObjectRef chart_of(AutomationObject& control, std::string_view member) {
  return object_in(control.get(member),
                   "The selected control has no chart (" + std::string(member) + "): open it in design view");
}

std::int16_t integer_of(std::string_view text, std::int16_t& working_value) {
  ignoring_errors([&] { working_value = Variant(text).to_integer(); });
  return working_value;
}

void fill_from_lookup(ListBox& list, AutomationObject& control, std::string_view table_name, std::int16_t code) {
  list.clear();
  const ObjectRef table = lookup_table(control, table_name);
  const std::int32_t count = table->get("Count").to_long();
  int selection = -1;
  for (std::int32_t i = 0; i < count; ++i) {
    list.add(table->call_with("keyAtIndex", {i}).to_text());
    if (table->call_with("valueAtIndex", {i}).to_integer() == code) selection = i;
  }
  list.set_list_index(selection);
}

std::int16_t selected_code(const ListBox& list, AutomationObject& control, std::string_view table_name) {
  const ObjectRef table = lookup_table(control, table_name);
  const std::int32_t index = list.list_index();
  try {
    return table->call_with("valueAtIndex", {index}).to_integer();
  } catch (const AutomationError& error) {
    if (index >= 0) throw;
    throw AutomationError(error.number(),
                          "Nothing is selected in the list \"" + list.caption + "\" (lookup table " +
                              std::string(table_name) + "): select an entry",
                          list.name());
  }
}

void select_option(const OptionGroup& group, std::int32_t code) {
  for (const Option& option : group) {
    if (option.code == code) option.button.set_value(true);
  }
}

std::int32_t selected_option(const OptionGroup& group) {
  std::int32_t code = 0;
  for (const Option& option : group) {
    if (option.button.value()) code = option.code;
  }
  return code;
}

}  // namespace plexoras
