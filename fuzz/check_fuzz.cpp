// The input as a template and as a page, checked.
//
// The checker reads whatever it is given, tells places that are there, and says the same twice.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "applet/diagram_applet.h"
#include "authoring/check/checker.h"
#include "fuzz.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

std::string checked(std::string_view input) {
  FakePlatform host;
  register_diagram_applet(host.components);
  host.files["T.DAT"] = input;
  host.files["page.html"] = input;
  const auto line_count = static_cast<std::size_t>(
      1 + std::count_if(input.begin(), input.end(), [](char c) { return c == '\n' || c == '\r'; }));
  std::string told;
  for (const Finding& finding : Checker(host.platform, {"T.DAT", "page.html"}).check()) {
    require(finding.rule != nullptr, "a finding has a rule");
    require(finding.line <= line_count, "a finding stands in the file");
    require(finding.column <= input.size() + 1, "a finding stands in its line");
    told += to_text(finding);
  }
  return told;
}

}  // namespace

void try_input(std::string_view input) { require(checked(input) == checked(input), "a second check says the same"); }

}  // namespace plexoras
