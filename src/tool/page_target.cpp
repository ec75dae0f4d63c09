#include "tool/page_target.h"

#include "authoring/suggestion.h"
#include "tool/console.h"

namespace plexoras {

PageTarget parse_page_target(std::string_view text) {
  const std::size_t hash = text.rfind('#');
  if (hash == std::string_view::npos) return {std::string(text), {}};
  return {std::string(text.substr(0, hash)), std::string(text.substr(hash + 1))};
}

void refuse_published(const Page& page) {
  if (!page.is_published()) return;
  throw AutomationError(RunTimeError::InvalidCall, page.path() + ": " + std::string(published_without_state) +
                                                       ", or publish that with --keep-state");
}

std::size_t find_control(const Page& page, const PageTarget& target) {
  const std::size_t count = page.controls().size();
  if (target.name.empty() && count == 1) return 0;
  if (const auto index = page.find(target.name)) return *index;
  if (count == 0 || !target.name.empty()) refuse_published(page);
  if (count == 0) {
    throw AutomationError(
        RunTimeError::InvalidCall,
        page.path() + ": there is no control on this page; add one with: plexoras new " + page.path() + " --name NAME");
  }

  std::vector<std::string> names;
  std::string listed;
  for (const Page::Control& control : page.controls()) {
    names.push_back(control.record.name);
    listed += (listed.empty() ? "" : ", ") + control.record.name;
  }
  if (target.name.empty()) {
    throw AutomationError(RunTimeError::InvalidCall,
                          page.path() + ": which control? Write " + page.path() + "#NAME; here are: " + listed);
  }
  throw AutomationError(RunTimeError::InvalidCall, page.path() + ": there is no control \"" + target.name +
                                                       "\" (here are: " + listed + ")" +
                                                       did_you_mean(target.name, names));
}

LiveControl load_control(TemplateSession& session, const Page& page, std::size_t index) {
  const Page::Control& control = page.controls()[index];
  try {
    return LiveControl(session, control.record);
  } catch (const AutomationError& error) {
    throw PageError({{page.path(), control.place, "control \"" + control.record.name + "\": " + error.description()}});
  }
}

void tell(const std::vector<Diagnostic>& diagnostics, Console& console) {
  if (console.options().json) return;  // they are in the object
  for (const Diagnostic& diagnostic : diagnostics) console.problem(to_text(diagnostic));
}

std::vector<Diagnostic> as_warnings(std::vector<Diagnostic> diagnostics) {
  for (Diagnostic& diagnostic : diagnostics) diagnostic.severity = Diagnostic::Severity::Warning;
  return diagnostics;
}

void refuse_broken_template(const std::vector<Diagnostic>& diagnostics, Console& console) {
  if (diagnostics.empty()) return;
  tell(diagnostics, console);
  const Diagnostic& first = diagnostics.front();
  throw AutomationError(RunTimeError::InvalidCall, "the control's template cannot be used, and nothing was written: " +
                                                       to_text(first.where) + ": " + first.what);
}

std::pair<std::string, std::string> parse_assignment(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos || equals == 0) {
    throw UsageError("\"" + std::string(text) + "\" sets nothing; write PROPERTY=VALUE");
  }
  return {std::string(text.substr(0, equals)), std::string(text.substr(equals + 1))};
}

}  // namespace plexoras
