#include "template/customizer_control.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

/// Hears of edits.
class Listener final : public AutomationObject {
public:
  Variant get(std::string_view member) override { no_such_member(member, "Listener"); }
  void put(std::string_view member, const Variant&) override { no_such_member(member, "Listener"); }
  Variant call(std::string_view member, Arguments) override {
    if (member != "RaiseChangedEvent") no_such_member(member, "Listener");
    ++edits;
    return {};
  }
  int edits = 0;
};

/// An author in front of the form of a template, which knows it by its members' names alone.
struct Author {
  explicit Author(std::string_view lines, std::initializer_list<std::pair<std::string, std::string>> settings = {}) {
    host.files["T.DAT"] = "[S]\n" + std::string(lines) + "[CONSTANT]\n#DEFINE PIE_Flat 0\n#DEFINE PIE_3D 1\n";
    for (const auto& [key, value] : settings) values->atPut(key, value, Dictionary::EmptyValues::Keep);
    register_template_forms(host.components, session);
    component = host.components.create(CustomizerControl::identifier);
    component->put("host", Variant(ObjectRef(listener)));
    load();
  }

  void load() { component->call_with("loadWindowSpec", {"S", "T.DAT", ObjectRef(values)}); }
  std::string accept() {
    return outcome([&] { return component->call("Accept").to_text(); });
  }
  template <class Control>
  Control& control(std::string_view name) {
    return dynamic_cast<Control&>(*form_of(component)->find(name));
  }
  TextBox& box(std::string_view name) { return control<TextBox>(name); }
  ComboBox& list(std::string_view name) { return control<ComboBox>(name); }

  FakePlatform host;
  TemplateSession session{host.platform};
  std::shared_ptr<Dictionary> values = std::make_shared<Dictionary>();
  std::shared_ptr<Listener> listener = std::make_shared<Listener>();
  ObjectRef component;
};

// The controls as text: kind, name, caption, what they show; hidden ones in parentheses.
std::string picture(const ControlContainer& container, const std::string& indent = {}) {
  std::string text;
  for (const auto& control : container.controls()) {
    std::string line = std::string(control->kind()) + " " + control->name() + " [" + control->caption + "]";
    if (const auto* box = dynamic_cast<TextBox*>(control.get())) line += " " + box->text();
    if (const auto* box = dynamic_cast<CheckBox*>(control.get())) line += " " + std::to_string(box->value());
    if (const auto* box = dynamic_cast<ComboBox*>(control.get())) line += " " + box->text();
    if (!control->enabled) line += " disabled";
    text += indent + (control->visible ? line : "(" + line + ")") + "\n";
    if (const auto* frame = dynamic_cast<Frame*>(control.get())) text += picture(*frame, indent + "  ");
  }
  return text;
}

TEST(CustomizerControl, BuildsAFormOfControlsWithTheirValues) {
  Author author(
      "#DEFINE HI_MESSAGESPEC 'Welcome.'\n"
      "#DEFINE NAME_SPEC 'Name:|text|at 10,20|size 200x30'\n"
      "#DEFINE G_DIVIDERSPEC 'Looks'\n"
      "#DEFINE NOTE_SPEC 'Note:|multiline'\n#DEFINE NOTE_COMMENT 'As long as you like.'\n"
      "#DEFINE COLOR_SPEC 'Colour:|color'\n"
      "#DEFINE WRONG_SPEC 'x'\n"
      "#DEFINE END_DIVIDERSPEC '-'\n"
      "#DEFINE ON_SPEC 'On|check|Yes;'\n"
      "#DEFINE PIE_SPEC 'Pie:|lookup|PIE|DISABLED'\n"
      "#DEFINE FONT_SPEC 'Font:|combo|Arial;Times'\n",
      {{"NAME", "A\"b"}, {"NOTE", "1\r\n2"}, {"ON", "Yes"}, {"PIE", "1"}, {"FONT", "Own"}, {"COLOR", ""}});
  EXPECT_EQ(picture(*form_of(author.component)),
            "Label HI_MESSAGESPEC [Welcome.]\n"
            "TextBox NAME [Name:] A\"b\n"
            "(Label NAME_PROBLEM [])\n"
            "Frame G_DIVIDERSPEC [Looks]\n"
            "  TextBox NOTE [Note:] 1\r\n2\n"
            "  (Label NOTE_PROBLEM [])\n"
            "  Label NOTE_COMMENT [As long as you like.]\n"
            "  TextBox COLOR [Colour:] \n"
            "  (Label COLOR_PROBLEM [])\n"
            "  Label WRONG_SPEC [T.DAT:8:21: a setting needs a type; write 'Caption:|text']\n"
            "CheckBox ON [On] 1\n"
            "(Label ON_PROBLEM [])\n"
            "ComboBox PIE [Pie:] 3D disabled\n"
            "(Label PIE_PROBLEM [])\n"
            "ComboBox FONT [Font:] Own\n"
            "(Label FONT_PROBLEM [])\n");
  EXPECT_EQ(author.box("NAME").placement.top, 20);
  EXPECT_EQ(author.box("NAME").placement.width, 200);
  EXPECT_TRUE(author.box("NOTE").multi_line);
  EXPECT_TRUE(author.box("COLOR").is_color);
  EXPECT_EQ(author.listener->edits, 0) << "loading is no edit";
}

