#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "authoring/data_source.h"
#include "tool/console.h"

namespace plexoras {

/// A delimited file that a command line names, imported.
struct FileImport {
  std::string name;  ///< of the file, for messages
  ImportedData data = {};
  std::vector<DelimitedGuess::Choice> choices = {};  ///< that were guessed
};

/// Imports `file`, "-" being standard input, and says what was guessed and what to beware of. Errors as with
/// `import_data`.
FileImport import_file(const std::string& file, const ImportRequest& request, FileSystem& files, Console& console);

/// The settings, what was guessed and the warnings, for --json.
nlohmann::json to_json(const FileImport& imported);

}  // namespace plexoras
