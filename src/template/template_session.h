#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "host/platform.h"
#include "template/diagnostic.h"
#include "template/dictionary.h"
#include "template/template_files.h"

namespace plexoras {

class Preprocessor;

/// How much expansion a template may ask for before it counts as running away.
struct ExpansionLimits {
  /// How deep inclusions, macro calls and references may stand inside each other, and how often the values in
  /// a line may turn out to hold references again. Past it: error 28. Sensible up to 1000: each level takes
  /// about a kilobyte of the call stack.
  std::size_t nesting = 256;
  /// Bytes of expanded text, past which comes error 14. On top of it a request may make what it was given in templates
  /// and variables 128 times over, and 16 times over in one piece, so that much data is no runaway.
  std::size_t text_bytes = std::size_t{64} << 20;
};

/// What the template sections of one request share: the platform, the template files read so far, the limits,
/// and what was found wrong.
///
/// The owner makes one for a request, or one for a run of a program that should see each template file as it
/// was when first read, and keeps it alive while sections made with it are in use.
class TemplateSession {
public:
  explicit TemplateSession(const Platform& with, ExpansionLimits at_most = {})
      : platform(with), limits(at_most), files(with) {}
  TemplateSession(const TemplateSession&) = delete;
  TemplateSession& operator=(const TemplateSession&) = delete;

  const Platform& platform;
  const ExpansionLimits limits;
  TemplateFiles files;
  /// Failures and warnings of every run so far, in the order found.
  std::vector<Diagnostic> diagnostics;
  /// Takes out the diagnostics behind the first `told_before`. Who keeps a session for long takes them as they come, or
  /// they gather.
  std::vector<Diagnostic> take_diagnostics(std::size_t told_before = 0);

  /// Notes that there is no template file `name`, which was asked for at `where`.
  void warn_of_missing_file(std::string_view name, Diagnostic where);

private:
  friend class Preprocessor;
  friend class References;

  // A text that is lent to one call and comes back with its memory, so that expansion allocates little.
  class Scratch {
  public:
    explicit Scratch(TemplateSession& session);
    ~Scratch() { session_.spare_.push_back(std::move(text)); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    std::string text;

  private:
    TemplateSession& session_;
  };

  // One more level of nesting for as long as it lives.
  class Level {
  public:
    explicit Level(TemplateSession& session);
    ~Level() { --session_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

  private:
    TemplateSession& session_;
  };

  // Begins a request, whose outermost text and variables have `given_bytes` bytes.
  void open_request(std::size_t given_bytes);
  void allow_for(std::size_t given_bytes);
  // Lets the request have its share for template files that were read since it began.
  void allow_for_files_read();
  // Counts one expansion that produced `bytes`; error 14 when the request has used up its share.
  void charge(std::size_t bytes) {
    used_ += bytes + expansion_cost;
    if (bytes > largest_ || used_ > allowed_) run_out(RunTimeError::OutOfStringSpace);
  }
  [[noreturn]] void run_out(RunTimeError number);

  // What an expansion costs beside its text, so that endless empty ones come to an end too.
  static constexpr std::size_t expansion_cost = 32;

  std::vector<std::string> spare_;
  Preprocessor* active_ = nullptr;  // the innermost run
  std::size_t depth_ = 0;
  std::size_t used_ = 0;
  std::size_t allowed_ = 0;
  std::size_t largest_ = 0;              // what one expansion may make
  std::size_t files_allowed_for_ = 0;    // bytes
  bool exhausted_ = false;               // the request has run out: every run of it ends
  std::set<std::string> missing_files_;  // that the request has asked for and been warned of
  bool told_ = false;                    // and the author has been told
};

}  // namespace plexoras
