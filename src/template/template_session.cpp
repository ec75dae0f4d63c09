#include "template/template_session.h"

namespace plexoras {
namespace {

// How often over a request may expand what it was given.
constexpr std::size_t given_times_allowed = 16;

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

void TemplateSession::open_request(std::size_t text_bytes, const Dictionary& variables) {
  std::size_t given = text_bytes;
  for (std::int32_t i = 0; i < variables.Count(); ++i) given += variables.valueAtIndex(i).size();
  used_ = 0;
  allowed_ = limits.text_bytes + given_times_allowed * given;
  files_allowed_for_ = 0;
  allow_for_files_read();
  exhausted_ = false;
  told_ = false;
}

void TemplateSession::allow_for_files_read() {
  allowed_ += given_times_allowed * (files.bytes_read() - files_allowed_for_);
  files_allowed_for_ = files.bytes_read();
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
