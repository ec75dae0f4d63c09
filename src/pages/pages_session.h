#pragma once

#include <functional>
#include <string_view>

#include "contents/contents_session.h"
#include "template/template_session.h"

namespace plexoras {

/// What the property pages of a program share. The program makes one and keeps it as long as it runs and pages are in
/// use; `templates` outlives it.
///
///     PagesSession session(templates);
///     session.show_about_box = [&](std::string_view template_file) { ... };
///     Styles page(session);
struct PagesSession {
  explicit PagesSession(TemplateSession& with) : templates(with), contents(with.platform) {}

  TemplateSession& templates;
  /// Its menu builder is one window, whatever page and chart it is opened for, and gets its catalogue of commands when
  /// it is first opened.
  ContentsSession contents;
  /// Shows the about box for the constants in a template file. Without it there is none.
  std::function<void(std::string_view template_file)> show_about_box = {};
};

}  // namespace plexoras
