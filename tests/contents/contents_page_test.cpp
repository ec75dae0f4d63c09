#include "contents/contents_page.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "contents/contents_editor.h"
#include "host/outcome.h"
#include "template/customizer_control.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

/// A control with a chart that takes contents which begin with "<xml>". It tells of what pages do to it.
class FakeControl final : public AutomationObject {
public:
  explicit FakeControl(std::string& log) : log_(log) {}

  Variant get(std::string_view member) override {
    if (member == "templateFile") return template_file;
    if (member == "CustomProperties") return ObjectRef(properties);
    if (member == "getDiagram") return has_chart ? ObjectRef(chart_) : nullptr;
    no_such_member(member, "FakeControl");
  }
  void put(std::string_view member, const Variant& value) override {
    log_ += std::string(member) + "=" + value.to_text() + "; ";
  }
  Variant call(std::string_view member, Arguments) override {
    log_ += std::string(member) + " with " + listing(*properties) + " ";
    return {};
  }

  std::shared_ptr<Dictionary> properties = std::make_shared<Dictionary>();
  std::string template_file = "T.DAT";
  bool has_chart = true;

private:
  struct Chart final : AutomationObject {
    Variant get(std::string_view member) override { no_such_member(member, "Chart"); }
    void put(std::string_view member, const Variant&) override { no_such_member(member, "Chart"); }
    Variant call(std::string_view, Arguments arguments) override { return arguments[0].to_text().starts_with("<xml>"); }
  };

  std::string& log_;
  std::shared_ptr<Chart> chart_ = std::make_shared<Chart>();
};

/// A component with a form and what every component of the page has, unless it is to fail there.
class Editor final : public HostedForm {
public:
  Variant get(std::string_view member) override { no_such_member(member, "Editor"); }
  void put(std::string_view, const Variant&) override {}
  Variant call(std::string_view member, Arguments) override {
    if (fails_with == RunTimeError::NoSuchMember) no_such_member(member, "Editor");
    if (fails_with) throw AutomationError(*fails_with);
    return {};
  }
  std::optional<RunTimeError> fails_with;
};

/// An author at the page. The control's template lets the property EDITOR choose what stands on it.
struct ContentsPageTest : testing::Test, ModalPresenter {
  ContentsPageTest() {
    host.platform.presenter = this;
    host.files["T.DAT"] =
        "[DSPROGID]\n#DEFINE DSPROGID $(EDITOR)\n#IFEQUAL EDITOR simple\n#DEFINE DSPROGID [FORM]\n#ENDIF\n"
        "[FORM]\n#DEFINE Contents_SPEC 'Data:|multiline'\n#DEFINE LIMIT_SPEC 'Limit:|integer|1..9'\n";
    host.files["OTHER.DAT"] = "[DSPROGID]\n#DEFINE DSPROGID [FORM]\n[FORM]\n#DEFINE NAME_SPEC 'Name:|text'\n";
    register_template_forms(host.components, templates);
    register_contents_forms(host.components, session);
  }

  void run(Form&) override { author(); }

  std::shared_ptr<FakeControl> control(std::string_view editor, std::string_view contents) {
    auto made = std::make_shared<FakeControl>(log);
    made->properties->atPut("EDITOR", editor);
    made->properties->atPut("Contents", contents);
    return made;
  }

  // What the author can use: each control of the page, and those in it.
  std::string shown() const {
    std::string text;
    for (const auto& control : page.controls()) {
      if (!control->is_usable()) continue;
      text += control->name() + "(";
      if (const auto* place = dynamic_cast<FormHost*>(control.get())) {
        for (const auto& inner : place->hosted().controls()) text += inner->is_usable() ? " " + inner->name() : "";
      }
      text += " )";
    }
    return text;
  }

  template <class Control>
  Control& on_page(std::string_view name) {
    return dynamic_cast<Control&>(*page.find(name));
  }

  FakePlatform host;
  TemplateSession templates{host.platform};
  ContentsSession session{host.platform};
  std::string log;
  std::function<void()> author;
  Contents page{templates};
};

constexpr std::string_view editor = "PlexorasDTC.DsContentsComponent";

