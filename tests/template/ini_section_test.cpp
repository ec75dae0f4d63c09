#include "template/ini_section.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"

namespace plexoras {
namespace {

TEST(IniSection, KeepsItsVariablesWhenItsTextChanges) {
  Expansion expand;
  expand.host.files["T.DAT"] = lines("[A]\n#DEFINE X 1\na$(X)\n[B]\nb$(X)\n");
  IniSection& section = expand.section;
  section.Define("Y", "2");
  section.Read("T.DAT", "A");
  EXPECT_EQ(section.GetContents(), "a1\r\n");
  section.AppendSection("B");
  EXPECT_EQ(section.GetContents(), "a1\r\n");  // the result stays until the text is discarded
  section.Discard();
  EXPECT_EQ(section.GetContents(), "");
  section.AppendSection("B");
  section.AppendSection("A");
  section.AppendSection("NONE");
  EXPECT_EQ(section.GetContents(), "b1\r\na1\r\n");
  EXPECT_EQ(expand.variables(), "Y=2;X=1;");
  section.Read("T.DAT", "B");
  EXPECT_EQ(section.GetContents(), "b1\r\n");
}

TEST(IniSection, AppendsToTextThatItWasGiven) {
  Expansion expand;
  expand.host.files["APPLET.DAT"] = lines("[A]\nx\n");
  expand.section.SetContents("1");
  expand.section.AppendSection("A");
  expand.section.AppendSection("A");
  EXPECT_EQ(expand.section.GetContents(), "1x\r\nx\r\n");
}

TEST(IniSection, PreprocessesAgainWhileTheResultIsEmpty) {
  Expansion expand;
  EXPECT_EQ(expand("#DEFINE A x$(A)\n"), "");
  EXPECT_EQ(expand.variables(), "A=xx;");
  EXPECT_EQ(expand.variables(), "A=xxx;");
  EXPECT_EQ(expand("#DEFINE A y$(A)\n.\n"), ".\n");
  EXPECT_EQ(expand.variables(), "A=yxxx;");
}

TEST(IniSection, HandsOutItsVariablesThemselves) {
  Expansion expand;
  Dictionary given;
  given.atPut("A", "1");
  given.atPut("E", "", Dictionary::EmptyValues::Keep);
  expand.section.Define("A", "0");
  expand.section.SetVariables(given);
  expand("$(A)\n");
  expand.section.GetVariables()->atPut("B", "2");
  expand.section.GetVariables()->atPut("A", "changed");
  EXPECT_EQ(expand.section.Find("B"), "2");
  EXPECT_EQ(expand.variables(), "A=changed;B=2;");
  EXPECT_EQ(given.atGet("A"), "1");
}

TEST(IniSection, ReadsBareSectionsFromTheFileNamedLast) {
  Expansion expand;
  expand.host.files["APPLET.DAT"] = lines("[S]\n#DEFINE S applet\n");
  expand.host.files["T.DAT"] = lines("[S]\n#DEFINE S t\n[A]\n#INCLUDE S\n$(S) $([S]) $([O.DAT FROM S])\n");
  expand.host.files["O.DAT"] = lines("[S]\n#DEFINE S o$([R])\n[R]\n#DEFINE R o\n");
  EXPECT_EQ(expand("#INCLUDE S\n$(S)\n"), "applet\n");
  expand.section.Read("T.DAT", "A");
  EXPECT_EQ(expand.section.GetContents(), "t t oo\r\n");
  // Whoever includes a section keeps its own file.
  EXPECT_EQ(expand("#INCLUDE S FROM O.DAT\n$(S) $([S])\n"), "o t\n");
}

TEST(IniSection, WarnsOfAMissingFile) {
  Expansion expand;
  expand.section.Read("NO.DAT", "A");
  EXPECT_EQ(expand.section.GetContents(), "<!-- ERROR: NO TEMPLATE FILE NO.DAT-->\r\n");
  EXPECT_EQ(expand.host.messages, StringList());
  ASSERT_EQ(expand.session.diagnostics.size(), 1u);
  EXPECT_EQ(expand.session.diagnostics[0].severity, Diagnostic::Severity::Warning);
  EXPECT_TRUE(expand.diagnostics().starts_with("NO.DAT: warning: no template file \"NO.DAT\"")) << expand.diagnostics();
}

TEST(GetSectionVariables, PreprocessesTheSection) {
  FakePlatform host;
  host.files["T.DAT"] = lines("[S]\n#DEFINE A $(G)1\n#IFDEF NONE\n#DEFINE B 2\n#ENDIF\n#MACRO M $(A)\ntext\n");
  TemplateSession session(host.platform);
  Dictionary given;
  given.atPut("G", "g");
  EXPECT_EQ(listing(*GetSectionVariables(session, "T.DAT", "S")), "A=1;M=$(A);");
  EXPECT_EQ(listing(*GetSectionVariables(session, "T.DAT", "S", &given)), "G=g;A=g1;M=$(A);");
  EXPECT_EQ(GetSectionConstant(session, "T.DAT", "S", "A", &given), "g1");
  EXPECT_EQ(GetSectionConstant(session, "T.DAT", "S", "B"), "");
  EXPECT_EQ(GetSectionConstant(session, "T.DAT", "NONE", "A"), "");
  EXPECT_EQ(listing(given), "G=g;");
  EXPECT_EQ(host.reads, StringList{"T.DAT"});
}

}  // namespace
}  // namespace plexoras
