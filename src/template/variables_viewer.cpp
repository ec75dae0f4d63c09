#include "template/variables_viewer.h"

#include "template/template_trial.h"

namespace plexoras {

VariablesViewer::VariablesViewer(const Platform& platform) : platform_(platform) {
  caption = "Template Variables";
  txtValue.locked = true;
  txtValue.multi_line = true;
  txtCommand.multi_line = true;
  txtMessage.locked = true;
  txtMessage.multi_line = true;
  lstVars.on_click = [this] { lstVars_Click(); };
  cmbShow.on_click = [this] { cmbShow_Click(); };
  cmbNext.on_click = [this] { cmbNext_Click(); };
  cmdClose.on_click = [this] { cmdClose_Click(); };
}

void VariablesViewer::Form_Load() {
  step_ = false;
  lstVars.clear();
  if (variables_ != nullptr) {
    for (std::string& key : variables_->GetKeys()) lstVars.add(std::move(key));
  }
  txtValue.set_text("");
  txtMessage.set_text("");
  txtCommand.set_text(current_line_);
}

void VariablesViewer::lstVars_Click() {
  const int row = lstVars.list_index();
  txtValue.set_text(row < 0 ? std::string() : variables_->valueAtIndex(row));
}

void VariablesViewer::cmbShow_Click() {
  const Dictionary none;
  const Dictionary& variables = variables_ == nullptr ? none : *variables_;
  txtMessage.set_text(try_template_text(platform_, variables, template_file_, txtCommand.text()).text);
}

void VariablesViewer::cmbNext_Click() {
  step_ = true;
  close();
}

void VariablesViewer::cmdClose_Click() {
  step_ = false;
  close();
}

bool show_variables(const Platform& platform, const HaltRequest& request) {
  VariablesViewer viewer(platform);
  // A halt hands over the store that its run works on.
  viewer.SetVariables(static_cast<Dictionary&>(*request.variables));
  viewer.set_current_line(request.current_line);
  viewer.set_template_file(request.template_file);
  viewer.ShowModal(platform);
  return viewer.step();
}

void halt_with_viewer(Platform& platform) {
  platform.halt = [&platform](const HaltRequest& request) { return show_variables(platform, request); };
}

}  // namespace plexoras