TEST_F(ContentsPageTest, TheTemplateChoosesWhatStandsOnThePage) {
  struct Plain final : AutomationObject {
    Variant get(std::string_view member) override { no_such_member(member, "Plain"); }
    void put(std::string_view member, const Variant&) override { no_such_member(member, "Plain"); }
    Variant call(std::string_view member, Arguments) override { no_such_member(member, "Plain"); }
  };
  host.components.add("Plain", [] { return std::make_shared<Plain>(); });

  const std::string text = "PlexorasDTCDsContentsComponent( txtContents cmdImportFile cmdTable cmdSet )";
  const std::string form = "PlexorasDTCCustomizerControl( Contents LIMIT )";
  struct Case {
    const char* name;
    std::string_view editor;
    std::string shown, error = {};
  };
  const Case cases[] = {
      {"a component", editor, text},
      {"the same again", editor, text},
      {"nothing", "", "lblNoEditor( )"},
      {"an input form", "[FORM]", form},
      {"named by the template itself", "simple", form},
      {"blanks around it", " [FORM] ", form},
      {"of another template", "[FORM]:OTHER.DAT", "PlexorasDTCCustomizerControl( NAME )"},
      {"the last character goes", "[FORM?", form},
      {"the first component once more", editor, text},
      {"an unknown one", "No.Such", "", "error 429"},
      {"one without a form", "Plain", "", "error 429"},
      {"after all that", "[FORM]", form},
  };
  for (const Case& c : cases) {
    const auto selected = control(c.editor, "<xml>1");
    EXPECT_EQ(brief_outcome([&] { return page.select({selected}), ""; }), c.error) << c.name;
    EXPECT_EQ(shown(), c.shown) << c.name;
    // Whatever it was, another control's data never get here.
    log.clear();
    page.apply();
    EXPECT_EQ(log, "FireCustomPropertyChange with " + listing(*selected->properties) + " ") << c.name;
    EXPECT_EQ(selected->properties->atGet("Contents"), "<xml>1") << c.name;
  }
  EXPECT_EQ(page.controls().size(), 3u) << "the label, and each component once";
  const Placement& place = page.find("PlexorasDTCDsContentsComponent")->placement;
  EXPECT_TRUE(place.left == 20 && place.top == 20 && !place.width && !place.height);
  EXPECT_EQ(brief_outcome([&] { return page.select({}), ""; }), "error 91");
}

TEST_F(ContentsPageTest, SaysWhatIsWrongWithTheChoice) {
  host.components.add("Editor", [] {
    auto made = std::make_shared<Editor>();
    made->fails_with = RunTimeError::NoSuchMember;
    return made;
  });
  struct Case {
    std::string_view editor, told;
  };
  const Case cases[] = {
      {"", "The template of this control names nothing to edit contents with."},
      {"[NONE]", "There is no section \"NONE\" in T.DAT, which DSPROGID of T.DAT names."},
      {"[FORM]:NONE.DAT", "There is no section \"FORM\" in NONE.DAT, which DSPROGID of T.DAT names."},
      {"[", "error 5: DSPROGID of T.DAT is \"[\", which names no form; write [SECTION] or [SECTION]:FILE"},
      {"[]", "error 5: DSPROGID of T.DAT is \"[]\", which names no form; write [SECTION] or [SECTION]:FILE"},
      {"[FORM]:", "error 5: DSPROGID of T.DAT is \"[FORM]:\", which names no form; write [SECTION] or [SECTION]:FILE"},
      {"Editor",
       "error 429: DSPROGID of T.DAT names \"Editor\", which cannot edit contents: "
       "Object doesn't support this property or method: \"Discard\""},
  };
  for (const Case& c : cases) {
    page.select({control(editor, "<xml>1")});
    const std::string told = outcome([&] {
      page.select({control(c.editor, "<xml>1")});
      return page.lblNoEditor.visible ? page.lblNoEditor.caption : "";
    });
    EXPECT_EQ(told, c.told);
    EXPECT_FALSE(page.find("PlexorasDTCDsContentsComponent")->visible) << c.editor;
  }
}

TEST_F(ContentsPageTest, AComponentMayRefuseToDiscardWhenItIsReplaced) {
  const auto refusing = std::make_shared<Editor>();
  host.components.add("Editor", [&] { return refusing; });
  page.select({control("Editor", "")});
  refusing->fails_with = RunTimeError::InvalidCall;
  page.select({control(editor, "<xml>1")});
  EXPECT_EQ(on_page<TextBox>("txtContents").text(), "<xml>1");

  refusing->fails_with.reset();
  page.select({control("Editor", "")});
  refusing->fails_with = RunTimeError::InvalidCall;
  EXPECT_EQ(brief_outcome([&] { return page.select({control("Editor", "")}), ""; }), "error 5") << "it would stay";
  EXPECT_EQ(shown(), "");
}

