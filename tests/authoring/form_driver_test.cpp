#include "authoring/form_driver.h"

#include <gtest/gtest.h>

#include "authoring/property_pages.h"
#include "authoring_fixture.h"
#include "host/component_control.h"

namespace plexoras {
namespace {

using Kind = FormAction::Kind;

/// A component that only notes how it is called.
class Grid final : public AutomationObject {
public:
  Variant get(std::string_view member) override { no_such_member(member, "Grid"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "Grid"); }
  Variant call(std::string_view member, Arguments arguments) override {
    if (member == "setEventSink") return {};
    log += std::string(member) + "(";
    for (const Variant& argument : arguments) log += argument.to_text() + ";";
    log += ")";
    return {};
  }
  std::string log;
};

/// One control of each kind, in frames and on a hosted form.
class Sampler final : public Form {
public:
  Sampler() {
    caption = "Sampler";
    lstFruit.add("Apple");
    lstFruit.add("Pear *");
    lstFruit.add("Pearl");
    cmbSize.add("8");
    cmbSize.add("#1 in the charts");
    cmbColor.add("red");
    cmbColor.add("blue");
    chkGray.set_value(2);
    txtFixed.locked = true;
    inner->add<TextBox>("txtInner", "Inside:");
    fraOff.enabled = false;
    chkGone.visible = false;
    txtLine.on_key = [this](TextBox::Key key) { log += key == TextBox::Key::Enter ? "enter " : "other "; };
    txtLine.on_focus = [this] { log += "focus "; };
    cmdGo.on_click = [this] { log += "go "; };
  }

