#include "template/ini_section.h"

#include "template/preprocessor.h"

namespace plexoras {

void IniSection::Read(std::string_view file, std::string_view section) {
  file_name_ = file;
  Discard();
  AppendSection(section);
}

void IniSection::Discard() {
  raw_ = {};
  joined_.clear();
  joined_marks_.clear();
  result_.clear();
}

void IniSection::AppendSection(std::string_view section) {
  bool missing = false;
  const SourceText added = session_.files.section(file_name_, section, &missing);
  if (missing) {
    Diagnostic asked;
    asked.where.path = file_name_;
    session_.warn_of_missing_file(file_name_, std::move(asked));
  }
  if (raw_.text.empty()) {
    raw_ = added;
    return;
  }
  if (raw_.text.data() != joined_.data()) joined_ = raw_.text;
  // Text that comes from no file needs a mark too, or it would count as what stands beside it.
  static const std::vector<LineMark> from_no_file = {{0, {}, {}, 1}};
  if (joined_marks_.empty()) joined_marks_ = raw_.marks != nullptr ? *raw_.marks : from_no_file;
  for (LineMark mark : added.marks != nullptr ? *added.marks : from_no_file) {
    mark.offset += joined_.size();
    joined_marks_.push_back(mark);
  }
  joined_ += added.text;
  raw_ = {joined_, &joined_marks_};
}

void IniSection::SetContents(std::string_view text) {
  Discard();
  joined_ = text;
  raw_ = {joined_, nullptr};
}

void IniSection::SetVariables(const Dictionary& variables) {
  variables_->put_all(variables);
  for (std::int32_t i = 0; i < variables.Count(); ++i) references_.given_ += variables.valueAtIndex(i).size();
}

void IniSection::Define(std::string_view name, std::string_view value) {
  variables_->atPut(name, value);
  references_.given_ += value.size();
}

const std::string& IniSection::GetContents() {
  if (result_.empty()) Preprocess();
  return result_;
}

std::shared_ptr<Dictionary> IniSection::GetVariables() {
  if (result_.empty()) Preprocess();
  return variables_;
}

void IniSection::Preprocess() {
  result_.clear();
  failed_ = true;  // should the run be ended by what is not its own
  Preprocessor run(session_, *variables_, references_, file_name_);
  run.note_definitions(definitions_);
  if (steps_from_start_) run.step_from_start();
  failed_ = !run.run(raw_, result_);
}

std::shared_ptr<Dictionary> GetSectionVariables(TemplateSession& session, std::string_view file,
                                                std::string_view section, const Dictionary* given) {
  IniSection loaded(session);
  if (given != nullptr) loaded.SetVariables(*given);
  loaded.Read(file, section);
  return loaded.GetVariables();
}

std::string GetSectionConstant(TemplateSession& session, std::string_view file, std::string_view section,
                               std::string_view key, const Dictionary* given) {
  return GetSectionVariables(session, file, section, given)->atGet(key);
}

}  // namespace plexoras