TEST_F(ContentsPageTest, TellsTheControlOfWhatWasStoredBeforeARefusal) {
  const auto selected = control(editor, "");
  page.select({selected});
  while (selected->properties->Count() < Dictionary::capacity - 1) {
    selected->properties->atPut("K" + std::to_string(selected->properties->Count()), "v");
  }
  page.setValue("TAKEN", "1");
  page.setValue("REFUSED", "2");
  page.Changed = true;
  EXPECT_EQ(brief_outcome([&] { return page.apply(), ""; }), "error 9");
  EXPECT_EQ(log, "FireCustomPropertyChange with " + listing(*selected->properties) + " ");
  EXPECT_EQ(selected->properties->atGet("TAKEN"), "1");
  EXPECT_TRUE(page.Changed);

  log.clear();
  page.select({selected});
  page.setValue("REFUSED", "2");
  EXPECT_EQ(brief_outcome([&] { return page.apply(), ""; }), "error 9");
  EXPECT_EQ(log, "") << "nothing has changed";
}

TEST_F(ContentsPageTest, MayGoBeforeItsForm) {
  const ObjectRef form = host.components.create(CustomizerControl::identifier);
  host.components.add(std::string(CustomizerControl::identifier), [&form] { return form; });
  const auto selected = control("[FORM]", "old");
  ObjectRef former_host;
  {
    Contents short_lived(templates);
    short_lived.select({selected});
    dynamic_cast<TextBox&>(*short_lived.find("Contents")).user_type("new");
    former_host = form->get("host").to_object();
  }
  EXPECT_TRUE(form_of(form)->controls().empty());
  EXPECT_EQ(outcome([&] { return form->call("Accept").to_text(); }), "");
  EXPECT_EQ(outcome([&] { return former_host->call_with("GetValue", {"Contents"}).to_text(); }),
            "error 91: The property page has gone");
}

TEST_F(ContentsPageTest, StoresWhatTheBoxShowsByteForByte) {
  const std::string_view texts[] = {
      "<xml>R&amp;D &lt;new&gt;</>", "<xml>&amp;amp;</>", "&", "&&amp;;amp;", "", "a\r\nb"};
  for (const std::string_view before : texts) {
    for (const std::string_view after : texts) {
      const auto selected = control(editor, before);
      page.select({selected});
      TextBox& box = on_page<TextBox>("txtContents");
      EXPECT_EQ(box.text(), before);
      EXPECT_FALSE(page.Changed);
      box.user_type(after);
      EXPECT_EQ(page.Changed, before != after);
      EXPECT_EQ(selected->properties->atGet("Contents"), before) << "not yet applied";
      page.apply();
      EXPECT_EQ(selected->properties->atGet("Contents"), after);
      EXPECT_FALSE(page.Changed);
    }
  }
}

TEST_F(ContentsPageTest, KeepsAValueInTransitUntilItIsApplied) {
  const auto selected = control(editor, "a&lt;b");
  page.select({selected});
  EXPECT_EQ(page.GetValue("Contents"), "a&amp;lt;b");
  page.setValue("NOTE", "R&amp;D");
  page.setValue("EDITOR", "");
  EXPECT_EQ(page.GetValue("NOTE") + "|" + page.GetValue("EDITOR"), "R&amp;D|");
  EXPECT_EQ(selected->properties->atGet("NOTE"), "");
  page.apply();
  EXPECT_EQ(log, "FireCustomPropertyChange with EDITOR=;Contents=a&lt;b;NOTE=R&D; ");
  page.setValue("NOTE", "dropped");
  page.select({selected});
  EXPECT_EQ(page.GetValue("NOTE"), "R&amp;D");
}

TEST_F(ContentsPageTest, AnotherControlDropsWhatWasNotApplied) {
  const auto first = control(editor, "<xml>1"), second = control(editor, "<xml>2");
  page.select({first, second});
  TextBox& box = on_page<TextBox>("txtContents");
  box.user_type("<xml>edited");
  page.select({second, first});
  EXPECT_EQ(&on_page<TextBox>("txtContents"), &box) << "the component stays";
  EXPECT_EQ(box.text(), "<xml>2");
  page.apply();
  EXPECT_EQ(first->properties->atGet("Contents"), "<xml>1");

  // A control that cannot be read gets nothing of the one before it.
  const std::shared_ptr<Dictionary> unreadable = std::exchange(first->properties, nullptr);
  EXPECT_EQ(brief_outcome([&] { return page.select({first}), ""; }), "error 91");
  EXPECT_EQ(shown(), "");
  first->properties = unreadable;
  page.apply();
  EXPECT_EQ(first->properties->atGet("Contents"), "<xml>1");
}

