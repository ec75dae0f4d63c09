#pragma once

#include <string>
#include <string_view>

#include "contents/table_component.h"
#include "host/component_control.h"
#include "host/hosted_form.h"

namespace plexoras {

/// The table editor: a chart's data as a grid of numbers with labels and titles.
///
/// It holds no data of its own. The table is in a chart component (see `table_component`) that stands on the form as
/// `tbl`; the boxes show its selected cell, and what is typed there is stored at once. The titles alone are stored when
/// the author accepts. A cell that nobody types in keeps its text, be it "1.10" or "n/a".
///
///     const ObjectRef editor = components.create(DsTableContentsComponent::identifier);
///     dialog.add<FormHost>("DsTableContentsComponent", form_of(editor));
///     editor->put("host", host);
///     if (editor->call_with("IsWellFormed", {contents}).to_boolean()) editor->call_with("LoadDocument", {contents});
///
/// The host's `Accept()` is called when the author takes the table as it is now; it is all in the document. `Cancel()`
/// is called when the author wants nothing of what was edited.
class DsTableContentsComponent final : public HostedForm {
public:
  static constexpr std::string_view identifier = "PlexorasDTC.DsTableContentsComponent";

  /// Makes the component and puts it into its table mode. Error 429 when `platform` has no such component.
  explicit DsTableContentsComponent(const Platform& platform);

  ComponentControl& tbl;
  TextBox& txtValue = add<TextBox>("txtValue", "Value:");
  TextBox& txtRowLabel = add<TextBox>("txtRowLabel", "Row label:");
  TextBox& txtColLabel = add<TextBox>("txtColLabel", "Column label:");
  TextBox& txtColTitle = add<TextBox>("txtColTitle", "Title of the columns:");
  TextBox& txtRowTitle = add<TextBox>("txtRowTitle", "Title of the rows:");
  TextBox& txtValTitle = add<TextBox>("txtValTitle", "Title of the values:");
  Button& cmdInsertRow = add<Button>("cmdInsertRow", "Insert Row");
  Button& cmdInsertCol = add<Button>("cmdInsertCol", "Insert Column");
  Button& cmdDeleteRow = add<Button>("cmdDeleteRow", "Delete Row");
  Button& cmdDeleteCol = add<Button>("cmdDeleteCol", "Delete Column");
  Button& cmdAccept = add<Button>("cmdAccept", "OK");
  Button& cmdCancel = add<Button>("cmdCancel", "Cancel");

  /// Whether `text` is a contents document.
  bool IsWellFormed(std::string_view text);
  /// Takes a contents document. What the component refuses is raised, and the table stays.
  void LoadDocument(std::string_view text);
  /// The contents document as the table is now: below 32000 bytes with each line end as CR LF, those inside labels
  /// included; a longer one with the line ends that it has, and CR LF between its elements once it was edited.
  std::string GetDocument();

  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments = {}) override;

  void cmdAccept_Click();
  void cmdCancel_Click();
  void cmdInsertRow_Click();
  void cmdInsertCol_Click();
  void cmdDeleteRow_Click();
  void cmdDeleteCol_Click();
  void tbl_SelectionChange();
  void txtValue_Change();
  void txtRowLabel_Change();
  void txtColLabel_Change();

private:
  AutomationObject& table() const { return tbl.component(); }
  std::int32_t selected_row() const { return table().get("selectedRow").to_long(); }
  std::int32_t selected_column() const { return table().get("selectedCol").to_long(); }
  ObjectRef zeros(std::string_view count_member);
  void show_selected_cell();

  bool showing_ = false;  // the boxes change because they show something, not because the author types
};

}  // namespace plexoras
