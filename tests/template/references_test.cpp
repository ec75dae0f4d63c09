#include "template/references.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"
#include "host/outcome.h"

namespace plexoras {
namespace {

// References to a few variables, outside any run.
class ReferencesTest : public testing::Test {
protected:
  ReferencesTest() : session_(host_.platform), references_(session_, variables_, file_name_) {
    host_.files["T.DAT"] = lines(
        "[S]\n#DEFINE S <$(W)>\n#DEFINE W inner\n"
        "[DEEP]\n#DEFINE DEEP $([S])!\n"
        "[BAD]\n#DEFINE BAD before\n#DEFINE X\n#DEFINE BAD after\n");
    host_.files["O.DAT"] = lines("[S]\n#DEFINE S other$([R])\n[R]\n#DEFINE R file\n");
    const std::pair<const char*, const char*> variables[] = {
        {"W", "300"},
        {"T", "a b&c"},
        {"F", "banana"},
        {"A", "$(B)"},
        {"B", "1"},
        {"N", "W"},
        {"A(1)", "nested"},
        {"S P", "blank"},
        {"E", ""},
        {"BOLD", "<b>$(_VALUE)</b>"},
        {"?OPT", "<$(_NAME)>"},
        {"TWICE", "#(BOLD $(_NAME))#(BOLD W)"},
        {"CALLS", "#(TWICE F)"},
    };
    for (const auto& [name, value] : variables) variables_.atPut(name, value);
  }

  std::string substituted(std::string_view text) {
    return outcome([&] { return references_.SubstituteLine(text); });
  }

