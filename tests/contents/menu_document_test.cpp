#include "contents/menu_document.h"

#include <gtest/gtest.h>

#include <random>

#include "fixtures/fixtures.h"
#include "literal_menu.h"

namespace plexoras {

static void PrintTo(const MenuNode& node, std::ostream* out) {
  *out << '(' << node.Level << ' ' << node.Kind << " \"" << node.Caption << "\" \"" << node.Param << "\")";
}

namespace {

using Nodes = std::vector<MenuNode>;

constexpr std::int16_t script = MenuNode::Script, separator = MenuNode::Separator, built_in = MenuNode::BuiltIn;

TEST(MenuDocument, WritesAndReadsBack) {
  const Dictionary commands = sample_commands();
  struct Case {
    const char* name;
    Nodes nodes;
    std::string_view document;
    std::optional<Nodes> back = {};  // where it is not the same list
  };
  const Case cases[] = {
      {"an item, a submenu and a separator",
       {{"A", "f()", 0, script}, {"B", "", 0, script}, {"C", "Print", 1, built_in}, {"--", "", 0, separator}},
       R"x(<xml><ITEM type="script" param="f()">A</><MENU>B<ITEM type="java" param="print">C</></><SEPARATOR></></>)x"},
      {"escapes",
       {{"a<b> & \"c\" 'd'", "if (a < 'b' && c > d) e(\"f\")", 0, script}},
       R"x(<xml><ITEM type="script" param="if (a &lt; &apos;b&apos; &amp;&amp; c &gt; d) e(&apos;f&apos;)">)x"
       R"(a&lt;b&gt; &amp; &quot;c&quot; &apos;d&apos;</></>)",
       {{{"a<b> & \"c\" 'd'", "if (a < 'b' && c > d) e('f')", 0, script}}}},
      {"tabs stay escaped",
       {{"a\tb", "\t", 0, script}},
       R"(<xml><ITEM type="script" param="&tab;">a&tab;b</></>)",
       {{{"a&tab;b", "&tab;", 0, script}}}},
      {"an escape is undone once",
       {{"&lt;", "&amp;", 0, script}},
       R"(<xml><ITEM type="script" param="&amp;amp;">&amp;lt;</></>)"},
      {"the script of a submenu is lost",
       {{"A", "f()", 0, script}, {"B", "", 1, script}},
       R"(<xml><MENU>A<ITEM type="script" param="">B</></></>)",
       {{{"A", "", 0, script}, {"B", "", 1, script}}}},
      {"a separator loses its caption, also as a submenu",
       {{"A", "x", 0, separator}, {"B", "", 1, separator}},
       "<xml><MENU><SEPARATOR></></></>",
       {{{"", "", 0, script}, {"--", "", 1, separator}}}},
      {"the first colon divides", {{"A", "Link", 0, built_in}}, R"(<xml><ITEM type="url" param="http://x/">A</></>)"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(write_menu_document(c.nodes, commands), c.document) << c.name;
    EXPECT_EQ(read_menu_document(c.document, commands), c.back.value_or(c.nodes)) << c.name;
  }
}

// "level type|caption|param"; a built-in item's type and param are those of its command.
std::string shown(const MenuNode& node, const Dictionary& commands) {
  std::string type = node.Kind == separator ? "separator" : "script";
  std::string param = node.Param;
  if (node.Kind == built_in) {
    const std::string command = commands.atGet(node.Param);
    type = command.substr(0, command.find(':'));
    param = command.substr(type.size() + 1);
  }
  return std::to_string(node.Level) + " " + type + "|" + node.Caption + "|" + param;
}

TEST(MenuDocument, ReadsAsFarAsTheTagsGo) {
  const Dictionary commands = sample_commands();
  for (const nlohmann::json& c : fixtures("menu.json")) {
    std::vector<std::string> menu;
    for (const MenuNode& node : read_menu_document(text_of(c, "document"), commands)) {
      menu.push_back(shown(node, commands));
    }
    EXPECT_EQ(menu, c["menu"].get<std::vector<std::string>>()) << c["name"];
  }
}

RunTimeError refusal(const std::string& document) {
  try {
    read_menu_document(document, Dictionary());
  } catch (const AutomationError& error) {
    return error.number();
  }
  return {};
}

TEST(MenuDocument, RefusesWhatAMenuCannotHold) {
  const Dictionary commands;
  const std::string full = write_menu_document(Nodes(menu_capacity), commands);
  EXPECT_EQ(read_menu_document(full, commands).size(), menu_capacity);
  EXPECT_EQ(refusal(write_menu_document(Nodes(menu_capacity + 1), commands)), RunTimeError::SubscriptOutOfRange);

  std::string ends = "<xml>";
  for (int i = 0; i < 32768; ++i) ends += "</>";
  EXPECT_EQ(read_menu_document(ends + "<A>b<", commands).at(0).Level, -32768);
  EXPECT_EQ(refusal(ends + "</><A>b<"), RunTimeError::Overflow);
}

// Any list and any heap of pieces gives what the plain version gives.
TEST(MenuDocument, AgreesWithThePlainVersion) {
  const Dictionary commands = sample_commands();
  std::mt19937 random(20);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  const char* const texts[] = {"", "A", "<", ">", "&", "\"", "'", "\t", "&lt;", "&tab", "Print", "Bare", "no such key"};
  const char* const pieces[] = {
      "<xml>",    "</>", "<MENU>", "<SEPARATOR>", "<ITEM ", "type=\"script\"", "type=\"java\" ", "param=\"print\"",
      "param=\"", "\"",  "<",      ">",           "/",      "&amp;",           "&quot",          "&tab;",
      "a",        ""};
  for (int round = 0; round < 20000; ++round) {
    Nodes nodes(below(7));
    for (MenuNode& node : nodes) {
      node = {std::string(texts[below(std::size(texts))]) + texts[below(std::size(texts))],
              texts[below(std::size(texts))], static_cast<std::int16_t>(static_cast<int>(below(6)) - 2),
              static_cast<std::int16_t>(below(3))};
    }
    const std::string document = write_menu_document(nodes, commands);
    ASSERT_EQ(document, LiteralMenu::write(nodes, commands)) << testing::PrintToString(nodes);
    ASSERT_EQ(read_menu_document(document, commands), LiteralMenu::read(document, commands)) << document;

    std::string heap = below(4) == 0 ? "" : "<xml>";
    for (std::size_t i = below(20); i > 0; --i) heap += pieces[below(std::size(pieces))];
    ASSERT_EQ(read_menu_document(heap, commands), LiteralMenu::read(heap, commands)) << heap;
  }
}

}  // namespace
}  // namespace plexoras
