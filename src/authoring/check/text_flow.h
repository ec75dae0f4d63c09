#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "authoring/check/author_text.h"
#include "authoring/check/script_place.h"
#include "authoring/check/template_model.h"

namespace plexoras {

/// What becomes of the text that authors type on its way through a template: through definitions, macros and the
/// sections of bracketed references into the lines of a page.
///
/// A walk tells it each line and each condition, in order. What the macro HTML gives is harmless, and so is what the
/// macro SCRIPT gives inside a script element; all else that is made of such text may change the page.
class TextFlow {
public:
  /// What a reference makes of the text, from good to bad.
  enum class Shown { Nothing, AsScript, AsItIs };

  /// A reference in a line of text, or in a macro, that shows such text where nothing has made it harmless.
  struct Leak {
    TemplateUse use;
    TemplatePlace place;
    Shown shown;  ///< AsScript: in no script element
  };

  /// `file` is what bracketed references without a file read. `author_text` are the variables that hold such text at
  /// the start. The reading of a section that a reference in another one asks for has the flow of that one as `outer`,
  /// which outlives it.
  TextFlow(TemplateModel& model, std::string file, const std::set<std::string>& author_text,
           const TextFlow* outer = nullptr);

  /// A condition; in one of its branches the variable `settled` has a value that is known. It may be empty.
  void open_condition(std::string settled, bool settles_first);
  void switch_branch();
  void close_condition();

  /// The next line, with what it uses; all that it shows goes to `leaks`.
  void read(const TemplatePlace& line, const std::vector<TemplateUse>& uses, std::vector<Leak>& leaks);
  /// The lines of `section` have been read since the place was `before`, or are passed over, for they have been before.
  void end_section(const TemplateSection& section, ScriptPlace before);
  void pass_section(const TemplateSection& section);
  ScriptPlace script_place() const { return place_; }

  /// Whether the variable may hold what an author has typed.
  bool is_author_text(const std::string& name) const { return held_.holds(name) && !is_settled(name); }

private:
  // What a reference gives.
  struct Given {
    Shown shown = Shown::Nothing;
    ScriptPlace place = ScriptPlace::Same;
  };
  // The variables that hold such text for a reference: those of the page, or in a macro what it is called with.
  struct Typed {
    bool by_page = true;
    bool name = false;   // _NAME
    bool value = false;  // _VALUE
    bool operator<(const Typed& other) const {
      return std::tie(by_page, name, value) < std::tie(other.by_page, other.name, other.value);
    }
  };
  struct Condition {
    std::string settled;
    bool settles_first = false;
    bool in_else = false;
    ScriptPlace before = ScriptPlace::Same;
    ScriptPlace behind_first = ScriptPlace::Same;
  };
  struct SectionRead {
    std::size_t version = 0;
    Given given;
  };

  bool is_settled(std::string_view name) const;
  bool is_typed(const std::string& name, const Typed& typed) const;
  std::set<std::string> names_of(const Typed& typed) const;
  Given given_by(const TemplateUse& use, const std::vector<TemplateUse>& uses, const Typed& typed);
  Shown value_of(const TemplateName& name, std::string_view written, const Typed& typed);
  Given given_by_section(const std::string& bracketed, const Typed& typed);
  Shown given_by_macro(std::string_view macro, const Typed& typed);
  Given given_by_text(std::string_view text, const std::vector<TemplateUse>& uses, ScriptPlace place,
                      const Typed& typed, const TemplatePlace& line, std::vector<Leak>& leaks);
  void define(const OutlineLine& line, const Given& given);
  ScriptPlace place_of(const std::string& name) const;
  std::vector<std::string_view> bodies_of(const std::string& macro) const;

  TemplateModel& model_;
  std::string file_;
  const TextFlow* outer_;
  std::size_t depth_;       // of macros and sections that lead on to this
  std::size_t lines_left_;  // that references may lead to
  AuthorText held_;
  ScriptPlace place_;
  std::vector<Condition> conditions_;
  std::size_t version_ = 1;                                                // of what the variables hold
  std::unordered_map<std::string, std::vector<std::string_view>> bodies_;  // of macros, in all branches
  std::unordered_map<std::string, ScriptPlace> places_;                    // behind the text of a variable or macro
  std::map<const TemplateSection*, ScriptPlace> places_behind_;
  std::map<std::pair<std::string, Typed>, Shown> macros_read_;
  std::map<std::pair<const TemplateSection*, Typed>, SectionRead> sections_read_;
};

}  // namespace plexoras
