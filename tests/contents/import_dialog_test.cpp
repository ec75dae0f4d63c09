#include "contents/import_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "template/engine_fixture.h"

namespace plexoras {
namespace {

// A dialog and the author in front of it.
struct ImportDialogTest : testing::Test, ModalPresenter, FileDialog {
  FakePlatform host;
  ImportDialog dialog{host.platform};
  std::function<void()> author;
  std::function<std::optional<std::string>()> choice;
  std::string asked;  // of the author by the file dialog

  ImportDialogTest() {
    host.platform.presenter = this;
    host.platform.file_dialog = this;
    host.files["a.csv"] = "a;'b;c'\n";
  }

  void run(Form&) override { author(); }

  std::optional<std::string> choose_file(std::string_view title, std::string_view filter) override {
    asked = std::string(title) + "|" + std::string(filter);
    return choice();
  }

  void open(std::function<void()> acts) {
    author = std::move(acts);
    dialog.ShowModal(host.platform);
  }

  // What the author sees: the file, the buttons that are selected, and whether the import can be started.
  std::string shown() const {
    std::string text = dialog.txtFileName.text();
    for (const Frame* frame : {&dialog.frmDelimiter, &dialog.frmQualifier}) {
      for (const auto& control : frame->controls()) {
        const auto* button = dynamic_cast<const OptionButton*>(control.get());
        if (button != nullptr && button->value()) text += " " + button->name();
      }
    }
    if (!dialog.txtOther.text().empty()) text += " [" + dialog.txtOther.text() + "]";
    for (const CheckBox* box : {&dialog.ckFirstRow, &dialog.ckFirstCol}) {
      if (box->value() == 1) text += " " + box->name();
    }
    return text + (dialog.cmdImport.enabled ? " can" : "");
  }

