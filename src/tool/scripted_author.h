#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "authoring/form_driver.h"
#include "host/platform.h"
#include "tool/page_action.h"

namespace plexoras {

class Console;

/// Plays what an author does, one action after the other, on a form and on the dialogs that it opens.
///
/// It answers for a platform: a dialog takes the actions that follow until it closes, an open-file dialog the path that
/// comes next, and message boxes are told at once. A dialog without an answer is closed as with the button of its
/// window, or cancelled. Lives for one command; the platform may not use it longer.
class ScriptedAuthor final : public ModalPresenter, public FileDialog, public MessageBox {
public:
  /// What went wrong, and the action in which it did.
  struct Message {
    std::string action;  ///< "--click cmdOK"; empty before the first one
    std::string text;
  };

  /// `page` is what the author works on, for messages: "index.html#Sales Styles".
  ScriptedAuthor(const std::vector<TypedAction>& actions, std::string page, Console& console)
      : actions_(actions.begin(), actions.end()), page_(std::move(page)), console_(console) {}

  /// Plays what is left on `form`. Error 5 for an action that cannot be played, 53 for a file that cannot be read; what
  /// a handler raises comes through. `action()` is then the one at fault.
  void play(Form& form);

  void run(Form& dialog) override;
  std::optional<std::string> choose_file(std::string_view title, std::string_view filter) override;
  void show(std::string_view text, std::string_view title) override;

  /// Takes note of something that is done for the author: "--apply".
  void begin(const std::string& action) { action_ = action; }
  /// What was begun last, of dialogs in dialogs in the innermost one.
  const std::string& action() const { return action_; }
  /// What to put before a message now: "index.html#Sales Styles: --click cmdOK: ".
  std::string place() const;

  const std::string& page() const { return page_; }
  /// What message boxes said, and which dialogs had no answer.
  const std::vector<Message>& messages() const { return messages_; }
  /// The dialog in front when the actions ran out, as it was then.
  const std::optional<ListedForm>& unanswered() const { return unanswered_; }
  /// What controls of the form itself, by their names, were set to last.
  const std::map<std::string, std::string>& values_set() const { return values_set_; }

private:
  void play_next(Form& form);
  void tell(const std::string& message);

  std::deque<TypedAction> actions_;
  std::string page_;
  Console& console_;
  std::string action_;
  std::string file_problem_;  // why the chosen file cannot be read
  std::vector<Message> messages_;
  std::optional<ListedForm> unanswered_;
  std::map<std::string, std::string> values_set_;
};

}  // namespace plexoras
