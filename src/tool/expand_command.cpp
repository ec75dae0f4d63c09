#include <nlohmann/json.hpp>

#include "authoring/page_text.h"
#include "host/headless_platform.h"
#include "template/ini_section.h"
#include "tool/commands.h"
#include "tool/json_text.h"
#include "tool/template_stepper.h"

namespace plexoras {
namespace {

std::string variable_lines(const Dictionary& variables) {
  std::string lines;
  for (std::int32_t i = 0; i < variables.Count(); ++i) {
    lines.append(variables.keyAtIndex(i)).append("\t").append(escape_listing(variables.valueAtIndex(i))).append("\n");
  }
  return lines;
}

Dictionary parse_definitions(const std::vector<std::string>& definitions) {
  Dictionary variables;
  for (const std::string& definition : definitions) {
    const std::size_t equals = definition.find('=');
    if (equals == std::string::npos) {
      throw UsageError("-D takes NAME=VALUE, not \"" + definition + "\"");
    }
    variables.atPut(definition.substr(0, equals), definition.substr(equals + 1));
  }
  return variables;
}

std::string result_json(const ExpandOptions& options, bool failed, const std::string& text, const Dictionary& variables,
                        const TemplateSession& session) {
  nlohmann::json object;
  object["version"] = json_version;
  object["ok"] = !failed;
  if (options.variables) {
    object["variables"] = nlohmann::json::array();
    for (std::int32_t i = 0; i < variables.Count() && !failed; ++i) {
      object["variables"].push_back({{"name", variables.keyAtIndex(i)}, {"value", variables.valueAtIndex(i)}});
    }
  } else {
    object["text"] = text;
  }
  object["diagnostics"] = to_json(session.diagnostics);
  return json_line(object);
}

}  // namespace

int run_expand(const ExpandOptions& options, HeadlessPlatform& host, Console& console) {
  ConsoleMessageBox message_box;
  SilentMessageBox silent;
  host.platform().message_box = console.options().json ? static_cast<MessageBox*>(&silent) : &message_box;
  TemplateSession session(host.platform(), {.nesting = options.nesting, .text_bytes = options.text_mebibytes << 20});

  IniSection section(session);
  section.SetVariables(parse_definitions(options.definitions));
  section.Read(options.file, options.section);
  TemplateStepper stepper(host.platform());
  if (options.step || options.step_first) {
    host.platform().halt = [&stepper](const HaltRequest& request) { return stepper.halt(request); };
  }
  if (options.step_first) section.step_from_start();
  // One run: an empty text would otherwise be asked for again.
  std::string text;
  std::shared_ptr<Dictionary> variables = std::make_shared<Dictionary>();
  try {
    if (options.variables) {
      variables = section.GetVariables();
    } else {
      text = section.GetContents();
    }
  } catch (const TemplateStepper::Quit&) {
    return exit_interrupted;
  }
  const bool failed = section.failed();

  if (console.options().json) {
    console.result(result_json(options, failed, text, *variables, session));
    return failed ? exit_failed : exit_done;
  }
  if (!console.options().quiet) {
    for (const Diagnostic& diagnostic : session.diagnostics) console.problem(to_text(diagnostic));
  }
  if (failed) return exit_failed;
  console.result(options.variables ? variable_lines(*variables) : text);
  return exit_done;
}

}  // namespace plexoras
