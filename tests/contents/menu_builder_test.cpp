#include "contents/menu_builder.h"

#include <gtest/gtest.h>

#include <functional>

#include "contents/menu_document.h"
#include "literal_menu.h"
#include "template/engine_fixture.h"

namespace plexoras {
namespace {

using Key = TextBox::Key;

// A builder and the author in front of it.
struct MenuBuilderTest : testing::Test, ModalPresenter {
  FakePlatform host;
  MenuBuilder builder{host.platform};
  std::function<void()> author;

  MenuBuilderTest() {
    host.platform.presenter = this;
    builder.set_command_table(std::make_shared<Dictionary>(sample_commands()));
    builder.set_use_custom_menu(true);
  }

  void run(Form&) override { author(); }

  // What the author does between opening the dialog and leaving it.
  void open(std::function<void()> acts) {
    author = std::move(acts);
    builder.ShowModal(host.platform);
  }

  // The list, with the selected line in brackets.
  std::string list() const {
    std::string text;
    for (std::size_t i = 0; i < builder.lstMenu.entries().size(); ++i) {
      const std::string& line = builder.lstMenu.entries()[i];
      text += (static_cast<int>(i) == builder.lstMenu.list_index() ? "[" + line + "]" : line) + "|";
    }
    return text;
  }

  // The editors for the selected entry that can be used, with what they hold.
  std::string editors() const {
    std::string text = builder.txtCaption.text();
    for (const OptionButton* kind : {&builder.rbScript, &builder.rbBuiltIn, &builder.rbSeparator}) {
      if (kind->value()) text += (kind->is_usable() ? " " : " no ") + kind->name();
    }
    if (builder.txtJavaScript.is_usable()) text += " script=" + builder.txtJavaScript.text();
    if (builder.cmbProperty.is_usable()) text += " command=" + builder.cmbProperty.text();
    return text;
  }

