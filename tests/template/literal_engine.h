#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace plexoras {

/// What the sections of one literal run share.
struct LiteralWorld {
  std::map<std::string, std::string> files;  ///< bytes by path
  std::string module_directory;
  std::string today;
  std::function<bool(const std::string& line)> halt;

  std::vector<std::string> messages;  ///< "title|text" of every box shown
  /// Lines, passes and references left before the run counts as running away.
  std::size_t budget = 20000;
  std::size_t depth = 0;
};

/// A second template engine, as slow and as plain as its rules can be written down: an inclusion or an expansion is
/// inserted into the source string, and expansion starts again from the beginning until nothing changes. It shares
/// no code with the real engine, whose results the tests compare with its own.
class LiteralSection {
public:
  struct Failure {};
  struct Runaway {};  ///< the budget is used up: there is nothing to compare

  explicit LiteralSection(LiteralWorld& world) : world_(world) {}

  void Read(const std::string& file, const std::string& section);
  void SetContents(const std::string& text);
  const std::string& GetContents();
  const std::vector<std::pair<std::string, std::string>>& GetVariables();
  void Define(const std::string& name, const std::string& value);
  std::string Find(const std::string& name);
  bool isAbsent(const std::string& name);
  std::string SubstituteLine(const std::string& text);

private:
  void Preprocess();
  std::string read_line();
  void handle(const std::string& line);
  void open_level(bool skip);
  std::pair<std::string, std::string> name_and_value(const std::string& argument) const;
  void store(const std::string& argument);
  void splice(const std::string& text);

  std::string ReadSection(const std::string& file, const std::string& section) const;
  std::string ExpandReferences(const std::string& text);
  std::string EvaluateReference(const std::string& reference);
  std::string CallMacro(const std::string& call_text);
  std::string CallBuiltin(const std::string& name, const std::string& argument) const;
  std::string variable(const std::string& name) const;
  void spend();

  LiteralWorld& world_;
  std::vector<std::pair<std::string, std::string>> variables_;
  std::string file_name_ = "APPLET.DAT";
  std::string raw_;
  std::string result_;

  // Of one run.
  std::string source_;
  std::size_t position_ = 0;
  std::vector<std::size_t> line_starts_;
  std::string output_;
  std::vector<bool> skip_;
  std::size_t level_ = 0;
  std::size_t splices_ = 0;
  bool step_mode_ = false;
};

}  // namespace plexoras
