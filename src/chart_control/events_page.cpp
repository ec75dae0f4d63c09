#include "chart_control/events_page.h"

#include <algorithm>

#include "template/ini_section.h"
#include "template/lookup_table.h"

namespace plexoras {
namespace {

constexpr std::string_view detail_table = "EVENTDETAIL";
constexpr std::string_view list_key = "EVENTS";

}  // namespace

std::string Events::Handler::entry() const { return script.empty() ? event : event + " (script)"; }

Events::Events(TemplateSession& session) : session_(session) {
  caption = "Events";
  txtScript.multi_line = true;
  lstEvents.on_click = [this] { lstEvents_Click(); };
  txtScript.on_change = [this] { txtScript_Change(); };
}

void Events::SelectionChanged() {
  const Handler* const last = selected();
  const std::string last_event = last == nullptr ? std::string() : last->event;
  lstEvents.clear();
  lstEvents_Click();
  handlers_.clear();

  // A control that fails midway has no events here: storing some of them would take the others out of "EVENTS".
  handlers_ = read_events();

  for (const Handler& handler : handlers_) lstEvents.add(handler.entry());
  const auto same = std::find_if(handlers_.begin(), handlers_.end(),
                                 [&](const Handler& handler) { return handler.event == last_event; });
  if (handlers_.empty()) {
    lblDetail.caption = "The template of this control has no events.";
  } else {
    lstEvents.set_list_index(same == handlers_.end() ? 0 : static_cast<int>(same - handlers_.begin()));
  }
}

std::vector<Events::Handler> Events::read_events() {
  AutomationObject& control = selected_control();
  const auto constants =
      GetSectionVariables(session_, control.get("templateFile").to_text(), control.get("constSpecSection").to_text());
  const auto keys = lookup_table(*constants, handler_table);
  const auto details = lookup_table(*constants, detail_table);
  std::vector<Handler> handlers;
  for (std::int32_t i = 0; i < keys->Count(); ++i) {
    const std::string& event = keys->keyAtIndex(i);
    const std::string& key = keys->valueAtIndex(i);
    handlers.push_back({event, key, details->atGet(event), stored(key)});
  }
  return handlers;
}

void Events::ApplyChanges() {
  properties_.store_and_tell([this] { store(); });
}

void Events::store() {
  for (Handler& handler : handlers_) {
    if (!handler.is_edited) continue;
    properties_.call_with("atPut", {handler.key, handler.script});
    handler.is_edited = false;
  }
  // Somebody else may have stored other scripts meanwhile.
  std::string with_script;
  for (const Handler& handler : handlers_) {
    if (!stored(handler.key).empty()) with_script += (with_script.empty() ? "" : " ") + handler.event;
  }
  // A control without events may have a property of that name for something else.
  if (!handlers_.empty()) properties_.call_with("atPut", {list_key, with_script});
}

std::string Events::stored(std::string_view key) { return properties_.call_with("atGet", {key}).to_text(); }

void Events::lstEvents_Click() {
  const Handler* const handler = selected();
  txtScript.enabled = handler != nullptr;
  txtScript.set_text(handler == nullptr ? std::string() : handler->script);
  const bool has_detail = handler != nullptr && !handler->detail.empty();
  lblDetail.caption = has_detail ? "event.detail: " + handler->detail : std::string();
}

void Events::txtScript_Change() {
  Handler* const handler = selected();
  if (handler == nullptr || handler->script == txtScript.text()) return;
  handler->is_edited = true;
  for (std::size_t i = 0; i < handlers_.size(); ++i) {
    if (handlers_[i].key != handler->key) continue;
    handlers_[i].script = txtScript.text();
    lstEvents.set_entry(i, handlers_[i].entry());
  }
  Changed = true;
}

Events::Handler* Events::selected() {
  const int index = lstEvents.list_index();
  return index < 0 ? nullptr : &handlers_[static_cast<std::size_t>(index)];
}

}  // namespace plexoras
