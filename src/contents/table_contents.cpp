#include "contents/table_contents.h"

#include "host/while_set.h"

namespace plexoras {
namespace {

using Row = Member<DsTableContentsComponent>;

const Row members[] = {
    host_member<DsTableContentsComponent>,
    {.name = "IsWellFormed",
     .call = [](DsTableContentsComponent& c, Arguments a) { return Variant(c.IsWellFormed(a[0].to_text())); },
     .arguments = 1},
    {.name = "LoadDocument",
     .call = [](DsTableContentsComponent& c, Arguments a) { return c.LoadDocument(a[0].to_text()), Variant(); },
     .arguments = 1},
    {.name = "GetDocument", .call = [](DsTableContentsComponent& c, Arguments) { return Variant(c.GetDocument()); }},
};

// Each title of the table and the box in which it is edited, in the order of loading and storing.
struct TitleBox {
  std::string_view member;
  TextBox& (*box)(DsTableContentsComponent& editor);
};
constexpr TitleBox title_boxes[] = {
    {"colTitle", [](DsTableContentsComponent& editor) -> TextBox& { return editor.txtColTitle; }},
    {"rowTitle", [](DsTableContentsComponent& editor) -> TextBox& { return editor.txtRowTitle; }},
    {"valueTitle", [](DsTableContentsComponent& editor) -> TextBox& { return editor.txtValTitle; }},
};

// CR LF becomes LF, then each LF becomes CR LF. A CR that stands alone stays.
std::string with_crlf_line_ends(std::string_view text) {
  std::string result;
  result.reserve(text.size() + text.size() / 16);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) result += '\r';
    result += text[i];
  }
  return result;
}

}  // namespace

DsTableContentsComponent::DsTableContentsComponent(const Platform& platform)
    : tbl(add<ComponentControl>(std::string(table_component::control_name),
                                platform.components.create(table_component::identifier))) {
  caption = "Chart Data";

  for (const table_component::Switch& row : table_component::switches) table().put(row.member, row.value);
  table().put("DiagramType", table_component::table_type);

  tbl.on_event = [this](std::string_view event, Arguments) {
    if (event == table_component::selection_event) tbl_SelectionChange();
  };
  txtValue.on_change = [this] { txtValue_Change(); };
  txtRowLabel.on_change = [this] { txtRowLabel_Change(); };
  txtColLabel.on_change = [this] { txtColLabel_Change(); };
  cmdInsertRow.on_click = [this] { cmdInsertRow_Click(); };
  cmdInsertCol.on_click = [this] { cmdInsertCol_Click(); };
  cmdDeleteRow.on_click = [this] { cmdDeleteRow_Click(); };
  cmdDeleteCol.on_click = [this] { cmdDeleteCol_Click(); };
  cmdAccept.on_click = [this] { cmdAccept_Click(); };
  cmdCancel.on_click = [this] { cmdCancel_Click(); };
}

bool DsTableContentsComponent::IsWellFormed(std::string_view text) {
  return table().call_with("isValidXmlContents", {text}).to_boolean();
}

void DsTableContentsComponent::LoadDocument(std::string_view text) {
  table().put("XmlContents", text);
  for (const TitleBox& row : title_boxes) row.box(*this).set_text(table().get(row.member).to_text());
  // Where nothing was selected before, no event tells that nothing is now.
  show_selected_cell();
}

std::string DsTableContentsComponent::GetDocument() {
  constexpr std::size_t long_document = 32000;
  const std::string document = table().get("XmlContents").to_text();
  if (document.size() < long_document) return with_crlf_line_ends(document);
  return table().call_with("getXmlContents", {true}).to_text();
}

void DsTableContentsComponent::cmdAccept_Click() {
  for (const TitleBox& row : title_boxes) table().put(row.member, row.box(*this).text());
  tell_host("Accept");
}

void DsTableContentsComponent::cmdCancel_Click() { tell_host("Cancel"); }

void DsTableContentsComponent::cmdInsertRow_Click() {
  table().call_with("insertRow", {selected_row(), "New Row", zeros("colCount")});
  show_selected_cell();
}

void DsTableContentsComponent::cmdInsertCol_Click() {
  table().call_with("insertCol", {selected_column(), "New Col", zeros("rowCount")});
  show_selected_cell();
}

void DsTableContentsComponent::cmdDeleteRow_Click() {
  table().call_with("deleteRow", {selected_row()});
  show_selected_cell();
}

void DsTableContentsComponent::cmdDeleteCol_Click() {
  table().call_with("deleteCol", {selected_column()});
  show_selected_cell();
}

void DsTableContentsComponent::tbl_SelectionChange() { show_selected_cell(); }

void DsTableContentsComponent::txtValue_Change() {
  if (showing_) return;
  const std::int32_t row = selected_row(), column = selected_column();
  if (row < 0 || column < 0) return;
  table().call_with("setCellValue", {row, column, number_of_text(txtValue.text()).value_or(0)});
}

void DsTableContentsComponent::txtRowLabel_Change() {
  if (showing_) return;
  if (const std::int32_t row = selected_row(); row >= 0) table().call_with("setRowLabel", {row, txtRowLabel.text()});
}

void DsTableContentsComponent::txtColLabel_Change() {
  if (showing_) return;
  const std::int32_t column = selected_column();
  if (column >= 0) table().call_with("setColLabel", {column, txtColLabel.text()});
}

// A value list with a 0 for each row or column, as `count_member` counts them.
ObjectRef DsTableContentsComponent::zeros(std::string_view count_member) {
  ObjectRef list = table().call("newValueList").to_object();
  for (std::int32_t count = table().get(count_member).to_long(); count > 0; --count) {
    list->call_with("addElement", {0.0});
  }
  return list;
}

void DsTableContentsComponent::show_selected_cell() {
  const std::int32_t row = selected_row(), column = selected_column();
  const bool is_cell = row >= 0 && column >= 0;
  const WhileSet showing(showing_);
  txtValue.set_text(is_cell ? table().call_with("getCellValue", {row, column}).to_text() : "");
  txtColLabel.set_text(column < 0 ? "" : table().call_with("getColLabel", {column}).to_text());
  txtRowLabel.set_text(row < 0 ? "" : table().call_with("getRowLabel", {row}).to_text());
}

Variant DsTableContentsComponent::get(std::string_view member) {
  return get_member(*this, members, member, identifier);
}

void DsTableContentsComponent::put(std::string_view member, const Variant& value) {
  put_member(*this, members, member, value, identifier);
}

Variant DsTableContentsComponent::call(std::string_view member, Arguments arguments) {
  return call_member(*this, members, member, arguments, identifier);
}

}  // namespace plexoras