  std::string chosen() const { return dialog.format().delimiter + "|" + dialog.format().qualifier; }
};

TEST_F(ImportDialogTest, ImportsAsChosenAndRemembersTheChoices) {
  open([&] {
    EXPECT_EQ(shown(), " rbComma rbNone");
    EXPECT_EQ(dialog.result(), "");
    EXPECT_FALSE(dialog.cmdImport.user_click());
    dialog.txtFileName.user_type("a.csv");
    dialog.rbSemicolon.user_click();
    dialog.rbSingleQuote.user_click();
    dialog.ckFirstRow.user_click();
    EXPECT_EQ(shown(), "a.csv rbSemicolon rbSingleQuote ckFirstRow can");
    EXPECT_TRUE(dialog.cmdImport.user_click());
    EXPECT_FALSE(dialog.is_open());
  });
  EXPECT_EQ(dialog.result(), "<xml><rows></><cols><col>a</><col>b;c</></><data></></xml>");
  EXPECT_EQ(dialog.take_result(), "<xml><rows></><cols><col>a</><col>b;c</></><data></></xml>");
  EXPECT_EQ(dialog.result(), "") << "it was taken";

  open([&] {
    EXPECT_EQ(shown(), "a.csv rbSemicolon rbSingleQuote ckFirstRow can");
    dialog.ckFirstRow.user_click();
    dialog.ckFirstCol.user_click();
    dialog.rbNone.user_click();
    dialog.rbComma.user_click();
    dialog.cmdImport.user_click();
  });
  EXPECT_EQ(dialog.result(), "<xml><rows><row>a;&apos;b;c&apos;</></><cols></><data></></xml>");

  open([&] {
    EXPECT_EQ(dialog.result().capacity(), std::string().capacity()) << "the last result is gone, and its memory";
    dialog.cmdCancel.user_click();
  });
  EXPECT_EQ(dialog.result(), "");
  open([&] { EXPECT_EQ(shown(), "a.csv rbComma rbNone ckFirstCol can"); });
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(ImportDialogTest, TakesTheDelimiterFromTheControlUsedLast) {
  struct Case {
    const char* name;
    std::function<void()> act;
    const char *chosen, *shown;
  };
  const Case cases[] = {
      {"tab", [&] { dialog.rbTab.user_click(); }, "\t|", "a.csv rbTab rbNone can"},
      {"blank", [&] { dialog.rbBlank.user_click(); }, " |", "a.csv rbBlank rbNone can"},
      {"double quotes", [&] { dialog.rbDoubleQuote.user_click(); }, " |\"", "a.csv rbBlank rbDoubleQuote can"},
      {"other, which is empty", [&] { dialog.txtOther.user_focus(); }, "|\"", "a.csv rbOther rbDoubleQuote"},
      {"other", [&] { dialog.txtOther.user_type("::"); }, "::|\"", "a.csv rbOther rbDoubleQuote [::] can"},
      {"a button again", [&] { dialog.rbComma.user_click(); }, ",|\"", "a.csv rbComma rbDoubleQuote [::] can"},
      {"other again", [&] { dialog.rbOther.user_click(); }, "::|\"", "a.csv rbOther rbDoubleQuote [::] can"},
      {"no delimiter", [&] { dialog.txtOther.user_type(""); }, "|\"", "a.csv rbOther rbDoubleQuote"},
      {"semicolon", [&] { dialog.rbSemicolon.user_click(); }, ";|\"", "a.csv rbSemicolon rbDoubleQuote can"},
      {"text beside a button", [&] { dialog.txtOther.user_type("x"); }, "x|\"",
       "a.csv rbSemicolon rbDoubleQuote [x] can"},
      {"no file", [&] { dialog.txtFileName.user_type(""); }, "x|\"", " rbSemicolon rbDoubleQuote [x]"},
      {"no such file", [&] { dialog.txtFileName.user_type("b.csv"); }, "x|\"", "b.csv rbSemicolon rbDoubleQuote [x]"},
      {"the file has come",
       [&] {
         host.files["b.csv"] = "";
         dialog.rbTab.user_click();
       },
       "\t|\"", "b.csv rbTab rbDoubleQuote [x] can"},
  };
  open([&] {
    dialog.txtFileName.user_type("a.csv");
    for (const Case& c : cases) {
      c.act();
      EXPECT_EQ(chosen(), c.chosen) << c.name;
      EXPECT_EQ(shown(), c.shown) << c.name;
    }
  });
}

TEST_F(ImportDialogTest, ShowsItsStateWhenOpened) {
  struct Case {
    const char* name;
    DelimitedFormat format;
    const char *chosen, *shown;
  };
  const Case cases[] = {
      {"other", {.delimiter = "::", .first_row = true}, "::|", "a.csv rbOther rbNone [::] ckFirstRow can"},
      {"another text", {.delimiter = "#", .qualifier = "'"}, "#|'", "a.csv rbOther rbSingleQuote [#] can"},
      {"the same again", {.delimiter = "#"}, "#|", "a.csv rbOther rbNone [#] can"},
      {"no delimiter", {.delimiter = ""}, ",|", "a.csv rbComma rbNone [#] can"},
      {"tab", {.delimiter = "\t", .qualifier = "\""}, "\t|\"", "a.csv rbTab rbDoubleQuote [#] can"},
      {"the other text again", {.delimiter = "#", .qualifier = "$"}, "#|$", "a.csv rbOther [#] can"},
      {"blank", {.delimiter = " ", .first_col = true}, " |", "a.csv rbBlank rbNone [#] ckFirstCol can"},
  };
  dialog.set_file_name("a.csv");
  for (const Case& c : cases) {
    dialog.set_format(c.format);
    open([&] {
      EXPECT_EQ(chosen(), c.chosen) << c.name;
      EXPECT_EQ(shown(), c.shown) << c.name;
    });
  }
  host.files.clear();
  open([&] { EXPECT_EQ(shown(), "a.csv rbBlank rbNone [#] ckFirstCol") << "the file has gone"; });
}

TEST_F(ImportDialogTest, BrowsesForTheFile) {
  open([&] {
    choice = [] { return std::optional<std::string>("a.csv"); };
    dialog.cmdBrowse.user_click();
    EXPECT_EQ(asked, "Import|Text Files (*.csv;*.txt;*.tab;*.asc)|*.csv;*.txt;*.tab;*.asc|All (*.*)|*.*");
    EXPECT_EQ(shown(), "a.csv rbComma rbNone can");
    choice = [] { return std::nullopt; };
    dialog.cmdBrowse.user_click();
    choice = []() -> std::optional<std::string> { throw AutomationError(RunTimeError::InvalidCall); };
    dialog.cmdBrowse.user_click();
    host.platform.file_dialog = nullptr;
    dialog.cmdBrowse.user_click();
    EXPECT_EQ(shown(), "a.csv rbComma rbNone can");
  });
}

TEST_F(ImportDialogTest, TellsWhyAnImportFailedAndStaysOpen) {
  host.files["gap.csv"] = "a,1\n\nb,2\n";
  open([&] {
    dialog.txtFileName.user_type("gap.csv");
    dialog.ckFirstCol.user_click();
    dialog.cmdImport.user_click();
    EXPECT_TRUE(dialog.is_open());
    EXPECT_EQ(dialog.result(), "");
    dialog.txtFileName.user_type("a.csv");
    host.files.erase("a.csv");
    dialog.cmdImport.user_click();
    dialog.txtFileName.user_type("gap.csv");
    dialog.txtOther.user_type("x");
    dialog.txtOther.user_type("");
    dialog.cmdImport.user_click();
    EXPECT_TRUE(dialog.is_open());
    dialog.rbSemicolon.user_click();
    dialog.ckFirstCol.user_click();
    dialog.cmdImport.user_click();
    EXPECT_FALSE(dialog.is_open());
  });
  EXPECT_EQ(dialog.result(), "<xml><rows><row/><row/><row/></><cols></><data><value>a,1</><value>b,2</></></xml>");
  EXPECT_EQ(host.messages,
            (std::vector<std::string>{
                "|Cannot Import File: Line 2 is empty, but its first field is to be a label; take the line "
                "out, or import without labels in the first column",
                "|Cannot Import File: a.csv",
                "|Cannot Import File: The delimiter between fields must not be empty",
            }));
}

TEST_F(ImportDialogTest, SaysWhenMemoryRunsOut) {
  struct HugeFiles final : FileSystem {
    bool can_read(std::string_view) override { return true; }
    std::string read(std::string_view) override { throw std::bad_alloc(); }
    std::string module_directory() override { return {}; }
  } files;
  const Platform platform{host, files, host.components, {}, {}, &host};
  ImportDialog huge(platform);
  huge.set_file_name("a.csv");
  huge.Form_Load();
  huge.cmdImport_Click();
  EXPECT_EQ(host.messages, std::vector<std::string>{"|Cannot Import File: out of memory; the file is too large"});
}

}  // namespace
}  // namespace plexoras
