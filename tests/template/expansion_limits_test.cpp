#include <gtest/gtest.h>

#include "engine_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

// The numbers of the errors found, each with a blank.
std::string errors(const Expansion& expand) {
  std::string text;
  for (const Diagnostic& found : expand.session.diagnostics)
    text += std::to_string(static_cast<int>(found.number)) + " ";
  return text;
}

TEST(ExpansionLimits, EndWhatRunsAway) {
  struct Case {
    const char* name;
    std::string_view file, source, error;
  };
  const Case cases[] = {
      {"a section that includes itself", "[S]\na\n#INCLUDE S\nb\n", "#INCLUDE S\n", "28 "},
      {"as its last line", "[S]\na\n#INCLUDE S\n", "#INCLUDE S\n", "14 "},
      {"as its only line", "[S]\n#INCLUDE S\n", "#INCLUDE S\n", "14 "},
      {"a macro that makes its own call", "", "#DEFINE H #\n#MACRO M $(H)M\n#M\n", "14 "},
      {"a macro that calls itself", "", "#MACRO M x#(M)\n#M\n", "28 "},
      {"inline", "", "#MACRO M x#(M)\na#(M)\n", "28 "},
      {"a value that holds itself", "", "#MACRO A x$(A)\n$(A)\n", "28 "},
      {"two values that refer to each other", "", "#MACRO A $(B)\n#MACRO B $(A)\n$(A)\n", "28 "},
      {"a name that holds itself", "", "#MACRO A $($(A))\n$($(A))\n", "28 "},
      {"a value that doubles", "", "#MACRO A $(A)$(A)\n$(A)\n", "14 "},
      {"values that double", "", "#MACRO M #(N)#(N)\n#MACRO N #(M)#(M)\na#(M)\n", "28 "},
      {"a section that reads itself", "[S]\n#DEFINE S $([S])\n", "$([S])\n", "28 "},
      {"twice", "[S]\n#DEFINE S $([S])$([S])\n", "$([S])\n", "28 "},
      {"in a line of its own", "[S]\n$([S])\n$([S])\n", "a$([S])\n", "28 "},
      {"a bracketed section that includes itself", "[S]\n#INCLUDE S\nx\n", "a$([S])\nb\n", "28 "},
      {"a bracketed section with a value that holds itself", "[S]\n#MACRO A x$(A)\n$(A)\n", "a$([S])\nb\n", "28 "},
      {"as a condition", "[S]\n#IFDEF [S]\nx\n", "#IFDEF [S]\na\n#ELSE\nb\n", "28 "},
  };
  for (const Case& c : cases) {
    Expansion expand;
    expand.host.files["APPLET.DAT"] = lines(std::string(c.file) + "[BAD]\n#DEFINE BAD a\n#DEFINE BAD\n");
    EXPECT_EQ(expand(c.source), "") << c.name;
    EXPECT_EQ(expand.host.messages.size(), 1u) << c.name;
    EXPECT_EQ(errors(expand), c.error) << c.name;
    // The next request starts afresh.
    EXPECT_EQ(expand("$([BAD])\n"), "a\n") << c.name;
  }
}

TEST(ExpansionLimits, EndWhatRunsAwayOutsideARun) {
  Expansion expand;
  expand.host.files["APPLET.DAT"] = lines("[S]\n#DEFINE S $([S])\n[ONE]\n#DEFINE ONE 1\n");
  EXPECT_EQ(expand.section.Find("[S]"), "");
  EXPECT_EQ(expand.host.messages.size(), 1u);

  // The sections that one expansion reads share its limit.
  Expansion limited({.text_bytes = 1000});
  limited.host.files["APPLET.DAT"] = lines("[S]\n#DEFINE S " + std::string(1000, 'x') + "\n");
  Dictionary variables;
  const std::string file_name = "APPLET.DAT";
  References references(limited.session, variables, file_name);
  EXPECT_EQ(brief_outcome([&] { return references.SubstituteLine(repeated("$([S])", 10)); }), std::string(10000, 'x'));
  EXPECT_EQ(brief_outcome([&] { return references.SubstituteLine(repeated("$([S])", 2000)); }), "error 14");
}

