#include "host/form.h"

#include <gtest/gtest.h>

#include "outcome.h"

namespace plexoras {
namespace {

// Every kind of control; each event writes a line into the log.
class SampleForm : public Form {
public:
  CheckBox& chkGrid = add<CheckBox>("chkGrid", "Grid");
  OptionButton& rbPie = add<OptionButton>("rbPie");
  OptionButton& rbBar = add<OptionButton>("rbBar");
  Frame& frmInner = add<Frame>("frmInner", "Inner");
  OptionButton& rbUp = frmInner.add<OptionButton>("rbUp");
  OptionButton& rbDown = frmInner.add<OptionButton>("rbDown");
  Frame& frmInnermost = frmInner.add<Frame>("frmInnermost");
  TextBox& txtName = frmInnermost.add<TextBox>("txtName");
  ListBox& lstRows = add<ListBox>("lstRows");
  ComboBox& cmbFont = add<ComboBox>("cmbFont", ComboBox::Style::Typed);
  ComboBox& cmbType = add<ComboBox>("cmbType", ComboBox::Style::ListOnly);
  Button& cmdOK = add<Button>("cmdOK", "OK");
  std::string log;

  SampleForm() {
    chkGrid.on_click = [this] { log += "chkGrid=" + std::to_string(chkGrid.value()) + " "; };
    for (OptionButton* button : {&rbPie, &rbBar, &rbUp, &rbDown}) {
      button->on_click = [this, button] { log += button->name() + (button->value() ? "=on " : "=off "); };
    }
    for (ListBox* list : {&lstRows, static_cast<ListBox*>(&cmbFont), static_cast<ListBox*>(&cmbType)}) {
      for (const char* entry : {"one", "two", "three"}) list->add(entry);
      list->on_click = [this, list] { log += list->name() + "@" + std::to_string(list->list_index()) + " "; };
    }
    cmbFont.on_change = [this] { log += "cmbFont:" + cmbFont.text() + " "; };
    txtName.on_change = [this] { log += "txtName:" + txtName.text() + " "; };
    txtName.on_key = [this](TextBox::Key key) { log += "key" + std::to_string(static_cast<int>(key)) + " "; };
    cmdOK.on_click = [this] { close(); };
  }

  void Form_Load() override { log += "load "; }

