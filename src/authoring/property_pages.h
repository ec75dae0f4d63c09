#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "authoring/live_control.h"
#include "pages/pages_session.h"
#include "pages/property_bindings.h"

namespace plexoras {

/// A property that a page shows in a way of its own.
struct OwnProperty {
  struct Code {
    std::string_view value;
    std::string_view caption;
  };

  std::string_view name;  ///< of the chart or, where that has none of it, a custom property
  std::string_view control;
  std::span<const Code> codes = {};
};

/// A property page that authors can open for a control.
struct PropertyPageType {
  std::string_view name;          ///< for command lines and addresses: "ChartStyles"
  std::string_view caption;       ///< for authors: "Chart Styles"
  std::string_view control_type;  ///< the identifier of the controls that have it; empty: every control
  std::unique_ptr<PropertyPage> (*make)(PagesSession& session);
  /// The control's own properties that it shows; null where that is up to the template.
  std::span<const PropertyRow> (*properties)() = nullptr;
  /// Those that it shows beside them.
  std::span<const OwnProperty> own_properties = {};
  bool edits_menu = false;  ///< with the menu builder
};

/// Every property page there is, in the order in which authors see them. Lives as long as the program.
std::span<const PropertyPageType> property_page_types();

/// The property pages of a program, with all that they open: dialogs, forms of templates, the about box.
///
///     PropertyPages pages(session);
///     LiveControl control(session, record);
///     const auto page = pages.open(pages.find("Styles", control), control);
///     act(*page, {.kind = FormAction::Kind::Set, .control = "chkHasLegend", .value = "on"});
///     page->apply();
///
/// An authoring environment makes one when it starts, and controls after it. It makes every component that controls
/// and pages create known to the registry of the session's platform, which must make none when this has gone.
class PropertyPages {
public:
  /// `templates` outlives this, and this outlives the pages.
  explicit PropertyPages(TemplateSession& templates);
  PropertyPages(const PropertyPages&) = delete;
  PropertyPages& operator=(const PropertyPages&) = delete;

  /// Those that `control` has.
  static std::vector<const PropertyPageType*> types_for(const LiveControl& control);
  /// The one of them that `name` is the name or caption of, in any case. Error 438 with a suggestion when there is
  /// none.
  static const PropertyPageType& find(std::string_view name, const LiveControl& control);

  /// Makes a page and loads it from `control`, which outlives it. What the control raises comes through.
  ///
  /// For a page that edits menus, the menu builder takes the control's menu. There is one builder, so of several such
  /// pages that are open at once only the one opened last can be applied: the others would store its menu.
  std::unique_ptr<PropertyPage> open(const PropertyPageType& type, LiveControl& control);

private:
  PagesSession session_;
};

}  // namespace plexoras
