#pragma once

#include <string_view>

#include "contents/contents_session.h"
#include "host/hosted_form.h"

namespace plexoras {

/// The text editor for a chart's data: the contents document in a box, with ways to import it from a file and to edit
/// it as a table. An input component for the page `Contents`; "contents/value_store.h" says what its `host` answers.
///
///     const ObjectRef editor = components.create(DsContentsComponent::identifier);
///     editor->put("host", host);
///     editor->call("Discard");  // shows the host's value "Contents"
///     editor->call("Accept");   // gives it the text in the box
///
/// The text is taken as it is, well formed or not, so that an author can put half of it aside. Being disabled or hidden
/// as a whole is the matter of the `FormHost` in which it stands.
class DsContentsComponent final : public HostedForm {
public:
  static constexpr std::string_view identifier = "PlexorasDTC.DsContentsComponent";

  /// `session` has the import dialog and the platform; it outlives the component.
  explicit DsContentsComponent(ContentsSession& session);

  TextBox& txtContents = add<TextBox>("txtContents", "Contents:");
  Button& cmdImportFile = add<Button>("cmdImportFile", "Import File...");
  Button& cmdTable = add<Button>("cmdTable", "Edit Table...");
  /// Shows the text in the chart.
  Button& cmdSet = add<Button>("cmdSet", "Set");

  /// Shows the host's value. Error 91 without a host, as with `Accept` and `cmdSet`.
  void Discard();
  /// Gives the host the text in the box.
  void Accept();

  void txtContents_Change();
  void cmdImportFile_Click();
  void cmdTable_Click();
  void cmdSet_Click();

  Variant get(std::string_view member) override;
  void put(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, Arguments arguments = {}) override;

private:
  ObjectRef value_store() const;

  ContentsSession& session_;
};

}  // namespace plexoras
