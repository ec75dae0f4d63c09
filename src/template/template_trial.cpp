#include "template/template_trial.h"

#include "template/ini_section.h"

namespace plexoras {

TemplateTrial try_template_text(const Platform& platform, const Dictionary& variables, std::string_view template_file,
                                std::string_view text) {
  Platform without_halts = platform;
  without_halts.halt = {};
  without_halts.debugger_break = {};
  TemplateSession session(without_halts);
  IniSection section(session, template_file);
  section.SetVariables(variables);
  section.SetContents(replaced_all(replaced_all(text, "\r\n", "\n"), "\n", "\r\n"));
  std::string result = section.GetContents();
  return {std::move(result), std::move(session.diagnostics)};
}

}  // namespace plexoras
