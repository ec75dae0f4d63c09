#include "template/variables_viewer.h"

#include <gtest/gtest.h>

#include <functional>

#include "engine_fixture.h"

namespace plexoras {
namespace {

// A template that runs before an author, who acts on the viewer each time it opens.
struct Author : ModalPresenter {
  Author() {
    expansion.host.platform.presenter = this;
    halt_with_viewer(expansion.host.platform);
  }

  void run(Form& form) override {
    auto& viewer = dynamic_cast<VariablesViewer&>(form);
    stops += viewer.txtCommand.text() + "|";
    act(viewer);
  }

  Expansion expansion;
  std::string stops;  // the line of each stop
  std::function<void(VariablesViewer&)> act = [](VariablesViewer& viewer) { viewer.cmbNext.user_click(); };
};

constexpr std::string_view halting =
    "before\n#MACRO BOLD <b>$(_VALUE)</b>\n#DEFINE X 1\n#HALT\n#DEFINE X 2\n  text $(X)\n#BOLD X\n#HALT\nlast\n";
constexpr std::string_view halting_result = "before\n  text 2\n<b>2</b>\nlast\n";

TEST(VariablesViewer, StopsBeforeEachFurtherLineUntilClosed) {
  Author stepping;
  EXPECT_EQ(stepping.expansion(halting), halting_result);
  EXPECT_EQ(stepping.stops, "#HALT|  text $(X)|#BOLD X|<b>2</b>|#HALT|last|");

  Author closing;
  closing.act = [](VariablesViewer& viewer) { viewer.cmdClose.user_click(); };
  EXPECT_EQ(closing.expansion(halting), halting_result);
  EXPECT_EQ(closing.stops, "#HALT|#HALT|");

  Author changing_their_mind;
  changing_their_mind.act = [&](VariablesViewer& viewer) {
    EXPECT_FALSE(viewer.step());
    (changing_their_mind.stops == "#HALT|" ? viewer.cmbNext : viewer.cmdClose).user_click();
  };
  EXPECT_EQ(changing_their_mind.expansion(halting), halting_result);
  EXPECT_EQ(changing_their_mind.stops, "#HALT|  text $(X)|#HALT|");
}

TEST(VariablesViewer, ShowsTheVariablesInTheirOrder) {
  Author author;
  author.act = [](VariablesViewer& viewer) {
    EXPECT_EQ(viewer.lstVars.entries(), (StringList{"B", "A", "EMPTY"}));
    EXPECT_EQ(viewer.txtValue.text() + viewer.txtMessage.text(), "");
    EXPECT_TRUE(viewer.lstVars.user_select(1));
    EXPECT_EQ(viewer.txtValue.text(), "two words");
    EXPECT_TRUE(viewer.lstVars.user_select(2));
    EXPECT_EQ(viewer.txtValue.text(), "");
    EXPECT_EQ(viewer.GetVariables()->atGet("B"), "1");
    EXPECT_FALSE(viewer.txtValue.user_type("3"));
    viewer.cmdClose.user_click();
  };
  EXPECT_EQ(author.expansion("#DEFINE B 1\n#DEFINE A two words\n#DEFINE EMPTY x\n#DEFINE EMPTY ''\n#HALT\n$(A)\n"),
            "two words\n");
}

TEST(VariablesViewer, TriesTextOnACopyOfTheVariables) {
  struct Case {
    const char* name;
    std::string_view typed, shown;
    std::size_t messages = 0;
  };
  const Case cases[] = {
      {"a reference", "$(X)", "1\n"},
      {"directives on several lines, whatever ends them", "#DEFINE X 5\r\n#IFEQUAL X 5\n$(X)\n#ENDIF", "5\n"},
      {"a section of the template's own file", "#INCLUDE OWN", "own 1\n"},
      {"a section of another file", "#INCLUDE PART FROM P.DAT", "part 1\n"},
      {"the halting line itself", "#HALT", ""},
      {"a break into the debugger", "#HALT VB\nx", "x\n"},
      {"a failure", "#DEFINE X", "", 1},
      {"text that never ends", "#MACRO LOOP x#(LOOP)\na#(LOOP)", "", 1},
  };
  for (const Case& c : cases) {
    Author author;
    author.expansion.host.files["P.DAT"] = "[PART]\npart $(X)\n";
    author.act = [&](VariablesViewer& viewer) {
      EXPECT_TRUE(viewer.txtCommand.user_type(c.typed));
      EXPECT_TRUE(viewer.cmbShow.user_click());
      EXPECT_EQ(readable(viewer.txtMessage.text()), c.shown) << c.name;
      EXPECT_EQ(viewer.GetVariables()->atGet("X"), "1") << c.name;
      viewer.cmdClose.user_click();
    };
    author.expansion.host.files["T.DAT"] = "[A]\n#DEFINE X 1\n#HALT\nafter $(X)\n[OWN]\nown $(X)\n";
    author.expansion.section.Read("T.DAT", "A");
    EXPECT_EQ(readable(author.expansion.section.GetContents()), "after 1\n") << c.name;
    EXPECT_EQ(author.stops, "#HALT|") << c.name;
    EXPECT_EQ(author.expansion.host.messages.size(), c.messages) << c.name;
    EXPECT_TRUE(author.expansion.session.diagnostics.empty()) << c.name;
  }
}

TEST(VariablesViewer, LeavesTheRestToTheDebuggerOrToNobody) {
  Author author;
  int breaks = 0;
  author.expansion.host.platform.debugger_break = [&breaks] { ++breaks; };
  EXPECT_EQ(author.expansion("#HALT VB\na\n"), "a\n");
  EXPECT_EQ(breaks, 1);
  EXPECT_EQ(author.stops, "");

  author.expansion.host.platform.presenter = nullptr;
  EXPECT_EQ(author.expansion("#HALT\na\n"), "a\n");
}

}  // namespace
}  // namespace plexoras
