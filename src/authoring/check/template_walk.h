#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "authoring/check/template_model.h"
#include "authoring/check/text_flow.h"

namespace plexoras {

/// One reading of a section as a control (or `plexoras expand`) would begin with it: through all branches of its
/// conditions and all that it includes.
///
/// It tells what is wrong with the lines themselves (conditions, directives, inclusions, references, the number of
/// variables) and keeps what they define and use for those who judge names. A section that several lines include is
/// read once, unless a condition begins or ends in it.
class TemplateWalk {
public:
  struct DefinitionMade {
    TemplateName name;
    std::string_view value;
    DirectiveKind kind;  ///< Define or Macro
    TemplatePlace place;
    std::size_t branch;  ///< the innermost branch that it stands in; 0: in no condition
  };
  struct UseMade {
    TemplateUse use;
    TemplatePlace place;
  };

  /// How many lines are read at most, through all inclusions; a longer reading stops without a word.
  static constexpr std::size_t most_lines = 200000;

  /// What the section is read for: its text, the variables that it defines, its definitions, empty ones included, or
  /// its flow alone.
  enum class Purpose { Text, Variables, Form, Flow };

  /// `file` is what `#INCLUDE` without `FROM` reads. `given` are the variables that are surely there at the start,
  /// `author_text` those that hold what an author has typed. The model and the findings outlive the walk, and so does
  /// `outer`, the flow of the section whose reference asks for this one, if any.
  TemplateWalk(TemplateModel& model, Findings& findings, std::string file, Purpose purpose,
               const std::set<std::string>& given = {}, const std::set<std::string>& author_text = {},
               const TextFlow* outer = nullptr);

  void walk(std::string_view section);

  const std::vector<DefinitionMade>& definitions() const { return definitions_; }
  const std::vector<UseMade>& uses() const { return uses_; }
  /// What is made of the text that authors type, at the end; and where it is shown as it is.
  const TextFlow& flow() const { return flow_; }
  const std::vector<TextFlow::Leak>& leaks() const { return leaks_; }
  /// The names that the sections of bracketed references use.
  const std::vector<TemplateName>& mentions() const { return mentions_; }
  /// Whether text that cannot be known beforehand is read as lines, or another section: it may define and use anything.
  bool is_open_ended() const { return is_open_ended_; }
  const std::set<const TemplateSection*>& sections() const { return sections_; }
  std::size_t lines_read() const { return most_lines - lines_left_; }
  /// Those that are surely there at the end.
  const std::unordered_set<std::string>& stored() const { return stored_; }
  /// Where the name is defined, other than by a name that is built from references.
  std::vector<const DefinitionMade*> definitions_of(std::string_view name) const;
  /// Whether some definition may be one of the name.
  bool may_define(std::string_view name) const;
  /// Whether some #UNDEF may take the name away.
  bool may_undefine(const std::string& name) const { return undefines_any_ || undefined_.contains(name); }

private:
  struct Condition {
    std::size_t branch;
    std::size_t stored_before;
    const OutlineLine* else_line = nullptr;
  };
  struct Inclusion {
    const TemplateSection* section;
    std::size_t conditions;  // open where it begins
    bool is_certain;         // the inclusion stands in no condition of the section around it
  };

  void read(const TemplateSection& section, bool is_certain);
  void read_line(const TemplatePlace& line);
  void undefine(const TemplatePlace& line);
  void open_condition(const TemplatePlace& line);
  void switch_branch(const TemplatePlace& line);
  void close_condition();
  void tell_condition_faults();
  void forget_branch();
  void define(const TemplatePlace& line);
  void include(const TemplatePlace& line);
  void note_uses(const TemplatePlace& line);
  void look_into_brackets(const TemplateUse& use, const TemplatePlace& line);
  bool mention(const TemplateSection& section);
  void expand_line(const TemplateUse& use);
  void store(const std::string& name, const TemplatePlace& line);
  void count_stored(const TemplatePlace& line, std::string_view newest);

  TemplateModel& model_;
  Findings& findings_;
  std::string file_;
  Purpose purpose_;

  std::vector<DefinitionMade> definitions_;
  std::unordered_map<std::string, std::vector<std::size_t>> definitions_by_name_;
  std::unordered_set<std::string> undefined_;
  bool undefines_any_ = false;                   // a name that is built from references
  std::set<std::string> computed_beginnings_;    // of the names that are built from references
  std::unordered_set<std::string> line_makers_;  // macros whose text may be a directive
  std::vector<UseMade> uses_;
  TextFlow flow_;
  std::vector<TextFlow::Leak> leaks_;
  std::vector<TemplateName> mentions_;
  std::set<const TemplateSection*> sections_;
  std::map<const TemplateSection*, bool> mentioned_;  // and whether they may define what they are asked for

  std::vector<Condition> open_;
  std::size_t branches_ = 0;
  std::vector<std::pair<TemplatePlace, const OutlineLine*>> second_elses_;  // and the first ones
  std::vector<Inclusion> inclusions_;
  std::unordered_set<std::string> stored_;
  std::vector<std::string> stored_in_branches_;  // those that a branch has added, in order
  std::size_t lines_left_ = most_lines;
  bool knows_conditions_ = true;  // no line that is made by a macro opens or closes one
  bool fits_together_ = true;     // every condition is closed once, by whichever section
  bool is_open_ended_ = false;
  bool told_of_overflow_ = false;
  TemplatePlace nearly_full_;
  std::size_t nearly_full_count_ = 0;
};

}  // namespace plexoras