  std::string log;
  std::shared_ptr<Grid> grid = std::make_shared<Grid>();
  std::shared_ptr<Form> inner = std::make_shared<Form>();
  TextBox& txtLine = add<TextBox>("txtLine", "Line:");
  TextBox& txtFixed = add<TextBox>("txtFixed", "Fixed:");
  CheckBox& chkGray = add<CheckBox>("chkGray", "Gray");
  CheckBox& chkGone = add<CheckBox>("chkGone", "Gone");
  Frame& fraGroup = add<Frame>("fraGroup", "Group");
  OptionButton& rbOne = fraGroup.add<OptionButton>("rbOne", "One");
  OptionButton& rbTwo = fraGroup.add<OptionButton>("rbTwo", "Two");
  Frame& fraOff = add<Frame>("fraOff", "Off");
  Button& cmdOff = fraOff.add<Button>("cmdOff", "Off");
  ListBox& lstFruit = add<ListBox>("lstFruit", "Fruit:");
  ComboBox& cmbSize = add<ComboBox>("cmbSize", ComboBox::Style::Typed, "Size:");
  ComboBox& cmbColor = add<ComboBox>("cmbColor", ComboBox::Style::ListOnly, "Colour:");
  Button& cmdGo = add<Button>("cmdGo", "Go");
  FormHost& host = add<FormHost>("host", inner);
  ComponentControl& tbl = add<ComponentControl>("tbl", grid);
};

// The control's value, or what was raised.
std::string value_after(Sampler& form, const FormAction& action) {
  try {
    act(form, action);
  } catch (const AutomationError& error) {
    return "error: " + error.description();
  }
  for (const ListedControl& control : list_form(form).controls) {
    if (control.name == action.control) return control.value;
    for (const ListedControl& inside : control.controls) {
      if (inside.name == action.control) return inside.value;
    }
  }
  return "not listed";
}

TEST(FormDriver, SetsAsAUserDoes) {
  const struct {
    const char* control;
    const char* value;
    const char* result;
  } cases[] = {
      {"txtLine", "a=b", "a=b"},
      {"txtInner", "x", "x"},
      {"chkGray", "ON", "on"},
      {"chkGray", "0", "off"},
      {"chkGray", "maybe", "error: \"chkGray\" takes on or off, not \"maybe\""},
      {"rbTwo", "true", "on"},
      {"rbTwo", "off", "error: \"rbTwo\" is turned off by turning on another button of its group"},
      {"lstFruit", "Apple", "Apple"},
      {"lstFruit", "#1", "Pear *"},
      {"lstFruit", "Pear ", "Pear *"},
      {"lstFruit", "Pear",
       "error: \"lstFruit\" has no entry \"Pear\" (it has: Apple | Pear * | Pearl); did you mean \"Pearl\"?"},
      {"lstFruit", "#3", "error: \"lstFruit\" has no entry \"#3\" (it has 3, #0 to #2)"},
      {"lstFruit", "", "error: \"lstFruit\" has no entry \"\" (it has: Apple | Pear * | Pearl)"},
      {"cmbSize", "#1 in the charts", "#1 in the charts"},
      {"cmbSize", "#0", "8"},
      {"cmbSize", "#2", "error: \"cmbSize\" has no entry \"#2\" (it has 2, #0 to #1)"},
      {"cmbSize", "#2f6fbd", "#2f6fbd"},
      {"cmbColor", "bl", "blue"},
      {"cmbColor", "green", "error: \"cmbColor\" has no entry \"green\" (it has: red | blue)"},
      {"txtFixed", "x", "error: \"txtFixed\" cannot be changed: it only shows its text"},
      {"chkGone", "on", "error: \"chkGone\" cannot be used: it is hidden"},
      {"cmdOff", "x", "error: \"cmdOff\" cannot be used: \"fraOff\", in which it stands, is disabled"},
      {"cmdGo", "x", "error: \"cmdGo\" is a Button and cannot be set; click it"},
      {"txtLnie", "x", "error: there is no control \"txtLnie\" on \"Sampler\"; did you mean \"txtLine\"?"},
      {"fruit", "x", "error: there is no control \"fruit\" on \"Sampler\"; did you mean \"lstFruit\"?"},
      {"off", "x",
       "error: there is no control \"off\" on \"Sampler\"; did you mean \"fraOff\" or \"cmdOff\" (Off: Off)?"},
      {"a\n\x1B", "x", "error: there is no control \"a\\n\\x1B\" on \"Sampler\""},
  };
  for (const auto& c : cases) {
    Sampler form;
    EXPECT_EQ(value_after(form, {.kind = Kind::Set, .control = c.control, .value = c.value}), c.result)
        << c.control << "=" << c.value;
  }
}

TEST(FormDriver, ClicksPressesKeysAndCalls) {
  Sampler form;
  act(form, {.kind = Kind::Click, .control = "cmdGo"});
  act(form, {.kind = Kind::Focus, .control = "txtLine"});
  act(form, {.kind = Kind::Key, .control = "txtLine", .value = "enter"});
  act(form, {.kind = Kind::Key, .control = "txtLine", .value = "Down"});
  EXPECT_EQ(form.log, "go focus enter other ");
  act(form, {.kind = Kind::Call, .control = "tbl", .member = "selectCell", .arguments = {0, "x"}});
  EXPECT_EQ(form.grid->log, "selectCell(0;x;)");
  EXPECT_EQ(value_after(form, {.kind = Kind::Click, .control = "txtLine"}),
            "error: \"txtLine\" is a TextBox and cannot be clicked; set it");
  EXPECT_EQ(value_after(form, {.kind = Kind::Key, .control = "txtLine", .value = "F1"}),
            "error: there is no key \"F1\"; known: Enter, Up, Down");
  EXPECT_EQ(value_after(form, {.kind = Kind::Call, .control = "cmdGo", .member = "x"}),
            "error: \"cmdGo\" is a Button and cannot be called");
  EXPECT_EQ(value_after(form, {.kind = Kind::ChooseFile, .value = "a.csv"}), "error: no dialog asks for a file here");
}

TEST(FormDriver, OfTwoControlsOfANameTheUsableOneIsMeant) {
  Form form;
  auto hidden = std::make_shared<Form>();
  auto shown = std::make_shared<Form>();
  auto& unused = hidden->add<TextBox>("txt");
  auto& used = shown->add<TextBox>("txt");
  form.add<FormHost>("first", hidden).visible = false;
  form.add<FormHost>("second", shown);
  act(form, {.kind = Kind::Set, .control = "txt", .value = "x"});
  EXPECT_EQ(unused.text() + "|" + used.text(), "|x");
}

TEST(PropertyPages, EachIsWhatItsTableSays) {
  Author author(
      "[PROPERTY]\n#DEFINE HASMENU True\n[CONSTANT]\n#DEFINE DIAGRAMTYPE_Line 5\n"
      "#DEFINE SCROLLBAR_Auto 0\n#DEFINE PIESTYLE_Flat 0\n#DEFINE PIETYPE_Pie 0\n#DEFINE ONROWLABELCLICK_None 0\n"
      "#DEFINE ONCOLLABELCLICK_None 0\n");
  PropertyPages pages(author.session);
  LiveControl control = author.make();
  for (const PropertyPageType& type : property_page_types()) {
    const auto page = pages.open(type, control);
    EXPECT_EQ(page->caption, type.caption);
    EXPECT_FALSE(page->Changed) << type.name;
    EXPECT_EQ(&PropertyPages::find(type.caption, control), &type);
    if (type.properties == nullptr) continue;
    for (const PropertyRow& row : type.properties()) {
      EXPECT_NE(page->find(row.control.empty() ? row.options.front().button : row.control), nullptr) << row.property;
      EXPECT_NO_THROW(ControlProperties(control).get(row.property));
    }
    for (const OwnProperty& own : type.own_properties) {
      if (type.name == "Contents") continue;  // what stands there is up to the template
      EXPECT_NE(page->find(own.control), nullptr) << own.name;
    }
  }
}

// Applying the page "Styles" stores the menu builder's menu, which must be that of the chart at hand.
TEST(PropertyPages, AChartKeepsItsMenuWhenAnotherOneWasWorkedOnBefore) {
  Author author("[PROPERTY]\n#DEFINE HASMENU True\n[CONSTANT]\n#DEFINE DIAGRAMTYPE_Line 5\n");
  PropertyPages pages(author.session);
  LiveControl first = author.make("First");
  LiveControl second = author.make("Second");
  first.control().SetProperty("MENU", "<xml>\n</xml>");
  first.control().SetProperty("USEMENU", "Yes");
  for (LiveControl* const control : {&first, &second}) {
    pages.open(PropertyPages::find("styles", *control), *control)->apply();
  }
  EXPECT_EQ(first.control().GetProperty("MENU") + first.control().GetProperty("USEMENU"), "<xml>\n</xml>Yes");
  EXPECT_EQ(second.control().GetProperty("MENU") + second.control().GetProperty("USEMENU"), "");
}

// A page that edits no menu must leave alone the one that is being built on another.
TEST(PropertyPages, AnEditedMenuIsAppliedThoughAnotherPageWasOpenedSince) {
  class Builder final : public ModalPresenter {
  public:
    void run(Form& form) override {
      act(form, {.kind = Kind::Click, .control = "rbCustomMenu"});
      act(form, {.kind = Kind::Set, .control = "txtCaption", .value = "Help"});
      act(form, {.kind = Kind::Click, .control = "cmdOK"});
    }
  };
  Author author("[PROPERTY]\n#DEFINE HASMENU True\n[CONSTANT]\n#DEFINE DIAGRAMTYPE_Line 5\n");
  Builder builder;
  author.host.platform.presenter = &builder;
  PropertyPages pages(author.session);
  LiveControl first = author.make("First");
  LiveControl second = author.make("Second");
  first.control().put("HasPopupMenu", true);
  const auto styles = pages.open(PropertyPages::find("Styles", first), first);
  act(*styles, {.kind = Kind::Click, .control = "cmdMenuBuilder"});
  const auto format = pages.open(PropertyPages::find("Format", second), second);
  styles->apply();
  EXPECT_EQ(first.control().GetProperty("USEMENU"), "Yes");
  EXPECT_NE(first.control().GetProperty("MENU").find("Help"), std::string::npos);
}

}  // namespace
}  // namespace plexoras
