#include "tool/template_stepper.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <iterator>

#include "authoring/page_text.h"
#include "template/references.h"
#include "template/template_trial.h"
#include "tool/console.h"

namespace plexoras {
namespace {

constexpr std::string_view prompt = "(step) ";
constexpr std::size_t shown_lines = 5;   // of the output
constexpr std::size_t shown_bytes = 72;  // of a variable's value

void say(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }

// `text` with LF line ends, the last line ended too.
std::string for_terminal(std::string_view text) {
  std::string shown = replaced_all(text, "\r\n", "\n");
  if (!shown.empty() && !shown.ends_with('\n')) shown += '\n';
  return shown;
}

// The last lines of `output`, in which each line ends in CR LF.
std::string_view tail_of(std::string_view output) {
  std::size_t begin = output.size();
  for (std::size_t i = 0; i < shown_lines; ++i) {
    const std::size_t line_break = begin < 2 ? std::string_view::npos : output.substr(0, begin - 2).rfind("\r\n");
    if (line_break == std::string_view::npos) return output;
    begin = line_break + 2;
  }
  return output.substr(begin);
}

// A value on one line, cut where it is long, but never inside a character.
std::string shortened(std::string_view value) {
  std::string text = escape_listing(value.substr(0, shown_bytes + 1));
  if (text.size() <= shown_bytes) return text;
  std::size_t end = shown_bytes;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return text.substr(0, end) + "... (" + std::to_string(value.size()) + " bytes)";
}

}  // namespace

struct TemplateStepper::Command {
  std::string_view letter;
  std::string_view word;
  std::string_view help;
};

const TemplateStepper::Command TemplateStepper::commands[] = {
    {"n", "next", "go on to the next line of text or macro call; so does Enter"},
    {"h", "halt", "run on to the next #HALT"},
    {"c", "continue", "run to the end"},
    {"p", "print", "p NAME: the whole value of a variable"},
    {"v", "variables", "all variables"},
    {"o", "output", "all of the output so far"},
    {"?", "help", "these lines"},
    {"q", "quit", "end without a result"},
};

bool TemplateStepper::halt(const HaltRequest& request) {
  if (runs_to_the_end_) return false;
  const auto& variables = static_cast<const Dictionary&>(*request.variables);
  show_stop(request, variables);
  for (;;) {
    say(prompt);
    std::string typed;
    if (!std::getline(std::cin, typed)) {
      say("\n");
      runs_to_the_end_ = true;
      return false;
    }
    if (typed.ends_with('\r')) typed.pop_back();
    if (isatty(STDIN_FILENO) == 0) say(typed + "\n");  // a terminal has shown it already
    switch (obey(typed, request, variables)) {
      case Answer::StayHere:
        break;
      case Answer::NextLine:
        return true;
      case Answer::RunOn:
        return false;
    }
  }
}

TemplateStepper::Answer TemplateStepper::obey(std::string_view typed, const HaltRequest& request,
                                              const Dictionary& variables) {
  if (trimmed(typed).empty()) return Answer::NextLine;
  const BlankSplit parts = split_at_blank(trimmed(typed));
  const auto* const command = std::find_if(std::begin(commands), std::end(commands), [&](const Command& row) {
    const bool takes_name = row.letter == "p";
    return (parts.first == row.letter || parts.first == row.word) && takes_name == parts.found;
  });
  if (command == std::end(commands)) {
    try_out(parts.first == "=" ? parts.rest : typed, request);
    return Answer::StayHere;
  }
  switch (command->letter.front()) {
    case 'n':
      return Answer::NextLine;
    case 'h':
      return Answer::RunOn;
    case 'c':
      runs_to_the_end_ = true;
      return Answer::RunOn;
    case 'p':
      say(variables.includes(parts.rest, Dictionary::EmptyValues::Keep)
              ? for_terminal(variables.atGet(parts.rest) + "\n")
              : "there is no variable \"" + std::string(parts.rest) + "\"; v lists those there are\n");
      break;
    case 'v':
      show_variables(variables);
      break;
    case 'o':
      say(for_terminal(request.output));
      break;
    case 'q':
      throw Quit();
    default:
      for (const Command& row : commands) {
        say(std::string(row.letter) + ", " + std::string(row.word) + std::string(11 - row.word.size(), ' ') +
            std::string(row.help) + "\n");
      }
      say("Anything else is tried out as template text; \"= TEXT\" does so for a text like these.\n");
  }
  return Answer::StayHere;
}

void TemplateStepper::show_stop(const HaltRequest& request, const Dictionary& variables) {
  const std::string_view tail = tail_of(request.output);
  say(tail.empty()                           ? "--- no output yet ---\n"
      : tail.size() == request.output.size() ? "--- output ---\n"
                                             : "--- end of the output ---\n");
  say(for_terminal(tail));
  seen_before_ = std::move(seen_now_);
  seen_now_.emplace();
  for (std::int32_t i = 0; i < variables.Count(); ++i) {
    seen_now_->emplace(variables.keyAtIndex(i), variables.valueAtIndex(i));
  }
  say("--- variables ---\n");
  show_variables(variables);
  const std::string file = request.file.empty() ? "<text>" : std::string(request.file);
  say(file + ":" + std::to_string(request.line) + ": " + std::string(request.current_line) + "\n");
}

// Those that have changed since the last stop are marked; those that have gone come last.
void TemplateStepper::show_variables(const Dictionary& variables) const {
  for (std::int32_t i = 0; i < variables.Count(); ++i) {
    const std::string& name = variables.keyAtIndex(i);
    const std::string& value = variables.valueAtIndex(i);
    bool has_changed = false;
    if (seen_before_) {
      const auto before = seen_before_->find(name);
      has_changed = before == seen_before_->end() || before->second != value;
    }
    say((has_changed ? "* " : "  ") + name + " = " + shortened(value) + "\n");
  }
  if (!seen_before_) return;
  for (const auto& [name, value] : *seen_before_) {
    if (!seen_now_->contains(name)) say("- " + name + "\n");
  }
}

void TemplateStepper::try_out(std::string_view text, const HaltRequest& request) const {
  SilentMessageBox silent;  // diagnostics say more
  Platform quiet = platform_;
  quiet.message_box = &silent;
  const auto& variables = static_cast<const Dictionary&>(*request.variables);
  const TemplateTrial trial = try_template_text(quiet, variables, request.template_file, text);
  say(for_terminal(trial.text));
  for (const Diagnostic& diagnostic : trial.diagnostics) say(to_text(diagnostic));
}

}  // namespace plexoras
