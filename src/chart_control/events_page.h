#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/property_page.h"
#include "host/selected_properties.h"
#include "template/template_session.h"

namespace plexoras {

/// The property page for the scripts that answer a control's events on readers' pages.
///
/// Which events there are, its template says, in two lookup tables of the section `constSpecSection`: "EVENTHANDLER"
/// has the custom property that keeps the script for each event, "EVENTDETAIL" words about what the event brings.
///
///     #DEFINE EVENTHANDLER_plexoras-select ONSELECT
///     #DEFINE EVENTDETAIL_plexoras-select 'row, column: what the reader has selected.'
///
/// Events with the same property share its script. The custom property "EVENTS" lists the events that have a script, in
/// the order of the table, with a blank between two. The page reaches the selected control by member name alone
/// (`templateFile`, `constSpecSection`, `CustomProperties`, `FireCustomPropertyChange`), so it serves any control that
/// has custom properties.
class Events final : public PropertyPage {
public:
  static constexpr std::string_view handler_table = "EVENTHANDLER";

  /// `session` outlives it.
  explicit Events(TemplateSession& session);

  /// The events, marked where there is a script.
  ListBox& lstEvents = add<ListBox>("lstEvents", "Event:");
  /// The script of the selected event, in which `event` is the event and `this` the published control.
  TextBox& txtScript = add<TextBox>("txtScript", "Script:");
  /// What `event.detail` holds for the selected event, or that there are no events.
  Label& lblDetail = add<Label>("lblDetail");

  /// Shows the scripts of the selected control; the event that was selected before stays so where there is one of that
  /// name, else the first one is. After an error the page has no events.
  void SelectionChanged() override;
  /// Stores the scripts that have been edited, and "EVENTS", then tells the selected control. When the control refuses
  /// one midway, those stored before it stay, the control is told of them, and the error comes out.
  void ApplyChanges() override;

  void lstEvents_Click();
  void txtScript_Change();

private:
  struct Handler {
    std::string event;
    std::string key;  // of the custom property
    std::string detail = {};
    std::string script = {};
    bool is_edited = false;

    std::string entry() const;
  };

  std::vector<Handler> read_events();
  void store();
  std::string stored(std::string_view key);
  Handler* selected();

  TemplateSession& session_;
  SelectedProperties properties_{*this};
  std::vector<Handler> handlers_;  // as in the list
};

}  // namespace plexoras
