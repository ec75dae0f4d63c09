#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "template/dictionary.h"
#include "template/references.h"
#include "template/template_session.h"

namespace plexoras {

/// One section of a template file, with the variables it is expanded with.
///
///     IniSection section(session);
///     section.SetVariables(properties);
///     section.Read("DIAGRAM.DAT", "TEMPLATE");
///     section.Define("APPLETID", "Sales");
///     const std::string& text = section.GetContents();
///
/// Make a fresh one for each section that is wanted; it lives for one request, and no longer than its session.
/// No operation returns an error code. A missing file reads as an HTML comment that says so; a failure while
/// the section is preprocessed shows one message box, leaves the text empty, and is described in the session's
/// `diagnostics`.
class IniSection {
public:
  /// `file` is what bare section references and `#INCLUDE` without `FROM` read until `Read` names another file.
  // Kept: a section that never named a file means the product's own constants.
  explicit IniSection(TemplateSession& session, std::string_view file = "APPLET.DAT")
      : session_(session), file_name_(file), references_(session, *variables_, file_name_) {}
  IniSection(const IniSection&) = delete;
  IniSection& operator=(const IniSection&) = delete;

  /// Loads section `section` of template file `file` in place of the present text; variables stay.
  void Read(std::string_view file, std::string_view section);
  /// Forgets the raw text and the result; variables stay.
  void Discard();
  /// Adds the text of a section of the current template file behind the present raw text.
  void AppendSection(std::string_view section);
  /// Takes `text`, whose lines end in CR LF, in place of the present text.
  void SetContents(std::string_view text);

  /// The result text; preprocesses when there is none yet, or when it came out empty.
  const std::string& GetContents();
  /// The variables themselves, not a copy, after preprocessing under the same condition.
  std::shared_ptr<Dictionary> GetVariables();
  /// The variables as they are now, without preprocessing.
  const Dictionary& present_variables() const { return *variables_; }

  /// Stores every entry of `variables`, in index order.
  void SetVariables(const Dictionary& variables);
  void Define(std::string_view name, std::string_view value);

  /// A variable's value or what a bracketed name finds; see `References`.
  std::string Find(std::string_view name) { return references_.Find(name); }
  bool isAbsent(std::string_view name) { return references_.isAbsent(name); }

  /// Has the runs to come serve a reader who wants each definition with its place: they are noted in `to`, which
  /// outlives the runs, in the order made. One with an empty value is stored, too. A line that fails does not end the
  /// run: it is noted, described in the session's `diagnostics`, and left out; a condition that fails does not hold.
  /// Lines of text are noted as well, unless they are empty.
  void note_definitions(std::vector<Definition>& to) { definitions_ = &to; }

  /// Has the runs to come stop before their first line of text or macro call, as behind a `#HALT`.
  void step_from_start() { steps_from_start_ = true; }

  void Preprocess();
  /// Whether the last preprocessing ended in a failure.
  bool failed() const { return failed_; }

private:
  TemplateSession& session_;
  std::shared_ptr<Dictionary> variables_ = std::make_shared<Dictionary>();
  std::string file_name_;
  References references_;

  SourceText raw_;
  std::string joined_;  // behind `raw_` when it is not a section of a file as it stands
  std::vector<LineMark> joined_marks_;
  std::string result_;
  std::vector<Definition>* definitions_ = nullptr;
  bool steps_from_start_ = false;
  bool failed_ = false;
};

/// The variables of a section after preprocessing it, on top of those in `given`, if any: so every definition
/// made in the section.
std::shared_ptr<Dictionary> GetSectionVariables(TemplateSession& session, std::string_view file,
                                                std::string_view section, const Dictionary* given = nullptr);

/// One of `GetSectionVariables`; empty when there is none.
std::string GetSectionConstant(TemplateSession& session, std::string_view file, std::string_view section,
                               std::string_view key, const Dictionary* given = nullptr);

}  // namespace plexoras
