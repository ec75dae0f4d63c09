#include "tool/form_text.h"

#include <nlohmann/json.hpp>

#include "tool/text_table.h"

namespace plexoras {
namespace {

std::string listed_choices(const std::vector<std::string>& choices) {
  constexpr std::size_t enough = 400;  // more does not fit on the lines
  std::string text;
  for (const std::string& choice : choices) {
    text += (text.empty() ? "" : " | ") + choice;
    if (text.size() > enough) break;
  }
  return text;
}

void add_rows(const std::vector<ListedControl>& controls, const std::string& indent, TextTable& table) {
  for (const ListedControl& control : controls) {
    if (!control.visible) continue;
    std::string last = listed_choices(control.choices);
    if (!control.usable) last.insert(0, last.empty() ? "disabled" : "disabled; ");
    table.add({indent + control.name, control.caption, control.value, last});
    add_rows(control.controls, indent + "  ", table);
  }
}

nlohmann::json to_json(const ListedControl& control);

nlohmann::json to_json(const std::vector<ListedControl>& controls) {
  nlohmann::json array = nlohmann::json::array();
  for (const ListedControl& control : controls) array.push_back(to_json(control));
  return array;
}

nlohmann::json to_json(const Placement& placement) {
  nlohmann::json object = nlohmann::json::object();
  const auto add = [&](const char* name, const std::optional<int>& number) {
    if (number) object[name] = *number;
  };
  add("left", placement.left);
  add("top", placement.top);
  add("width", placement.width);
  add("height", placement.height);
  return object;
}

nlohmann::json to_json(const ListedControl& control) {
  nlohmann::json object{{"kind", control.kind},       {"name", control.name},       {"caption", control.caption},
                        {"enabled", control.enabled}, {"visible", control.visible}, {"usable", control.usable}};
  const bool is_list = control.kind == "ListBox" || control.kind == "ComboBox";
  const bool is_text_box = control.kind == "TextBox";
  const bool is_container = control.kind == "Frame" || control.kind == "FormHost";
  if (!is_container && control.kind != "Label" && control.kind != "Button") object["value"] = control.value;
  if (is_text_box || is_list) object["takes_text"] = control.takes_text;
  if (is_text_box) {
    object["multi_line"] = control.multi_line;
    object["is_color"] = control.is_color;
    object["caret"] = control.caret;
  }
  if (is_list) {
    object["choices"] = control.choices;
    object["choice"] = control.choice;
  }
  if (nlohmann::json placement = to_json(control.placement); !placement.empty()) object["placement"] = placement;
  if (is_container) object["controls"] = to_json(control.controls);
  return object;
}

}  // namespace

std::string form_text(const ListedForm& form) {
  // Names are there to be repeated, and so not cut.
  TextTable table(
      {.columns = {{.widest = 60}, {.widest = 22, .lines = 20}, {.widest = 20}, {.lines = 3, .break_behind = "| "}}});
  table.add({"CONTROL", "CAPTION", "VALUE", "STATE, CHOICES"});
  add_rows(form.controls, "", table);
  return table.text();
}

nlohmann::json to_json(const ListedForm& form) {
  return {{"caption", form.caption}, {"controls", to_json(form.controls)}};
}

}  // namespace plexoras
