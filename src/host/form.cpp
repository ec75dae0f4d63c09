#include "host/form.h"

#include <algorithm>

#include "host/while_set.h"

namespace plexoras {

namespace {

// Calls a handler. It may delete the control that it belongs to, so a copy is called and nothing follows.
template <class... Arguments>
void fire(std::function<void(Arguments...)> event, Arguments... arguments) {
  if (event) event(arguments...);
}

const ControlContainer* inside_of(const FormControl& control) {
  if (const auto* frame = dynamic_cast<const Frame*>(&control)) return frame;
  if (const auto* host = dynamic_cast<const FormHost*>(&control)) return &host->hosted();
  return nullptr;
}

}  // namespace

ControlContainer::~ControlContainer() = default;

FormControl* ControlContainer::find(std::string_view name) const {
  for (const auto& control : controls_) {
    if (control->name() == name) return control.get();
  }
  for (const auto& control : controls_) {
    const ControlContainer* inside = inside_of(*control);
    FormControl* found = inside == nullptr ? nullptr : inside->find(name);
    if (found != nullptr) return found;
  }
  return nullptr;
}

FormControl::FormControl(ControlContainer& container, std::string name, std::string caption_text)
    : caption(std::move(caption_text)), container_(container), name_(std::move(name)) {}

FormControl::~FormControl() = default;

bool FormControl::is_usable() const {
  for (const FormControl* control = this; control != nullptr; control = control->container_.enclosing_control()) {
    if (!control->enabled || !control->visible) return false;
  }
  return true;
}

void Button::press() { fire(on_click); }

bool Button::user_click() {
  if (!is_usable()) return false;
  press();
  return true;
}

void CheckBox::set_value(int value) {
  if (value < 0 || value > 2) {
    throw AutomationError(RunTimeError::InvalidCall, "A check box is 0, 1 or 2, not " + std::to_string(value), name());
  }
  if (value == value_) return;
  value_ = value;
  fire(on_click);
}

bool CheckBox::user_click() {
  if (!is_usable()) return false;
  set_value(value_ == 0 ? 1 : 0);
  return true;
}

void OptionButton::set_value(bool value) {
  if (value == value_) return;
  value_ = value;
  if (!value) return;
  for (const auto& control : container().controls()) {
    auto* other = dynamic_cast<OptionButton*>(control.get());
    if (other != nullptr && other != this) other->value_ = false;
  }
  fire(on_click);
}

bool OptionButton::user_click() {
  if (!is_usable()) return false;
  set_value(true);
  return true;
}

void TextBox::set_text(std::string_view text) { change(text, 0); }

void TextBox::change(std::string_view text, std::size_t new_caret) {
  if (text == text_) return;
  text_ = text;
  // Before the event, whose handler may move it.
  caret = new_caret;
  fire(on_change);
}

bool TextBox::user_type(std::string_view text) {
  if (!is_usable() || locked) return false;
  change(text, text.size());
  return true;
}

bool TextBox::user_key(Key key) {
  if (!is_usable()) return false;
  fire(on_key, key);
  return true;
}

bool TextBox::user_focus() {
  if (!is_usable()) return false;
  fire(on_focus);
  return true;
}

void ListBox::set_entry(std::size_t index, std::string entry) {
  if (index >= entries_.size()) throw AutomationError(RunTimeError::SubscriptOutOfRange, {}, name());
  entries_[index] = std::move(entry);
}

void ListBox::clear() {
  entries_.clear();
  list_index_ = -1;
}

void ListBox::set_list_index(int index) {
  if (index < -1 || (index >= 0 && static_cast<std::size_t>(index) >= entries_.size())) {
    throw AutomationError(RunTimeError::InvalidCall,
                          "There is no entry " + std::to_string(index) + " in a list of " +
                              std::to_string(entries_.size()) + " (the first is 0, none is -1)",
                          name());
  }
  if (select(index)) fire(on_click);
}

bool ListBox::user_select(int index) {
  if (!is_usable()) return false;
  set_list_index(index);
  return true;
}

std::string ListBox::text() const { return list_index_ < 0 ? "" : entries_[static_cast<std::size_t>(list_index_)]; }

bool ListBox::select(int index) { return std::exchange(list_index_, index) != index; }

ComboBox::ComboBox(ControlContainer& container, std::string name, Style style, std::string caption_text)
    : ListBox(container, std::move(name), std::move(caption_text)), style_(style) {}

std::string ComboBox::text() const { return list_index() < 0 ? typed_text_ : ListBox::text(); }

void ComboBox::set_text(std::string_view text) {
  if (style_ == Style::ListOnly) {
    const auto entry = std::find(entries().begin(), entries().end(), text);
    if (entry == entries().end()) {
      throw AutomationError(RunTimeError::InvalidCall, "The list has no entry \"" + std::string(text) + "\"", name());
    }
    set_list_index(static_cast<int>(entry - entries().begin()));
    return;
  }
  if (text == this->text()) return;
  ListBox::select(-1);
  typed_text_ = text;
  fire(on_change);
}

bool ComboBox::user_type(std::string_view text) {
  if (!is_usable() || style_ == Style::ListOnly) return false;
  set_text(text);
  return true;
}

void ComboBox::clear() {
  ListBox::clear();
  typed_text_.clear();
}

bool ComboBox::select(int index) {
  if (!ListBox::select(index)) return false;
  typed_text_.clear();
  return true;
}

Frame::Frame(ControlContainer& container, std::string name, std::string caption_text)
    : FormControl(container, std::move(name), std::move(caption_text)) {
  enclosing_control_ = this;
}

void Form::ShowModal(const Platform& platform) {
  if (is_open_) throw AutomationError(RunTimeError::InvalidCall, "The form is open already", caption);
  const WhileSet open(is_open_);
  Form_Load();
  if (is_open_ && platform.presenter != nullptr) platform.presenter->run(*this);
}

FormHost::FormHost(ControlContainer& container, std::string name, std::shared_ptr<Form> hosted)
    : FormControl(container, std::move(name)), hosted_(std::move(hosted)) {
  if (hosted_ == nullptr) throw AutomationError(RunTimeError::ObjectNotSet, {}, this->name());
  if (hosted_->enclosing_control_ != nullptr) {
    throw AutomationError(RunTimeError::InvalidCall,
                          "The form stands in \"" + hosted_->enclosing_control_->name() + "\" already", this->name());
  }
  hosted_->enclosing_control_ = this;
}

FormHost::~FormHost() {
  hosted_->enclosing_control_ = nullptr;
  hosted_->leave_host();
}

}  // namespace plexoras
