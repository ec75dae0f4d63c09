#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "authoring/data_source.h"
#include "tool/console.h"
#include "tool/options.h"

namespace plexoras {

/// A delimited file that a command line names, imported.
struct FileImport {
  ImportedData data;
  std::vector<DelimitedGuess::Choice> choices = {};  ///< that were guessed
};

/// Imports `file`, "-" being standard input, and says what was guessed. Errors as with `import_data`.
FileImport import_file(const std::string& file, const ImportFlags& flags, FileSystem& files, Console& console);

/// The settings and what was guessed, for --json.
nlohmann::json to_json(const FileImport& imported);

}  // namespace plexoras
