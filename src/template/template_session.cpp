#include "template/template_session.h"

namespace plexoras {

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
  std::size_t given = text_bytes + files.bytes_read();
  for (std::int32_t i = 0; i < variables.Count(); ++i) given += variables.valueAtIndex(i).size();
  used_ = 0;
  allowed_ = limits.text_bytes + 16 * given;
  exhausted_ = false;
  told_ = false;
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
