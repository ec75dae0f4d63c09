#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/automation.h"
#include "host/platform.h"

namespace plexoras {

class FormControl;

/// What holds controls: a form, or a frame on it. It owns them.
class ControlContainer {
public:
  ControlContainer() = default;
  virtual ~ControlContainer();
  ControlContainer(const ControlContainer&) = delete;
  ControlContainer& operator=(const ControlContainer&) = delete;

  /// Makes a control of type `Control` in this container, as in
  /// `Button& cmdOK = add<Button>("cmdOK", "OK");`, from its name and what else its constructor takes.
  template <class Control, class... Arguments>
  Control& add(std::string name, Arguments&&... arguments) {
    auto control = std::make_unique<Control>(*this, std::move(name), std::forward<Arguments>(arguments)...);
    Control& added = *control;
    controls_.push_back(std::move(control));
    return added;
  }

  /// The control of that name here, in a frame below or in a hosted form, or null.
  FormControl* find(std::string_view name) const;
  /// The controls that stand directly here, in the order made.
  const std::vector<std::unique_ptr<FormControl>>& controls() const { return controls_; }
  /// Deletes every control here. Handlers may call it, those of the deleted controls included.
  void remove_controls() { controls_.clear(); }

  /// The control that this container is the inside of; null for a form in a window of its own.
  FormControl* enclosing_control() const { return enclosing_control_; }

private:
  friend class Frame;
  friend class FormHost;

  std::vector<std::unique_ptr<FormControl>> controls_;
  FormControl* enclosing_control_ = nullptr;
};

/// Where a control is wanted in its container, and how large, in pixels. A form layer decides what is left open.
struct Placement {
  std::optional<int> left = {};
  std::optional<int> top = {};
  std::optional<int> width = {};
  std::optional<int> height = {};
};

/// What all controls have. A control is state and events; a form layer gives it a place on the screen and draws it.
///
/// Whoever uses the form acts through the functions whose names begin with `user_`. They do nothing and answer false
/// when the control cannot be used, and otherwise do what code does with the other functions: the same change
/// fires the same event, once, and a value that stays the same fires nothing. A handler that raises leaves the new
/// value.
class FormControl {
public:
  FormControl(ControlContainer& container, std::string name, std::string caption_text = {});
  virtual ~FormControl();
  FormControl(const FormControl&) = delete;
  FormControl& operator=(const FormControl&) = delete;

  const std::string& name() const { return name_; }
  ControlContainer& container() const { return container_; }
  /// "CheckBox", "TextBox", ...: the control's type, for form layers.
  virtual std::string_view kind() const = 0;
  /// Whether a user can act on it: enabled and visible, and so is every frame around it.
  bool is_usable() const;

  std::string caption;
  bool enabled = true;
  bool visible = true;
  Placement placement;  ///< for form layers

private:
  ControlContainer& container_;
  std::string name_;
};

/// A text on the form.
class Label final : public FormControl {
public:
  using FormControl::FormControl;
  std::string_view kind() const override { return "Label"; }
};

/// A button, which does something at once.
class Button final : public FormControl {
public:
  using FormControl::FormControl;
  std::string_view kind() const override { return "Button"; }

  std::function<void()> on_click;

  void press();
  bool user_click();
};

/// A box that is off (0), on (1) or grayed (2), which stands for "neither".
class CheckBox final : public FormControl {
public:
  using FormControl::FormControl;
  std::string_view kind() const override { return "CheckBox"; }

  std::function<void()> on_click;

  int value() const { return value_; }
  /// Error 5 for a value other than 0, 1 and 2.
  void set_value(int value);
  /// Turns 0 to 1, and 1 or 2 to 0.
  bool user_click();

private:
  int value_ = 0;
};

/// One of the buttons in a frame (or on the form) of which at most one is selected.
class OptionButton final : public FormControl {
public:
  using FormControl::FormControl;
  std::string_view kind() const override { return "OptionButton"; }

  /// Fires when the button becomes selected, not when another takes its place or code turns it off.
  std::function<void()> on_click;

  bool value() const { return value_; }
  void set_value(bool value);
  bool user_click();

private:
  bool value_ = false;
};

/// A box with text that can be edited.
class TextBox final : public FormControl {
public:
  using FormControl::FormControl;
  std::string_view kind() const override { return "TextBox"; }

  /// The keys that handlers act on.
  enum class Key : std::int16_t { Enter = 13, Up = 38, Down = 40 };

  std::function<void()> on_change;
  std::function<void(Key)> on_key;
  std::function<void()> on_focus;

