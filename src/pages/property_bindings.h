#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "host/property_page.h"
#include "pages/page_conversions.h"

namespace plexoras {

/// How a property's value stands in a control of a page, and the type in which it is written.
enum class Encoding {
  Check,            ///< check box: Boolean, true when it is on; a grayed box is off
  CheckOrGrayed,    ///< check box: Boolean, true when it is on or grayed
  Real,             ///< text: Double, 0 for a text that is no number
  Integer,          ///< text: Integer; a text that is no such number gives the Integer text written before it, or 0
  PositiveInteger,  ///< the same, with 1 in place of anything less
  Text,             ///< text: String, as it stands
  Lookup,           ///< list: Integer, the selected entry's code in a lookup table of the control
  Options,          ///< option buttons: Long, the selected one's code
  OptionPair,       ///< two option buttons: Boolean
};

/// An option button by its name, and the code that it stands for.
struct OptionCode {
  std::string_view button;
  std::int32_t code;
};

/// One property on a page.
struct PropertyRow {
  std::string_view property;
  Encoding encoding;
  /// The control. Of an option pair it is the button that is asked when the value is written; the other one is not.
  std::string_view control = {};
  std::string_view lookup_table = {};
  /// The buttons of options and of an option pair (codes 0 and 1 for false and true), in the order in which they are
  /// looked at.
  std::span<const OptionCode> options = {};
};

/// Whether every name in `properties` has a row: for a static_assert beside each list of names.
constexpr bool all_in_rows(std::span<const PropertyRow> rows, std::span<const std::string_view> properties) {
  return std::ranges::all_of(properties, [&](std::string_view property) {
    return std::ranges::find(rows, property, &PropertyRow::property) != rows.end();
  });
}

/// Moves properties between the first selected control and the controls of a page, by the page's table, and notes in
/// `Changed` what the author edits.
///
///     constexpr PropertyRow rows[] = {
///         {"HasBorder", Encoding::Check, "chkHasBorder"},
///         {"PieStyle", Encoding::Lookup, "cmbPieStyle", "PIESTYLE"},
///     };
///     constexpr std::string_view order[] = {"PieStyle", "HasBorder"};
///
///     PropertyBindings bindings(page, rows);       // once the page has its controls
///     bindings.load(order);
///     std::int16_t working_value = 0;
///     bindings.apply(order, working_value);
///
/// Properties are read from the selected control and written to the chart that it shows (`getDiagram`), each on its
/// own, in the order of the list given. What either raises comes through; what was moved before it stays.
///
/// A member of the page, behind its controls. `rows` outlives it.
class PropertyBindings {
public:
  /// Finds the controls by name, and sets their events so that an edit sets `Changed`: each click and each change of
  /// text, but the choice of a lookup entry only when its code is not the one that the control has now. A page sets
  /// other handlers afterwards where it needs them. Error 9 when the page has no control of a name in `rows`, or one of
  /// a kind that cannot show the property.
  PropertyBindings(PropertyPage& page, std::span<const PropertyRow> rows);
  PropertyBindings(const PropertyBindings&) = delete;
  PropertyBindings& operator=(const PropertyBindings&) = delete;

  void load(std::span<const std::string_view> properties);
  /// `working_value` goes from one Integer text to the next (see `integer_of`): the page sets it to 0 and passes it to
  /// every call in one round of applying.
  void apply(std::span<const std::string_view> properties, std::int16_t& working_value);

  /// Writes a property to the chart that the selected control shows now.
  void write(std::string_view property, const Variant& value);

  /// Whether the code of the entry selected in the list of `property` differs from what the control has now. With
  /// nothing selected there is no choice that could: false.
  bool lookup_differs(std::string_view property) const;

private:
  struct Binding {
    const PropertyRow& row;
    FormControl& control;  // of options: the first button
    OptionGroup options;
  };

  Binding bind(const PropertyRow& row) const;
  void track(const Binding& binding);
  const Binding& find(std::string_view property) const;
  bool lookup_differs(const Binding& binding) const;
  void show(const Binding& binding, const Variant& value);
  Variant value_of(const Binding& binding, std::int16_t& working_value) const;

  PropertyPage& page_;
  std::vector<Binding> bindings_;
};

}  // namespace plexoras
