#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/platform.h"

namespace plexoras {

/// `directory` and `file` joined by a "\" unless the directory is empty or ends in a separator.
std::string JoinPath(std::string_view directory, std::string_view file);

/// Where some text came from: from `offset` on, line `line` of section `section` of file `path`.
struct LineMark {
  std::size_t offset = 0;
  std::string_view path;
  std::string_view section;
  std::size_t line = 0;
};

/// Text together with where its lines came from; both belong to somebody else. Every line ends in CR LF.
struct SourceText {
  std::string_view text;
  const std::vector<LineMark>* marks = nullptr;  ///< by rising offset; none for text that comes from no file
};

/// What a line of a template file is.
enum class FileLine { Header, Comment, Body };
FileLine kind_of_file_line(std::string_view line);

/// The template files of one request (or of one run of a program), each read and divided once.
///
/// A template file is 8-bit text; its lines end in CR LF, CR or LF. A line "[NAME]" opens a section, a line
/// that begins with ";" is a comment, every other line belongs to the section last opened:
///
///     ; colours of the house
///     [CONSTANT]
///     #DEFINE SKY blue
///
/// A section name that occurs twice gives both bodies in order. Texts handed out live as long as this object.
class TemplateFiles {
public:
  explicit TemplateFiles(const Platform& platform);
  TemplateFiles(const TemplateFiles&) = delete;
  TemplateFiles& operator=(const TemplateFiles&) = delete;
  ~TemplateFiles();

  /// Has files looked for in `folder` before all other places; the empty text is the present folder. To be called
  /// before a file is read.
  void look_first_in(std::string_view folder) { first_folder_ = folder; }

  /// The path of the template file `name`, or the empty text when there is none. Looked for in this order:
  /// folder DTC of the installation directory (setting "PATH" of section "Default"), the directory of the
  /// library's own files, and `name` as it stands.
  std::string LocateTemplateFile(std::string_view name);

  /// The lines of a section, each ended by CR LF; an empty `section` asks for the whole file as it stands.
  /// A missing section is the empty text. A missing file is an HTML comment that says so.
  std::string ReadSection(std::string_view name, std::string_view section);

  /// `ReadSection` without a copy. `missing` is set when there is no such file.
  SourceText section(std::string_view name, std::string_view section, bool* missing = nullptr);

  /// Whether the file has a section of that name, be it empty. False where there is no such file.
  bool has_section(std::string_view name, std::string_view section);
  /// The names of a file's sections, each once, in their order. None where there is no such file.
  std::vector<std::string_view> section_names(std::string_view name);
  /// The bytes of a file as they stand; nothing where there is no such file.
  std::optional<std::string_view> bytes(std::string_view name);

  /// Bytes of all files read so far.
  std::size_t bytes_read() const { return bytes_read_; }

  /// The paths read so far, in the order first read.
  const std::vector<std::string>& paths_read() const { return paths_read_; }

private:
  struct Run;
  struct Section;
  struct File;

  File* file(std::string_view name);
  static void index(File& file);
  static void build(const File& source, Section& section, std::string_view name);

  const Platform& platform_;
  std::unordered_map<std::string, std::unique_ptr<File>> files_by_name_;
  std::optional<std::string> first_folder_;
  std::size_t bytes_read_ = 0;
  std::vector<std::string> paths_read_;
};

}  // namespace plexoras
