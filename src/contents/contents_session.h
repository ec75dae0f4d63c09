#pragma once

#include "contents/import_dialog.h"
#include "contents/menu_builder.h"

namespace plexoras {

/// The dialogs for chart data that there is one of for as long as the program runs: the import dialog begins with the
/// choices of the last time, and the menu builder keeps its menu and its commands.
///
/// An authoring environment makes one session when it starts and passes it to whoever opens these dialogs.
struct ContentsSession {
  /// `platform` outlives the session.
  explicit ContentsSession(const Platform& platform) : import_dialog(platform), menu_builder(platform) {}

  ImportDialog import_dialog;
  MenuBuilder menu_builder;
};

}  // namespace plexoras
