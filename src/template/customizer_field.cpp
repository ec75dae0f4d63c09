#include "template/customizer_field.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "template/references.h"

namespace plexoras {
namespace {

using Input = WindowSpecEntry::Input;

bool is_number(std::string_view text, const WindowSpecEntry& entry) {
  constexpr std::string_view whole = "0123456789";
  if (entry.input == Input::Integer) {
    const std::string_view digits = text.substr(text.starts_with('-') || text.starts_with('+') ? 1 : 0);
    if (digits.empty() || digits.find_first_not_of(whole) != std::string_view::npos) return false;
  }
  try {
    const double number = Variant(text).to_double();
    return (entry.lowest.empty() || number >= Variant(entry.lowest).to_double()) &&
           (entry.highest.empty() || number <= Variant(entry.highest).to_double());
  } catch (const AutomationError&) {
    return false;
  }
}

// "#" and 3, 4, 6 or 8 hexadecimal digits, a name, or a function such as rgb(47 111 189 / 50%).
bool is_color(std::string_view text) {
  const auto is_letter = [](unsigned char c) { return std::isalpha(c) != 0; };
  if (text.starts_with('#')) {
    text.remove_prefix(1);
    const bool has_form = text.size() == 3 || text.size() == 4 || text.size() == 6 || text.size() == 8;
    return has_form && std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c) != 0; });
  }
  const auto name_end = std::find_if_not(text.begin(), text.end(), is_letter);
  if (name_end == text.begin()) return false;
  if (name_end == text.end()) return true;
  const std::string_view arguments = text.substr(static_cast<std::size_t>(name_end - text.begin()));
  if (arguments.size() < 2 || arguments.front() != '(' || arguments.back() != ')') return false;
  return std::all_of(arguments.begin() + 1, arguments.end() - 1, [&](unsigned char c) {
    return is_letter(c) || std::isdigit(c) != 0 ||
           std::string_view(" .,%/+-").find(static_cast<char>(c)) != std::string_view::npos;
  });
}

std::string range_in_words(const WindowSpecEntry& entry) {
  std::string number = entry.input == Input::Integer ? "a whole number" : "a number";
  if (!entry.lowest.empty() && !entry.highest.empty()) return number + " from " + entry.lowest + " to " + entry.highest;
  if (!entry.lowest.empty()) return number + " of at least " + entry.lowest;
  if (!entry.highest.empty()) return number + " of at most " + entry.highest;
  return number;
}

class TextField final : public CustomizerField {
public:
  TextField(ControlContainer& container, const WindowSpecEntry& entry)
      : CustomizerField(entry), entry_(entry), box_(container.add<TextBox>(entry.key, entry.text)) {
    box_.is_color = entry.input == Input::Color;
  }
  FormControl& control() override { return box_; }
  void watch(std::function<void()> changed) override { box_.on_change = std::move(changed); }

protected:
  void show(std::string_view value) override {
    // A form layer's box of one line might drop the others.
    box_.multi_line = entry_.input == Input::MultiLine || value.find_first_of("\r\n") != std::string_view::npos;
    box_.set_text(value);
  }
  // Form layers have line ends of their own.
  std::string state() const override {
    std::string text = replaced_all(box_.text(), "\r\n", "\n");
    std::replace(text.begin(), text.end(), '\r', '\n');
    return text;
  }
  std::string shown_value() const override {
    const bool is_text = entry_.input == Input::Text || entry_.input == Input::MultiLine;
    return is_text ? box_.text() : std::string(trimmed(box_.text()));
  }
  std::string expected_instead_of(std::string_view value) const override {
    if (value.empty()) return {};
    switch (entry_.input) {
      case Input::Integer:
      case Input::Number:
        return is_number(value, entry_) ? std::string() : range_in_words(entry_);
      case Input::Color:
        return is_color(value) ? std::string() : "a colour such as #2f6fbd or teal";
      default:
        return {};
    }
  }

private:
  WindowSpecEntry entry_;
  TextBox& box_;
};

