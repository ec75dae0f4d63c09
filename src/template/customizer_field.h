#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/form.h"
#include "template/window_spec.h"

namespace plexoras {

/// One setting on an input form: the control that shows its value, and what the author has made of it.
///
/// A value that the control cannot show as it is (no such choice, no number) is shown as near as can be and stays what
/// it is until the author changes it. Lives as long as its control.
class CustomizerField {
public:
  virtual ~CustomizerField() = default;
  CustomizerField(const CustomizerField&) = delete;
  CustomizerField& operator=(const CustomizerField&) = delete;

  /// Makes the control of `entry`, a setting, in `container`.
  static std::unique_ptr<CustomizerField> make(ControlContainer& container, const WindowSpecEntry& entry);

  const std::string& key() const { return key_; }
  virtual FormControl& control() = 0;
  /// Calls `changed` at every change from now on.
  virtual void watch(std::function<void()> changed) = 0;

  /// Shows `stored`, the setting's value. What has been edited is forgotten.
  void load(std::string_view stored);
  /// Takes what the author has made of it as the stored value.
  void keep();
  /// Whether the control shows anything else than what was loaded. An edit that was taken back is none.
  bool is_edited() const { return state() != loaded_state_; }
  /// The value as it is to be stored: the loaded one, byte for byte, unless it was edited.
  std::string value() const { return is_edited() ? shown_value() : stored_; }
  /// What is wrong with an edited value, as a sentence; empty when it can be stored.
  std::string problem() const;

protected:
  explicit CustomizerField(const WindowSpecEntry& entry);

  virtual void show(std::string_view value) = 0;
  /// What the control shows, so that two states can be compared.
  virtual std::string state() const = 0;
  virtual std::string shown_value() const = 0;
  /// What the setting takes ("a whole number from 1 to 9") when it does not take `value`, else empty.
  virtual std::string expected_instead_of(std::string_view) const { return {}; }

private:
  std::string key_;
  std::string title_;  // the caption as part of a sentence
  std::string stored_;
  std::string loaded_state_;
};

}  // namespace plexoras
