#pragma once

#include <string>

#include "host/form.h"
#include "template/dictionary.h"

namespace plexoras {

/// The window that shows an author the variables of a template where it has halted.
///
/// A template halts at a line "#HALT" and, for as long as the author asks for the next line, before each line of text
/// or macro call behind it. The author looks at the variables, tries a piece of template text against them, and
/// chooses how to go on. A program whose platform has a presenter offers the window in one line:
///
///     halt_with_viewer(host.platform());
///
/// What is tried out changes nothing (see `try_template_text`). One that fails shows the usual message box, and the
/// halted template goes on all the same.
class VariablesViewer final : public Form {
public:
  ListBox& lstVars = add<ListBox>("lstVars", "Variables:");
  TextBox& txtValue = add<TextBox>("txtValue", "Value:");
  TextBox& txtCommand = add<TextBox>("txtCommand", "Template text:");
  TextBox& txtMessage = add<TextBox>("txtMessage", "Gives:");
  Button& cmbShow = add<Button>("cmbShow", "Show");
  Button& cmbNext = add<Button>("cmbNext", "Next line");
  Button& cmdClose = add<Button>("cmdClose", "Run on");

  /// `platform` outlives the form.
  explicit VariablesViewer(const Platform& platform);

  /// The variables to show, which outlive the form's showing.
  void SetVariables(Dictionary& variables) { variables_ = &variables; }
  /// Those last set; null before.
  Dictionary* GetVariables() const { return variables_; }
  /// What stands in `txtCommand` when the form shows.
  void set_current_line(std::string_view line) { current_line_ = line; }
  /// The template file that bare references and inclusions mean in what is tried out.
  void set_template_file(std::string_view file) { template_file_ = file; }

  /// Whether the author wants to stop again before the next line: false until `cmbNext` was chosen.
  bool step() const { return step_; }

  void Form_Load() override;
  void lstVars_Click();
  void cmbShow_Click();
  void cmbNext_Click();
  void cmdClose_Click();

private:
  const Platform& platform_;
  Dictionary* variables_ = nullptr;
  std::string current_line_;
  std::string template_file_;
  bool step_ = false;
};

/// Shows where a template has halted, and answers whether to stop again before the next line. Without a presenter the
/// answer is no.
bool show_variables(const Platform& platform, const HaltRequest& request);

/// Has templates that halt show their variables in a `VariablesViewer`, through `platform`'s presenter. The platform
/// must stay where it is.
void halt_with_viewer(Platform& platform);

}  // namespace plexoras