  std::string taken_log() { return std::exchange(log, {}); }
};

TEST(Form, FiresOncePerChangeByCodeOrUser) {
  SampleForm form;
  struct Case {
    const char* name;
    std::function<void()> act;
    const char* log;
  };
  const Case cases[] = {
      {"check by code", [&] { form.chkGrid.set_value(2); }, "chkGrid=2 "},
      {"check unchanged", [&] { form.chkGrid.set_value(2); }, ""},
      {"gray goes off", [&] { form.chkGrid.user_click(); }, "chkGrid=0 "},
      {"off goes on", [&] { form.chkGrid.user_click(); }, "chkGrid=1 "},
      {"option by code", [&] { form.rbPie.set_value(true); }, "rbPie=on "},
      {"another frame", [&] { form.rbUp.user_click(); }, "rbUp=on "},
      {"option by user", [&] { form.rbBar.user_click(); }, "rbBar=on "},
      {"option again", [&] { form.rbBar.user_click(); }, ""},
      {"option off", [&] { form.rbBar.set_value(false); }, ""},
      {"text by code", [&] { form.txtName.set_text("a"); }, "txtName:a "},
      {"text unchanged", [&] { form.txtName.user_type("a"); }, ""},
      {"key", [&] { form.txtName.user_key(TextBox::Key::Up); }, "key38 "},
      {"entry by code", [&] { form.lstRows.set_list_index(2); }, "lstRows@2 "},
      {"entry again", [&] { form.lstRows.user_select(2); }, ""},
      {"no entry", [&] { form.lstRows.set_list_index(-1); }, "lstRows@-1 "},
      {"entries out", [&] { form.lstRows.clear(); }, ""},
      {"combo entry", [&] { form.cmbFont.user_select(1); }, "cmbFont@1 "},
      {"combo same text", [&] { form.cmbFont.user_type("two"); }, ""},
      {"combo typed", [&] { form.cmbFont.user_type("tw"); }, "cmbFont:tw "},
      {"combo text by code", [&] { form.cmbFont.set_text("one"); }, "cmbFont:one "},
      {"list-only by text", [&] { form.cmbType.set_text("three"); }, "cmbType@2 "},
      {"list-only typed", [&] { form.cmbType.user_type("one"); }, ""},
  };
  for (const Case& c : cases) {
    c.act();
    EXPECT_EQ(form.taken_log(), c.log) << c.name;
  }
  EXPECT_TRUE(form.rbUp.value()) << "groups are separate";
  EXPECT_FALSE(form.rbPie.value()) << "one of a group at most";
  EXPECT_EQ(form.cmbFont.list_index(), -1) << "typed text is no selection";
}

TEST(Form, PutsTheCaretWhereTypingGoesOn) {
  SampleForm form;
  form.txtName.on_change = [&] { EXPECT_EQ(form.txtName.caret, form.txtName.text().size()); };
  form.txtName.user_type("typed");
  form.txtName.on_change = nullptr;
  EXPECT_EQ(form.txtName.caret, 5U);
  form.txtName.set_text("by code");
  EXPECT_EQ(form.txtName.caret, 0U);
}

TEST(Form, RefusesValuesThatControlsCannotHave) {
  SampleForm form;
  EXPECT_THROW(form.chkGrid.set_value(3), AutomationError);
  EXPECT_THROW(form.lstRows.set_list_index(3), AutomationError);
  EXPECT_THROW(form.lstRows.set_list_index(-2), AutomationError);
  EXPECT_THROW(form.lstRows.set_entry(3, "four"), AutomationError);
  EXPECT_THROW(form.cmbType.set_text("four"), AutomationError);
  EXPECT_EQ(form.log, "");
}

TEST(Form, KeepsUsersFromWhatIsDisabledOrHidden) {
  SampleForm form;
  form.frmInner.enabled = false;
  form.cmdOK.visible = false;
  EXPECT_FALSE(form.txtName.user_type("a"));
  EXPECT_FALSE(form.rbUp.user_click());
  EXPECT_FALSE(form.cmdOK.user_click());
  EXPECT_TRUE(form.chkGrid.user_click());
  form.txtName.set_text("by code");
  EXPECT_EQ(form.taken_log(), "chkGrid=1 txtName:by code ");

  form.frmInner.enabled = true;
  form.txtName.locked = true;
  EXPECT_FALSE(form.txtName.user_type("a"));
  EXPECT_TRUE(form.rbUp.user_click());
}

TEST(Form, ChangesTheTextOfTheSelectedEntry) {
  SampleForm form;
  form.cmbFont.set_list_index(0);
  form.cmbFont.set_entry(0, "uno");
  EXPECT_EQ(form.cmbFont.text(), "uno");
  form.cmbFont.set_list_index(-1);
  EXPECT_EQ(form.cmbFont.text(), "");
}

TEST(Form, ShowsItselfThroughThePresenterUntilClosed) {
  struct Script : ModalPresenter {
    std::function<void(Form&)> act;
    void run(Form& form) override { act(form); }
  } script;
  struct NoSettings : SettingsStore {
    std::string read(std::string_view, std::string_view, std::string_view value) override { return std::string(value); }
    void write(std::string_view, std::string_view, std::string_view) override {}
  } settings;
  struct NoFiles : FileSystem {
    bool can_read(std::string_view) override { return false; }
    std::string read(std::string_view) override { return {}; }
    std::string module_directory() override { return "/"; }
  } files;
  ComponentRegistry components;
  Platform platform{.settings = settings, .files = files, .components = components, .short_date = {}, .random = {}};

  SampleForm form;
  form.ShowModal(platform);
  EXPECT_EQ(form.taken_log(), "load ") << "without a presenter it closes at once";

  platform.presenter = &script;
  script.act = [&](Form& shown) {
    EXPECT_THROW(shown.ShowModal(platform), AutomationError) << "it is open already";
    EXPECT_TRUE(shown.is_open());
    dynamic_cast<Button&>(*shown.find("cmdOK")).user_click();
    EXPECT_FALSE(shown.is_open());
  };
  form.ShowModal(platform);

  script.act = [](Form&) { throw AutomationError(RunTimeError::Overflow); };
  EXPECT_THROW(form.ShowModal(platform), AutomationError);
  EXPECT_FALSE(form.is_open()) << "closed when showing fails";
}

TEST(Form, FindsControlsInFramesAndHostedForms) {
  Form page;
  const auto hosted = std::make_shared<SampleForm>();
  FormHost& host = page.add<FormHost>("Sample", hosted);
  EXPECT_EQ(page.find("txtName"), &hosted->txtName);
  EXPECT_EQ(page.find("txtname"), nullptr);
  host.enabled = false;
  EXPECT_FALSE(hosted->chkGrid.user_click()) << "the host's state is passed on";
  Form window;
  const auto host_elsewhere = [&] { return window.add<FormHost>("Elsewhere", hosted).name(); };
  EXPECT_EQ(outcome(host_elsewhere), "error 5: The form stands in \"Sample\" already");
  page.remove_controls();
  EXPECT_TRUE(hosted->chkGrid.user_click()) << "taken off the page";
  EXPECT_EQ(outcome(host_elsewhere), "Elsewhere");
}

TEST(Form, LetsAHandlerDeleteItsOwnControl) {
  Form form;
  int clicks = 0;
  Button& button = form.add<Button>("cmdRebuild");
  button.on_click = [&form, &clicks] {
    form.remove_controls();
    ++clicks;
  };
  EXPECT_TRUE(button.user_click());
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(form.find("cmdRebuild"), nullptr);
}

}  // namespace
}  // namespace plexoras
