#pragma once

#include <optional>
#include <string>
#include <utility>

#include "host/form.h"
#include "host/hosted_form.h"

namespace plexoras {

/// The dialog in which an author edits a contents document as a table. Its caller sets the document, shows the dialog
/// and takes the document back, which is a new one when the author has accepted:
///
///     EditXmlForm dialog(platform);
///     dialog.set_value(document);
///     dialog.ShowModal(platform);
///     document = dialog.value();
///
/// The table editor is made each time the dialog is shown, as the component "PlexorasDTC.DsTableContentsComponent"
/// (error 429 where the platform has none). Its members are those of `DsTableContentsComponent`.
class EditXmlForm final : public Form {
public:
  /// `platform` makes the table editor and shows messages; it outlives the dialog.
  explicit EditXmlForm(const Platform& platform);

  /// The contents document; the empty text stands for a table without anything.
  const std::string& value() const { return value_; }
  void set_value(std::string document) { value_ = std::move(document); }

  /// Text that is no contents document is told in a message box. The table is empty then, and accepting it takes it
  /// only if it was edited.
  void Form_Load() override;

private:
  class TableEvents;

  void table_Accept();
  void table_Cancel() { close(); }

  const Platform& platform_;
  std::string value_;
  ObjectRef table_;                          // the table editor while the dialog has one
  std::optional<std::string> unread_table_;  // the document of the empty table where it does not show the value
};

}  // namespace plexoras
