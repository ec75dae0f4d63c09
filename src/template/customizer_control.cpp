#include "template/customizer_control.h"

#include <algorithm>
#include <utility>

#include "host/while_set.h"
#include "template/dictionary.h"

namespace plexoras {
namespace {

using Kind = WindowSpecEntry::Kind;

// A divider with this title ends a group.
constexpr std::string_view no_group = "-";

using Row = Member<CustomizerControl>;

const Row members[] = {
    host_member<CustomizerControl>,
    {.name = "loadWindowSpec",
     .call = [](CustomizerControl& c,
                Arguments a) { return c.loadWindowSpec(a[0].to_text(), a[1].to_text(), a[2].to_object()), Variant(); },
     .arguments = 3},
    {.name = "Accept", .call = [](CustomizerControl& c, Arguments) { return c.Accept(), Variant(); }},
    {.name = "Discard", .call = [](CustomizerControl& c, Arguments) { return c.Discard(), Variant(); }},
    {.name = "Clear", .call = [](CustomizerControl& c, Arguments) { return c.Clear(), Variant(); }},
};

}  // namespace

void CustomizerControl::loadWindowSpec(std::string_view section, std::string_view file, ObjectRef values) {
  if (values == nullptr) throw AutomationError(RunTimeError::ObjectNotSet, {}, std::string(identifier));
  Clear();
  try {
    build(read_window_spec(session_, file, section, copy_of(*values)));
    values_ = std::move(values);
    Discard();
  } catch (...) {
    Clear();
    throw;
  }
}

void CustomizerControl::leave_host() {
  HostedForm::leave_host();
  Clear();  // the values may belong to whoever hosted it
}

void CustomizerControl::Clear() {
  items_.clear();
  remove_controls();
  values_ = nullptr;
}

void CustomizerControl::build(const std::vector<WindowSpecEntry>& entries) {
  ControlContainer* container = this;
  for (const WindowSpecEntry& entry : entries) {
    Item& item = items_.emplace_back();
    item.condition = entry.condition;
    switch (entry.kind) {
      case Kind::Setting:
        add_setting(*container, entry, item);
        break;
      case Kind::Message:
      case Kind::Unreadable:
        add_label(*container, entry.name, entry.text, item);
        item.controls.back()->placement = entry.placement;
        break;
      case Kind::Divider:
        container = this;
        if (entry.text != no_group) {
          auto& group = add<Frame>(entry.name, entry.text);
          group.placement = entry.placement;
          group.enabled = !entry.disabled;
          item.controls.push_back(&group);
          container = &group;
        }
        break;
    }
    if (!entry.comment.empty()) {
      Item& comment = entry.kind == Kind::Divider ? items_.emplace_back() : item;
      add_label(*container, entry.key + "_COMMENT", entry.comment, comment);
    }
  }
}

void CustomizerControl::add_label(ControlContainer& container, const std::string& name, const std::string& text,
                                  Item& item) {
  item.controls.push_back(&container.add<Label>(name, text));
}

void CustomizerControl::add_setting(ControlContainer& container, const WindowSpecEntry& entry, Item& item) {
  item.field = CustomizerField::make(container, entry);
  item.controls.push_back(&item.field->control());
  item.problem = &container.add<Label>(entry.key + "_PROBLEM");
  item.field->watch([this] { field_Change(); });
}

void CustomizerControl::field_Change() {
  if (loading_) return;
  update();
  tell_host("RaiseChangedEvent");
}

// Shows what the present values call for.
void CustomizerControl::update() {
  for (Item& item : items_) {
    bool shows = true;
    if (item.condition) {
      const StringList& wanted = item.condition->values;
      const bool is_one = std::find(wanted.begin(), wanted.end(), current_value(item.condition->key)) != wanted.end();
      shows = is_one != item.condition->negated;
    }
    for (FormControl* control : item.controls) control->visible = shows;
    if (item.problem == nullptr) continue;
    item.problem->caption = item.field->problem();
    item.problem->visible = shows && !item.problem->caption.empty();
  }
}

// As it is in the form or, of a setting that has no control here, as it is stored.
std::string CustomizerControl::current_value(const std::string& key) {
  if (const CustomizerField* const field = find_field(key)) return field->value();
  return values_->call_with("atGet", {key}).to_text();
}

CustomizerField* CustomizerControl::find_field(std::string_view key) const {
  for (const Item& item : items_) {
    if (item.field != nullptr && item.field->key() == key) return item.field.get();
  }
  return nullptr;
}

// Whether the present values call for the field, and for the group that it stands in.
bool CustomizerControl::shows(CustomizerField& field) const {
  const FormControl& control = field.control();
  const ControlContainer& container = control.container();
  return control.visible && (&container == this || container.enclosing_control()->visible);
}

void CustomizerControl::Accept() {
  for (const Item& item : items_) {
    const std::string problem = item.field == nullptr ? std::string() : item.field->problem();
    // One that does not show cannot be mended, so it does not stand in the way of the others.
    if (!problem.empty() && shows(*item.field))
      throw AutomationError(RunTimeError::InvalidCall, problem, std::string(identifier));
  }
  struct Edit {
    std::string key;
    std::string value;
  };
  std::vector<Edit> edits;
  for (const Item& item : items_) {
    if (item.field == nullptr || !item.field->is_edited() || !item.field->problem().empty()) continue;
    edits.push_back({item.field->key(), item.field->value()});
  }
  // Who takes a value may have the form built anew, so the fields are looked up again each time.
  const ObjectRef values = values_;
  for (const Edit& edit : edits) {
    values->call_with("atPut", {edit.key, edit.value});
    CustomizerField* const field = find_field(edit.key);
    if (field != nullptr && field->value() == edit.value) field->keep();
  }
}

void CustomizerControl::Discard() {
  // Loading is no edit.
  const WhileSet loading(loading_);
  for (const Item& item : items_) {
    if (item.field != nullptr) item.field->load(values_->call_with("atGet", {item.field->key()}).to_text());
  }
  update();
}

Variant CustomizerControl::get(std::string_view member) { return get_member(*this, members, member, identifier); }

void CustomizerControl::put(std::string_view member, const Variant& value) {
  put_member(*this, members, member, value, identifier);
}

Variant CustomizerControl::call(std::string_view member, Arguments arguments) {
  return call_member(*this, members, member, arguments, identifier);
}

void register_template_forms(ComponentRegistry& components, TemplateSession& session) {
  components.add(std::string(CustomizerControl::identifier),
                 [&session] { return std::make_shared<CustomizerControl>(session); });
}

}  // namespace plexoras
