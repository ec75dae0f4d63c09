#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/hosted_form.h"
#include "template/customizer_field.h"
#include "template/template_session.h"
#include "template/window_spec.h"

namespace plexoras {

/// The input form for what a template can be told: it builds itself from a window-spec, a section of the template file
/// (see `WindowSpecEntry` and docs/window-spec.md).
///
///     const ObjectRef form = components.create(CustomizerControl::identifier);
///     form->put("host", host);                                                    // hears of every edit
///     form->call_with("loadWindowSpec", {"ADVANCED_SPEC", "DIAGRAM.DAT", properties});
///     form->call("Accept");                                                       // or "Discard"
///
/// A setting's control has the setting's key as its name. Beside it may stand the labels KEY_COMMENT (words about it)
/// and KEY_PROBLEM (what is wrong with its value, while there is something). Messages and groups have the names of
/// their entries. An entry that cannot be read is a label that says so, in its place.
///
/// The host's `RaiseChangedEvent()` is called at every edit. Edits stay in the form until "Accept"; only what has been
/// edited is stored. So a value that the form cannot show as it is, because a template has changed, stays as it is.
class CustomizerControl final : public HostedForm {
public:
  static constexpr std::string_view identifier = "PlexorasDTC.CustomizerControl";

  /// `session` outlives it.
  explicit CustomizerControl(TemplateSession& session) : session_(session) {}

  /// Builds the form from section `section` of template file `file`, in place of the present one.
  ///
  /// `values` has the settings: an object with the members `GetKeys()`, `atGet(key)` and `atPut(key, value)`, as a
  /// `Dictionary` has. They are also variables while the section is preprocessed. Without them comes error 91;
  /// when they or the template cannot be read, what was raised comes through and the form is empty.
  void loadWindowSpec(std::string_view section, std::string_view file, ObjectRef values);
  /// Stores what has been edited, in the order of the form. Error 5 when a value that shows cannot be stored; nothing
  /// is stored then. One that does not show stays in the form instead, as it was edited. When `values` refuses one,
  /// those before it are stored and the others stay edited.
  void Accept();
  /// Shows the stored values again.
  void Discard();
  /// Empties the form and lets go of its values, as leaving its host does.
  void Clear();
  void leave_host() override;

  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments = {}) override;

private:
  struct Item;

  void build(const std::vector<WindowSpecEntry>& entries);
  void add_label(ControlContainer& container, const std::string& name, const std::string& text, Item& item);
  void add_setting(ControlContainer& container, const WindowSpecEntry& entry, Item& item);
  void field_Change();
  void update();
  bool shows(CustomizerField& field) const;
  std::string current_value(const std::string& key);
  CustomizerField* find_field(std::string_view key) const;

  // What shows together, under one condition.
  struct Item {
    std::optional<WindowSpecEntry::Condition> condition;
    std::vector<FormControl*> controls;
    std::unique_ptr<CustomizerField> field;  // of a setting
    Label* problem = nullptr;                // of a setting
  };

  TemplateSession& session_;
  ObjectRef values_;
  std::vector<Item> items_;
  bool loading_ = false;
};

/// Makes the forms of this room known to `components`, as "PlexorasDTC.CustomizerControl". They read templates through
/// `session`, which must outlive all of them.
void register_template_forms(ComponentRegistry& components, TemplateSession& session);

}  // namespace plexoras
