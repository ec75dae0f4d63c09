#include "authoring/check/checker.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "authoring/check/page_check.h"
#include "authoring/check/template_check.h"
#include "authoring/publisher.h"
#include "authoring/suggestion.h"
#include "host/text_lines.h"

namespace fs = std::filesystem;

namespace plexoras {
namespace {

bool has_template_name(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return extension == ".dat";
}

bool has_section(std::string_view bytes) {
  TextLines lines(bytes);
  while (const auto line = lines.next()) {
    if (kind_of_file_line(*line) == FileLine::Header) return true;
    if (line->starts_with('<')) return false;
  }
  return false;
}

// The templates below a folder.
std::vector<std::string> templates_in(FileSystem& files, const std::string& folder) {
  std::vector<std::string> found;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    const fs::path& path = entry->path();
    const bool is_private = path.filename().string().starts_with('.');
    std::error_code unreadable;
    if (is_private && entry->is_directory(unreadable)) entry.disable_recursion_pending();
    if (is_private || !has_template_name(path) || !entry->is_regular_file(unreadable)) continue;
    // Other programs keep other data under this ending.
    ignoring_errors([&] {
      if (has_section(files.read(path.string()))) found.push_back(path.string());
    });
  }
  return found;
}

std::string_view allowed_rules(std::string_view comment) {
  constexpr std::string_view word = "check: allow ";
  const std::size_t at = comment.find(word);
  if (at == std::string_view::npos) return {};
  const std::string_view rules = comment.substr(at + word.size());
  return rules.substr(0, rules.find("-->"));
}

// The words of `rules`, with commas or blanks between them.
std::vector<std::string_view> words_of(std::string_view rules) {
  constexpr std::string_view between = ", \t";
  std::vector<std::string_view> words;
  while (!rules.empty()) {
    const std::size_t end = std::min(rules.find_first_of(between), rules.size());
    if (end > 0) words.push_back(rules.substr(0, end));
    rules.remove_prefix(std::min(end + 1, rules.size()));
  }
  return words;
}

bool names_rule(std::string_view rules, std::string_view rule) {
  const std::vector<std::string_view> words = words_of(rules);
  return std::find(words.begin(), words.end(), rule) != words.end();
}

bool is_comment(std::string_view line, CheckRule::Subject subject) {
  if (subject == CheckRule::Subject::Template) return line.starts_with(';');
  return line.substr(std::min(line.find_first_not_of(" \t"), line.size())).starts_with("<!--");
}

// Names in silencing comments that are no rule's. Words may follow the names that say why.
void check_allowed_rules(const std::string& path, std::string_view bytes, CheckRule::Subject subject,
                         Findings& findings) {
  TextLines lines(bytes);
  for (std::size_t number = 1; const auto line = lines.next(); ++number) {
    if (!is_comment(*line, subject)) continue;
    const std::string_view rules = allowed_rules(*line);
    for (const std::string_view word : words_of(rules)) {
      const std::string_view before = trimmed(rules.substr(0, static_cast<std::size_t>(word.data() - rules.data())));
      const std::size_t hyphen = word.find('-', 1);
      const bool is_name = before.empty() || before.ends_with(',') || hyphen < word.size() - 1;
      if (!is_name || find_check_rule(word) != nullptr) continue;
      std::vector<std::string> names;
      for (const CheckRule& rule : check_rules()) names.emplace_back(rule.name);
      findings.add({.rule = find_check_rule("unknown-rule"),
                    .path = path,
                    .line = number,
                    .column = static_cast<std::size_t>(word.data() - line->data()) + 1,
                    .what = "there is no rule " + in_quotes(word) + did_you_mean(word, names),
                    .mend = "plexoras check --rules lists them",
                    .first_line = number});
    }
  }
}

// One line of a file that is no template at all may hold any number of faults.
void keep_few_a_line(std::vector<Finding>& findings) {
  constexpr std::size_t most = 20;
  std::size_t in_line = 0;
  std::string path;
  std::size_t line = 0;
  std::erase_if(findings, [&](const Finding& finding) {
    if (line != finding.line || path != finding.path) in_line = 0;
    path = finding.path;
    line = finding.line;
    return ++in_line > most;
  });
}

}  // namespace

