#include <nlohmann/json.hpp>

#include "host/headless_platform.h"
#include "tool/commands.h"
#include "tool/data_import.h"
#include "tool/json_text.h"

namespace plexoras {

// Standard output is the document alone, also with --json; objects go to standard error then.
int run_import(const ImportOptions& options, HeadlessPlatform& host, Console& console) {
  const bool json = console.options().json;
  FileImport imported;
  try {
    imported = import_file(options.file, options.request, host.platform().files, console);
  } catch (const AutomationError& error) {
    if (json) {
      console.aside(json_line(failure_json(error.description())));
    } else {
      console.problem(error.description() + "\n");
    }
    return exit_failed;
  }
  if (json) {
    nlohmann::json object = to_json(imported);
    object["version"] = json_version;
    object["source"] = options.file;
    console.aside(json_line(object));
  }
  imported.data.document.drain([&](std::string_view piece) { console.result(piece); });
  return exit_done;
}

}  // namespace plexoras
