#include <nlohmann/json.hpp>

#include "authoring/check/checker.h"
#include "authoring/suggestion.h"
#include "host/headless_platform.h"
#include "tool/commands.h"
#include "tool/json_text.h"

namespace plexoras {
namespace {

void list_rules(Console& console) {
  std::string text;
  for (const CheckRule& rule : check_rules()) {
    const char* const subject = rule.subject == CheckRule::Subject::Template ? "template" : "page";
    if (console.options().json) {
      text += json_line({{"version", json_version},
                         {"rule", rule.name},
                         {"severity", severity_word(rule.severity)},
                         {"subject", subject},
                         {"summary", rule.summary}});
    } else {
      constexpr std::size_t name_width = 24;
      constexpr std::size_t severity_width = 9;
      const std::string_view severity = severity_word(rule.severity);
      text.append(rule.name).append(name_width - rule.name.size(), ' ');
      text.append(severity).append(severity_width - severity.size(), ' ').append(rule.summary).append("\n");
    }
  }
  console.result(text);
}

void explain_rule(const std::string& name, Console& console) {
  const CheckRule* const rule = find_check_rule(name);
  if (rule == nullptr) {
    std::vector<std::string> names;
    for (const CheckRule& row : check_rules()) names.emplace_back(row.name);
    throw UsageError("there is no rule \"" + name + "\"" + did_you_mean(name, names) +
                     "\nplexoras check --rules lists them");
  }
  console.result(explain(*rule));
}

std::string counted(std::size_t number, const char* what) {
  return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

}  // namespace

int run_check(const CheckOptions& options, HeadlessPlatform& host, Console& console) {
  if (options.rules) {
    list_rules(console);
    return exit_done;
  }
  if (!options.explain.empty()) {
    explain_rule(options.explain, console);
    return exit_done;
  }
  if (options.paths.empty()) throw UsageError("name the templates, pages or folders to check");

  SilentMessageBox silent;  // what templates have to say about a control is not what is asked for here
  host.platform().message_box = &silent;
  std::vector<std::string> files = checked_files(host.platform().files, options.paths);
  const std::size_t file_count = files.size();
  Checker checker(host.platform(), std::move(files));
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::string text;
  for (const Finding& finding : checker.check()) {
    ++(finding.rule->severity == CheckRule::Severity::Error ? errors : warnings);
    text += console.options().json ? json_line(to_json(finding)) : to_text(finding);
  }
  console.result(text);
  std::string sentence =
      counted(errors, "error") + " and " + counted(warnings, "warning") + " in " + counted(file_count, "file");
  if (const std::size_t pages = checker.published_pages(); pages > 0) {
    sentence += ", " + std::to_string(pages) + " of them published without state";
  }
  console.say(sentence);
  return errors > 0 || (options.warnings_are_errors && warnings > 0) ? exit_failed : exit_done;
}

}  // namespace plexoras