/// The templates beside each other, with what they include.
struct Checker::Folder {
  Folder(const Platform& platform, std::string_view path) : session(platform), model(session.files) {
    session.files.look_first_in(path);
  }
  TemplateSession session;
  TemplateModel model;
};

Checker::Checker(const Platform& platform, std::vector<std::string> files)
    : platform_(platform), files_(std::move(files)), session_(platform) {}
Checker::~Checker() = default;

std::vector<Finding> Checker::check() {
  for (const std::string& path : files_) {
    try {
      check_file(path);
    } catch (const AutomationError& error) {
      const char* const rule = has_template_name(path) ? "missing-file" : "unreadable-page";
      findings_.add({.rule = find_check_rule(rule),
                     .path = path,
                     .what = error.description(),
                     .mend = "mend the name, or see that the file can be read"});
    }
  }
  std::vector<Finding> findings = findings_.take();
  std::set<std::string> named;
  for (const std::string& path : files_) named.insert(platform_.files.shown(path));
  std::erase_if(findings, [&](const Finding& finding) {
    const bool is_elsewhere = !named.contains(finding.path);
    return (is_elsewhere && finding.rule->severity == CheckRule::Severity::Warning) || is_silenced(finding);
  });
  keep_few_a_line(findings);
  for (Finding& finding : findings) finding.source_line = line_at(finding.path, finding.line);
  return findings;
}

Checker::Folder& Checker::folder_of(const std::string& path) {
  const std::size_t separator = path.find_last_of("/\\");
  const std::string folder = separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
  std::unique_ptr<Folder>& entry = folders_[folder];
  if (entry == nullptr) entry = std::make_unique<Folder>(platform_, folder);
  return *entry;
}

void Checker::check_file(const std::string& path) {
  std::string bytes = platform_.files.read(path);
  if (has_template_name(path) || has_section(bytes)) {
    const std::string file = path.substr(path.find_last_of("/\\") + 1);
    check_template(folder_of(path).model, file, platform_.files.shown(path), bytes, findings_);
    check_allowed_rules(platform_.files.shown(path), bytes, CheckRule::Subject::Template, findings_);
    return;
  }
  check_allowed_rules(platform_.files.shown(path), bytes, CheckRule::Subject::Page, findings_);
  CheckedPage page = check_page(session_, path, std::move(bytes));
  published_pages_ += page.is_published ? 1 : 0;
  for (Finding& finding : page.findings) findings_.add(std::move(finding));
}

std::string_view Checker::line_at(const std::string& path, std::size_t line) {
  const auto [entry, is_new] = lines_.try_emplace(path);
  if (is_new) {
    ignoring_errors([&] { bytes_[path] = platform_.files.read(path); });
    TextLines reader(bytes_[path]);
    while (const auto next = reader.next()) entry->second.push_back(*next);
  }
  return line == 0 || line > entry->second.size() ? std::string_view() : entry->second[line - 1];
}

bool Checker::is_silenced(const Finding& finding) {
  const bool is_template = finding.rule->subject == CheckRule::Subject::Template;
  constexpr std::size_t most_comments = 50;  // that are looked at, so that many findings in a line cost little
  const std::size_t farthest = finding.first_line > most_comments ? finding.first_line - most_comments : 1;
  for (std::size_t line = finding.first_line; line > farthest;) {
    const std::string_view above = line_at(finding.path, --line);
    if (!is_comment(above, finding.rule->subject)) return false;
    if (names_rule(allowed_rules(above), finding.rule->name)) return true;
    if (!is_template) return false;
  }
  return false;
}

std::vector<std::string> checked_files(FileSystem& files, const std::vector<std::string>& paths) {
  std::vector<std::string> all;
  std::set<std::string> seen;
  for (const std::string& path : paths) {
    std::error_code error;
    std::vector<std::string> found = {path};
    if (fs::is_directory(path, error)) {
      found = templates_in(files, path);
      for (const SiteFile& file : site_files({path}, {})) found.push_back(file.source);
      std::sort(found.begin(), found.end());
    }
    for (std::string& file : found) {
      if (seen.insert(file).second) all.push_back(std::move(file));
    }
  }
  return all;
}

}  // namespace plexoras