class CheckField final : public CustomizerField {
public:
  CheckField(ControlContainer& container, const WindowSpecEntry& entry)
      : CustomizerField(entry),
        on_(entry.choices[0].value),
        off_(entry.choices[1].value),
        box_(container.add<CheckBox>(entry.key, entry.text)) {}
  FormControl& control() override { return box_; }
  void watch(std::function<void()> changed) override { box_.on_click = std::move(changed); }

protected:
  void show(std::string_view value) override {
    constexpr int neither = 2;
    box_.set_value(value == on_ ? 1 : value == off_ || value.empty() ? 0 : neither);
  }
  std::string state() const override { return std::to_string(box_.value()); }
  std::string shown_value() const override { return box_.value() == 1 ? on_ : off_; }

private:
  std::string on_;
  std::string off_;
  CheckBox& box_;
};

class ListField final : public CustomizerField {
public:
  ListField(ControlContainer& container, const WindowSpecEntry& entry)
      : CustomizerField(entry),
        box_(container.add<ComboBox>(
            entry.key, entry.input == Input::Combo ? ComboBox::Style::Typed : ComboBox::Style::ListOnly, entry.text)) {
    for (const WindowSpecEntry::Choice& choice : entry.choices) {
      box_.add(choice.label);
      values_.push_back(choice.value);
    }
  }
  FormControl& control() override { return box_; }
  void watch(std::function<void()> changed) override {
    box_.on_change = changed;
    box_.on_click = std::move(changed);
  }

protected:
  void show(std::string_view value) override {
    auto found = std::find(values_.begin(), values_.end(), value);
    if (found == values_.end() && box_.style() == ComboBox::Style::Typed) return box_.set_text(value);
    if (found == values_.end() && !value.empty()) {
      // The value has an entry of its own, so that an author can come back to it.
      box_.add(std::string(value) + " (not in this list)");
      values_.emplace_back(value);
      found = values_.end() - 1;
    }
    box_.set_list_index(found == values_.end() ? -1 : static_cast<int>(found - values_.begin()));
  }
  std::string state() const override {
    return box_.style() == ComboBox::Style::Typed ? box_.text() : std::to_string(box_.list_index());
  }
  std::string shown_value() const override {
    return box_.list_index() < 0 ? box_.text() : values_[static_cast<std::size_t>(box_.list_index())];
  }

private:
  ComboBox& box_;
  StringList values_;  // of the entries
};

// A caption without what sets it off from its control.
std::string title_of(const WindowSpecEntry& entry) {
  std::string title = entry.text;
  while (!title.empty() && (title.back() == ':' || title.back() == ' ')) title.pop_back();
  return title.empty() ? entry.key : title;
}

}  // namespace

CustomizerField::CustomizerField(const WindowSpecEntry& entry) : key_(entry.key), title_(title_of(entry)) {}

std::unique_ptr<CustomizerField> CustomizerField::make(ControlContainer& container, const WindowSpecEntry& entry) {
  std::unique_ptr<CustomizerField> field;
  if (entry.input == Input::Check) {
    field = std::make_unique<CheckField>(container, entry);
  } else if (entry.input == Input::Choice || entry.input == Input::Combo) {
    field = std::make_unique<ListField>(container, entry);
  } else {
    field = std::make_unique<TextField>(container, entry);
  }
  field->control().enabled = !entry.disabled;
  field->control().placement = entry.placement;
  return field;
}

void CustomizerField::load(std::string_view stored) {
  stored_ = stored;
  show(stored_);
  loaded_state_ = state();
}

void CustomizerField::keep() {
  stored_ = value();
  loaded_state_ = state();
}

std::string CustomizerField::problem() const {
  if (!is_edited()) return {};
  const std::string given = shown_value();
  const std::string expected = expected_instead_of(given);
  return expected.empty() ? expected : title_ + " takes " + expected + ", not \"" + given + "\"";
}

}  // namespace plexoras