TEST_F(ContentsPageTest, SetShowsTheTextInTheChartAndStoresNothing) {
  const auto selected = control(editor, "<xml>1");
  page.select({selected});
  on_page<TextBox>("txtContents").user_type("<xml>R&amp;D");
  on_page<Button>("cmdSet").user_click();
  EXPECT_EQ(log, "XmlContents=<xml>R&amp;D; ");
  on_page<TextBox>("txtContents").user_type("R&D");
  on_page<Button>("cmdSet").user_click();
  EXPECT_EQ(log, "XmlContents=<xml>R&amp;D; ");
  EXPECT_EQ(host.messages, std::vector<std::string>{"|Cannot show malformatted XML"});
  EXPECT_EQ(selected->properties->atGet("Contents"), "<xml>1");
  selected->has_chart = false;
  EXPECT_EQ(outcome([&] { return on_page<Button>("cmdSet").user_click(), ""; }),
            "error 91: The control shows no chart in which contents could be set");
}

TEST_F(ContentsPageTest, AnInputFormEditsTheProperties) {
  const auto first = control("[FORM]", "R&D"), second = control("[FORM]", "&amp;");
  page.select({first});
  EXPECT_EQ(on_page<TextBox>("Contents").text(), "R&D");
  page.select({second});
  EXPECT_EQ(on_page<TextBox>("Contents").text(), "&amp;");
  on_page<TextBox>("Contents").user_type("&lt;&amp;");
  on_page<TextBox>("LIMIT").user_type("10");
  EXPECT_TRUE(page.Changed);
  EXPECT_EQ(brief_outcome([&] { return page.apply(), ""; }), "error 5");
  EXPECT_EQ(log, "") << "nothing was stored";
  on_page<TextBox>("LIMIT").user_type("9");
  page.apply();
  EXPECT_EQ(log, "FireCustomPropertyChange with EDITOR=[FORM];Contents=&lt;&amp;;LIMIT=9; ");
  EXPECT_EQ(first->properties->atGet("Contents"), "R&D");

  second->template_file = "OTHER.DAT";
  page.select({second});
  EXPECT_EQ(shown(), "PlexorasDTCCustomizerControl( NAME )") << "the same name means another form there";
}

TEST_F(ContentsPageTest, ImportsAFileIntoTheBox) {
  host.files["a.csv"] = "R&D <new>,1\n";
  page.select({control(editor, "<xml>1")});
  TextBox& box = on_page<TextBox>("txtContents");
  ImportDialog& dialog = session.import_dialog;
  const auto open = [&](std::function<void()> acts) {
    author = std::move(acts);
    on_page<Button>("cmdImportFile").user_click();
  };
  open([&] { dialog.cmdCancel.user_click(); });
  EXPECT_EQ(box.text(), "<xml>1");
  EXPECT_FALSE(page.Changed);
  open([&] {
    dialog.txtFileName.user_type("a.csv");
    dialog.ckFirstCol.user_click();
    dialog.cmdImport.user_click();
  });
  EXPECT_EQ(box.text(), "<xml><rows><row>R&amp;D &lt;new&gt;</></><cols></><data><value>1</></></xml>");
  EXPECT_TRUE(page.Changed);
  EXPECT_EQ(dialog.result(), "");
}

TEST(ContentsEditor, SpeaksToItsHostAlone) {
  FakePlatform host;
  ContentsSession session(host.platform);
  const auto component = std::make_shared<DsContentsComponent>(session);
  component->txtContents.user_type("nobody hears of it");
  for (const std::string_view member : {"Accept", "Discard"}) {
    EXPECT_EQ(brief_outcome([&] { return component->call(member), ""; }), "error 91");
  }

  struct Host final : AutomationObject {
    Variant get(std::string_view member) override { no_such_member(member, "Host"); }
    void put(std::string_view member, const Variant&) override { no_such_member(member, "Host"); }
    Variant call(std::string_view member, Arguments arguments) override {
      log += member;
      for (const Variant& argument : arguments) log += " " + argument.to_text();
      log += "; ";
      return "a&amp;lt;b";
    }
    std::string log;
  };
  const auto listener = std::make_shared<Host>();
  {
    Form window;
    window.add<FormHost>("editor", form_of(component));
    component->put("host", ObjectRef(listener));
    component->call("Discard");
    EXPECT_EQ(component->txtContents.text(), "a&lt;b");
    component->txtContents.user_type("&amp;");
    component->cmdSet.user_click();
    component->call("Accept");
    EXPECT_EQ(listener->log,
              "GetValue Contents; RaiseChangedEvent; RaiseChangedEvent; SetButtonPressed &amp;; "
              "setValue Contents &amp;amp;; ");
  }
  component->txtContents.user_type("its place has gone");
  EXPECT_EQ(listener.use_count(), 1) << "and its host with it";
}

}  // namespace
}  // namespace plexoras