  bool locked = false;      ///< shows its text, but a user cannot change it
  bool multi_line = false;  ///< for form layers: the text may have several lines
  bool is_color = false;    ///< for form layers: the text names a colour
  std::size_t caret = 0;    ///< for form layers: the byte before which typing goes on

  const std::string& text() const { return text_; }
  /// Another text puts the caret at its beginning.
  void set_text(std::string_view text);
  /// The whole text after the user's edit. Another text puts the caret at its end.
  bool user_type(std::string_view text);
  bool user_key(Key key);
  bool user_focus();

private:
  void change(std::string_view text, std::size_t new_caret);

  std::string text_;
};

/// A list of which at most one entry is selected.
class ListBox : public FormControl {
public:
  using FormControl::FormControl;
  std::string_view kind() const override { return "ListBox"; }

  /// Fires when another entry, or none, has become the selected one.
  std::function<void()> on_click;

  const StringList& entries() const { return entries_; }
  void add(std::string entry) { entries_.push_back(std::move(entry)); }
  /// Changes the text of an entry; the selection stays. Error 9 when there is no such entry.
  void set_entry(std::size_t index, std::string entry);
  /// Takes all entries out, and the selection with them, without an event.
  virtual void clear();

  /// The selected entry, counted from 0, or -1.
  int list_index() const { return list_index_; }
  /// Error 5 when there is no such entry.
  void set_list_index(int index);
  bool user_select(int index);
  /// The selected entry's text; empty when there is none.
  virtual std::string text() const;

protected:
  /// Takes note of a new selection. True when it is another one, so that the event is due.
  virtual bool select(int index);

private:
  StringList entries_;
  int list_index_ = -1;
};

/// A list that drops down from a box, into which other text can be typed where the style allows it.
///
/// Text that was typed, or set by code, is no selection even when an entry has the same text: `list_index()` is then
/// -1.
class ComboBox final : public ListBox {
public:
  enum class Style { Typed, ListOnly };

  ComboBox(ControlContainer& container, std::string name, Style style, std::string caption_text = {});
  std::string_view kind() const override { return "ComboBox"; }
  Style style() const { return style_; }

  /// Fires when the text has been changed other than by selecting an entry.
  std::function<void()> on_change;

  /// The selected entry's text or the typed one.
  std::string text() const override;
  /// With the style `ListOnly` this selects the first entry of that text, as if clicked; error 5 when none has it.
  void set_text(std::string_view text);
  /// The whole text after the user's edit; false with the style `ListOnly`.
  bool user_type(std::string_view text);
  void clear() override;

protected:
  bool select(int index) override;

private:
  Style style_;
  std::string typed_text_;
};

/// A border around controls. Its option buttons are a group of their own; frames may stand in frames.
class Frame final : public FormControl, public ControlContainer {
public:
  Frame(ControlContainer& container, std::string name, std::string caption_text = {});
  std::string_view kind() const override { return "Frame"; }
};

/// A window with controls. A form derives from it, makes its controls as members and sets their events:
///
///     class AskName : public Form {
///     public:
///       TextBox& txtName = add<TextBox>("txtName", "Name:");
///       Button& cmdOK = add<Button>("cmdOK", "OK");
///       AskName() { cmdOK.on_click = [this] { cmdOK_Click(); }; }
///       void cmdOK_Click() { close(); }
///     };
class Form : public ControlContainer {
public:
  std::string caption;

  /// Loads the form, has the platform's presenter show it, and returns when it is closed. Without a presenter
  /// the form closes at once. Error 5 when it is open already.
  void ShowModal(const Platform& platform);
  bool is_open() const { return is_open_; }
  /// Ends `ShowModal`, or rather: lets the presenter end it.
  void close() { is_open_ = false; }

  /// Called by `ShowModal` each time before the form shows. It may close the form.
  virtual void Form_Load() {}
  /// Called by the `FormHost` in which the form stood, when that goes: drops whatever belongs to the host's form, which
  /// may go as well. The form may live on, and stand in another host.
  virtual void leave_host() {}

private:
  bool is_open_ = false;
};

/// The place on a form where another form shows, such as the editor component of a page.
class FormHost final : public FormControl {
public:
  /// `hosted` is held as long as this control, which then calls its `leave_host`. Error 5 when it stands in another
  /// host, 91 for a null one.
  FormHost(ControlContainer& container, std::string name, std::shared_ptr<Form> hosted);
  ~FormHost() override;
  std::string_view kind() const override { return "FormHost"; }
  Form& hosted() const { return *hosted_; }

private:
  std::shared_ptr<Form> hosted_;
};

}  // namespace plexoras
