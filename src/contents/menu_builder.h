#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "contents/menu_node.h"
#include "host/form.h"
#include "template/dictionary.h"

namespace plexoras {

/// The dialog in which an author builds a chart's popup menu.
///
/// There is one for as long as the program runs. Its caller sets the menu, shows it and reads the menu back:
///
///     builder.set_use_custom_menu(true);
///     builder.set_menu_document("<xml><ITEM type=\"script\" param=\"f()\">A</></>");
///     builder.ShowModal(platform);
///     properties.atPut("MENU", builder.menu_document());
///
/// The menu and the flag change when the author confirms with `cmdOK`, and with nothing else. A menu holds
/// `menu_capacity` entries; an event that would need room for one more raises error 9 and leaves the entries as they
/// were. A document with more entries raises it from `ShowModal`, before the form shows and with the entries of the
/// last time.
///
/// With no line of the list selected, whatever speaks of the selected entry is empty and cannot be used, and the
/// buttons for it do nothing. Typing a caption then begins a new entry.
class MenuBuilder final : public Form {
public:
  /// `platform` shows messages; it must outlive the builder.
  explicit MenuBuilder(const Platform& platform);

  const std::string& menu_document() const { return menu_document_; }
  void set_menu_document(std::string document) { menu_document_ = std::move(document); }
  /// Whether the chart uses the menu, rather than its own.
  bool use_custom_menu() const { return use_custom_menu_; }
  void set_use_custom_menu(bool use) { use_custom_menu_ = use; }

  /// Whether a command table was handed in.
  bool has_command_table() const { return has_command_table_; }
  /// The built-in commands: their names, as authors read them, with "type:param".
  const Dictionary& command_table() const { return *commands_; }
  void set_command_table(std::shared_ptr<const Dictionary> commands);

  /// The entries as they are being edited.
  const std::vector<MenuNode>& nodes() const { return nodes_; }

  OptionButton& rbSystemMenu = add<OptionButton>("rbSystemMenu", "The chart's own menu");
  OptionButton& rbCustomMenu = add<OptionButton>("rbCustomMenu", "Custom menu");
  // Hidden it takes no room in the form layer, so that the buttons below it move up.
  Frame& frmCustomMenu = add<Frame>("frmCustomMenu", "Custom menu");
  ListBox& lstMenu = frmCustomMenu.add<ListBox>("lstMenu", "Entries:");
  Button& cmdUp = frmCustomMenu.add<Button>("cmdUp", "Move up");
  Button& cmdDn = frmCustomMenu.add<Button>("cmdDn", "Move down");
  Button& cmdPromote = frmCustomMenu.add<Button>("cmdPromote", "Indent");
  Button& cmdDenote = frmCustomMenu.add<Button>("cmdDenote", "Outdent");
  Button& cmdInsert = frmCustomMenu.add<Button>("cmdInsert", "Insert");
  Button& cmdDelete = frmCustomMenu.add<Button>("cmdDelete", "Delete");
  TextBox& txtCaption = frmCustomMenu.add<TextBox>("txtCaption", "Caption:");
  OptionButton& rbScript = frmCustomMenu.add<OptionButton>("rbScript", "Script");
  OptionButton& rbBuiltIn = frmCustomMenu.add<OptionButton>("rbBuiltIn", "Built-in command");
  OptionButton& rbSeparator = frmCustomMenu.add<OptionButton>("rbSeparator", "Separator");
  TextBox& txtJavaScript = frmCustomMenu.add<TextBox>("txtJavaScript", "Script to run:");
  ComboBox& cmbProperty = frmCustomMenu.add<ComboBox>("cmbProperty", ComboBox::Style::ListOnly, "Command:");
  Button& cmdOK = add<Button>("cmdOK", "OK");
  Button& cmdCancel = add<Button>("cmdCancel", "Cancel");

  void Form_Load() override;
  void rbSystemMenu_Click();
  void rbCustomMenu_Click();
  void lstMenu_Click();
  void cmdUp_Click();
  void cmdDn_Click();
  void cmdPromote_Click();
  void cmdDenote_Click();
  void cmdInsert_Click();
  /// The entry that follows, or else the last one, is selected afterwards.
  void cmdDelete_Click();
  void txtCaption_Change();
  void txtCaption_KeyDown(TextBox::Key key);
  void rbScript_Click();
  void rbBuiltIn_Click();
  void rbSeparator_Click();
  void txtJavaScript_Change();
  void cmbProperty_Click();
  /// An entry that skipped a level is selected, for the author to mend it.
  void cmdOK_Click();
  void cmdCancel_Click();

private:
  MenuNode* selected_node();
  void insert_node(std::size_t index);
  void move_selected(int lines);
  void shift_selected(int levels);
  void set_kind(std::int16_t kind);
  void redraw(int selected);
  void redraw_selected();
  void show_selected();
  void show_menu_choice(bool custom);
  int first_skipping_level() const;

  const Platform& platform_;
  std::string menu_document_;
  bool use_custom_menu_ = false;
  bool has_command_table_ = false;
  std::shared_ptr<const Dictionary> commands_ = std::make_shared<Dictionary>();
  std::vector<MenuNode> nodes_;
  bool showing_ = false;  // the controls are being set to what the selected entry holds; their events say nothing new
};

}  // namespace plexoras
