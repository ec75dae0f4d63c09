#include "tool/scripted_author.h"

#include "tool/console.h"

namespace plexoras {

void ScriptedAuthor::play(Form& form) {
  while (!actions_.empty()) play_next(form);
}

void ScriptedAuthor::play_next(Form& form) {
  const TypedAction next = std::move(actions_.front());
  actions_.pop_front();
  try {
    act(form, next.action);
  } catch (const AutomationError& error) {
    // Of dialogs in dialogs the innermost action is the one at fault.
    if (error.source() == "ScriptedAuthor") throw;
    throw AutomationError(error.number(), next.text + ": " + error.description(), "ScriptedAuthor");
  }
}

void ScriptedAuthor::run(Form& dialog) {
  while (dialog.is_open() && !actions_.empty()) play_next(dialog);
  if (!dialog.is_open()) return;
  if (!unanswered_) unanswered_ = list_form(dialog);
  tell("the dialog \"" + dialog.caption + "\" was left open, and closed without an answer; say what to do in it");
  dialog.close();
}

std::optional<std::string> ScriptedAuthor::choose_file(std::string_view title, std::string_view) {
  if (actions_.empty() || actions_.front().action.kind != FormAction::Kind::ChooseFile) {
    tell("the dialog \"" + std::string(title) + "\" asked for a file, and was cancelled; answer it with --file PATH");
    return std::nullopt;
  }
  const std::string path = actions_.front().action.value;
  actions_.pop_front();
  return path;
}

void ScriptedAuthor::show(std::string_view text, std::string_view title) {
  tell((title.empty() ? "" : std::string(title) + ": ") + std::string(text));
}

void ScriptedAuthor::tell(const std::string& message) {
  messages_.push_back(message);
  if (!console_.options().json) console_.problem("plexoras: error: " + message + "\n");
}

}  // namespace plexoras
