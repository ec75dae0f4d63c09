#include "contents/menu_builder.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "contents/menu_document.h"
#include "host/while_set.h"

namespace plexoras {
namespace {

// "..." for each level, and the caption.
std::string line_of(const MenuNode& node) {
  return std::string(3 * static_cast<std::size_t>(std::max<int>(node.Level, 0)), '.') + node.Caption;
}

int index_of(const StringList& entries, const std::string& entry) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i] == entry) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace

MenuBuilder::MenuBuilder(const Platform& platform) : platform_(platform) {
  caption = "Menu builder";
  txtJavaScript.multi_line = true;
  rbSystemMenu.on_click = [this] { rbSystemMenu_Click(); };
  rbCustomMenu.on_click = [this] { rbCustomMenu_Click(); };
  lstMenu.on_click = [this] { lstMenu_Click(); };
  cmdUp.on_click = [this] { cmdUp_Click(); };
  cmdDn.on_click = [this] { cmdDn_Click(); };
  cmdPromote.on_click = [this] { cmdPromote_Click(); };
  cmdDenote.on_click = [this] { cmdDenote_Click(); };
  cmdInsert.on_click = [this] { cmdInsert_Click(); };
  cmdDelete.on_click = [this] { cmdDelete_Click(); };
  txtCaption.on_change = [this] { txtCaption_Change(); };
  txtCaption.on_key = [this](TextBox::Key key) { txtCaption_KeyDown(key); };
  rbScript.on_click = [this] { rbScript_Click(); };
  rbBuiltIn.on_click = [this] { rbBuiltIn_Click(); };
  rbSeparator.on_click = [this] { rbSeparator_Click(); };
  txtJavaScript.on_change = [this] { txtJavaScript_Change(); };
  cmbProperty.on_click = [this] { cmbProperty_Click(); };
  cmdOK.on_click = [this] { cmdOK_Click(); };
  cmdCancel.on_click = [this] { cmdCancel_Click(); };
}

void MenuBuilder::set_command_table(std::shared_ptr<const Dictionary> commands) {
  if (commands == nullptr) throw AutomationError(RunTimeError::ObjectNotSet, {}, "MenuBuilder");
  commands_ = std::move(commands);
  has_command_table_ = true;
}

void MenuBuilder::Form_Load() {
  nodes_ = read_menu_document(menu_document_, *commands_);
  cmbProperty.clear();
  for (const std::string& key : commands_->GetKeys()) {
    if (!key.empty()) cmbProperty.add(key);
  }
  redraw(nodes_.empty() ? -1 : 0);
  (use_custom_menu_ ? rbCustomMenu : rbSystemMenu).set_value(true);
  // The button may have been selected before, which fires nothing.
  show_menu_choice(use_custom_menu_);
}

void MenuBuilder::rbSystemMenu_Click() { show_menu_choice(false); }

void MenuBuilder::rbCustomMenu_Click() { show_menu_choice(true); }

void MenuBuilder::lstMenu_Click() { show_selected(); }

void MenuBuilder::cmdUp_Click() { move_selected(-1); }

void MenuBuilder::cmdDn_Click() { move_selected(1); }

void MenuBuilder::cmdPromote_Click() { shift_selected(1); }

void MenuBuilder::cmdDenote_Click() {
  // Kept: a top-level entry goes to level -1.
  const MenuNode* const node = selected_node();
  if (node != nullptr && node->Level >= 0) shift_selected(-1);
}

void MenuBuilder::cmdInsert_Click() {
  insert_node(lstMenu.list_index() < 0 ? nodes_.size() : static_cast<std::size_t>(lstMenu.list_index()));
}

void MenuBuilder::cmdDelete_Click() {
  const int selected = lstMenu.list_index();
  if (selected < 0) return;
  nodes_.erase(nodes_.begin() + selected);
  redraw(std::min(selected, static_cast<int>(nodes_.size()) - 1));
}

void MenuBuilder::txtCaption_Change() {
  if (showing_) return;
  if (selected_node() == nullptr) {
    // The new entry empties the box, so the typed text is put back; that comes here again, as its caption.
    const std::string typed = txtCaption.text();
    cmdInsert_Click();
    txtCaption.set_text(typed);
    txtCaption.caret = typed.size();
    return;
  }
  MenuNode& node = *selected_node();
  if (node.Caption == txtCaption.text()) return;
  node.Caption = txtCaption.text();
  redraw_selected();
}

void MenuBuilder::txtCaption_KeyDown(TextBox::Key key) {
  const int selected = lstMenu.list_index();
  const int last = static_cast<int>(nodes_.size()) - 1;
  switch (key) {
    case TextBox::Key::Enter:
      if (selected == last) {
        insert_node(nodes_.size());
      } else {
        lstMenu.set_list_index(selected + 1);
      }
      break;
    case TextBox::Key::Up:
      if (selected > 0) lstMenu.set_list_index(selected - 1);
      break;
    case TextBox::Key::Down:
      if (selected < last) lstMenu.set_list_index(selected + 1);
      break;
  }
}

