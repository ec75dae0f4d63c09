#include "applet/format_xml.h"

#include <gtest/gtest.h>

#include <string>

#include "refusal.h"

namespace plexoras {
namespace {

TEST(FormatXml, RemovesLineBreaksBetweenElementsOnly) {
  struct Case {
    const char* name;
    std::string_view xml, formatted;
  };
  const Case cases[] = {
      {"nothing", "", ""},
      {"one empty element", "<xml/>", "<xml/>"},
      {"between and around tags", "\r\n<xml>\n<a>1</>\r\n\r\n<b/>\r</xml>\n", "<xml><a>1</><b/></xml>"},
      {"blanks are text", "<xml>\n <a/>\n</>", "<xml>\n <a/></>"},
      {"in a text", "<xml>\n<a>x\ny\n</>\n</>", "<xml><a>x\ny\n</></>"},
      {"the whole text of an element", "<xml>\n<a>\n</>\n</>", "<xml><a>\n</></>"},
      {"attributes of a menu", "<xml>\n<ITEM type=\"script\" param='f(\"x\")'>A</>\n<SEPARATOR></></>",
       "<xml><ITEM type=\"script\" param='f(\"x\")'>A</><SEPARATOR></></>"},
      {"entities and named ends stay as they are", "<xml><a>&lt;&tab;</a></xml>", "<xml><a>&lt;&tab;</a></xml>"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(format_xml(c.xml, FormatFor::Text), c.formatted) << c.name;
    EXPECT_EQ(format_xml(c.formatted, FormatFor::Text), c.formatted) << c.name << ", again";
  }
}

TEST(FormatXml, EscapesForAnAttribute) {
  EXPECT_EQ(format_xml("", FormatFor::Attribute), "");
  EXPECT_EQ(format_xml("<xml>\n<a b=\"c\">x\r\n\t'&amp;' $(A) \\#(B)</>\n</>", FormatFor::Attribute),
            "&lt;xml&gt;&lt;a b=&quot;c&quot;&gt;x&#13;&#10;&#9;&#39;&amp;amp;&#39; &#36;(A) \\&#35;(B)&lt;/&gt;"
            "&lt;/&gt;");
}

TEST(EscapeForAttribute, LeavesNoReferenceToATemplateEngine) {
  struct Case {
    std::string_view text, escaped;
  };
  const Case cases[] = {
      {"$1 #fff", "$1 #fff"},     {"$(", "&#36;("}, {"#(", "&#35;("}, {"$$(", "$&#36;("},
      {"#$(#(", "#&#36;(&#35;("}, {"a$", "a&#36;"}, {"a#", "a&#35;"}, {"$", "&#36;"},
  };
  for (const Case& c : cases) EXPECT_EQ(escape_for_attribute(c.text), c.escaped) << c.text;
}

TEST(FormatXml, RefusesWhatIsNotWellFormed) {
  struct Case {
    std::string_view xml, message;
  };
  const Case cases[] = {
      {"\n", "5 2:1: the document holds no element"},
      {"<a>\n<b></c></a>", "5 2:4: end tag \"c\" stands where \"b\" is open"},
      {"<a></a", "5 1:4: an end tag must read \"</>\" or \"</name>\""},
      {"<a b>", "5 1:5: attribute \"b\" must have a value in quotes"},
      {"<a b=\"1>", "5 1:4: the value of attribute \"b\" never ends"},
      {"<a b=\"<\"/>", "5 1:7: write \"&lt;\" for \"<\" in an attribute"},
      {"<a b=\"1\"c=\"2\"/>", "5 1:9: a blank must stand before an attribute"},
      {"<a b=\"&x;\"/>",
       "5 1:7: \"&\" begins none of &apos; &quot; &amp; &lt; &gt; &tab;; write \"&amp;\" for the character itself"},
      {"<1/>", "5 1:1: \"<\" must begin a tag here; write \"&lt;\" for the character itself"},
      {"<", "5 1:1: \"<\" must begin a tag here; write \"&lt;\" for the character itself"},
      {"<a", "5 1:3: tag \"a\" must end in \">\" or \"/>\" here"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(refusal([&] { format_xml(c.xml, FormatFor::Attribute); }), c.message) << c.xml;
  }
}

TEST(FormatXml, TakesAnyDepth) {
  const std::size_t depth = 1'000'000;
  const std::string nested = repeated("<a>\n", depth) + "x" + repeated("</>\n", depth);
  EXPECT_EQ(format_xml(nested, FormatFor::Text), repeated("<a>", depth - 1) + "<a>\nx" + repeated("</>", depth));
  EXPECT_EQ(refusal([&] { format_xml(repeated("<a>", depth), FormatFor::Text); }),
            "5 1:2999998: <a> is never closed; close it with \"</>\"");
}

}  // namespace
}  // namespace plexoras