TEST(ExpansionLimits, AllowWhatComesToAnEnd) {
  const std::string small = "a line of a small section\n";
  struct Case {
    const char* name;
    std::string file, source, result;
  };
  const Case cases[] = {
      {"128 conditions", "", repeated("#IFUNDEF X\n", 128) + "a\n", "a\n"},
      {"129 variables", "",
       [] {
         std::string text;
         for (int i = 0; i < 129; ++i) text += "#DEFINE V" + std::to_string(i) + " x\n";
         return text + "$(V0)$(V128)\n";
       }(),
       "xx\n"},
      {"a chain of 120 values", "",
       [] {
         std::string text = "#DEFINE V120 end\n";
         for (int i = 0; i < 120; ++i) {
           text += "#MACRO V" + std::to_string(i) + " $(V" + std::to_string(i + 1) + ")\n";
         }
         return text + "$(V0)\n";
       }(),
       "end\n"},
      {"inclusions 200 deep",
       [] {
         std::string text;
         for (int i = 0; i < 200; ++i) {
           text += "[S" + std::to_string(i) + "]\n#INCLUDE S" + std::to_string(i + 1) + "\nx\n";
         }
         return text;
       }(),
       "#INCLUDE S0\n", repeated("x\n", 200)},
      {"100,000 inclusions", "[S]\n" + small, repeated("#INCLUDE S\n", 100000), repeated(small, 100000)},
      {"a loop of 2,000 rounds",
       "[LOOP]\n#%INC $(I)\n#DEFINE I #(%INC $(I))\n#MACRO ?AGAIN $(H)INCLUDE LOOP\n"
       "#IFEQUAL I 2000\n#UNDEF GO\n#ENDIF\n#?AGAIN GO\n",
       "#DEFINE H #\n#DEFINE GO 1\n#DEFINE I 0\n#INCLUDE LOOP\n",
       [] {
         std::string text;
         for (int i = 1; i <= 2000; ++i) text += std::to_string(i) + "\n";
         return text;
       }()},
      {"parentheses 100,000 deep", "", "<$(" + repeated("(", 100000) + repeated(")", 100000) + ")>\n", "<>\n"},
      {"a long line of references", "", "#DEFINE A ab\n" + repeated("$(A)", 100000) + "\n",
       repeated("ab", 100000) + "\n"},
      {"a line joined 100,000 times", "", repeated("a\\\n", 100000), repeated("a", 100000) + "\n"},
  };
  for (const Case& c : cases) {
    Expansion expand;
    expand.host.files["APPLET.DAT"] = lines(c.file);
    EXPECT_TRUE(expand(c.source) == c.result) << c.name << "\n" << expand.diagnostics().substr(0, 1000);
  }
}

TEST(ExpansionLimits, EndConditionsAndVariablesAtTheirNumbers) {
  Expansion expand;
  EXPECT_EQ(expand(repeated("#IFUNDEF X\n", 129) + "a\n"), "");
  EXPECT_EQ(expand(repeated("#IFDEF X\n", 129) + "a\n"), "");
  std::string definitions;
  for (int i = 0; i < 130; ++i) definitions += "#DEFINE V" + std::to_string(i) + " x\n";
  EXPECT_EQ(expand(definitions), "");
  EXPECT_EQ(errors(expand), "9 9 9 ");
  EXPECT_EQ(expand("$(V128)$(V129)\n"), "x\n");
}

TEST(ExpansionLimits, AreSetByTheSession) {
  const auto depth_reached = [](std::size_t nesting) {
    Expansion expand({.nesting = nesting});
    expand.host.files["APPLET.DAT"] = lines("[S]\n#DEFINE I #(%INC $(I))\n#INCLUDE S\nx\n");
    expand.section.Define("I", "0");
    expand("#INCLUDE S\n");
    return expand.section.Find("I");
  };
  EXPECT_EQ(depth_reached(10), "9");
  EXPECT_EQ(depth_reached(1000), "999");

  // What is given counts 128 times on top of the limit: data is no runaway.
  Expansion expand({.text_bytes = 1000});
  expand.section.Define("DATA", std::string(100000, 'x'));
  EXPECT_EQ(expand(repeated("$(DATA)\n", 100)).size(), 10000100u);
  EXPECT_EQ(expand(repeated("$(DATA)\n", 150)), "");
  EXPECT_EQ(errors(expand), "14 ");

  // So do the files that are read on the way.
  for (const char* source : {"#INCLUDE S FROM O.DAT\n", "#DEFINE X $([O.DAT FROM S])\n"}) {
    Expansion reading({.text_bytes = 1000});
    reading.host.files["O.DAT"] = lines("[S]\n#DEFINE S " + std::string(10000, 'x') + "\n");
    reading(source);
    EXPECT_EQ(reading.contexts(), "") << source;
  }
}

}  // namespace
}  // namespace plexoras