TEST(CustomizerControl, StoresWhatWasEditedWhenAccepted) {
  Author author(
      "#DEFINE NAME_SPEC 'Name:|text'\n#DEFINE ON_SPEC 'On|check'\n#DEFINE KIND_SPEC 'Kind:|choice|n=Note;t=Tip'\n"
      "#DEFINE FONT_SPEC 'Font:|combo|Arial;Times'\n#DEFINE SIZE_SPEC 'Size:|integer|1..9'\n"
      "#DEFINE COLOR_SPEC 'Colour:|color'\n#DEFINE OFF_SPEC 'Off|text|DISABLED'\n",
      {{"NAME", "a"}, {"ON", "False"}, {"KIND", "n"}, {"OFF", "o"}});
  EXPECT_TRUE(author.box("NAME").user_type("b"));
  EXPECT_TRUE(author.control<CheckBox>("ON").user_click());
  EXPECT_TRUE(author.list("KIND").user_select(1));
  EXPECT_TRUE(author.list("FONT").user_type("Courier"));
  EXPECT_TRUE(author.box("SIZE").user_type(" 7 "));
  EXPECT_TRUE(author.box("COLOR").user_type("rgb(1 2 3 / 50%)"));
  EXPECT_FALSE(author.box("OFF").user_type("x"));
  EXPECT_EQ(author.listener->edits, 6);
  EXPECT_EQ(listing(*author.values), "NAME=a;ON=False;KIND=n;OFF=o;") << "until it is accepted";

  EXPECT_EQ(author.accept(), "");
  EXPECT_EQ(listing(*author.values), "NAME=b;ON=True;KIND=t;OFF=o;FONT=Courier;SIZE=7;COLOR=rgb(1 2 3 / 50%);");

  // Only what was edited since is stored again.
  author.values->atPut("NAME", "elsewhere");
  EXPECT_TRUE(author.list("FONT").user_select(1));
  EXPECT_EQ(author.accept(), "");
  EXPECT_EQ(author.values->atGet("FONT"), "Times");
  EXPECT_EQ(author.values->atGet("NAME"), "elsewhere");

  EXPECT_TRUE(author.box("SIZE").user_type("8"));
  author.component->call("Discard");
  EXPECT_EQ(author.box("SIZE").text(), "7");
  EXPECT_EQ(author.box("NAME").text(), "elsewhere");
  EXPECT_EQ(author.listener->edits, 8) << "discarding is no edit";
}

