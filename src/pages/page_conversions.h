#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/form.h"

namespace plexoras {

/// The chart that `member` of the control ("getDiagram" or "diagram") returns. Error 91 that says so when it has none.
ObjectRef chart_of(AutomationObject& control, std::string_view member);

/// The Integer that `text` is, reals rounded. It goes into `working_value` too, and a text that is no such number gives
/// what stands there.
std::int16_t integer_of(std::string_view text, std::int16_t& working_value);

/// Fills `list` with the texts of the control's lookup table `table_name`, in its order, and selects the entry whose
/// code is `code`: the last one if there are several, and none if there is none.
///
/// What the control raises comes through, and so does error 6 or 13 for a code in the table that is no Integer.
void fill_from_lookup(ListBox& list, AutomationObject& control, std::string_view table_name, std::int16_t code);

/// The code that the control's lookup table `table_name` has at this moment for the selected entry of `list`. With
/// nothing selected the table is asked for index -1, which is error 9 in ours.
std::int16_t selected_code(const ListBox& list, AutomationObject& control, std::string_view table_name);

/// An option button and the code that it stands for.
struct Option {
  OptionButton& button;
  std::int32_t code;
};

/// The buttons that together stand for one property, in the order in which they are looked at.
using OptionGroup = std::vector<Option>;

/// Selects the button of `code`. With a code that no button has, the group stays as it is.
void select_option(const OptionGroup& group, std::int32_t code);

/// The code of the last selected button; 0 when none is selected.
std::int32_t selected_option(const OptionGroup& group);

}  // namespace plexoras
