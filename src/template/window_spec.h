#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/form.h"
#include "template/template_session.h"

namespace plexoras {

/// One thing in an input form, as a template's author describes it.
///
///     #DEFINE KIND_SPEC 'Kind:|choice|note=Note;tip=Tip'      a setting: caption, type, what the type takes, options
///     #DEFINE KIND_COMMENT 'Sets the colour, too.'            words about the entry KIND
///     #DEFINE HINT_MESSAGESPEC 'Leave empty what you like.'   words of their own
///     #DEFINE MORE_DIVIDERSPEC 'More'                         what follows stands in a group with this title
///
/// docs/window-spec.md explains all of it.
struct WindowSpecEntry {
  enum class Kind { Setting, Message, Divider, Unreadable };
  enum class Input { Text, MultiLine, Color, Integer, Number, Check, Choice, Combo };

  struct Choice {
    std::string value;
    std::string label;
  };

  /// What the value of another setting must be for the entry to show.
  struct Condition {
    std::string key;
    StringList values;
    bool negated = false;  ///< shows unless it is one of them
  };

  Kind kind = Kind::Setting;
  std::string key;           ///< the entry's name without its ending; of a setting, the custom property
  std::string name;          ///< the whole name: "KIND_SPEC"
  std::string text = {};     ///< caption, words or title; of an entry that cannot be read, "file:line:col: what"
  std::string comment = {};  ///< empty: none
  Input input = Input::Text;
  /// What a list offers; for a check box, the values for on and off.
  std::vector<Choice> choices = {};
  /// The bounds of a number, as written; empty: none.
  std::string lowest = {};
  std::string highest = {};
  bool disabled = false;
  Placement placement = {};
  std::optional<Condition> condition = {};
};

/// The entries of section `section` of template file `file`, in the order of their first definitions, after
/// preprocessing it once with `values` as variables.
///
/// What cannot be read is told in the session's diagnostics, with its place, and stands as `Unreadable` between the
/// others, a condition behind the entry that it was for. What is no definition of its own has the name "UNREADABLE_1"
/// and so on, of lines the first hundred. A section that is missing has no entries. Error 75 when the file cannot be
/// read.
std::vector<WindowSpecEntry> read_window_spec(TemplateSession& session, std::string_view file, std::string_view section,
                                              const Dictionary& values);

}  // namespace plexoras