TEST(CustomizerControl, KeepsWhatItCannotShow) {
  struct Case {
    const char* name;
    std::string_view lines, value, shown;
  };
  const Case cases[] = {
      {"no such choice", "choice|n=Note", "banner", "ComboBox A [A] banner (not in this list)"},
      {"an empty value", "choice|n=Note", "", "ComboBox A [A] "},
      {"no such code", "lookup|PIE", "9", "ComboBox A [A] 9 (not in this list)"},
      {"neither on nor off", "check", "true", "CheckBox A [A] 2"},
      {"an empty value shows as off", "check|Yes;No", "", "CheckBox A [A] 0"},
      {"no number", "number|0..9", "many", "TextBox A [A] many"},
      {"out of range", "integer|0..9", "10", "TextBox A [A] 10"},
      {"no colour", "color", "#12", "TextBox A [A] #12"},
      {"lines in a box of one", "text", "a\nb\r\n", "TextBox A [A] a\nb\r\n"},
      {"suggestions", "combo|a;b", "c", "ComboBox A [A] c"},
  };
  for (const Case& c : cases) {
    Author author("#DEFINE A_SPEC 'A|" + std::string(c.lines) + "'\n#DEFINE B_SPEC 'B|text'\n",
                  {{"A", std::string(c.value)}, {"B", ""}});
    EXPECT_TRUE(picture(*form_of(author.component)).starts_with(std::string(c.shown) + "\n")) << c.name;
    author.box("B").user_type("edited");
    EXPECT_EQ(author.accept(), "") << c.name;
    EXPECT_EQ(listing(*author.values), "A=" + std::string(c.value) + ";B=edited;") << c.name;
  }
}

TEST(CustomizerControl, AnEditThatIsTakenBackIsNone) {
  Author author(
      "#DEFINE KIND_SPEC 'K|choice|n=Note;t=Tip'\n#DEFINE ON_SPEC 'O|check|Yes;No'\n#DEFINE T_SPEC 'T|multiline'\n",
      {{"KIND", "banner"}, {"ON", ""}, {"T", "a\r\nb"}});
  author.list("KIND").user_select(0);
  author.list("KIND").user_select(2);
  author.control<CheckBox>("ON").user_click();
  author.control<CheckBox>("ON").user_click();
  author.box("T").user_type("a\nb");  // a form layer with other line ends
  EXPECT_EQ(author.accept(), "");
  EXPECT_EQ(listing(*author.values), "KIND=banner;ON=;T=a\r\nb;");
}

TEST(CustomizerControl, RefusesValuesThatASettingDoesNotTake) {
  struct Case {
    std::string_view lines, typed, problem;
  };
  const Case cases[] = {
      {"Size:|integer|1..9", "10", "Size takes a whole number from 1 to 9, not \"10\""},
      {"Size:|integer", "1.5", "Size takes a whole number, not \"1.5\""},
      {"|number|0..", "-1", "A takes a number of at least 0, not \"-1\""},
      {"Size|number|..0", "abc", "Size takes a number of at most 0, not \"abc\""},
      {"Colour :|color", "#12", "Colour takes a colour such as #2f6fbd or teal, not \"#12\""},
      {"Colour|color", "red;x", "Colour takes a colour such as #2f6fbd or teal, not \"red;x\""},
  };
  for (const Case& c : cases) {
    Author author("#DEFINE B_SPEC 'B|text'\n#DEFINE A_SPEC '" + std::string(c.lines) + "'\n",
                  {{"A", "old"}, {"B", "old"}});
    author.box("B").user_type("new");
    author.box("A").user_type(c.typed);
    Label& problem = author.control<Label>("A_PROBLEM");
    EXPECT_EQ(problem.caption, c.problem);
    EXPECT_TRUE(problem.visible);
    EXPECT_EQ(author.accept(), "error 5: " + std::string(c.problem));
    EXPECT_EQ(listing(*author.values), "A=old;B=old;") << "nothing is stored by halves";

    author.box("A").user_type("");
    EXPECT_FALSE(problem.visible) << "no value is a value";
    EXPECT_EQ(author.accept(), "");
    EXPECT_EQ(listing(*author.values), "A=;B=new;");
  }
}

TEST(CustomizerControl, ShowsWhatThePresentValuesCallFor) {
  Author author(
      "#DEFINE KIND_SPEC 'Kind:|choice|note=Note;figure=Figure'\n"
      "#DEFINE N_DIVIDERSPEC 'Notice|unless KIND=figure'\n#DEFINE N_COMMENT 'c'\n#DEFINE TITLE_SPEC 'Title:|text'\n"
      "#DEFINE F_DIVIDERSPEC '-'\n#DEFINE IMAGE_SPEC 'Image:|text|when KIND=figure'\n"
      "#DEFINE M_MESSAGESPEC 'Hi|when MODE=x;y'\n",
      {{"KIND", "other"}, {"TITLE", ""}, {"IMAGE", ""}, {"MODE", "y"}});
  EXPECT_TRUE(author.box("TITLE").is_usable());
  EXPECT_FALSE(author.box("IMAGE").is_usable());
  EXPECT_TRUE(author.control<Label>("M_MESSAGESPEC").visible);
  author.list("KIND").user_select(1);
  EXPECT_FALSE(author.box("TITLE").is_usable());
  EXPECT_TRUE(author.box("IMAGE").user_type("a.png"));
  author.component->call("Discard");
  EXPECT_TRUE(author.box("TITLE").is_usable());
  EXPECT_FALSE(author.box("IMAGE").visible);
}

