#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "authoring/control_properties.h"
#include "authoring/property_pages.h"

namespace plexoras {

/// What there is to know about a property of a kind of control.
struct PropertyDescription {
  /// A value, and what authors read in its place.
  struct Code {
    std::string value;
    std::string caption;
  };

  std::string name;
  ControlProperties::Kind kind;
  std::string takes = {};          ///< what a text must be to be a value: "a number"; empty: any text will do
  std::string default_value = {};  ///< of a new control
  std::vector<Code> codes = {};    ///< empty: it has none
  std::string page = {};           ///< the property page that shows it, by name; empty: none
  std::string control = {};        ///< on that page
  /// Of the control, without its colon; behind that of its frame where other properties have it, too.
  std::string caption = {};
  std::string comment = {};  ///< words of the template about it
};

/// Describes the properties of `control`, a new one that has its defaults, in the order of `ControlProperties`.
///
/// Everything is taken from where the program itself has it: the table of properties, the tables of the pages, and the
/// sections of the control's template. Lines of the template that cannot be read are in the session's diagnostics.
std::vector<PropertyDescription> describe_properties(TemplateSession& session, PropertyPages& pages,
                                                     LiveControl& control);

}  // namespace plexoras