  FakePlatform host_;
  TemplateSession session_;
  Dictionary variables_;
  std::string file_name_ = "T.DAT";
  References references_;
};

struct Case {
  const char* name;
  std::string_view text, result;
};

TEST_F(ReferencesTest, GiveValues) {
  const Case cases[] = {
      {"a variable", "<$(W)>", "<300>"},
      {"blanks around the name", "$(  W )", "300"},
      {"blanks within", "$(S P)", "blank"},
      {"no such variable", "<$(w)$()>", "<>"},
      {"a value with references", "$(A)", "1"},
      {"a name made by a reference", "$($(N))", "300"},
      {"parentheses in a name", "$(A(1))", "nested"},
      {"no closing parenthesis", "$(W", "300"},
      {"nor here", "$(A(1)", "nested"},
      {"a parenthesis of its own", "(W) $ (W) )(", "(W) $ (W) )("},
      {"escapes", "\\$(W) \\#(BOLD W) $(W)", "$(W) #(BOLD W) 300"},
      {"an escape loses one backslash", "\\\\$(W)", "\\$(W)"},
      {"a dollar before it", "$$(W)#$(W)", "$300#300"},
      {"an attribute", "<APPLET $(?W)>", "<APPLET W=\"300\">"},
      {"an empty attribute", "<APPLET $(?NONE)>", "<APPLET >"},
      {"blanks in an attribute", "$( ? W )", "W=\"300\""},
      {"an attribute's name is expanded too", "$(?$(N))", "W=\"300\""},
      {"URL-encoded", "$(\\T)", "a%20b%26c"},
      {"an escape behind the backslash is gone before the name is read", "$(\\$(N))", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(substituted(c.text), c.result) << c.name;
  EXPECT_EQ(references_.ExpandReferences("\\$(W)$(W)"), "\\$(W)300");
}

TEST_F(ReferencesTest, Replace) {
  const Case cases[] = {
      {"every occurrence", "$(\\F,a,b)", "bbnbnb"},
      {"left to right", "$(\\F,ana,x)", "bxna"},
      {"by nothing", "$(\\F,a,)", "bnn"},
      {"nothing occurs nowhere", "$(\\F,,x)", "banana"},
      {"blanks count", "$(\\F, a,b)", "banana"},
      {"further parts do not", "$(\\F,a,b,c,d)", "bbnbnb"},
      {"parts are expanded", "$(\\F,$(NONE)a,$(B))", "b1n1n1"},
      {"commas divide before references are read", "$(\\F,$(F,na),x)", "na)"},
      {"two parts", "$(\\F,a)", "error 9: a replacement needs three parts, $(\\NAME,from,to); \"\\F,a\" has 2"},
  };
  for (const Case& c : cases) EXPECT_EQ(substituted(c.text), c.result) << c.name;
}

TEST_F(ReferencesTest, CallMacros) {
  const Case cases[] = {
      {"by value", "#(BOLD W)", "<b>300</b>"},
      {"with an argument that is no name", "#(BOLD x y)", "<b></b>"},
      {"with blanks", "#(BOLD   S P  )", "<b>blank</b>"},
      {"with a reference in the argument", "#(BOLD $(N))", "<b>300</b>"},
      {"inside each other", "#(CALLS)", "<b>banana</b><b>300</b>"},
      {"optional, defined", "#(?OPT W)", "<W>"},
      {"optional, empty", "[#(?OPT NONE)#(?OPT)]", "[]"},
      {"a bracketed name as argument", "#(?OPT [S])", "<[S]>"},
      {"unknown", "#(XYZ $(W) \\$(W))", "XYZ 300 300"},
      {"a blank first makes the name empty", "#( BOLD W)", " BOLD W"},
      {"no name", "[#()]", "[]"},
      {"no closing parenthesis", "#(BOLD W", "<b>300</b>"},
      {"a value as macro", "#(W)", "300"},
  };
  for (const Case& c : cases) EXPECT_EQ(substituted(c.text), c.result) << c.name;
}

TEST_F(ReferencesTest, CallBuiltins) {
  const Case cases[] = {
      {"the date", "#(%TODAY)", "21.11.2026"},
      {"a length", "#(%LENGTH abc)", "3"},
      {"a length with blanks", "#(%LENGTH  a b  )", "3"},
      {"of nothing", "#(%LENGTH)", "0"},
      {"bytes count", "#(%LENGTH \xC3\xA4)", "2"},
      {"one more", "#(%INC 41)", "42"},
      {"one less", "#(%DEC 0)", "-1"},
      {"signs and zeros", "#(%INC +007)#(%DEC -1)", "8-2"},
      {"many zeros", "#(%INC 00000000000000000000000000001)", "2"},
      {"the ends of the range", "#(%DEC 2147483647) #(%INC -2147483648)", "2147483646 -2147483647"},
      {"lower case", "#(%inc 1)", "%inc 1"},
      {"above the range", "#(%INC 2147483647)", "error 6: %INC of 2147483647 does not fit into 32 bits"},
      {"below the range", "#(%DEC -2147483648)", "error 6: %DEC of -2147483648 does not fit into 32 bits"},
      {"an argument beyond it", "#(%DEC 2147483648)", "error 6: 2147483648 does not fit into 32 bits"},
      {"no number", "#(%INC 1x)", "error 13: %INC needs a whole number, not \"1x\""},
      {"a sign alone", "#(%DEC -)", "error 13: %DEC needs a whole number, not \"-\""},
      {"two signs", "#(%INC +-1)", "error 13: %INC needs a whole number, not \"+-1\""},
      {"nothing", "#(%INC)", "error 13: %INC needs a whole number, not \"\""},
      {"a fraction", "#(%INC 1.0)", "error 13: %INC needs a whole number, not \"1.0\""},
  };
  for (const Case& c : cases) EXPECT_EQ(substituted(c.text), c.result) << c.name;
  variables_.atPut("%INC", "mine");
  EXPECT_EQ(substituted("#(%INC 1)"), "mine");
  EXPECT_EQ(references_.CallBuiltin("%NONE", "1"), "");
}

TEST_F(ReferencesTest, ReadOtherSections) {
  const Case cases[] = {
      {"of the same file, under the present variables", "$([S])", "<300>"},
      {"that read others", "$([DEEP])", "<300>!"},
      {"of another file, which becomes the present one", "$([O.DAT FROM S])", "otherfile"},
      {"with blanks", "$([ O.DAT  FROM  S ])", "otherfile"},
      {"blanks belong to a name alone", "$([ S])", ""},
      {"the last character goes whatever it is", "$([Sx)", "<300>"},
      {"URL-encoded", "$(\\[S])", "%3C300%3E"},
      {"missing", "$([NONE])$([NO.DAT FROM S])$([FROM S])", ""},
      {"a bracket alone", "$([)", "error 5: \"[\" alone names no section; write [NAME]"},
  };
  for (const Case& c : cases) EXPECT_EQ(substituted(c.text), c.result) << c.name;
  EXPECT_EQ(variables_.atGet("W"), "300");
  EXPECT_EQ(host_.messages, StringList());

  EXPECT_EQ(substituted("$([BAD])$(W)"), "before300");
  EXPECT_EQ(host_.messages, StringList{"Template Build Internal Error|An error occured near \r\n"
                                       "#DEFINE BAD before\r\n#DEFINE X\r\n"});
}

TEST_F(ReferencesTest, TellWhetherANameIsAbsent) {
  variables_.atPut("KEPT", "", Dictionary::EmptyValues::Keep);
  std::string absent;
  for (const char* name : {"W", "w", "KEPT", "", "\\W", "[S]", "[NONE]"}) {
    if (references_.isAbsent(name)) absent += std::string(name) + ";";
  }
  EXPECT_EQ(absent, "w;KEPT;;\\W;[NONE];");
  EXPECT_EQ(references_.Find("A"), "$(B)");
}

TEST_F(ReferencesTest, RestoreTheReservedNames) {
  substituted("#(BOLD W)");
  EXPECT_EQ(variables_.atGet("_NAME") + variables_.atGet("_VALUE"), "");
  EXPECT_TRUE(variables_.includes("_VALUE", Dictionary::EmptyValues::Keep));
  variables_.atPut("_NAME", "mine");
  variables_.atPut("_VALUE", "too");
  EXPECT_EQ(substituted("#(CALLS)$(_NAME)$(_VALUE)"), "<b>banana</b><b>300</b>minetoo");
}

TEST(UrlEncode, KeepsDigitsLettersAndPeriods) {
  std::string kept;
  for (int code = 0; code < 256; ++code) {
    const std::string character(1, static_cast<char>(code));
    if (UrlEncode(character) == character) kept += character;
  }
  EXPECT_EQ(kept, ".0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
  EXPECT_EQ(UrlEncode(std::string_view(" %\n\0\xE4~", 6)), "%20%25%0A%00%E4%7E");
}

}  // namespace
}  // namespace plexoras
