// Which files of a site are published, and where to.

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

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

// What `replace_file` leaves when the machine stops in the middle of it.
bool is_temporary(const fs::path& path) {
  const std::string name = path.filename().string();
  return name.starts_with('.') && name.find(".plexoras-") != std::string::npos;
}

// Collects the files below a folder, by path. Links to folders are followed for a mirror alone, which needs what they
// lead to; in place they would lead out of the folder that was named.
class Lister {
public:
  explicit Lister(const fs::path& output) : output_(output) {}

  void list(const fs::path& folder) {
    std::error_code error;
    const fs::path real = fs::canonical(folder, error);
    // A link may lead back to a folder that is being listed.
    if (std::find(open_.begin(), open_.end(), real) != open_.end()) return;
    std::vector<fs::path> entries;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) entries.push_back(entry->path());
    if (error) files.push_back({.source = folder.string(), .problem = "cannot be listed: " + error.message()});
    std::sort(entries.begin(), entries.end());
    open_.push_back(real);
    for (const fs::path& path : entries) add(path);
    open_.pop_back();
  }

  std::vector<SiteFile> files;

private:
  void add(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) {
      const bool is_output = !output_.empty() && fs::equivalent(path, output_, error);
      if (is_private(path) || is_output) return;
      if (fs::is_symlink(fs::symlink_status(path, error))) {
        follow(path);
      } else {
        list(path);
      }
    } else if (fs::is_regular_file(status)) {
      if (!is_temporary(path)) files.push_back({.source = path.string(), .is_page = is_page(path)});
    } else if (!fs::exists(status) && (!output_.empty() || is_page(path))) {
      files.push_back({.source = path.string(), .problem = "this link leads to nothing; mend or remove it"});
    }
  }

  // Each folder once: links among links would otherwise multiply.
  void follow(const fs::path& link) {
    if (output_.empty()) return;
    std::error_code error;
    if (followed_.insert(fs::canonical(link, error)).second) {
      list(link);
    } else {
      files.push_back({.source = link.string(), .problem = "another link has brought in this folder; copy it here"});
    }
  }

  const fs::path& output_;
  std::vector<fs::path> open_;   // the real paths of the folders being listed
  std::set<fs::path> followed_;  // the real paths that links have led to
};

// A target may be a link, or lie in a folder that is published, too: what is still to be read must not be replaced.
void refuse_sources_as_targets(std::vector<SiteFile>& files) {
  std::map<fs::path, const SiteFile*> by_source;
  std::vector<fs::path> sources;
  std::error_code not_there;
  for (const SiteFile& file : files) {
    sources.push_back(fs::canonical(file.source, not_there));
    by_source.emplace(sources.back(), &file);
  }
  for (std::size_t i = 0; i < files.size(); ++i) {
    const fs::path target = fs::canonical(files[i].target, not_there);
    const auto source = by_source.find(target);
    if (target.empty() || source == by_source.end() || target == sources[i]) continue;
    files[i].problem = files[i].target + ", where it is to go, is " + source->second->source +
                       ", which is published, too; write into another folder, or remove the link";
  }
}

}  // namespace

std::vector<SiteFile> site_files(const std::vector<std::string>& paths, const std::string& output) {
  std::vector<SiteFile> files;
  std::map<std::string, std::string> source_of;
  const auto add = [&](const fs::path& source, const fs::path& below_output, const fs::path& root, bool page) {
    if (output.empty() && !page) return;
    const std::string target = output.empty() ? source.string() : (fs::path(output) / below_output).string();
    const auto [earlier, is_new] = source_of.emplace(target, source.string());
    std::error_code missing;
    if (!is_new && (earlier->second == source || fs::equivalent(earlier->second, source, missing))) return;
    if (!is_new) {
      throw AutomationError(RunTimeError::InvalidCall,
                            earlier->second + " and " + source.string() + " would both be written to " + target);
    }
    files.push_back({source.string(), target, output.empty() ? root.string() : output, page});
  };
  try {
    if (!output.empty() && fs::exists(output) && !fs::is_directory(output)) {
      throw AutomationError(RunTimeError::PathFileAccess, output + ": this is a file; name a folder to write into");
    }
    for (const std::string& path : paths) {
      if (fs::is_directory(path)) {
        const fs::path output_folder = output;
        Lister lister(output_folder);
        lister.list(path);
        for (SiteFile& file : lister.files) {
          if (file.problem.empty()) {
            add(file.source, fs::path(file.source).lexically_relative(path), path, file.is_page);
          } else {
            files.push_back(std::move(file));
          }
        }
      } else {
        // A file that does not exist is one that cannot be published; the others can.
        add(path, fs::path(path).filename(), fs::path(path).parent_path(), true);
      }
    }
  } catch (const fs::filesystem_error& error) {
    throw AutomationError(RunTimeError::PathFileAccess, error.path1().string() + ": " + error.code().message());
  }
  if (!output.empty()) refuse_sources_as_targets(files);
  std::stable_partition(files.begin(), files.end(), [](const SiteFile& file) { return file.is_page; });
  return files;
}

}  // namespace plexoras
