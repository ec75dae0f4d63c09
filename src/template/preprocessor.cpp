#include "template/preprocessor.h"

#include <algorithm>
#include <new>

#include "template/ini_section.h"

namespace plexoras {
namespace {

constexpr std::string_view line_break = "\r\n";

[[noreturn]] void needs(std::string_view form) {
  throw AutomationError(RunTimeError::InvalidCall, "the directive needs more: write " + std::string(form),
                        "IniSection");
}

BlankSplit split_or_fail(std::string_view argument, std::string_view form) {
  const BlankSplit split = split_at_blank(argument);
  if (!split.found) needs(form);
  return split;
}

// A value in quotes loses its first and last character, whatever the last one is.
std::string_view without_quotes(std::string_view value) {
  if (!value.starts_with('"') && !value.starts_with('\'')) return value;
  if (value.size() < 2) {
    throw AutomationError(RunTimeError::InvalidCall, "the value is a quotation mark alone; close the quotation",
                          "IniSection");
  }
  return value.substr(1, value.size() - 2);
}

std::string_view left_trimmed(std::string_view line) {
  const std::size_t first = line.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view() : line.substr(first);
}

// Whether a line comes out as it stands: no directive, reference or TAB, not continued, and one line.
bool is_plain_line(std::string_view line) {
  if (left_trimmed(line).starts_with('#') || line.ends_with('\\')) return false;
  return std::none_of(line.begin(), line.end(), [](char c) { return c == '(' || c == '\t' || c == '\r'; });
}

std::string what_failed(RunTimeError number, const std::string& description, const ExpansionLimits& limits) {
  std::string what = description;
  if (number == RunTimeError::OutOfStackSpace) {
    what += ": references, macro calls or inclusions nest more than " + std::to_string(limits.nesting) +
            " deep; does something refer to itself?";
  } else if (number == RunTimeError::OutOfStringSpace) {
    what += ": expansion makes more text than its limits allow; does something repeat itself?";
  }
  return what + " (error " + std::to_string(static_cast<int>(number)) + ")";
}

}  // namespace

// Tried from top to bottom. Kept: those without a blank at the end match longer words too, so "#ENDIFS" is an
// #ENDIF, while "#DEFINEX" is a call.
const Preprocessor::DirectiveRow Preprocessor::directives[] = {
    {DirectiveKind::Halt, "#HALT", &Preprocessor::halt},
    {DirectiveKind::Include, "#INCLUDE ", &Preprocessor::include},
    {DirectiveKind::Define, "#DEFINE ", &Preprocessor::define},
    {DirectiveKind::Macro, "#MACRO ", &Preprocessor::macro},
    {DirectiveKind::Undefine, "#UNDEF ", &Preprocessor::undefine},
    {DirectiveKind::IfInside, "#IFINSIDE", &Preprocessor::if_inside},
    {DirectiveKind::IfEqual, "#IFEQUAL ", &Preprocessor::if_equal},
    {DirectiveKind::IfNotEqual, "#IFNEQUAL", &Preprocessor::if_not_equal},
    {DirectiveKind::IfDefined, "#IFDEF ", &Preprocessor::if_defined},
    {DirectiveKind::IfUndefined, "#IFUNDEF ", &Preprocessor::if_undefined},
    {DirectiveKind::Else, "#ELSE", &Preprocessor::otherwise},
    {DirectiveKind::EndIf, "#ENDIF", &Preprocessor::end_if},
};

const Preprocessor::DirectiveRow* Preprocessor::row_of(std::string_view line) {
  // No keyword begins with another letter than these.
  constexpr std::string_view first_letters = "HIDMUE";
  if (line.size() < 2 || first_letters.find(line[1]) == std::string_view::npos) return nullptr;
  for (const DirectiveRow& row : directives) {
    if (line.starts_with(row.keyword)) return &row;
  }
  return nullptr;
}

Directive Preprocessor::directive_of(std::string_view line) {
  const DirectiveRow* const row = row_of(line);
  return row == nullptr ? Directive{DirectiveKind::Call, line.substr(0, 1)} : Directive{row->kind, row->keyword};
}

bool Preprocessor::run(SourceText source, std::string& output) {
  // Whatever ends the run, the one around it is the active one again.
  struct Activation {
    TemplateSession& session;
    Preprocessor* outer;
    ~Activation() { session.active_ = outer; }
  };
  outer_ = session_.active_;
  const Activation activation{session_, outer_};
  // A bracketed reference that is expanded outside a run belongs to the request which that expansion opened.
  if (outer_ == nullptr && session_.depth_ == 0) {
    session_.open_request(source.text.size() + references_.given_);
  } else {
    session_.allow_for_files_read();
  }
  session_.active_ = this;

  input_.emplace(source);
  output_ = &output;
  output.reserve(source.text.size() + source.text.size() / 16);  // templates mostly give a little more than they are
  try {
    process();
    return true;
  } catch (const AutomationError& error) {
    fail(error);
  } catch (const std::bad_alloc&) {
    fail(AutomationError(RunTimeError::OutOfStringSpace, {}, "IniSection"));
  }
  // A request that has run out ends in all its runs, or what ran away in one would run away in the next.
  if (session_.exhausted_ && outer_ != nullptr) {
    throw AutomationError(RunTimeError::OutOfStringSpace, {}, "IniSection");
  }
  return false;
}

void Preprocessor::process() {
  bool last_was_plain = true;
  for (;;) {
    if (last_was_plain && !step_mode_ && definitions_ == nullptr) {
      const std::string_view plain = input_->take_plain_lines();
      if (!skipping()) *output_ += plain;
    }
    if (!input_->next()) return;
    const std::string_view line = input_->line();
    references_.begin_line(line);
    if (skipping()) {
      if (const std::string_view left = left_trimmed(line); left.starts_with('#')) skip_line(left);
      last_was_plain = true;
    } else {
      last_was_plain = definitions_ == nullptr ? read_line(line) : try_line(line);
    }
  }
}

// Whether it was a text line without a reference.
bool Preprocessor::read_line(std::string_view line) {
  const std::string_view left = left_trimmed(line);
  if (left.starts_with('#')) {
    handle_line(left);
    return false;
  }
  stop_for_step();
  return emit(line);
}

// Passes over a line that fails, as long as the request may go on at all.
bool Preprocessor::try_line(std::string_view line) {
  const std::size_t level_before = level_;
  const std::size_t output_before = output_->size();
  try {
    return read_line(line);
  } catch (const AutomationError& error) {
    const std::string_view left = left_trimmed(line);
    const DirectiveRow* const row = left.starts_with('#') ? row_of(left) : nullptr;
    const bool is_condition = row != nullptr && opens_condition(row->kind);
    if (session_.exhausted_ || (is_condition && level_before + 1 == levels)) throw;
    output_->resize(output_before);
    if (is_condition && level_ == level_before) open_level(true);
    Diagnostic diagnostic = described(error);
    definitions_->push_back({{}, diagnostic.where, diagnostic.source_line, diagnostic.what});
    session_.diagnostics.push_back(std::move(diagnostic));
    return false;
  }
}

// In a branch that is not taken only the lines count that open, switch or close a condition.
void Preprocessor::skip_line(std::string_view line) {
  static constexpr std::string_view openings[] = {"#IFEQUAL ", "#IFNEQUAL", "#IFINSIDE", "#IFDEF ", "#IFUNDEF "};
  if (line.starts_with("#ENDIF")) {
    if (level_ >= 1) --level_;
  } else if (line.starts_with("#ELSE")) {
    if (level_ == 0) {
      throw AutomationError(RunTimeError::SubscriptOutOfRange, "#ELSE stands outside any condition", "IniSection");
    }
    skipping_[level_] = skipping_[level_ - 1];
  } else {
    for (const std::string_view opening : openings) {
      if (line.starts_with(opening)) return open_level(true);
    }
  }
}

void Preprocessor::handle_line(std::string_view line) {
  if (const DirectiveRow* const row = row_of(line)) return (this->*row->handle)(line.substr(row->keyword.size()));
  stop_for_step();
  call(line);
}

// Whether the line held no reference.
bool Preprocessor::emit(std::string_view line) {
  const std::size_t begin = output_->size();
  const bool is_plain = !references_.substitute(line, *output_);
  if (definitions_ != nullptr) note_text(std::string_view(*output_).substr(begin), line);
  output_->append(line_break);
  return is_plain;
}

// Kept: an unknown name expands to the call itself, so that its "#" alone is lost.
void Preprocessor::call(std::string_view line) {
  expansion_.clear();
  references_.call_macro(line.substr(1), expansion_);
  if (expansion_.empty()) return;
  session_.charge(expansion_.size());
  if (!step_mode_ && is_plain_line(expansion_)) {
    if (definitions_ != nullptr) note_text(expansion_, line);
    input_->pass_plain_line(expansion_);
    output_->append(expansion_).append(line_break);
    return;
  }
  check_depth();
  input_->push_expansion(expansion_, line);
}

// `line` is the one read that gives the text.
void Preprocessor::note_text(std::string_view text, std::string_view line) {
  if (text.find_first_not_of(' ') == std::string_view::npos) return;
  const SourceLocation where = input_->location(left_trimmed(line).data());
  // The words about a file that is missing stand in none, and that it is missing has been told.
  if (!where.path.empty()) definitions_->push_back({{}, where, input_->source_line(where)});
}

void Preprocessor::halt(std::string_view rest) {
  if (trimmed(rest) == "VB") {
    if (session_.platform.debugger_break) session_.platform.debugger_break();
    step_mode_ = false;
    return;
  }
  step_mode_ = ask_to_halt();
}

void Preprocessor::include(std::string_view rest) {
  argument_.clear();
  references_.substitute(trimmed(rest), argument_);
  const FromSplit from = split_at_from(argument_);
  const std::string_view section = from.before;
  const std::string_view file = from.found ? from.after : std::string_view(file_name_);
  bool missing = false;
  const SourceText text = session_.files.section(file, section, &missing);
  if (missing && session_.missing_files_.emplace(file).second) session_.warn_of_missing_file(file, described());
  session_.allow_for_files_read();
  session_.charge(text.text.size());
  if (text.text.empty()) return;
  check_depth();
  input_->push_section(text);
}

void Preprocessor::define(std::string_view rest) {
  argument_.clear();
  references_.substitute(trimmed(rest), argument_);
  store(argument_, rest, "#DEFINE NAME value");
}

void Preprocessor::macro(std::string_view rest) { store(trimmed(rest), rest, "#MACRO NAME body"); }

// `rest` is the argument as it stands in the line.
void Preprocessor::store(std::string_view argument, std::string_view rest, std::string_view form) {
  const BlankSplit split = split_or_fail(argument, form);
  const bool is_noted = definitions_ != nullptr;
  variables_.atPut(split.first, without_quotes(split.rest),
                   is_noted ? Dictionary::EmptyValues::Keep : Dictionary::EmptyValues::Drop);
  if (!is_noted) return;
  const BlankSplit written = split_at_blank(trimmed(rest));
  const SourceLocation where = input_->location(written.found ? written.rest.data() : rest.data());
  definitions_->push_back({std::string(split.first), where, input_->source_line(where)});
}

void Preprocessor::undefine(std::string_view rest) {
  argument_.clear();
  references_.substitute(trimmed(rest), argument_);
  variables_.removeKey(argument_);
}

void Preprocessor::if_inside(std::string_view rest) {
  argument_.clear();
  references_.substitute(trimmed(rest), argument_);
  const BlankSplit split = split_or_fail(argument_, "#IFINSIDE NAME (one,two)");
  std::string_view list = split.rest;
  if (list.starts_with('(')) list.remove_prefix(1);
  if (list.ends_with(')')) list.remove_suffix(1);
  open_level(true);
  const std::string value = references_.EvaluateReference(split.first);
  for (bool more = true; more;) {
    const std::size_t comma = list.find(',');
    // Kept: items are compared as they stand, blanks included.
    if (list.substr(0, comma) == value) skipping_[level_] = false;
    more = comma != std::string_view::npos;
    if (more) list.remove_prefix(comma + 1);
  }
}

// Opens a level and compares a variable with the value expected.
bool Preprocessor::value_differs(std::string_view rest, std::string_view form) {
  argument_.clear();
  references_.substitute(trimmed(rest), argument_);
  const BlankSplit split = split_or_fail(argument_, form);
  open_level(true);
  return references_.EvaluateReference(split.first) != split.rest;
}

void Preprocessor::if_equal(std::string_view rest) {
  const bool differs = value_differs(rest, "#IFEQUAL NAME value");
  skipping_[level_] = differs;
}

void Preprocessor::if_not_equal(std::string_view rest) {
  const bool differs = value_differs(rest, "#IFNEQUAL NAME value");
  skipping_[level_] = !differs;
}

void Preprocessor::if_defined(std::string_view rest) {
  open_level(true);
  argument_.clear();
  references_.substitute(rest, argument_);
  skipping_[level_] = references_.isAbsent(trimmed(argument_));
}

void Preprocessor::if_undefined(std::string_view rest) {
  if_defined(rest);
  skipping_[level_] = !skipping_[level_];
}

void Preprocessor::otherwise(std::string_view) { skipping_[level_] = true; }

void Preprocessor::end_if(std::string_view) {
  if (level_ >= 1) --level_;
}

void Preprocessor::open_level(bool skip) {
  if (level_ + 1 == levels) {
    throw AutomationError(RunTimeError::SubscriptOutOfRange, "conditions nest more than 128 deep", "IniSection");
  }
  skipping_[++level_] = skip;
}

void Preprocessor::stop_for_step() {
  if (step_mode_) step_mode_ = ask_to_halt();
}

bool Preprocessor::ask_to_halt() {
  if (!session_.platform.halt) return false;
  const SourceLocation where = input_->location(nullptr);
  const std::string_view line = input_->line();
  const std::string_view left = left_trimmed(line);
  return session_.platform.halt({.current_line = left.starts_with('#') ? left : line,
                                 .file = where.path,
                                 .line = where.line,
                                 .output = *output_,
                                 .variables = &variables_,
                                 .template_file = file_name_});
}

void Preprocessor::check_depth() {
  // A text that is used up makes room for what it brings in.
  const std::size_t depth = input_->depth() - (input_->at_end_of_text() ? 1 : 0);
  if (depth >= session_.limits.nesting) session_.run_out(RunTimeError::OutOfStackSpace);
}

// The line being read, as the place of a diagnostic.
Diagnostic Preprocessor::described() const {
  Diagnostic diagnostic;
  diagnostic.where = input_->location(references_.position_);
  diagnostic.source_line = input_->source_line(diagnostic.where);
  for (std::size_t i = references_.calls_.size(); i-- > 0;) {
    diagnostic.notes.push_back({diagnostic.where, "in the expansion of #(" + references_.calls_[i] + ")"});
  }
  for (Diagnostic::Note& note : input_->notes()) diagnostic.notes.push_back(std::move(note));
  for (const Preprocessor* run = outer_; run != nullptr; run = run->outer_) {
    diagnostic.notes.push_back({run->input_->location(run->references_.position_), "in a bracketed reference"});
    for (Diagnostic::Note& note : run->input_->notes()) diagnostic.notes.push_back(std::move(note));
  }
  return diagnostic;
}

Diagnostic Preprocessor::described(const AutomationError& error) const {
  Diagnostic diagnostic = described();
  diagnostic.what = what_failed(error.number(), error.description(), session_.limits);
  diagnostic.number = error.number();
  return diagnostic;
}

void Preprocessor::fail(const AutomationError& error) {
  output_->clear();
  if (session_.exhausted_) {
    if (session_.told_) return;
    session_.told_ = true;
  }
  session_.platform.show_message("An error occured near " + std::string(line_break) + input_->context(),
                                 "Template Build Internal Error");
  session_.diagnostics.push_back(described(error));
}

}  // namespace plexoras
