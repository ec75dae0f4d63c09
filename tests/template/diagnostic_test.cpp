#include "template/diagnostic.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"

namespace plexoras {
namespace {

TEST(Diagnostic, SaysWhatIsWrongAndWhere) {
  struct Case {
    const char* name;
    std::string_view file, expected;
  };
  const Case cases[] = {
      {"a directive", "[A]\ntext\n  #DEFINE X\n",
       "T.DAT:3:3: error: the directive needs more: write #DEFINE NAME value (error 5)\n"
       "    #DEFINE X\n"
       "    ^\n"},
      {"a reference in a line", "[A]\n$(X) ab $(\\X,a)\n",
       "T.DAT:2:9: error: a replacement needs three parts, $(\\NAME,from,to); \"\\X,a\" has 2 (error 9)\n"
       "  $(X) ab $(\\X,a)\n"
       "          ^\n"},
      {"behind tabs", "[A]\n\ta\t$([)\n",
       "T.DAT:2:4: error: \"[\" alone names no section; write [NAME] (error 5)\n"
       "  \ta\t$([)\n"
       "  \t \t^\n"},
      {"in a line that goes on", "[A]\nab\\\ncd\\\n\te$([)\\\nf\n",
       "T.DAT:4:3: error: \"[\" alone names no section; write [NAME] (error 5)\n"
       "  \te$([)\\\n"
       "  \t ^\n"},
      {"in a line that goes on behind a comment", "[A]\na\\\n;c\n;c\nb$([)\n",
       "T.DAT:5:2: error: \"[\" alone names no section; write [NAME] (error 5)\n"
       "  b$([)\n"
       "   ^\n"},
      {"behind comments and other sections", "[A]\na\n;c\n\n;c\n[B]\nb\n[A]\n;c\n#IFEQUAL X\n",
       "T.DAT:10:1: error: the directive needs more: write #IFEQUAL NAME value (error 5)\n"
       "  #IFEQUAL X\n"
       "  ^\n"},
      {"in an inclusion", "[A]\na\n#INCLUDE B\n[B]\n\n#INCLUDE C\nb\n[C]\n#%INC x\n",
       "T.DAT:9:1: error: %INC needs a whole number, not \"x\" (error 13)\n"
       "  #%INC x\n"
       "  ^\n"
       "T.DAT:6:1: note: included from here\n"
       "T.DAT:3:1: note: included from here\n"},
      {"in a macro's expansion", "[A]\n#MACRO M a$(_NAME)$([)\na #(M x)\n",
       "T.DAT:3:3: error: \"[\" alone names no section; write [NAME] (error 5)\n"
       "  a #(M x)\n"
       "    ^\n"
       "T.DAT:3:3: note: in the expansion of #(M)\n"},
      {"in the line that a macro made", "[A]\n#DEFINE H #\n#MACRO M $(H)DEFINE $(_NAME)\n;c\n #M x\nb\n",
       "T.DAT:5:2: error: the directive needs more: write #DEFINE NAME value (error 5)\n"
       "   #M x\n"
       "   ^\n"
       "T.DAT:5:2: note: in the expansion of #M x\n"},
      {"in lines that make each other",
       "[A]\n#DEFINE H #\n#MACRO M $(H)N $(_NAME)\n#MACRO N $(H)DEFINE $(_NAME)\n#M x\n",
       "T.DAT:5:1: error: the directive needs more: write #DEFINE NAME value (error 5)\n"
       "  #M x\n"
       "  ^\n"
       "T.DAT:5:1: note: in the expansion of #N x\n"
       "T.DAT:5:1: note: in the expansion of #M x\n"},
      {"in a bracketed reference", "[A]\na$([B])\n[B]\n#DEFINE B\n",
       "T.DAT:4:1: error: the directive needs more: write #DEFINE NAME value (error 5)\n"
       "  #DEFINE B\n"
       "  ^\n"
       "T.DAT:2:2: note: in a bracketed reference\n"},
  };
  for (const Case& c : cases) {
    Expansion expand;
    expand.host.files["T.DAT"] = c.file;
    expand.section.Read("T.DAT", "A");
    expand.section.GetContents();
    EXPECT_EQ(expand.diagnostics(), c.expected) << c.name;
  }
}

TEST(Diagnostic, KnowsTheSection) {
  Expansion expand;
  expand.host.files["T.DAT"] = "[A]\n#INCLUDE B\n[B]\n#DEFINE X\n";
  expand.section.Read("T.DAT", "A");
  expand.section.GetContents();
  ASSERT_EQ(expand.session.diagnostics.size(), 1u);
  EXPECT_EQ(expand.session.diagnostics[0].where.section, "B");
  EXPECT_EQ(expand.session.diagnostics[0].notes.at(0).where.section, "A");
}

TEST(Diagnostic, PlacesTextThatComesFromNoFile) {
  Expansion expand;
  expand.host.files["APPLET.DAT"] = "[A]\na\n#DEFINE X\n";
  expand("a\n#DEFINE X\n");
  EXPECT_EQ(expand.diagnostics(),
            "<text>:2:1: error: the directive needs more: write #DEFINE NAME value (error 5)\n  #DEFINE X\n  ^\n");

  expand.session.diagnostics.clear();
  expand.section.SetContents("a\r\n#DEFINE Y\r\n");
  expand.section.AppendSection("A");
  expand.section.GetContents();
  EXPECT_TRUE(expand.diagnostics().starts_with("<text>:2:1: error")) << expand.diagnostics();

  expand.session.diagnostics.clear();
  expand.section.SetContents("a\r\n");
  expand.section.AppendSection("A");
  expand.section.GetContents();
  EXPECT_TRUE(expand.diagnostics().starts_with("APPLET.DAT:3:1: error")) << expand.diagnostics();
}

TEST(Diagnostic, WarnsOfAMissingFileWhereItIsIncluded) {
  Expansion expand;
  expand.host.files["T.DAT"] = "[A]\na\n  #INCLUDE B FROM NO.DAT\n";
  expand.section.Read("T.DAT", "A");
  EXPECT_EQ(readable(expand.section.GetContents()), "a\n<!-- ERROR: NO TEMPLATE FILE NO.DAT-->\n");
  EXPECT_TRUE(expand.diagnostics().starts_with("T.DAT:3:3: warning: no template file \"NO.DAT\""));
}

TEST(Diagnostic, StaysReadableWhenSomethingRunsAway) {
  Expansion expand({.nesting = 20});
  expand.host.files["T.DAT"] = "[A]\n#INCLUDE A\nb\n";
  expand.section.Read("T.DAT", "A");
  expand.section.GetContents();
  EXPECT_EQ(expand.diagnostics(),
            "T.DAT:2:1: error: Out of stack space: references, macro calls or inclusions nest more than 20 deep; does "
            "something refer to itself? (error 28)\n"
            "  #INCLUDE A\n"
            "  ^\n"
            "T.DAT:2:1: note: included from here (19 times)\n");
}

TEST(Diagnostic, ShowsALongLineAroundItsColumn) {
  Diagnostic diagnostic;
  diagnostic.what = "wrong";
  diagnostic.where = {"T.DAT", "A", 1, 1001};
  diagnostic.source_line = std::string(1000, 'a') + "X" + std::string(1000, 'b');
  EXPECT_EQ(to_text(diagnostic), "T.DAT:1:1001: error: wrong\n  " + std::string(80, 'a') + "X" + std::string(79, 'b') +
                                     "\n  " + std::string(80, ' ') + "^\n");
  EXPECT_EQ(to_text(SourceLocation{"T.DAT", "", 0, 0}), "T.DAT");
}

}  // namespace
}  // namespace plexoras
