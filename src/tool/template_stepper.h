#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "host/platform.h"
#include "template/dictionary.h"

namespace plexoras {

/// Talks with a template author wherever a template halts: shows the line, the variables and the output so far, tries
/// out what is typed, and goes on as it is told.
///
/// Commands come from standard input, a line each, from a terminal or a script; when it ends, the template runs on. All
/// talk goes to standard error. Lives for one run of a template.
class TemplateStepper {
public:
  /// What `halt` raises when the author wants no result at all.
  struct Quit {};

  /// `platform` outlives the stepper.
  explicit TemplateStepper(const Platform& platform) : platform_(platform) {}

  /// Answers `Platform::halt`.
  bool halt(const HaltRequest& request);

private:
  enum class Answer { StayHere, NextLine, RunOn };
  struct Command;
  static const Command commands[];

  Answer obey(std::string_view typed, const HaltRequest& request, const Dictionary& variables);
  void show_stop(const HaltRequest& request, const Dictionary& variables);
  void show_variables(const Dictionary& variables) const;
  void try_out(std::string_view text, const HaltRequest& request) const;

  const Platform& platform_;
  using Seen = std::optional<std::map<std::string, std::string>>;
  Seen seen_before_;  // the variables at the stop before this one
  Seen seen_now_;
  bool runs_to_the_end_ = false;
};

}  // namespace plexoras