  RunTimeError failure(const std::function<void()>& act) {
    try {
      act();
    } catch (const AutomationError& error) {
      return error.number();
    }
    return {};
  }
};

TEST_F(MenuBuilderTest, StartsWithoutAMenu) {
  MenuBuilder fresh(host.platform);
  EXPECT_EQ(fresh.menu_document(), "");
  EXPECT_FALSE(fresh.use_custom_menu());
  EXPECT_FALSE(fresh.has_command_table());
  EXPECT_TRUE(builder.has_command_table());
  author = [&] {
    EXPECT_TRUE(fresh.rbSystemMenu.value());
    EXPECT_FALSE(fresh.txtCaption.is_usable());
    fresh.rbCustomMenu.user_click();
    EXPECT_TRUE(fresh.txtCaption.is_usable());
    fresh.cmdOK.user_click();
  };
  fresh.ShowModal(host.platform);
  EXPECT_EQ(fresh.menu_document(), "<xml></>");
  EXPECT_TRUE(fresh.use_custom_menu());
}

TEST_F(MenuBuilderTest, BuildsAMenuByTyping) {
  open([this] {
    EXPECT_EQ(list(), "");
    EXPECT_EQ(editors(), " no rbScript");
    builder.txtCaption.user_type("O");
    EXPECT_EQ(list(), "[O]|");
    EXPECT_EQ(builder.txtCaption.caret, 1U);
    builder.txtCaption.user_type("Open");
    builder.txtJavaScript.user_type("open(\"x\")");
    builder.txtCaption.user_key(Key::Enter);
    EXPECT_EQ(editors(), " rbScript script=");
    builder.txtCaption.user_type("More");
    builder.txtCaption.user_key(Key::Enter);
    builder.txtCaption.user_type("Print");
    builder.cmdPromote.user_click();
    builder.rbBuiltIn.user_click();
    EXPECT_EQ(builder.cmbProperty.entries().size(), 5U);
    builder.cmbProperty.user_select(0);
    builder.txtCaption.user_key(Key::Enter);
    builder.rbSeparator.user_click();
    EXPECT_EQ(list(), "Open|More|...Print|[--]|");
    EXPECT_EQ(editors(), "-- rbSeparator");
    builder.cmdOK.user_click();
    EXPECT_FALSE(builder.is_open());
  });
  EXPECT_EQ(builder.menu_document(), R"x(<xml><ITEM type="script" param="open(&apos;x&apos;)">Open</><MENU>More)x"
                                     R"(<ITEM type="java" param="print">Print</></><SEPARATOR></></>)");

  open([this] {
    EXPECT_EQ(list(), "[Open]|More|...Print|--|");
    EXPECT_EQ(editors(), "Open rbScript script=open('x')");
    builder.lstMenu.user_select(2);
    EXPECT_EQ(editors(), "Print rbBuiltIn command=Print");
    builder.cmbProperty.user_select(4);
    builder.cmdCancel.user_click();
  });
  open([this] {
    builder.lstMenu.user_select(2);
    EXPECT_EQ(editors(), "Print rbBuiltIn command=Print") << "cancelled";
    EXPECT_EQ(builder.cmbProperty.entries().size(), 5U) << "filled anew";
  });
}

// Every operation on a menu of three, the middle line selected unless said otherwise.
TEST_F(MenuBuilderTest, EditsTheList) {
  struct Case {
    const char* name;
    int selected;
    std::function<void()> act;
    const char* list;
    const char* editors;
  };
  MenuBuilder& b = builder;
  const Case cases[] = {
      {"insert", 1, [&] { b.cmdInsert.user_click(); }, "A|[]|...B|C|", " rbScript script="},
      {"insert at the end", -1, [&] { b.cmdInsert.user_click(); }, "A|...B|C|[]|", " rbScript script="},
      {"delete leaves the submenu", 0, [&] { b.cmdDelete.user_click(); }, "[...B]|C|", "B rbBuiltIn command=Print"},
      {"delete the last", 2, [&] { b.cmdDelete.user_click(); }, "A|[...B]|", "B rbBuiltIn command=Print"},
      {"delete nothing", -1, [&] { b.cmdDelete.user_click(); }, "A|...B|C|", " no rbScript"},
      {"up", 1, [&] { b.cmdUp.user_click(); }, "[...B]|A|C|", "B rbBuiltIn command=Print"},
      {"up at the top", 0, [&] { b.cmdUp.user_click(); }, "[A]|...B|C|", "A rbScript script=f()"},
      {"down", 1, [&] { b.cmdDn.user_click(); }, "A|C|[...B]|", "B rbBuiltIn command=Print"},
      {"down at the end", 2, [&] { b.cmdDn.user_click(); }, "A|...B|[C]|", "C rbScript script="},
      {"move nothing", -1, [&] { b.cmdUp.user_click(), b.cmdDn.user_click(); }, "A|...B|C|", " no rbScript"},
      {"promote", 1, [&] { b.cmdPromote.user_click(); }, "A|[......B]|C|", "B rbBuiltIn command=Print"},
      {"denote", 1, [&] { b.cmdDenote.user_click(); }, "A|[B]|C|", "B rbBuiltIn command=Print"},
      {"shift nothing", -1, [&] { b.cmdPromote.user_click(), b.cmdDenote.user_click(); }, "A|...B|C|", " no rbScript"},
      {"caption", 1, [&] { b.txtCaption.user_type("new"); }, "A|[...new]|C|", "new rbBuiltIn command=Print"},
      {"caption of none", -1, [&] { b.txtCaption.user_type("new"); }, "A|...B|C|[new]|", "new rbScript script="},
      {"enter", 1, [&] { b.txtCaption.user_key(Key::Enter); }, "A|...B|[C]|", "C rbScript script="},
      {"enter at the end", 2, [&] { b.txtCaption.user_key(Key::Enter); }, "A|...B|C|[]|", " rbScript script="},
      {"key up", 1, [&] { b.txtCaption.user_key(Key::Up); }, "[A]|...B|C|", "A rbScript script=f()"},
      {"key up at the top", 0, [&] { b.txtCaption.user_key(Key::Up); }, "[A]|...B|C|", "A rbScript script=f()"},
      {"key down", 0, [&] { b.txtCaption.user_key(Key::Down); }, "A|[...B]|C|", "B rbBuiltIn command=Print"},
      {"key down at the end", 2, [&] { b.txtCaption.user_key(Key::Down); }, "A|...B|[C]|", "C rbScript script="},
      {"to script", 1, [&] { b.rbScript.user_click(); }, "A|[...B]|C|", "B rbScript script=Print"},
      {"to command", 0, [&] { b.rbBuiltIn.user_click(); }, "[A]|...B|C|", "A rbBuiltIn command="},
      {"to separator", 1, [&] { b.rbSeparator.user_click(); }, "A|[...--]|C|", "-- rbSeparator"},
      {"kind of none", -1, [&] { b.rbSeparator.set_value(true); }, "A|...B|C|", " no rbScript"},
  };
  const std::vector<MenuNode> three = {
      {"A", "f()", 0, MenuNode::Script}, {"B", "Print", 1, MenuNode::BuiltIn}, {"C", "", 0, MenuNode::Script}};
  for (const Case& c : cases) {
    builder.set_menu_document(write_menu_document(three, builder.command_table()));
    open([&] {
      b.txtJavaScript.user_type("f()");
      b.lstMenu.user_select(c.selected);
      c.act();
      EXPECT_EQ(list(), c.list) << c.name;
      EXPECT_EQ(editors(), c.editors) << c.name;
    });
  }
}

// Looking at an entry changes none.
TEST_F(MenuBuilderTest, ShowsEntriesAsTheyAre) {
  open([this] {
    builder.txtCaption.user_type("A");
    builder.txtCaption.user_key(Key::Enter);
    builder.rbSeparator.user_click();
    builder.txtCaption.user_type("my line");
    builder.txtCaption.user_key(Key::Enter);
    builder.rbBuiltIn.user_click();
    builder.cmbProperty.user_select(2);
    const std::vector<MenuNode> before = builder.nodes();
    for (const int line : {0, 1, 2, 1, 0, -1, 1, 2}) builder.lstMenu.user_select(line);
    EXPECT_EQ(builder.nodes(), before);
    EXPECT_EQ(list(), "A|my line|[]|");
    builder.rbScript.user_click();
    EXPECT_EQ(editors(), " rbScript script=Nothing");
    builder.txtJavaScript.user_type("Print");
    builder.rbBuiltIn.user_click();
    EXPECT_EQ(editors(), " rbBuiltIn command=Print");
  });
}

TEST_F(MenuBuilderTest, RefusesASkippedLevel) {
  open([this] {
    const auto confirm = [this] {
      builder.cmdOK.user_click();
      return !builder.is_open();
    };
    builder.txtCaption.user_type("A");
    builder.cmdPromote.user_click();
    EXPECT_FALSE(confirm()) << "the first is deeper than the top level";
    builder.cmdDenote.user_click();
    for (const char* caption : {"B", "C"}) {
      builder.txtCaption.user_key(Key::Enter);
      builder.txtCaption.user_type(caption);
    }
    builder.lstMenu.user_select(1);
    builder.cmdPromote.user_click();
    builder.cmdPromote.user_click();
    builder.lstMenu.user_select(2);
    EXPECT_FALSE(confirm());
    EXPECT_EQ(list(), "A|[......B]|C|") << "the line to mend is selected";
    EXPECT_EQ(host.messages, (std::vector<std::string>{"|Menu Item Skipped a level", "|Menu Item Skipped a level"}));
    EXPECT_EQ(builder.menu_document(), "") << "nothing is stored";
    builder.cmdDenote.user_click();
    EXPECT_TRUE(confirm()) << "levels 0, 1, 0";
  });
  EXPECT_NE(builder.menu_document(), "");
}

TEST_F(MenuBuilderTest, TakesLevelsFromMinusOneToTheLargest) {
  open([this] {
    builder.txtCaption.user_type("A");
    builder.cmdDenote.user_click();
    builder.cmdDenote.user_click();
    EXPECT_EQ(builder.nodes()[0].Level, -1);
    EXPECT_EQ(list(), "[A]|");
    builder.cmdOK.user_click();
  });
  EXPECT_EQ(builder.menu_document(), R"(<xml></><ITEM type="script" param="">A</>)");
  open([this] {
    EXPECT_EQ(list(), "") << "such an entry stands outside the menu";
    builder.cmdInsert.user_click();
    for (int i = 0; i < 32767; ++i) builder.cmdPromote_Click();
    EXPECT_EQ(failure([this] { builder.cmdPromote.user_click(); }), RunTimeError::Overflow);
    EXPECT_EQ(builder.nodes()[0].Level, 32767);
  });
}

TEST_F(MenuBuilderTest, HoldsNoMoreThanItsCapacity) {
  std::vector<MenuNode> full(menu_capacity, MenuNode{.Caption = "x"});
  const std::string document = write_menu_document(full, builder.command_table());
  builder.set_menu_document(document);
  open([this] {
    const std::vector<MenuNode> before = builder.nodes();
    EXPECT_EQ(before.size(), menu_capacity);
    builder.lstMenu.user_select(255);
    const std::function<void()> acts[] = {
        [this] { builder.cmdInsert.user_click(); },
        [this] { builder.txtCaption.user_key(Key::Enter); },
        [this] {
          builder.lstMenu.user_select(-1);
          builder.txtCaption.user_type("one more");
        },
    };
    for (const auto& act : acts) {
      EXPECT_EQ(failure(act), RunTimeError::SubscriptOutOfRange);
      EXPECT_EQ(builder.nodes(), before);
      EXPECT_EQ(builder.lstMenu.entries().size(), menu_capacity);
    }
  });

  full.emplace_back();
  builder.set_menu_document(write_menu_document(full, builder.command_table()));
  EXPECT_EQ(failure([this] { open([] { FAIL() << "shown"; }); }), RunTimeError::SubscriptOutOfRange);
  EXPECT_EQ(builder.nodes().size(), menu_capacity) << "as it was";
  EXPECT_FALSE(builder.is_open());
}

TEST_F(MenuBuilderTest, HidesTheEditorForTheChartsOwnMenu) {
  builder.set_use_custom_menu(false);
  open([this] {
    EXPECT_FALSE(builder.frmCustomMenu.visible);
    EXPECT_FALSE(builder.cmdInsert.user_click());
    builder.rbCustomMenu.user_click();
    EXPECT_TRUE(builder.cmdInsert.user_click());
    builder.rbSystemMenu.user_click();
    EXPECT_FALSE(builder.frmCustomMenu.visible || builder.frmCustomMenu.enabled);
    builder.rbCustomMenu.user_click();
    builder.cmdCancel.user_click();
  });
  EXPECT_FALSE(builder.use_custom_menu()) << "cancelled";
  open([this] { EXPECT_FALSE(builder.frmCustomMenu.visible) << "although it was shown last time"; });
  builder.set_use_custom_menu(true);
  open([this] {
    EXPECT_TRUE(builder.cmdInsert.user_click());
    builder.rbSystemMenu.user_click();
    builder.cmdOK.user_click();
  });
  EXPECT_FALSE(builder.use_custom_menu());
  EXPECT_EQ(builder.menu_document(), R"(<xml><ITEM type="script" param=""></></>)") << "kept for another time";
}

}  // namespace
}  // namespace plexoras
