// Which files of a site are published, and where to.

#include <algorithm>
#include <filesystem>
#include <map>

#include "authoring/publisher.h"
#include "host/automation.h"

namespace fs = std::filesystem;

namespace plexoras {
namespace {

// Files that may hold controls.
constexpr std::string_view page_extensions[] = {".html", ".htm", ".xhtml", ".shtml", ".asp",
                                                ".aspx", ".php", ".jsp",   ".inc"};

// Folders that no reader should get.
constexpr std::string_view private_folders[] = {".git", ".hg", ".svn"};

bool is_page(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return std::find(std::begin(page_extensions), std::end(page_extensions), extension) != std::end(page_extensions);
}

bool is_private(const fs::path& folder) {
  const std::string name = folder.filename().string();
  return std::find(std::begin(private_folders), std::end(private_folders), name) != std::end(private_folders);
}

// The regular files below `folder`, by path. Links to folders are not followed, so that none is met twice.
std::vector<fs::path> files_below(const fs::path& folder, const fs::path& without) {
  std::vector<fs::path> files;
  for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
    std::error_code ignored;
    const bool is_folder = entry->is_directory(ignored);
    if (is_folder &&
        (is_private(entry->path()) || (!without.empty() && fs::equivalent(entry->path(), without, ignored)))) {
      entry.disable_recursion_pending();
    } else if (entry->is_regular_file(ignored)) {
      files.push_back(entry->path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

std::vector<SiteFile> site_files(const std::vector<std::string>& paths, const std::string& output) {
  std::vector<SiteFile> files;
  std::map<std::string, std::string> source_of;
  const auto add = [&](const fs::path& source, const fs::path& below_output, bool page) {
    if (output.empty() && !page) return;
    const std::string target = output.empty() ? source.string() : (fs::path(output) / below_output).string();
    const auto [earlier, is_new] = source_of.emplace(target, source.string());
    std::error_code missing;
    if (!is_new && (earlier->second == source || fs::equivalent(earlier->second, source, missing))) return;
    if (!is_new) {
      throw AutomationError(RunTimeError::InvalidCall,
                            earlier->second + " and " + source.string() + " would both be written to " + target);
    }
    files.push_back({source.string(), target, page});
  };
  try {
    if (!output.empty() && fs::exists(output) && !fs::is_directory(output)) {
      throw AutomationError(RunTimeError::PathFileAccess, output + ": this is a file; name a folder to write into");
    }
    for (const std::string& path : paths) {
      if (fs::is_directory(path)) {
        for (const fs::path& file : files_below(path, output)) add(file, file.lexically_relative(path), is_page(file));
      } else {
        // A file that does not exist is one that cannot be published; the others can.
        add(path, fs::path(path).filename(), true);
      }
    }
  } catch (const fs::filesystem_error& error) {
    throw AutomationError(RunTimeError::PathFileAccess, error.path1().string() + ": " + error.code().message());
  }
  return files;
}

}  // namespace plexoras
