// What the tests of the checker share.
#pragma once

#include <string>
#include <vector>

#include "authoring/check/checker.h"
#include "authoring_fixture.h"
#include "host/atomic_file.h"

namespace plexoras {

/// A file of the repository.
inline std::string source_file(std::string_view name) { return read_file(PLEXORAS_SOURCE_DIR "/" + std::string(name)); }

/// Files in memory and what is found in them.
struct CheckedFiles {
  CheckedFiles() { register_diagram_applet(host.components); }

  std::vector<Finding> check(const std::vector<std::string>& paths) { return Checker(host.platform, paths).check(); }
  std::vector<Finding> check_template(std::string_view text) {
    host.files["T.DAT"] = text;
    return check({"T.DAT"});
  }

  FakePlatform host;
};

/// "line:column rule|" for each.
inline std::string places(const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) {
    text += std::to_string(finding.line) + ":" + std::to_string(finding.column) + " " +
            std::string(finding.rule->name) + "|";
  }
  return text;
}

}  // namespace plexoras
