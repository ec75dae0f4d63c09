// Expands section "S" of a template file. The input is that file; behind its last line "=" stand variables,
// NAME=VALUE a line.
//
// Whatever a template says, its expansion ends within the limits, and a second one gives the same.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

constexpr ExpansionLimits limits{.nesting = 40, .text_bytes = std::size_t{1} << 16};

struct Outcome {
  std::string text;
  std::string variables;
  std::vector<std::string> messages;
  std::string diagnostics;

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

Dictionary dictionary_of(std::string_view definitions) {
  Dictionary given;
  while (!definitions.empty() && given.Count() < Dictionary::capacity) {
    const std::string_view line = definitions.substr(0, definitions.find('\n'));
    definitions.remove_prefix(std::min(line.size() + 1, definitions.size()));
    const std::size_t equals = line.find('=');
    if (equals != std::string_view::npos) given.atPut(line.substr(0, equals), line.substr(equals + 1));
  }
  return given;
}

Outcome outcome(std::string_view file, const Dictionary& given) {
  FakePlatform host;
  host.files["T.DAT"] = file;
  TemplateSession session(host.platform, limits);
  IniSection section(session);
  section.SetVariables(given);
  section.Read("T.DAT", "S");
  Outcome seen;
  seen.text = section.GetContents();
  seen.variables = section.failed() ? std::string() : listing(*section.GetVariables());
  seen.messages = host.messages;
  for (const Diagnostic& diagnostic : session.diagnostics) seen.diagnostics += to_text(diagnostic);

  // A tab gives five blanks; nothing else grows without being counted.
  const std::size_t allowed = limits.text_bytes + 16 * (file.size() + given.Dump().size());
  require(seen.text.size() <= 5 * allowed, "the text stays within the limits");
  require(!section.failed() || (seen.text.empty() && !seen.messages.empty() && !session.diagnostics.empty()),
          "a failure gives no text and is told");
  return seen;
}

}  // namespace

void try_input(std::string_view input) {
  constexpr std::string_view divider = "\n=\n";
  const std::size_t file_end = std::min(input.rfind(divider), input.size());
  const Dictionary given = dictionary_of(input.substr(std::min(file_end + divider.size(), input.size())));
  const std::string_view file = input.substr(0, file_end);
  require(outcome(file, given) == outcome(file, given), "a second expansion gives the same");
}

}  // namespace plexoras
