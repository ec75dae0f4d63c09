#include "tool/scripted_author.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "authoring/page_text.h"
#include "host/headless_platform.h"
#include "tool/console.h"
#include "tool/text_table.h"

namespace plexoras {
namespace {

// Why the file at `path` cannot be read; empty when it can.
std::string reading_problem(std::string_view path) {
  const std::string found = found_path(path);
  std::error_code ignored;
  if (::access(found.c_str(), R_OK) != 0) return std::strerror(errno);
  return std::filesystem::is_directory(found, ignored) ? std::strerror(EISDIR) : "";
}

}  // namespace

void ScriptedAuthor::play(Form& form) {
  while (!actions_.empty()) {
    const FormAction action = actions_.front().action;
    play_next(form);
    if (action.kind == FormAction::Kind::Set) values_set_[action.control] = action.value;
  }
}

void ScriptedAuthor::play_next(Form& form) {
  const TypedAction next = std::move(actions_.front());
  actions_.pop_front();
  begin(next.text);
  act(form, next.action);
  // Forms take such a file for none chosen, and what follows would fail for reasons that say little.
  if (!file_problem_.empty()) throw AutomationError(RunTimeError::FileNotFound, file_problem_, "ScriptedAuthor");
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
  const TypedAction next = std::move(actions_.front());
  actions_.pop_front();
  begin(next.text);
  file_problem_ = reading_problem(next.action.value);
  if (!file_problem_.empty()) return std::nullopt;
  return next.action.value;
}

void ScriptedAuthor::show(std::string_view text, std::string_view title) {
  tell((title.empty() ? "" : std::string(title) + ": ") + std::string(text));
}

std::string ScriptedAuthor::place() const {
  constexpr std::size_t enough = 120;  // of a long text, to know the action by
  return page_ + ": " + (action_.empty() ? "" : cut_to(printable(action_), enough) + ": ");
}

void ScriptedAuthor::tell(const std::string& message) {
  messages_.push_back({action_, message});
  if (!console_.options().json) console_.problem("plexoras: error: " + place() + message + "\n");
}

}  // namespace plexoras