void MenuBuilder::rbScript_Click() { set_kind(MenuNode::Script); }

void MenuBuilder::rbBuiltIn_Click() { set_kind(MenuNode::BuiltIn); }

void MenuBuilder::rbSeparator_Click() {
  if (showing_) return;
  set_kind(MenuNode::Separator);
  if (selected_node() != nullptr) txtCaption.set_text(separator_caption);
}

void MenuBuilder::txtJavaScript_Change() {
  MenuNode* const node = selected_node();
  if (node != nullptr && !showing_) node->Param = txtJavaScript.text();
}

void MenuBuilder::cmbProperty_Click() {
  MenuNode* const node = selected_node();
  if (node != nullptr && !showing_) node->Param = cmbProperty.text();
}

void MenuBuilder::cmdOK_Click() {
  if (const int line = first_skipping_level(); line >= 0) {
    lstMenu.set_list_index(line);
    platform_.show_message("Menu Item Skipped a level");
    return;
  }
  menu_document_ = write_menu_document(nodes_, *commands_);
  use_custom_menu_ = rbCustomMenu.value();
  close();
}

void MenuBuilder::cmdCancel_Click() { close(); }

MenuNode* MenuBuilder::selected_node() {
  return lstMenu.list_index() < 0 ? nullptr : &nodes_[static_cast<std::size_t>(lstMenu.list_index())];
}

// Puts a new entry there and selects it.
void MenuBuilder::insert_node(std::size_t index) {
  if (nodes_.size() == menu_capacity) {
    throw AutomationError(RunTimeError::SubscriptOutOfRange,
                          "The menu is full; it holds " + std::to_string(menu_capacity) + " entries", "MenuBuilder");
  }
  nodes_.emplace(nodes_.begin() + static_cast<std::ptrdiff_t>(index));
  redraw(static_cast<int>(index));
}

// Swaps the selected entry with the one so many lines below, if there are both; the selection goes with it.
void MenuBuilder::move_selected(int lines) {
  const int from = lstMenu.list_index();
  const int to = from + lines;
  if (from < 0 || to < 0 || to >= static_cast<int>(nodes_.size())) return;
  std::swap(nodes_[static_cast<std::size_t>(from)], nodes_[static_cast<std::size_t>(to)]);
  redraw(to);
}

void MenuBuilder::shift_selected(int levels) {
  MenuNode* const node = selected_node();
  if (node == nullptr) return;
  const int level = node->Level + levels;
  if (level > std::numeric_limits<std::int16_t>::max())
    throw AutomationError(RunTimeError::Overflow, {}, "MenuBuilder");
  node->Level = static_cast<std::int16_t>(level);
  redraw_selected();
}

void MenuBuilder::set_kind(std::int16_t kind) {
  if (showing_) return;
  if (MenuNode* const node = selected_node()) node->Kind = kind;
  show_selected();
}

// Fills the list anew and selects a line of it, or none (-1).
void MenuBuilder::redraw(int selected) {
  lstMenu.clear();
  for (const MenuNode& node : nodes_) lstMenu.add(line_of(node));
  lstMenu.set_list_index(selected);
  if (selected < 0) show_selected();  // "none" is no change, which fires nothing
}

void MenuBuilder::redraw_selected() {
  lstMenu.set_entry(static_cast<std::size_t>(lstMenu.list_index()), line_of(*selected_node()));
}

// Sets the controls to what the selected entry holds. Its Param stands in both editors, so that an entry which changes
// its kind shows what it keeps.
void MenuBuilder::show_selected() {
  const WhileSet showing(showing_);
  const bool selected = selected_node() != nullptr;
  const MenuNode node = selected ? *selected_node() : MenuNode{};
  txtCaption.set_text(node.Caption);
  txtJavaScript.set_text(node.Param);
  cmbProperty.set_list_index(index_of(cmbProperty.entries(), node.Param));
  struct {
    OptionButton& button;
    FormControl* editor;
    std::int16_t kind;
  } const rows[] = {
      {rbScript, &txtJavaScript, MenuNode::Script},
      {rbBuiltIn, &cmbProperty, MenuNode::BuiltIn},
      {rbSeparator, nullptr, MenuNode::Separator},
  };
  for (const auto& row : rows) {
    row.button.enabled = selected;
    if (row.kind == node.Kind) row.button.set_value(true);
    if (row.editor == nullptr) continue;
    row.editor->visible = row.kind == node.Kind;
    row.editor->enabled = row.editor->visible && selected;
  }
}

void MenuBuilder::show_menu_choice(bool custom) {
  frmCustomMenu.visible = custom;
  frmCustomMenu.enabled = custom;
}

// The first line that is more than one level deeper than the line before it, or -1.
int MenuBuilder::first_skipping_level() const {
  int previous = -1;
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    const int level = nodes_[i].Level;
    if (level > previous + 1) return static_cast<int>(i);
    previous = level;
  }
  return -1;
}

}  // namespace plexoras
