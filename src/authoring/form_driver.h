#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/form.h"

namespace plexoras {

/// One thing that a user does on a form.
struct FormAction {
  enum class Kind {
    Set,         ///< gives the control `value`
    Click,       ///< a button, check box or option button
    Key,         ///< presses the key `value` in a text box: Enter, Up or Down
    Focus,       ///< goes to a text box
    Call,        ///< calls `member` of a component with `arguments`, for what a user does in its place
    ChooseFile,  ///< answers an open-file dialog with the path `value`
  };
  Kind kind = Kind::Click;
  std::string control = {};  ///< its name
  std::string value = {};
  std::string member = {};
  std::vector<Variant> arguments = {};
};

/// Does what a user of `form` does, frames and hosted forms included.
///
/// What "Set" takes depends on the control:
///
/// | control | value |
/// |---|---|
/// | check box | `on` or `off`, `true` or `false`, `1` or `0` |
/// | option button | the same for on; another button of the group turns it off |
/// | list | the text of an entry, `#` and its index from 0, or the beginning of just one entry |
/// | box with a list that takes a text | the text of an entry, `#` and its index, or any text but `#` and digits |
/// | text box | any text |
///
/// Error 5 when the control is missing, cannot be used, or takes no such action or value; it says which, and what would
/// do. What a handler raises comes through. A file is chosen in a dialog and not on a form, so "ChooseFile" is error 5.
void act(Form& form, const FormAction& action);

/// A control as plain data, with those in it.
struct ListedControl {
  std::string_view kind;  ///< "CheckBox", as the control calls it
  std::string name;
  std::string caption;
  /// A text, "on" or "off" as "Set" takes them, or "grayed", which nobody can set; of a component that holds a table,
  /// its size and selection.
  std::string value = {};
  bool enabled = true;
  bool visible = true;
  bool usable = true;  ///< by a user: enabled and visible, as all around it
  Placement placement = {};

  // Of text boxes and boxes with a list.
  bool takes_text = false;
  bool multi_line = false;
  bool is_color = false;
  std::size_t caret = 0;

  // Of lists and boxes with a list.
  std::vector<std::string> choices = {};
  int choice = -1;  ///< the selected one, or -1

  /// Of frames, and of places where another form shows.
  std::vector<ListedControl> controls = {};
};

struct ListedForm {
  std::string caption;
  std::vector<ListedControl> controls;
};

/// The caption of the frame that `control` stands in, without its colon; of nested ones the innermost that has one.
/// Empty when there is none.
std::string frame_caption(const FormControl& control);

/// All that stands on `form` now, in its order.
ListedForm list_form(const Form& form);

}  // namespace plexoras