TEST(CustomizerControl, WhatDoesNotShowIsNotInTheWay) {
  Author author(
      "#DEFINE KIND_SPEC 'Kind:|choice|n=Note;f=Figure'\n#DEFINE F_DIVIDERSPEC 'Figure|when KIND=f'\n"
      "#DEFINE SIZE_SPEC 'Size:|integer'\n#DEFINE IMAGE_SPEC 'Image:|text'\n#DEFINE E_DIVIDERSPEC '-'\n"
      "#DEFINE RATIO_SPEC 'Ratio:|number|when KIND=f'\n",
      {{"KIND", "f"}, {"SIZE", "1"}, {"IMAGE", ""}, {"RATIO", "1"}});
  author.box("SIZE").user_type("large");
  author.box("RATIO").user_type("wide");
  author.box("IMAGE").user_type("a.png");
  EXPECT_EQ(author.accept(), "error 5: Size takes a whole number, not \"large\"");
  author.list("KIND").user_select(0);
  EXPECT_EQ(author.accept(), "");
  EXPECT_EQ(listing(*author.values), "KIND=n;SIZE=1;IMAGE=a.png;RATIO=1;");
  author.list("KIND").user_select(1);
  EXPECT_EQ(author.box("SIZE").text(), "large");
  EXPECT_EQ(author.accept(), "error 5: Size takes a whole number, not \"large\"");
}

TEST(CustomizerControl, MayBeBuiltAnewWhileItStores) {
  struct Reloading final : AutomationObject {
    explicit Reloading(Author& of) : author(of) {}
    Variant get(std::string_view member) override { return author.values->get(member); }
    void put(std::string_view member, const Variant& value) override { author.values->put(member, value); }
    Variant call(std::string_view member, Arguments arguments) override {
      const Variant result = author.values->call(member, arguments);
      if (member == "atPut") author.load();
      return result;
    }
    Author& author;
  };
  Author author("#DEFINE A_SPEC 'A|text'\n#DEFINE B_SPEC 'B|text'\n", {{"A", ""}, {"B", ""}});
  author.component->call_with("loadWindowSpec", {"S", "T.DAT", ObjectRef(std::make_shared<Reloading>(author))});
  author.box("A").user_type("1");
  author.box("B").user_type("2");
  EXPECT_EQ(author.accept(), "");
  EXPECT_EQ(listing(*author.values), "A=1;B=2;");
  EXPECT_EQ(author.box("B").text(), "2");
}

TEST(CustomizerControl, ABrokenLoadLeavesAnEmptyForm) {
  Author author("#DEFINE A_SPEC 'A|text'\n", {{"A", "1"}});
  const auto loading = [&](const Variant& values) {
    return brief_outcome([&] {
      return author.component->call_with("loadWindowSpec", {"S", "T.DAT", values}).to_text();
    });
  };
  EXPECT_EQ(loading(Variant()), "error 91");
  EXPECT_TRUE(author.box("A").is_usable());
  EXPECT_EQ(loading(ObjectRef(author.listener)), "error 438") << "which has no settings";
  EXPECT_EQ(picture(*form_of(author.component)), "");
  EXPECT_EQ(author.accept(), "");

  // A store that is full refuses a new key, and nothing else is lost.
  author.load();
  author.values->removeKey("A");
  for (int i = 0; i < Dictionary::capacity; ++i) author.values->atPut("K" + std::to_string(i), "v");
  author.box("A").user_type("2");
  EXPECT_TRUE(author.accept().starts_with("error 9"));
  author.values->removeKey("K0");
  EXPECT_EQ(author.accept(), "");
  EXPECT_EQ(author.values->atGet("A"), "2");
}

}  // namespace
}  // namespace plexoras
