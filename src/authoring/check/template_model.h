#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "authoring/check/check_rules.h"
#include "template/template_files.h"
#include "template/template_outline.h"

namespace plexoras {

/// What is wrong with the conditions of a section when it is read by itself.
struct ConditionFault {
  enum class Kind { Unclosed, StrayElse, StrayEndIf };
  Kind kind;
  std::size_t line;  ///< its index among the section's lines
};

/// A section as it stands in its file.
struct TemplateSection {
  std::string file;  ///< the name by which it was asked for
  std::string name;
  std::string path;  ///< of that file; empty where the section has no lines
  std::vector<OutlineLine> lines;
  std::vector<ConditionFault> condition_faults;  ///< in the order of their lines
  bool is_balanced = true;                       ///< opens and closes its own conditions
};

/// A place in a line of a section.
struct TemplatePlace {
  const TemplateSection* section = nullptr;
  const OutlineLine* line = nullptr;
  const char* at = nullptr;  ///< in the line's text
};

/// The sections of template files, each read once. What it hands out lives as long as the model.
class TemplateModel {
public:
  /// `files` outlives the model.
  explicit TemplateModel(TemplateFiles& files) : files_(files) {}

  bool has_file(std::string_view file) { return files_.bytes(file).has_value(); }
  /// Null when there is no such file or section.
  const TemplateSection* find(std::string_view file, std::string_view section);
  /// The names of a file's sections, each once, in their order.
  const std::vector<std::string>& section_names(std::string_view file);
  /// "; did you mean "X"?" where a section has nearly that name, else the empty text.
  std::string similar_section(std::string_view file, std::string_view name);

private:
  TemplateFiles& files_;
  std::map<std::pair<std::string, std::string>, TemplateSection> sections_;
  std::map<std::string, std::vector<std::string>, std::less<>> names_;
};

/// A name in template text. One that is built from references is known by its beginning alone.
struct TemplateName {
  std::string text;
  bool is_computed = false;

  explicit TemplateName(std::string_view written);
  TemplateName(std::string name, bool computed) : text(std::move(name)), is_computed(computed) {}
  bool may_be(std::string_view name) const { return is_computed ? name.starts_with(text) : name == text; }
};

/// Whether something in the text is to be expanded.
inline bool has_reference(std::string_view text) { return TemplateName(text).is_computed; }

/// A name that a line looks up, calls or asks for.
struct TemplateUse {
  enum class How {
    Value,     ///< $(NAME) and its like; a bracketed name asks for a section
    Call,      ///< the macro of a call
    Argument,  ///< what a call is given
    Test,      ///< compared
    Optional,  ///< asked whether it is there
  };

  How how = How::Value;
  TemplateName name;
  const char* at = nullptr;      ///< in the line's text
  OutlineReference reference{};  ///< that it stands in; of a test or a call on a line of its own, only the name
  bool is_line = false;          ///< of a call: a line of its own, which is read again as lines
};

/// What a line uses, in order.
std::vector<TemplateUse> uses_of(const OutlineLine& line);
/// What a text uses that is no line, as the body of a macro.
std::vector<TemplateUse> uses_in(std::string_view text);

/// The name and the value of a definition, or of a macro; the value without its quotation marks.
struct TemplateDefinition {
  std::string_view name;
  std::string_view value;
  bool is_complete = false;  ///< a name and a value that the engine can read; both may be built from references
};
TemplateDefinition definition_of(const OutlineLine& line);

// For messages.
std::string in_quotes(std::string_view text);  ///< a long text is cut short
/// Of a directive, such as "#IFDEF".
std::string keyword_of(const OutlineLine& line);

/// Collects what is found, each thing once.
class Findings {
public:
  void add(std::string_view rule, const TemplatePlace& place, std::string what, std::string mend);
  void add(Finding finding) { found_.push_back(std::move(finding)); }
  std::vector<Finding> take();

private:
  std::vector<Finding> found_;
};

}  // namespace plexoras
