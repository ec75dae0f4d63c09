#include "template/template_session.h"

#include <algorithm>
#include <iterator>

namespace plexoras {
namespace {

// How often over what it was given a request may make in all, and in one text.
constexpr std::size_t given_times_in_all = 128;
constexpr std::size_t given_times_in_one = 16;

}  // namespace

TemplateSession::Scratch::Scratch(TemplateSession& session) : session_(session) {
  if (session.spare_.empty()) return;
  text = std::move(session.spare_.back());
  session.spare_.pop_back();
  text.clear();
}

TemplateSession::Level::Level(TemplateSession& session) : session_(session) {
  if (session.depth_ >= session.limits.nesting) session.run_out(RunTimeError::OutOfStackSpace);
  ++session.depth_;
}

void TemplateSession::open_request(std::size_t given_bytes) {
  used_ = 0;
  allowed_ = limits.text_bytes;
  largest_ = limits.text_bytes;
  allow_for(given_bytes);
  files_allowed_for_ = 0;
  allow_for_files_read();
  missing_files_.clear();
  exhausted_ = false;
  told_ = false;
}

void TemplateSession::allow_for(std::size_t given_bytes) {
  allowed_ += given_times_in_all * given_bytes;
  largest_ += given_times_in_one * given_bytes;
}

void TemplateSession::allow_for_files_read() {
  allow_for(files.bytes_read() - files_allowed_for_);
  files_allowed_for_ = files.bytes_read();
}

std::vector<Diagnostic> TemplateSession::take_diagnostics(std::size_t told_before) {
  const auto first = diagnostics.begin() + static_cast<std::ptrdiff_t>(std::min(told_before, diagnostics.size()));
  std::vector<Diagnostic> taken(std::make_move_iterator(first), std::make_move_iterator(diagnostics.end()));
  diagnostics.erase(first, diagnostics.end());
  return taken;
}

void TemplateSession::warn_of_missing_file(std::string_view name, Diagnostic where) {
  where.severity = Diagnostic::Severity::Warning;
  where.number = RunTimeError::FileNotFound;
  where.what = "no template file \"" + std::string(name) +
               "\"; it is looked for in folder DTC of the installation directory, beside the library, and as named";
  diagnostics.push_back(std::move(where));
}

void TemplateSession::run_out(RunTimeError number) {
  exhausted_ = true;
  throw AutomationError(number, {}, "IniSection");
}

}  // namespace plexoras
