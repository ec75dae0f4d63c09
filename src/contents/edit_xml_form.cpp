#include "contents/edit_xml_form.h"

#include <string_view>
#include <utility>

#include "contents/table_contents.h"

namespace plexoras {
namespace {

constexpr std::string_view table_name = "DsTableContentsComponent";

}  // namespace

/// What the table editor tells the dialog.
class EditXmlForm::TableEvents final : public AutomationObject {
public:
  explicit TableEvents(EditXmlForm& dialog) : dialog_(dialog) {}

  Variant get(std::string_view member) override { no_such_member(member, "EditXmlForm"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "EditXmlForm"); }
  Variant call(std::string_view event, Arguments) override {
    if (event == "Accept") {
      dialog_.table_Accept();
    } else if (event == "Cancel") {
      dialog_.table_Cancel();
    }
    return {};
  }

private:
  EditXmlForm& dialog_;
};

EditXmlForm::EditXmlForm(const Platform& platform) : platform_(platform) { caption = "Chart Data"; }

void EditXmlForm::Form_Load() {
  remove_controls();
  table_ = platform_.components.create(DsTableContentsComponent::identifier);
  auto& place = add<FormHost>(std::string(table_name), form_of(table_));
  place.placement = {.left = 10, .top = 10};  // Kept: as wide and high as the dialog inside, and so reaching beyond it
  table_->put("host", ObjectRef(std::make_shared<TableEvents>(*this)));

  unread_table_.reset();
  if (value_.empty()) return;
  if (table_->call_with("IsWellFormed", {value_}).to_boolean()) {
    table_->call_with("LoadDocument", {value_});
  } else {
    unread_table_ = table_->call("GetDocument").to_text();
    platform_.show_message("The current content is not a well formatted XML and cannot be edited.");
  }
}

void EditXmlForm::table_Accept() {
  std::string document = table_->call("GetDocument").to_text();
  if (document != unread_table_) value_ = std::move(document);
  close();
}

}  // namespace plexoras
