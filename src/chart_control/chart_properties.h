#pragma once

#include <span>
#include <string_view>

#include "host/automation.h"

namespace plexoras {

/// What the chart control does after it has written a property to the chart component.
enum class AfterPut {
  RefreshAndNotify,  ///< repaint the chart, then tell the host that the property changed
  NotifyOnly,        ///< tell the host; nothing that the chart shows has changed
};

/// One property of the chart. The chart component keeps its value; the control passes it on by name.
struct ForwardedProperty {
  std::string_view name;  ///< the chart component's member, letter for letter
  ValueType type;         ///< the exact type in which the value is written
  AfterPut after_put = AfterPut::RefreshAndNotify;
  std::string_view notified_as = {};  ///< empty: the same as `name`

  /// The name under which the host hears of a change.
  constexpr std::string_view notification() const { return notified_as.empty() ? name : notified_as; }
};

/// Every property of the chart, in the order in which lists of properties show them. Lives as long as the program.
std::span<const ForwardedProperty> forwarded_properties();

/// The row of the property `name` (case-sensitive), or null when the chart has none of that name.
const ForwardedProperty* find_forwarded_property(std::string_view name);

}  // namespace plexoras
