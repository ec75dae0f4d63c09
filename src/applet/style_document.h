#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/automation.h"

namespace plexoras {

/// A property that the style document carries.
struct StyleProperty {
  std::string_view name;
  ValueType type;
};

/// The properties of the style document in its order: those of the chart that are single values (neither the
/// contents nor the style itself), then `FormatDateStyle` and `negativeForeColor`. Lives as long as the program.
std::span<const StyleProperty> style_properties();

/// The row of `name` in `style_properties()`, or their number when there is none.
std::size_t find_style_property(std::string_view name);

/// One element a line, lines ended by LF:
///
///     <xml>
///     <DiagramType>5</>
///     <FontName>sans-serif</>
///     ...
///     </xml>
///
/// `values` has one value for each row of `style_properties()`, of the row's type. Numbers, Booleans and texts
/// stand in their text form, escaped as in the contents document; a text may hold any bytes, line breaks included.
std::string write_style_document(std::span<const Variant> values);

/// `values` with those replaced that `document` names. Elements of other names are passed over with all that is
/// in them; of two elements of one name the later one counts.
///
/// Error 5 with "line:column: what is wrong" where the document is not well formed, or a text is no value of its
/// property's type.
std::vector<Variant> read_style_document(std::string_view document, std::vector<Variant> values);

/// `document` without the elements that change nothing when it is read onto `values`, and without the line breaks
/// around these. All else stays byte for byte.
///
/// What is no style document comes back as it is: one that `read_style_document` refuses, and one whose first element
/// is no property.
std::string without_repeated_values(std::string_view document, std::vector<Variant> values);

}  // namespace plexoras
