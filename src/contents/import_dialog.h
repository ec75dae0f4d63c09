#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "contents/delimited_import.h"
#include "host/form.h"

namespace plexoras {

/// The dialog that makes a contents document of a delimited text file.
///
/// There is one for as long as the program runs, in its owner's session object: the next import begins with the last
/// choices, however the last one ended. Its caller shows it and, when there is a result, takes it, so that the dialog
/// does not hold what may be a very long text:
///
///     dialog.ShowModal(platform);
///     if (std::string document = dialog.take_result(); !document.empty()) contents = std::move(document);
///
/// An import that fails is told in a message box. The dialog then stays open, without a result, so that the author can
/// mend the choices or cancel.
class ImportDialog final : public Form {
public:
  /// `platform` reads files, lets the author choose one and shows messages; it must outlive the dialog.
  explicit ImportDialog(const Platform& platform);

  /// The document that was made since the dialog was last shown; empty when the author cancelled, nothing was imported
  /// yet, the last import failed, or the document was taken.
  const std::string& result() const { return result_; }
  /// The same; the dialog holds none afterwards, nor memory for it.
  std::string take_result() { return std::exchange(result_, std::string()); }

  /// The file to import. A new one shows when the dialog is next opened.
  const std::string& file_name() const { return file_name_; }
  void set_file_name(std::string path) { file_name_ = std::move(path); }
  /// How the file is to be read, as chosen so far; the delimiter is empty before the dialog has been shown once.
  DelimitedFormat format() const;
  /// Shows when the dialog is next opened, the check boxes at once. A qualifier that the dialog does not offer selects
  /// no button, and stays until the author selects one.
  void set_format(const DelimitedFormat& format);

  TextBox& txtFileName = add<TextBox>("txtFileName", "File:");
  Button& cmdBrowse = add<Button>("cmdBrowse", "Browse...");
  Frame& frmDelimiter = add<Frame>("frmDelimiter", "Fields are separated by");
  OptionButton& rbComma = frmDelimiter.add<OptionButton>("rbComma", "Comma");
  OptionButton& rbSemicolon = frmDelimiter.add<OptionButton>("rbSemicolon", "Semicolon");
  OptionButton& rbTab = frmDelimiter.add<OptionButton>("rbTab", "Tab");
  OptionButton& rbBlank = frmDelimiter.add<OptionButton>("rbBlank", "Blank");
  OptionButton& rbOther = frmDelimiter.add<OptionButton>("rbOther", "Other:");
  TextBox& txtOther = frmDelimiter.add<TextBox>("txtOther");
  Frame& frmQualifier = add<Frame>("frmQualifier", "Text is enclosed in");
  OptionButton& rbDoubleQuote = frmQualifier.add<OptionButton>("rbDoubleQuote", "Double quotes");
  OptionButton& rbSingleQuote = frmQualifier.add<OptionButton>("rbSingleQuote", "Single quotes");
  OptionButton& rbNone = frmQualifier.add<OptionButton>("rbNone", "Nothing");
  CheckBox& ckFirstRow = add<CheckBox>("ckFirstRow", "First row holds column labels");
  CheckBox& ckFirstCol = add<CheckBox>("ckFirstCol", "First column holds row labels");
  /// Enabled when there is a delimiter and a file that can be read.
  Button& cmdImport = add<Button>("cmdImport", "Import");
  Button& cmdCancel = add<Button>("cmdCancel", "Cancel");

  void Form_Load() override;
  void txtFileName_Change();
  /// A dialog that is cancelled or fails leaves the file name.
  void cmdBrowse_Click();
  void rbComma_Click();
  void rbSemicolon_Click();
  void rbTab_Click();
  void rbBlank_Click();
  void rbOther_Click();
  void txtOther_Change();
  void txtOther_GotFocus();
  void rbDoubleQuote_Click();
  void rbSingleQuote_Click();
  void rbNone_Click();
  void cmdImport_Click();
  void cmdCancel_Click();

private:
  // An option button and what it stands for.
  struct Choice {
    OptionButton& button;
    std::string_view text;
  };

  void drop_result() { std::string().swap(result_); }
  void choose_delimiter(std::string_view delimiter);
  void update_import_allowed();

  const Platform& platform_;
  std::string file_name_;
  std::string delimiter_;
  std::string qualifier_;
  std::string result_;
  const Choice delimiters_[4] = {{rbComma, ","}, {rbSemicolon, ";"}, {rbTab, "\t"}, {rbBlank, " "}};
  const Choice qualifiers_[3] = {{rbNone, ""}, {rbDoubleQuote, "\""}, {rbSingleQuote, "'"}};
};

}  // namespace plexoras
