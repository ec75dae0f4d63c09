#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "authoring/form_driver.h"
#include "host/platform.h"

namespace plexoras {

class Console;

/// An author's action as it was typed.
struct TypedAction {
  FormAction action;
  std::string text;  ///< "--click cmdOK", for messages
};

/// Plays what an author does, one action after the other, on a form and on the dialogs that it opens.
///
/// It answers for a platform: a dialog takes the actions that follow until it closes, an open-file dialog the path that
/// comes next, and message boxes are told at once. A dialog without an answer is closed as with the button of its
/// window, or cancelled. Lives for one command; the platform may not use it longer.
class ScriptedAuthor final : public ModalPresenter, public FileDialog, public MessageBox {
public:
  ScriptedAuthor(const std::vector<TypedAction>& actions, Console& console)
      : actions_(actions.begin(), actions.end()), console_(console) {}

  /// Plays what is left on `form`. An action that cannot be played is error 5, which names it; what a handler raises
  /// comes out in the same form.
  void play(Form& form);

  void run(Form& dialog) override;
  std::optional<std::string> choose_file(std::string_view title, std::string_view filter) override;
  void show(std::string_view text, std::string_view title) override;

  /// What message boxes said, and which dialogs had no answer.
  const std::vector<std::string>& messages() const { return messages_; }
  /// The dialog in front when the actions ran out, as it was then.
  const std::optional<ListedForm>& unanswered() const { return unanswered_; }

private:
  void play_next(Form& form);
  void tell(const std::string& message);

  std::deque<TypedAction> actions_;
  Console& console_;
  std::vector<std::string> messages_;
  std::optional<ListedForm> unanswered_;
};

}  // namespace plexoras
