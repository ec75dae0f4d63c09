#include "contents/import_dialog.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>
#include <optional>

namespace plexoras {
namespace {

constexpr std::string_view file_filter = "Text Files (*.csv;*.txt;*.tab;*.asc)|*.csv;*.txt;*.tab;*.asc|All (*.*)|*.*";

}  // namespace

ImportDialog::ImportDialog(const Platform& platform) : platform_(platform) {
  caption = "Import";
  txtFileName.on_change = [this] { txtFileName_Change(); };
  cmdBrowse.on_click = [this] { cmdBrowse_Click(); };
  rbComma.on_click = [this] { rbComma_Click(); };
  rbSemicolon.on_click = [this] { rbSemicolon_Click(); };
  rbTab.on_click = [this] { rbTab_Click(); };
  rbBlank.on_click = [this] { rbBlank_Click(); };
  rbOther.on_click = [this] { rbOther_Click(); };
  txtOther.on_change = [this] { txtOther_Change(); };
  txtOther.on_focus = [this] { txtOther_GotFocus(); };
  rbDoubleQuote.on_click = [this] { rbDoubleQuote_Click(); };
  rbSingleQuote.on_click = [this] { rbSingleQuote_Click(); };
  rbNone.on_click = [this] { rbNone_Click(); };
  cmdImport.on_click = [this] { cmdImport_Click(); };
  cmdCancel.on_click = [this] { cmdCancel_Click(); };
}

DelimitedFormat ImportDialog::format() const {
  return {.delimiter = delimiter_,
          .qualifier = qualifier_,
          .first_row = ckFirstRow.value() == 1,
          .first_col = ckFirstCol.value() == 1};
}

void ImportDialog::set_format(const DelimitedFormat& format) {
  delimiter_ = format.delimiter;
  qualifier_ = format.qualifier;
  ckFirstRow.set_value(format.first_row ? 1 : 0);
  ckFirstCol.set_value(format.first_col ? 1 : 0);
}

void ImportDialog::Form_Load() {
  // Closing the window without a button is cancelling, so the last result goes before the dialog shows.
  drop_result();
  txtFileName.set_text(file_name_);
  if (delimiter_.empty()) delimiter_ = ",";

  for (const Choice& choice : qualifiers_) choice.button.set_value(choice.text == qualifier_);

  const auto offered = std::find_if(std::begin(delimiters_), std::end(delimiters_),
                                    [this](const Choice& choice) { return choice.text == delimiter_; });
  if (offered != std::end(delimiters_)) {
    offered->button.set_value(true);
  } else {
    // The button's event takes the delimiter from the text, so the text comes first.
    txtOther.set_text(delimiter_);
    rbOther.set_value(true);
  }
  // The file may have come or gone since the last time.
  update_import_allowed();
}

void ImportDialog::txtFileName_Change() {
  file_name_ = txtFileName.text();
  update_import_allowed();
}

void ImportDialog::cmdBrowse_Click() {
  if (platform_.file_dialog == nullptr) return;
  ignoring_errors([&] {
    const std::optional<std::string> path = platform_.file_dialog->choose_file("Import", file_filter);
    if (path) txtFileName.set_text(*path);
  });
}

void ImportDialog::rbComma_Click() { choose_delimiter(","); }

void ImportDialog::rbSemicolon_Click() { choose_delimiter(";"); }

void ImportDialog::rbTab_Click() { choose_delimiter("\t"); }

void ImportDialog::rbBlank_Click() { choose_delimiter(" "); }

void ImportDialog::rbOther_Click() { choose_delimiter(txtOther.text()); }

// Kept: the text becomes the delimiter whichever button is selected.
void ImportDialog::txtOther_Change() { choose_delimiter(txtOther.text()); }

void ImportDialog::txtOther_GotFocus() { rbOther.set_value(true); }

void ImportDialog::rbDoubleQuote_Click() { qualifier_ = "\""; }

void ImportDialog::rbSingleQuote_Click() { qualifier_ = "'"; }

void ImportDialog::rbNone_Click() { qualifier_.clear(); }

void ImportDialog::cmdImport_Click() {
  drop_result();
  try {
    result_ = import_delimited_file(platform_.files, file_name_, format());
  } catch (const std::bad_alloc&) {
    platform_.show_message("Cannot Import File: out of memory; the file is too large");
    return;
  } catch (const std::exception& error) {
    platform_.show_message("Cannot Import File: " + std::string(error.what()));
    return;
  }
  close();
}

void ImportDialog::cmdCancel_Click() {
  drop_result();
  close();
}

void ImportDialog::choose_delimiter(std::string_view delimiter) {
  delimiter_ = delimiter;
  update_import_allowed();
}

void ImportDialog::update_import_allowed() {
  cmdImport.enabled = false;
  if (rbOther.value() && txtOther.text().empty()) return;
  if (file_name_.empty()) return;
  ignoring_errors([&] { cmdImport.enabled = platform_.files.can_read(file_name_); });
}

}  // namespace plexoras
