#include "template/template_files.h"

#include <algorithm>
#include <unordered_set>

#include "host/text_lines.h"

namespace plexoras {

namespace {

// Whether every line of `text` ends in CR LF, so that it can be used as it stands.
bool has_only_crlf(std::string_view text) {
  std::ptrdiff_t breaks = 0;
  for (std::size_t at = 0; (at = text.find('\r', at)) != std::string_view::npos; at += 2, ++breaks) {
    if (at + 1 == text.size() || text[at + 1] != '\n') return false;
  }
  return text.ends_with("\r\n") && std::count(text.begin(), text.end(), '\n') == breaks;
}

// The position behind the line break at `end`, if there is one.
std::size_t after_line_break(std::string_view text, std::size_t end) {
  const std::string_view rest = text.substr(end);
  return end + (rest.starts_with("\r\n") ? 2 : rest.empty() ? 0 : 1);
}

}  // namespace

/// Consecutive lines of a file, their line breaks included, without a comment or header between them.
struct TemplateFiles::Run {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t first_line = 0;
};

struct TemplateFiles::Section {
  std::vector<Run> runs;
  bool built = false;
  std::string storage;  // unused when the file holds the text just as it is wanted
  std::string_view text;
  std::vector<LineMark> marks;
};

struct TemplateFiles::File {
  std::string path;  // empty: there is no such file
  std::string bytes;
  Section missing;  // what a missing file reads as
  Section whole;
  std::unordered_map<std::string_view, Section> sections;
};

FileLine kind_of_file_line(std::string_view line) {
  if (line.empty()) return FileLine::Body;
  if (line.front() == ';') return FileLine::Comment;
  return line.front() == '[' && line.back() == ']' ? FileLine::Header : FileLine::Body;
}

TemplateFiles::TemplateFiles(const Platform& platform) : platform_(platform) {}
TemplateFiles::~TemplateFiles() = default;

std::string JoinPath(std::string_view directory, std::string_view file) {
  std::string path(directory);
  if (!path.empty() && path.back() != '\\' && path.back() != '/') path += '\\';
  return path.append(file);
}

std::string TemplateFiles::LocateTemplateFile(std::string_view name) {
  if (first_folder_) {
    std::string beside = JoinPath(*first_folder_, name);
    if (platform_.files.can_read(beside)) return beside;
  }
  const std::string installed = platform_.settings.read("Default", "PATH", "");
  const std::string candidates[] = {
      JoinPath(installed, "DTC\\" + std::string(name)),
      JoinPath(platform_.files.module_directory(), name),
      std::string(name),
  };
  for (const std::string& candidate : candidates) {
    if (platform_.files.can_read(candidate)) return candidate;
  }
  return {};
}

TemplateFiles::File* TemplateFiles::file(std::string_view name) {
  std::unique_ptr<File>& entry = files_by_name_[std::string(name)];
  if (entry != nullptr) return entry.get();
  auto fresh = std::make_unique<File>();
  fresh->path = LocateTemplateFile(name);
  if (fresh->path.empty()) {
    fresh->missing.storage = "<!-- ERROR: NO TEMPLATE FILE " + std::string(name) + "-->\r\n";
    fresh->missing.text = fresh->missing.storage;
  } else {
    fresh->bytes = platform_.files.read(fresh->path);
    fresh->path = platform_.files.shown(fresh->path);
    bytes_read_ += fresh->bytes.size();
    paths_read_.push_back(fresh->path);
    index(*fresh);
  }
  entry = std::move(fresh);
  return entry.get();
}

void TemplateFiles::index(File& file) {
  TextLines lines(file.bytes);
  Section* open = nullptr;
  bool contiguous = false;
  std::size_t number = 0;
  while (const auto line = lines.next()) {
    ++number;
    const FileLine kind = kind_of_file_line(*line);
    if (kind == FileLine::Comment) {
      contiguous = false;
    } else if (kind == FileLine::Header) {
      open = &file.sections[line->substr(1, line->size() - 2)];
      contiguous = false;
    } else if (open != nullptr) {
      const auto begin = static_cast<std::size_t>(line->data() - file.bytes.data());
      if (!contiguous) open->runs.push_back({begin, begin, number});
      open->runs.back().end = after_line_break(file.bytes, begin + line->size());
      contiguous = true;
    }
  }
  if (number > 0) file.whole.runs.push_back({0, file.bytes.size(), 1});
}

std::string TemplateFiles::ReadSection(std::string_view name, std::string_view section_name) {
  return std::string(section(name, section_name).text);
}

SourceText TemplateFiles::section(std::string_view name, std::string_view section_name, bool* missing) {
  File& source = *file(name);
  if (missing != nullptr) *missing = source.path.empty();
  if (source.path.empty()) return {source.missing.text, nullptr};

  Section* found = &source.whole;
  std::string_view stored_name;
  if (!section_name.empty()) {
    const auto entry = source.sections.find(section_name);
    if (entry == source.sections.end()) return {};
    found = &entry->second;
    stored_name = entry->first;
  }
  if (!found->built) build(source, *found, stored_name);
  return {found->text, &found->marks};
}

bool TemplateFiles::has_section(std::string_view name, std::string_view section) {
  return file(name)->sections.contains(section);
}

std::vector<std::string_view> TemplateFiles::section_names(std::string_view name) {
  std::vector<std::string_view> names;
  std::unordered_set<std::string_view> seen;
  TextLines lines(file(name)->bytes);
  while (const auto line = lines.next()) {
    if (kind_of_file_line(*line) != FileLine::Header) continue;
    const std::string_view section = line->substr(1, line->size() - 2);
    if (seen.insert(section).second) names.push_back(section);
  }
  return names;
}

std::optional<std::string_view> TemplateFiles::bytes(std::string_view name) {
  const File& source = *file(name);
  if (source.path.empty()) return std::nullopt;
  return source.bytes;
}

void TemplateFiles::build(const File& source, Section& section, std::string_view name) {
  section.built = true;
  const std::string_view bytes = source.bytes;
  for (const Run& run : section.runs) {
    const std::string_view lines = bytes.substr(run.begin, run.end - run.begin);
    section.marks.push_back({section.storage.size(), source.path, name, run.first_line});
    if (section.runs.size() == 1 && has_only_crlf(lines)) {
      section.text = lines;
      return;
    }
    TextLines reader(lines);
    while (const auto line = reader.next()) section.storage.append(*line).append("\r\n");
  }
  section.text = section.storage;
}

}  // namespace plexoras
