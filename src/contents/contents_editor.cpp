#include "contents/contents_editor.h"

#include "contents/edit_xml_form.h"
#include "contents/value_store.h"

namespace plexoras {
namespace {

// The value that the editor is for.
constexpr std::string_view contents_key = "Contents";

using Row = Member<DsContentsComponent>;

const Row members[] = {
    host_member<DsContentsComponent>,
    {.name = "Accept", .call = [](DsContentsComponent& c, Arguments) { return c.Accept(), Variant(); }},
    {.name = "Discard", .call = [](DsContentsComponent& c, Arguments) { return c.Discard(), Variant(); }},
};

}  // namespace

DsContentsComponent::DsContentsComponent(ContentsSession& session) : session_(session) {
  caption = "Contents";
  txtContents.multi_line = true;
  txtContents.on_change = [this] { txtContents_Change(); };
  cmdImportFile.on_click = [this] { cmdImportFile_Click(); };
  cmdTable.on_click = [this] { cmdTable_Click(); };
  cmdSet.on_click = [this] { cmdSet_Click(); };
}

void DsContentsComponent::Discard() {
  const Variant value = value_store()->call_with("GetValue", {contents_key});
  txtContents.set_text(value_from_transit(value.to_text()));
}

void DsContentsComponent::Accept() {
  value_store()->call_with("setValue", {contents_key, value_in_transit(txtContents.text())});
}

void DsContentsComponent::txtContents_Change() { tell_host("RaiseChangedEvent"); }

void DsContentsComponent::cmdImportFile_Click() {
  session_.import_dialog.ShowModal(session_.platform);
  const std::string document = session_.import_dialog.take_result();
  if (!document.empty()) txtContents.set_text(document);
}

void DsContentsComponent::cmdTable_Click() {
  EditXmlForm dialog(session_.platform);
  dialog.set_value(txtContents.text());
  dialog.ShowModal(session_.platform);
  txtContents.set_text(dialog.value());
}

void DsContentsComponent::cmdSet_Click() { value_store()->call_with("SetButtonPressed", {txtContents.text()}); }

ObjectRef DsContentsComponent::value_store() const {
  if (host == nullptr) throw AutomationError(RunTimeError::ObjectNotSet, {}, std::string(identifier));
  return host;
}

Variant DsContentsComponent::get(std::string_view member) { return get_member(*this, members, member, identifier); }

void DsContentsComponent::put(std::string_view member, const Variant& value) {
  put_member(*this, members, member, value, identifier);
}

Variant DsContentsComponent::call(std::string_view member, Arguments arguments) {
  return call_member(*this, members, member, arguments, identifier);
}

}  // namespace plexoras
