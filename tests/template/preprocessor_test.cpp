#include "template/preprocessor.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"

namespace plexoras {
namespace {

struct Case {
  const char* name;
  std::string_view source, result;
};

void fill(Expansion& expand) {
  expand.host.files["APPLET.DAT"] =
      lines("[S]\n$(X)s\n[NEXT]\n#DEFINE X next\n#INCLUDE S\n[OPEN]\n#IFDEF NONE\n[TAIL]\ntail\\\n");
  expand.host.files["O.DAT"] = lines("[S]\no\n#INCLUDE T\n[T]\nt\n");
  expand.section.Define("LONG", "1" + repeated("\r\n123456789 123456789 123456789 ", 4));
  expand.section.Define("WIDE", repeated("123456789 ", 20));
  for (const auto& [name, value] : {std::pair("X", "x"), {"COLOR", "green"}, {"LIST", "a,b"}, {"CR", "1\r2\r\n3"}}) {
    expand.section.Define(name, value);
  }
}

template <std::size_t Count>
void expect_results(const Case (&cases)[Count]) {
  for (const Case& c : cases) {
    Expansion expand;
    fill(expand);
    EXPECT_EQ(expand(c.source), c.result) << c.name;
    EXPECT_EQ(expand.contexts(), "") << c.name;
  }
}

TEST(Preprocessor, EmitsTextLines) {
  expect_results({
      {"every line gains a line break", "a\nb", "a\nb\n"},
      {"nothing", "", ""},
      {"blank lines and blanks stay", "\n  a \n", "\n  a \n"},
      {"a tab is five blanks", "\ta\t\n", "     a     \n"},
      {"a lone CR or LF ends no line", "a\rb\n", "a\rb\n"},
      {"a backslash joins", "a\\\nb\\\n\\c\n", "ab\\c\n"},
      {"blanks behind it keep it from joining", "a\\ \nb\n", "a\\ \nb\n"},
      {"the joined text is tested again", "a\\\\\n\nb\n", "ab\n"},
      {"at the end there is nothing to join", "a\\", "a\n"},
      {"nor behind the last line break", "a\\\\\n", "a\n"},
      {"a joined line can be a directive", "#DEF\\\nINE A 1\\\n2\n$(A)\n", "12\n"},
      {"a line is expanded once joined", "$(\\\nX)\n", "x\n"},
      {"a value may hold line breaks", "<$(CR)>\n", "<1\r2\n3>\n"},
      {"a semicolon is text here", ";$(X)\n", ";x\n"},
  });
}

TEST(Preprocessor, ObeysConditions) {
  expect_results({
      {"a branch not taken", "a\n#IFDEF NONE\nb\n#ELSE\nc\n#ENDIF\nd\n", "a\nc\nd\n"},
      {"a branch taken", "#IFDEF X\nb\n#ELSE\nc\n#ENDIF\nd\n", "b\nd\n"},
      {"skipped whole", "#IFDEF NONE\n#IFDEF NONE\nx\n#ELSE\nx\n#ENDIF\n#ELSE\ny\n#ENDIF\n", "y\n"},
      {"a second #ELSE takes up again", "#IFDEF X\na\n#ELSE\nb\n#ELSE\nc\n#ENDIF\n", "a\nc\n"},
      {"#ELSE below a skipped level", "#IFDEF NONE\n#IFDEF X\n#ELSE\na\n#ELSE\nb\n#ENDIF\n#ENDIF\nc\n", "c\n"},
      {"never closed", "#IFDEF NONE\na\n", ""},
      {"#ENDIF too many", "#ENDIF\na\n", "a\n"},
      {"#ELSE outside any", "a\n#ELSE\nb\n#ENDIF\nc\n", "a\n"},
      {"longer words", "#IFDEF NONE\na\n#ELSEWHERE\nb\n#ENDIFS\nc\n", "b\nc\n"},
      {"indented", "  #IFDEF NONE\na\n\t#ENDIF\nb\n", "b\n"},
      {"every opening counts while skipping",
       "#IFDEF NONE\n#IFEQUAL\n#IFEQUAL x\n#IFNEQUAL\n#IFINSIDE\n#IFUNDEF \n#ENDIF\n#ENDIF\n#ENDIF\n#ENDIF\n#ELSE\na\n",
       "a\n"},
      {"nothing else is read while skipping", "#IFDEF NONE\n#DEFINE X\n#%INC x\n$([)\n#ENDIF\n$(X)\n", "x\n"},
      {"#IFUNDEF", "#IFUNDEF NONE\na\n#ENDIF\n#IFUNDEF X\nb\n#ENDIF\n", "a\n"},
      {"names are expanded", "#DEFINE N X\n#IFDEF $(N)\na\n#ENDIF\n#IFUNDEF $(N)$(N)\nb\n", "a\nb\n"},
      {"#IFEQUAL", "#IFEQUAL X x\na\n#ENDIF\n#IFEQUAL X X\nb\n#ENDIF\n#IFEQUAL  COLOR   green  \nc\n", "a\nc\n"},
      {"#IFEQUAL strips no quotes", "#IFEQUAL X 'x'\na\n#ELSE\nb\n", "b\n"},
      {"#IFEQUAL with nothing", "#IFEQUAL NONE $(NONE)\na\n#ENDIF\n", "a\n"},
      {"#IFNEQUAL needs no blank", "#IFNEQUALX y\na\n#ENDIF\n#IFNEQUAL X x\nb\n#ENDIF\n", "a\n"},
      {"#IFINSIDE", "#IFINSIDE COLOR (red,green)\na\n#ENDIF\n#IFINSIDE COLOR (red, green)\nb\n#ENDIF\n", "a\n"},
      {"#IFINSIDE without parentheses", "#IFINSIDE COLOR green)\na\n#ENDIF\n#IFINSIDE X x\nb\n", "a\nb\n"},
      {"#IFINSIDE takes one of each", "#IFINSIDE X ((x))\na\n#ELSE\nb\n", "b\n"},
      {"#IFINSIDE nothing", "#IFINSIDE NONE ()\na\n#ENDIF\n#IFINSIDE X ()\nb\n", "a\n"},
      {"#IFINSIDE divides values too", "#IFINSIDE X ($(LIST),x)\na\n#ENDIF\n#IFINSIDE LIST ($(LIST))\nb\n", "a\n"},
      {"what is compared can be any reference", "#IFEQUAL \\LIST a%2Cb\na\n#ENDIF\n#IFINSIDE \\X,x,y (y)\nb\n",
       "a\nb\n"},
  });
}

TEST(Preprocessor, DefinesVariables) {
  struct {
    const char* name;
    std::string_view source, variables;
  } const cases[] = {
      {"trimmed", "  #DEFINE   A   b  c  \n", "A=b  c;"},
      {"quotes", "#DEFINE A 'abc'\n#DEFINE B \"b\"\n#DEFINE C 'abc\n#DEFINE D '\"'\n", "A=abc;B=b;C=ab;D=\";"},
      {"quotes around nothing", "#DEFINE A ''\n", ""},
      {"fixed when defined", "#DEFINE A 1\n#DEFINE B $(A)\n#DEFINE A 2\n", "A=2;B=1;"},
      {"a macro is not", "#DEFINE A 1\n#MACRO B '$(A)'\n", "A=1;B=$(A);"},
      {"a name made by a reference", "#DEFINE A N\n#DEFINE $(A)$(A) \\$(x)\n", "A=N;NN=$(x);"},
      {"to nothing", "#DEFINE A $(NONE)\n#DEFINE B 1\n#DEFINE B $(NONE)\n", "B=;"},
      {"an empty name", "#DEFINE $(NONE) 1\n", "=1;"},
      {"undefined", "#DEFINE A B\n#DEFINE B 1\n#DEFINE C 1\n#UNDEF $(A)\n#UNDEF NONE\n", "A=B;C=1;"},
      {"not in a branch that is not taken", "#IFDEF NONE\n#DEFINE A 1\n#ENDIF\n", ""},
      {"the keyword ends in a blank", "#DEFINEA 1\n#DEFINE\tA 1\n", "A=1;"},
  };
  for (const auto& c : cases) {
    Expansion expand;
    expand(c.source);
    EXPECT_EQ(expand.variables(), c.variables) << c.name;
    EXPECT_EQ(expand.contexts(), "") << c.name;
  }
}

TEST(Preprocessor, IncludesSectionsAndCallsMacros) {
  expect_results({
      {"under the present variables", "#DEFINE X y\n#INCLUDE S\n", "ys\n"},
      {"which it may change", "#INCLUDE NEXT\n$(X)\n", "nexts\nnext\n"},
      {"of another file", "#INCLUDE S FROM O.DAT\n", "o\n"},
      {"of a missing file", "#INCLUDE S FROM $(X).DAT\n", "<!-- ERROR: NO TEMPLATE FILE x.DAT-->\n"},
      {"a missing section", "a\n#INCLUDE NONE\nb\n", "a\nb\n"},
      {"a condition may reach beyond it", "#INCLUDE OPEN\na\n#ELSE\nb\n", "b\n"},
      {"and so may a line", "#INCLUDE TAIL\n$(X)\n", "tailx\n"},
      {"a macro", "#MACRO M <$(_NAME)=$(_VALUE)>\n#M X\n#M  NONE 1 \n", "<X=x>\n<NONE 1=>\n"},
      {"a macro that makes a directive", "#MACRO M \\#DEFINE X $(_NAME)\n#M 1\n$(X)\n", "\\#DEFINE X 1\nx\n"},
      {"or one of several lines", "#DEFINE HASH #\n#MACRO M $(HASH)DEFINE X $(_NAME)\n#M 1\n$(X)\n", "1\n"},
      {"a macro whose line goes on", "#MACRO M <$(_NAME)\\x\n#DEFINE B \\#\n#M 1\n", "<1\\x\n"},
      {"a built-in", "#%INC 41\n #%LENGTH abc\n", "42\n3\n"},
      {"an unknown call loses its mark", "#XYZ $(X)\n#DEFINEX 1\n# a\n", "XYZ x\nDEFINEX 1\n a\n"},
      {"a mark alone", "a\n#\nb\n", "a\nb\n"},
      {"line breaks in an expansion", "#CR\n", "1\r2\n3\n"},
      {"a call on the last line", "#MACRO M $(X)\n#M", "x\n"},
  });
}

TEST(Preprocessor, ShowsTheLastFourLinesReadWhenItFails) {
  struct {
    const char* name;
    std::string source, context;
  } const cases[] = {
      {"no value", "1\n2\n3\n4\n#DEFINE X\n5\n", "<2\n3\n4\n#DEFINE X\n>"},
      {"fewer lines", "  #MACRO X\n", "<  #MACRO X\n>"},
      {"at the end", "1\n#DEFINE X '", "<1\n#DEFINE X '>"},
      {"as they stand", "\ta\\\nb\n#IF\\\nEQUAL\tX\\\n\n", "<\ta\\\nb\n#IF\\\nEQUAL\tX\\\n\n>"},
      {"lines skipped count", "#IFDEF NONE\n1\n#ENDIF\n\n#IFINSIDE X\n", "<1\n#ENDIF\n\n#IFINSIDE X\n>"},
      {"long plain lines", "0\n123456789 123456789 123456789 123456789 123456789 123456789 123456789\n2\n3\n$([)\n",
       "<123456789 123456789 123456789 123456789 123456789 123456789 123456789\n2\n3\n$([)\n>"},
      {"an inclusion stands behind its line", "1\n#INCLUDE S\n#IFNEQUAL X\n", "<1\n#INCLUDE S\n$(X)s\n#IFNEQUAL X\n>"},
      {"and so does an expansion", "1\n#CR\n#%INC x\n", "<#CR\n1\r2\n3\n#%INC x\n>"},
      {"plain lines of an expansion that is over", "#LONG\n#WIDE\n#IFEQUAL X\n",
       "<123456789 123456789 123456789 \n#WIDE\n" + repeated("123456789 ", 20) + "\n#IFEQUAL X\n>"},
      {"#ELSE outside any condition, twice", "#ELSE\n1\n#ELSE\n", "<#ELSE\n1\n#ELSE\n>"},
  };
  for (const auto& c : cases) {
    Expansion expand;
    fill(expand);
    EXPECT_EQ(expand(c.source), "") << c.name;
    EXPECT_EQ(expand.contexts(), c.context) << c.name;
    EXPECT_EQ(expand.host.messages.at(0).substr(0, 55),
              "Template Build Internal Error|An error occured near \r\n" + lines(c.context).substr(1, 1));
  }
}

TEST(Preprocessor, KeepsWhatWasDefinedBeforeAFailure) {
  Expansion expand;
  EXPECT_EQ(expand("text\n#DEFINE A 1\n#DEFINE B\n#DEFINE C 1\n"), "");
  EXPECT_EQ(expand.variables(), "A=1;");
}

TEST(Preprocessor, GoesOnAfterAFailureInABracketedReference) {
  Expansion expand;
  expand.host.files["APPLET.DAT"] = lines("[BAD]\n#DEFINE BAD 1\n#DEFINE BAD\n");
  EXPECT_EQ(expand("a$([BAD])\nb\n"), "a1\nb\n");
  EXPECT_EQ(expand.contexts(), "<#DEFINE BAD 1\n#DEFINE BAD\n>");
}

TEST(Preprocessor, HaltsAndSteps) {
  struct {
    const char* name;
    std::string_view source;
    int stops;  // how many halts ask to stop again
    std::string_view log, result;
  } const cases[] = {
      {"once", "a\n  #HALT  \nb\n", 0, "[#HALT  |2|a\n]", "a\nb\n"},
      {"before text and calls alone", "#HALT\na\n#DEFINE X 1\n\t#MACRO M m\n\n #M 1\nb\n", 9,
       "[#HALT|1|][a|2|][|5|a\n][#M 1|6|a\n\n][m|6|a\n\n][b|7|a\n\nm\n]", "a\n\nm\nb\n"},
      {"until told to run on", "#HALT\na\nb\nc\n", 2, "[#HALT|1|][a|2|][b|3|a\n]", "a\nb\nc\n"},
      {"not while skipping", "#HALT\n#IFDEF NONE\na\n#HALT\n#ENDIF\nb\n", 9, "[#HALT|1|][b|6|]", "b\n"},
      {"in the debugger", "#HALTVB\na\n#HALT VB\nb\n", 9, "[debugger][debugger]", "a\nb\n"},
      {"longer words", "#HALTED\na\n", 0, "[#HALTED|1|]", "a\n"},
  };
  for (const auto& c : cases) {
    Expansion expand;
    std::string log;
    int halts = 0;
    expand.host.platform.debugger_break = [&] { log += "[debugger]"; };
    expand.host.platform.halt = [&](const HaltRequest& request) {
      log += "[" + std::string(request.current_line) + "|" + std::to_string(request.line) + "|" +
             readable(request.output) + "]";
      return halts++ < c.stops;
    };
    EXPECT_EQ(expand(c.source), c.result) << c.name;
    EXPECT_EQ(log, c.log) << c.name;
  }
  Expansion without_a_viewer;
  EXPECT_EQ(without_a_viewer("#HALT\na\n#HALT VB\n"), "a\n");
}

}  // namespace
}  // namespace plexoras
