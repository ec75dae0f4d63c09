#include "authoring/form_driver.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "authoring/page_text.h"
#include "authoring/suggestion.h"
#include "host/ascii.h"
#include "host/component_control.h"

namespace plexoras {
namespace {

constexpr std::string_view source = "FormDriver";

[[noreturn]] void refuse(const std::string& what) {
  throw AutomationError(RunTimeError::InvalidCall, what, std::string(source));
}

std::string quoted(std::string_view text) { return "\"" + printable(text) + "\""; }

const ControlContainer* inside_of(const FormControl& control) {
  if (const auto* frame = dynamic_cast<const Frame*>(&control)) return frame;
  if (const auto* host = dynamic_cast<const FormHost*>(&control)) return &host->hosted();
  return nullptr;
}

template <class Visit>
void for_each_control(const ControlContainer& container, const Visit& visit) {
  for (const auto& control : container.controls()) {
    visit(*control);
    if (const ControlContainer* const inside = inside_of(*control)) for_each_control(*inside, visit);
  }
}

std::string_view without_colon(std::string_view caption) {
  return caption.substr(0, caption.size() - (caption.ends_with(':') ? 1 : 0));
}

// Whether people who repeat a control's caption, maybe after that of its frame, would say `name`.
bool is_called(const FormControl& control, std::string_view name) {
  const std::string caption(without_colon(control.caption));
  const std::string_view said = without_colon(name);
  return !said.empty() &&
         (equal_but_for_case(caption, said) || equal_but_for_case(frame_caption(control) + ": " + caption, said));
}

// "; did you mean "cbEqualRows" (Rows: Equal size) or "cbEqualCols" (Columns: Equal size)?"
std::string did_you_mean_one_of(const std::vector<const FormControl*>& controls) {
  std::string text;
  for (const FormControl* const control : controls) {
    text += text.empty() ? "; did you mean " : control == controls.back() ? " or " : ", ";
    text += quoted(control->name());
    const std::string frame = frame_caption(*control);
    if (controls.size() > 1 && !frame.empty()) {
      text += " (" + frame + ": " + std::string(without_colon(control->caption)) + ")";
    }
  }
  return text + "?";
}

// The control of that name. Of several the one that can be used: a page may keep a hidden form of the same kind.
FormControl& control_named(const Form& form, std::string_view name) {
  FormControl* found = nullptr;
  std::vector<std::string> names;
  std::vector<const FormControl*> captioned;
  for_each_control(form, [&](FormControl& control) {
    if (control.name() == name && (found == nullptr || !found->is_usable())) found = &control;
    if (control.kind() == "Label") return;
    names.push_back(control.name());
    if (is_called(control, name)) captioned.push_back(&control);
  });
  if (found != nullptr) return *found;
  refuse("there is no control " + quoted(name) + " on " + quoted(form.caption) +
         (captioned.empty() ? did_you_mean(name, names) : did_you_mean_one_of(captioned)));
}

// Why a user cannot act on `control`: of itself, or because of what it stands in.
std::string obstacle(const FormControl& control) {
  for (const FormControl* at = &control; at != nullptr; at = at->container().enclosing_control()) {
    if (at->enabled && at->visible) continue;
    const std::string state = at->visible ? "disabled" : "hidden";
    if (at == &control) return quoted(control.name()) + " cannot be used: it is " + state;
    return quoted(control.name()) + " cannot be used: " + quoted(at->name()) + ", in which it stands, is " + state;
  }
  return quoted(control.name()) + " cannot be used";
}

void check_usable(const FormControl& control) {
  if (!control.is_usable()) refuse(obstacle(control));
}

[[noreturn]] void refuse_action(const FormControl& control, std::string_view action, std::string_view instead) {
  refuse(quoted(control.name()) + " is a " + std::string(control.kind()) + " and cannot be " + std::string(action) +
         (instead.empty() ? "" : "; " + std::string(instead)));
}

struct SwitchWord {
  std::string_view word;
  bool on;
};
constexpr SwitchWord switch_words[] = {{"on", true},     {"off", false}, {"true", true},
                                       {"false", false}, {"1", true},    {"0", false}};

bool switch_value(const FormControl& control, std::string_view value) {
  for (const SwitchWord& row : switch_words) {
    if (equal_but_for_case(row.word, value)) return row.on;
  }
  refuse(quoted(control.name()) + " takes on or off, not " + quoted(value));
}

void set_check_box(CheckBox& box, std::string_view value) {
  const bool on = switch_value(box, value);
  // A grayed box goes off first.
  if (box.value() == 2) box.user_click();
  if ((box.value() == 1) != on) box.user_click();
}

void set_option(OptionButton& button, std::string_view value) {
  if (!switch_value(button, value)) {
    refuse(quoted(button.name()) + " is turned off by turning on another button of its group");
  }
  button.user_click();
}

// "#2": an entry by its index.
bool is_index(std::string_view value) {
  return value.size() > 1 && value.starts_with('#') &&
         value.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

std::optional<int> entry_at(const ListBox& list, std::string_view value) {
  if (!is_index(value)) return std::nullopt;
  std::size_t index = 0;
  const auto [stop, error] = std::from_chars(value.data() + 1, value.data() + value.size(), index);
  if (error != std::errc() || index >= list.entries().size()) return std::nullopt;
  return static_cast<int>(index);
}

// The one entry that begins with `value`: lists mark entries behind their texts.
std::optional<int> entry_beginning_with(const ListBox& list, std::string_view value) {
  std::optional<int> found;
  for (std::size_t i = 0; i < list.entries().size() && !value.empty(); ++i) {
    if (!list.entries()[i].starts_with(value)) continue;
    if (found) return std::nullopt;
    found = static_cast<int>(i);
  }
  return found;
}

[[noreturn]] void refuse_entry(const ListBox& list, std::string_view value) {
  constexpr std::size_t few = 15;  // enough to read in a message
  const StringList& entries = list.entries();
  const std::string what = quoted(list.name()) + " has no entry " + quoted(value);
  if (entries.empty()) refuse(what + "; it is empty");
  const std::string suggestion = did_you_mean(value, entries);
  if (is_index(value) || entries.size() > few) {
    refuse(what + " (it has " + std::to_string(entries.size()) + ", #0 to #" + std::to_string(entries.size() - 1) +
           ")" + suggestion);
  }
  std::string listed;
  for (const std::string& entry : entries) listed += (listed.empty() ? "" : " | ") + entry;
  refuse(what + " (it has: " + listed + ")" + suggestion);
}

void set_list(ListBox& list, std::string_view value) {
  const StringList& entries = list.entries();
  const auto entry = std::ranges::find(entries, value);
  std::optional<int> index = entry == entries.end() ? entry_at(list, value) : static_cast<int>(entry - entries.begin());
  auto* const box = dynamic_cast<ComboBox*>(&list);
  if (!index && box != nullptr && !is_index(value) && box->user_type(value)) return;
  if (!index) index = entry_beginning_with(list, value);
  if (!index) refuse_entry(list, value);
  list.user_select(*index);
}

void set(FormControl& control, std::string_view value) {
  if (auto* const box = dynamic_cast<CheckBox*>(&control)) return set_check_box(*box, value);
  if (auto* const button = dynamic_cast<OptionButton*>(&control)) return set_option(*button, value);
  if (auto* const list = dynamic_cast<ListBox*>(&control)) return set_list(*list, value);
  auto* const box = dynamic_cast<TextBox*>(&control);
  if (box == nullptr) refuse_action(control, "set", control.kind() == "Button" ? "click it" : "");
  if (!box->user_type(value)) refuse(quoted(control.name()) + " cannot be changed: it only shows its text");
}

void click(FormControl& control) {
  if (auto* const button = dynamic_cast<Button*>(&control)) {
    button->user_click();
  } else if (auto* const check_box = dynamic_cast<CheckBox*>(&control)) {
    check_box->user_click();
  } else if (auto* const option = dynamic_cast<OptionButton*>(&control)) {
    option->user_click();
  } else {
    refuse_action(control, "clicked", control.kind() == "Label" || control.kind() == "Frame" ? "" : "set it");
  }
}

struct KeyName {
  std::string_view name;
  TextBox::Key key;
};
constexpr KeyName keys[] = {{"Enter", TextBox::Key::Enter}, {"Up", TextBox::Key::Up}, {"Down", TextBox::Key::Down}};

TextBox& text_box(FormControl& control, std::string_view action) {
  auto* const box = dynamic_cast<TextBox*>(&control);
  if (box == nullptr) refuse_action(control, action, {});
  return *box;
}

void press_key(FormControl& control, std::string_view name) {
  TextBox& box = text_box(control, "given keys");
  for (const KeyName& row : keys) {
    if (!equal_but_for_case(row.name, name)) continue;
    box.user_key(row.key);
    return;
  }
  refuse("there is no key " + quoted(name) + "; known: Enter, Up, Down");
}

void call(FormControl& control, const FormAction& action) {
  auto* const place = dynamic_cast<ComponentControl*>(&control);
  if (place == nullptr) refuse_action(control, "called", {});
  place->component().call(action.member, action.arguments);
}

std::string switch_word(int value) { return value == 0 ? "off" : value == 1 ? "on" : "grayed"; }

std::string selection(std::int32_t index) { return index < 0 ? "none" : std::to_string(index); }

// Components that hold a table tell of it; others have no value.
std::string value_of(AutomationObject& component) {
  std::string value;
  ignoring_errors([&] {
    const auto number = [&](std::string_view member) { return component.get(member).to_long(); };
    value = std::to_string(number("rowCount")) + " rows, " + std::to_string(number("colCount")) +
            " columns; selected: row " + selection(number("selectedRow")) + ", column " +
            selection(number("selectedCol"));
  });
  return value;
}

ListedControl list_control(const FormControl& control);

std::vector<ListedControl> list_controls(const ControlContainer& container) {
  std::vector<ListedControl> listed;
  for (const auto& control : container.controls()) listed.push_back(list_control(*control));
  return listed;
}

ListedControl list_control(const FormControl& control) {
  ListedControl listed{.kind = control.kind(),
                       .name = control.name(),
                       .caption = control.caption,
                       .enabled = control.enabled,
                       .visible = control.visible,
                       .usable = control.is_usable(),
                       .placement = control.placement};
  if (const ControlContainer* const inside = inside_of(control)) {
    listed.controls = list_controls(*inside);
  } else if (const auto* check_box = dynamic_cast<const CheckBox*>(&control)) {
    listed.value = switch_word(check_box->value());
  } else if (const auto* option = dynamic_cast<const OptionButton*>(&control)) {
    listed.value = switch_word(option->value() ? 1 : 0);
  } else if (const auto* box = dynamic_cast<const TextBox*>(&control)) {
    listed.value = box->text();
    listed.takes_text = !box->locked;
    listed.multi_line = box->multi_line;
    listed.is_color = box->is_color;
    listed.caret = box->caret;
  } else if (const auto* list = dynamic_cast<const ListBox*>(&control)) {
    const auto* const combo = dynamic_cast<const ComboBox*>(list);
    listed.value = list->text();
    listed.takes_text = combo != nullptr && combo->style() == ComboBox::Style::Typed;
    listed.choices = list->entries();
    listed.choice = list->list_index();
  } else if (const auto* place = dynamic_cast<const ComponentControl*>(&control)) {
    listed.value = value_of(place->component());
  }
  return listed;
}

}  // namespace

void act(Form& form, const FormAction& action) {
  if (action.kind == FormAction::Kind::ChooseFile) refuse("no dialog asks for a file here");
  FormControl& control = control_named(form, action.control);
  check_usable(control);
  // A handler may delete the control, so nothing follows.
  switch (action.kind) {
    case FormAction::Kind::Set:
      return set(control, action.value);
    case FormAction::Kind::Click:
      return click(control);
    case FormAction::Kind::Key:
      return press_key(control, action.value);
    case FormAction::Kind::Focus:
      text_box(control, "focused").user_focus();
      return;
    case FormAction::Kind::Call:
      return call(control, action);
    case FormAction::Kind::ChooseFile:
      return;
  }
}

std::string frame_caption(const FormControl& control) {
  const FormControl* frame = control.container().enclosing_control();
  while (frame != nullptr && frame->caption.empty()) frame = frame->container().enclosing_control();
  return frame == nullptr ? "" : std::string(without_colon(frame->caption));
}

ListedForm list_form(const Form& form) { return {form.caption, list_controls(form)}; }

}  // namespace plexoras
