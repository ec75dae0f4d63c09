#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/automation.h"

namespace plexoras {

class Form;

/// Per-user settings: texts by section and key, kept under the application name "PlexorasDTC".
class SettingsStore {
public:
  virtual ~SettingsStore() = default;
  virtual std::string read(std::string_view section, std::string_view key, std::string_view default_value) = 0;
  /// Raises error 75 when the setting cannot be kept.
  virtual void write(std::string_view section, std::string_view key, std::string_view value) = 0;
};

/// Files as the library sees them. Paths may use "\" and "/" alike.
class FileSystem {
public:
  virtual ~FileSystem() = default;
  /// Whether `path` is a file that can be opened for reading; a directory is not a file.
  virtual bool can_read(std::string_view path) = 0;
  /// The bytes of a file. Error 53 when there is no such file, 75 when it cannot be read.
  virtual std::string read(std::string_view path) = 0;
  /// Gives the bytes of a file to `take`, in order and in pieces, without holding all of them at once. Errors as with
  /// `read`; what `take` raises comes through.
  virtual void read_pieces(std::string_view path, const std::function<void(std::string_view)>& take) {
    take(read(path));
  }
  /// `path` as this system writes it, for messages.
  virtual std::string shown(std::string_view path) { return std::string(path); }
  /// The directory of the library's own files, ending in a separator.
  virtual std::string module_directory() = 0;
};

/// Modal boxes. Messages are 8-bit text and may hold CR LF.
class MessageBox {
public:
  virtual ~MessageBox() = default;
  virtual void show(std::string_view text, std::string_view title) = 0;
};

/// The common open-file dialog.
class FileDialog {
public:
  virtual ~FileDialog() = default;
  /// The chosen path, or nothing when the author cancelled. `filter` is "text|patterns|text|patterns".
  virtual std::optional<std::string> choose_file(std::string_view title, std::string_view filter) = 0;
};

/// Shows a form and returns when it has closed.
class ModalPresenter {
public:
  virtual ~ModalPresenter() = default;
  virtual void run(Form& form) = 0;
};

/// What a template asks for when it halts.
struct HaltRequest {
  std::string_view current_line;          ///< the line that halted, as it will be handled
  std::string_view file;                  ///< where it stands; empty when the text came from memory
  std::size_t line = 0;                   ///< 1-based line in `file`
  std::string_view output;                ///< the text produced so far
  AutomationObject* variables = nullptr;  ///< the template's variables, a `Dictionary`
  std::string_view template_file = {};    ///< what `#INCLUDE` without `FROM` reads there
};

/// Makes components by identifier ("Plexoras.DiagramApplet").
class ComponentRegistry {
public:
  using Factory = std::function<ObjectRef()>;

  void add(std::string identifier, Factory factory);
  /// Error 429, naming the identifier, when no such component is known.
  ObjectRef create(std::string_view identifier) const;

private:
  std::map<std::string, Factory, std::less<>> factories_;
};

/// Everything outside the process that the library uses, as references that its owner keeps alive.
///
/// The owner makes one for as long as the program (or a test) runs and passes it to whoever needs it.
/// A null pointer is a service that this program does not have: with no message box the text goes to
/// standard error, with no file dialog every choice is cancelled, with no presenter forms close at once.
struct Platform {
  SettingsStore& settings;
  FileSystem& files;
  ComponentRegistry& components;
  /// The day, in the locale's short date format.
  std::function<std::string()> short_date;
  /// A uniform random number in [0, 1).
  std::function<double()> random;
  MessageBox* message_box = nullptr;
  FileDialog* file_dialog = nullptr;
  ModalPresenter* presenter = nullptr;
  /// Shows where a template has halted; answers whether to stop again before the next line.
  /// Without it processing goes on.
  std::function<bool(const HaltRequest&)> halt = {};
  /// Asks an attached debugger to stop here; without it processing goes on.
  std::function<void()> debugger_break = {};

  /// Shows `text` in the message box or, without one, writes the title and the text as lines to standard error.
  void show_message(std::string_view text, std::string_view title = {}) const;
};

}  // namespace plexoras
