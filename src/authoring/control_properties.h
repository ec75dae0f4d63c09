#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "authoring/live_control.h"

namespace plexoras {

/// The properties of a control on a page as texts by name: what `plexoras get` and `plexoras set` work on.
///
/// They are, in this order: the control's place on the page (`name`, `width`, `height` in pixels, `visible`), the
/// chart's properties, and the custom properties that the template declares or the page holds.
class ControlProperties {
public:
  enum class NewKeys { Refuse, Accept };

  /// What a property is: part of the control's place on the page, of the chart, or of what the template declares.
  enum class Group { Place, Chart, Custom };
  struct Kind {
    Group group;
    ValueType type;
  };

  /// `control` outlives this.
  explicit ControlProperties(LiveControl& control) : control_(control) {}

  std::vector<std::string> names() const;
  /// Error 438 with a suggestion when there is no such property.
  Kind kind(std::string_view name) const;
  /// Error 438 with a suggestion when there is no such property.
  std::string get(std::string_view name) const;
  /// Sets a property from text. Error 438 as above unless new custom properties are accepted; error 5, 6 or 13 with
  /// the type and range when the text is no value of it. The contents are kept by the component and as the custom
  /// property "Contents" alike; the titles of the data (`rowTitle`, `colTitle`, `valueTitle`) are part of them, and
  /// empty where there is no data: those of a sample that the component shows instead do not count.
  void set(std::string_view name, std::string_view value, NewKeys new_keys = NewKeys::Refuse);

  /// Names and values of the properties that differ from `fresh`, in order, without those that follow from others:
  /// set in a fresh control, they make it into this one.
  std::vector<std::pair<std::string, std::string>> changes_from(const ControlProperties& fresh) const;

private:
  [[noreturn]] void unknown(std::string_view name) const;
  void set_contents(std::string_view member, std::string_view value);
  std::string title(std::string_view name) const;
  void set_title(std::string_view name, std::string_view value);
  void store_contents(std::string_view document);

  LiveControl& control_;
};

/// What a text must be to be a value of `type` ("a whole number from -32768 to 32767"); empty where any text will do.
std::string_view expected_text(ValueType type);

/// Whether `name` can name a control: a letter, then letters, digits, ".", "-", "_" and ":".
bool is_control_name(std::string_view name);

}  // namespace plexoras
