#pragma once

#include "contents/import_dialog.h"
#include "contents/menu_builder.h"

namespace plexoras {

/// The dialogs for chart data that there is one of for as long as the program runs: the import dialog begins with the
/// choices of the last time, and the menu builder keeps its menu and its commands.
///
/// An authoring environment makes one session when it starts and passes it to whoever opens these dialogs.
struct ContentsSession {
  /// `with` outlives the session.
  explicit ContentsSession(const Platform& with) : platform(with), import_dialog(with), menu_builder(with) {}

  const Platform& platform;
  ImportDialog import_dialog;
  MenuBuilder menu_builder;
};

/// Makes the components that edit chart data known to `components`, as "PlexorasDTC.DsContentsComponent" and
/// "PlexorasDTC.DsTableContentsComponent". `session` must outlive all of them.
void register_contents_forms(ComponentRegistry& components, ContentsSession& session);

}  // namespace plexoras
