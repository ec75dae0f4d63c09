#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "authoring/check/template_model.h"
#include "template/template_session.h"

namespace plexoras {

/// Tells what is wrong with templates and pages, without changing or publishing anything.
///
///     Checker checker(host.platform(), checked_files(host.platform().files, {"site", "DTC"}));
///     for (const Finding& finding : checker.check()) console.result(to_text(finding));
///
/// A file whose name ends in ".DAT" is a template, and so is any other that has a section's header before its first
/// tag. Warnings are told of the files that were named; errors of what their templates include, too.
class Checker {
public:
  /// `platform` outlives the checker.
  Checker(const Platform& platform, std::vector<std::string> files);
  ~Checker();

  /// By file, line and column, at most 20 a line, without those that a comment silences. A file that cannot be read is
  /// one of them.
  std::vector<Finding> check();
  /// How many of the pages checked so far were published without the state of their controls.
  std::size_t published_pages() const { return published_pages_; }

private:
  struct Folder;

  Folder& folder_of(const std::string& path);
  void check_file(const std::string& path);
  std::string_view line_at(const std::string& path, std::size_t line);
  bool is_silenced(const Finding& finding);

  const Platform& platform_;
  std::vector<std::string> files_;
  TemplateSession session_;                                              // for the controls of pages
  std::map<std::string, std::unique_ptr<Folder>, std::less<>> folders_;  // of templates
  Findings findings_;
  std::size_t published_pages_ = 0;
  std::map<std::string, std::string> bytes_;  // of the files that something was found in
  std::map<std::string, std::vector<std::string_view>> lines_;
};

/// The files to check for `paths`: each one named, and the templates and pages in folders that are named, in the order
/// of their names. A folder's ".DAT" file without a section is somebody else's.
std::vector<std::string> checked_files(FileSystem& files, const std::vector<std::string>& paths);

}  // namespace plexoras
