#include "template/window_spec.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "engine_fixture.h"

namespace plexoras {
namespace {

// An entry as a line: kind, key, text, and what differs from an entry that says no more.
std::string line_of(const WindowSpecEntry& entry) {
  constexpr std::string_view kinds[] = {"Setting", "Message", "Divider", "Unreadable"};
  constexpr std::string_view inputs[] = {"text", "lines", "color", "integer", "number", "check", "choice", "combo"};
  const bool is_setting = entry.kind == WindowSpecEntry::Kind::Setting;
  std::string line(is_setting ? inputs[static_cast<std::size_t>(entry.input)]
                              : kinds[static_cast<std::size_t>(entry.kind)]);
  line += " " + entry.key + " [" + entry.text + "]";
  for (const auto& [value, label] : entry.choices) line += " <" + value + (label.empty() ? "" : "=" + label) + ">";
  if (!entry.lowest.empty() || !entry.highest.empty()) line += " " + entry.lowest + ".." + entry.highest;
  if (entry.disabled) line += " DISABLED";
  if (entry.placement.left) {
    line += " at " + std::to_string(*entry.placement.left) + "," + std::to_string(*entry.placement.top);
  }
  if (entry.placement.width) {
    line += " size " + std::to_string(*entry.placement.width) + "x" + std::to_string(*entry.placement.height);
  }
  if (entry.condition) {
    line += (entry.condition->negated ? " unless " : " when ") + entry.condition->key;
    for (const std::string& value : entry.condition->values) line += " <" + value + ">";
  }
  if (!entry.comment.empty()) line += " (" + entry.comment + ")";
  return line + "\n";
}

/// A template author's file, and the control's values that it is read with.
struct Reading {
  std::string operator()(std::string_view section) {
    host.files["T.DAT"] = "[S]\n" + std::string(section) + "[CONSTANT]\n#DEFINE PIE_Flat 0\n#DEFINE PIE_3D 1\n";
    values.atPut("KIND", "tip");
    std::string text;
    for (const WindowSpecEntry& entry : read_window_spec(session, "T.DAT", "S", values)) text += line_of(entry);
    return text;
  }
  std::string diagnostics() const {
    std::string text;
    for (const Diagnostic& diagnostic : session.diagnostics) text += to_text(diagnostic);
    return text;
  }

  FakePlatform host;
  TemplateSession session{host.platform};
  Dictionary values;
};

TEST(WindowSpec, ReadsEachKindOfEntry) {
  struct Case {
    const char* name;
    std::string_view section, entries;
  };
  const Case cases[] = {
      {"nothing", "", ""},
      {"text", "#DEFINE A_SPEC 'Name:|text'\n", "text A [Name:]\n"},
      {"blanks around pieces mean nothing", "#DEFINE A_SPEC Name: | multiline | DISABLED\n",
       "lines A [Name:] DISABLED\n"},
      {"ranges",
       "#DEFINE A_SPEC 'A|number|-1.5..2e3'\n#DEFINE B_SPEC 'B|integer|1..'\n#DEFINE C_SPEC 'C|number|DISABLED'\n",
       "number A [A] -1.5..2e3\ninteger B [B] 1..\nnumber C [C] DISABLED\n"},
      {"check boxes",
       "#DEFINE A_SPEC 'A|check'\n#DEFINE B_SPEC 'B|check|Yes'\n#DEFINE C_SPEC 'C|check|on;off|DISABLED'\n",
       "check A [A] <True> <False>\ncheck B [B] <Yes> <>\ncheck C [C] <on> <off> DISABLED\n"},
      {"choices", "#DEFINE A_SPEC 'A|choice|=None;n=Note; tip ;x=A=B'\n",
       "choice A [A] <=None> <n=Note> <tip=tip> <x=A=B>\n"},
      {"suggestions take no labels", "#DEFINE A_SPEC 'A|combo|a=b;c'\n", "combo A [A] <a=b=a=b> <c=c>\n"},
      {"a lookup table", "#DEFINE A_SPEC 'A|lookup|PIE'\n", "choice A [A] <0=Flat> <1=3D>\n"},
      {"a choice may have an option's name", "#DEFINE A_SPEC 'A|choice|DISABLED'\n",
       "choice A [A] <DISABLED=DISABLED>\n"},
      {"separators as text", "#DEFINE A_SPEC 'a\\|b;c=d\\\\e\\f|choice|1\\;2=x\\=y\\|;z'\n",
       "choice A [a|b;c=d\\e\\f] <1;2=x=y|> <z=z>\n"},
      {"places and sizes", "#DEFINE A_SPEC 'A|color|size 30x40|at 1,2'\n", "color A [A] at 1,2 size 30x40\n"},
      {"conditions", "#DEFINE A_SPEC 'A|text|when KIND=tip; note'\n#DEFINE B_DIVIDERSPEC 'B|unless A='\n",
       "text A [A] when KIND <tip> <note>\nDivider B [B] unless A <>\n"},
      {"words, and words about another entry",
       "#DEFINE A_COMMENT 'First | = ;'\n#DEFINE M_MESSAGESPEC 'Hello\\|'\n#DEFINE A_SPEC 'A|text'\n"
       "#DEFINE G_DIVIDERSPEC 'Group'\n#DEFINE G_COMMENT 'x'\n",
       "Message M [Hello|]\ntext A [A] (First | = ;)\nDivider G [Group] (x)\n"},
      {"the values are variables",
       "#IFEQUAL KIND tip\n#DEFINE A_SPEC 'A $(KIND)|text'\n#ELSE\n#DEFINE B_SPEC 'B|text'\n#ENDIF\n",
       "text A [A tip]\n"},
      {"other definitions are the author's own",
       "#DEFINE _BASE_SPEC x\n#DEFINE OTHER x\n#DEFINE A_SPEC '$(OTHER)|text'\n", "text A [x]\n"},
      {"an entry that is taken away", "#DEFINE A_SPEC 'A|text'\n#DEFINE B_SPEC ''\n#UNDEF A_SPEC\n#UNDEF B_SPEC\n", ""},
      {"a divider and a message may be without words", "#DEFINE A_DIVIDERSPEC ''\n#DEFINE B_MESSAGESPEC ''\n",
       "Divider A []\nMessage B []\n"},
  };
  for (const Case& c : cases) {
    Reading reading;
    EXPECT_EQ(reading(c.section), c.entries) << c.name;
    EXPECT_EQ(reading.diagnostics(), "") << c.name;
  }
}

TEST(WindowSpec, TellsWhereItCannotRead) {
  struct Case {
    std::string_view line;  // between a readable one and another, as line 3 of the file
    std::size_t column;
    std::string_view what;
  };
  const Case cases[] = {
      {"#DEFINE B_SPEC 'Name'", 17, "a setting needs a type; write 'Caption:|text'"},
      {"  #DEFINE B_SPEC 'B|txet'", 21,
       "there is no type \"txet\"; known: text, multiline, color, integer, number, check, choice, combo, lookup"},
      {"#DEFINE B_SPEC B|text|DISABELD", 23,
       "there is no option \"DISABELD\"; known: DISABLED, at, size, when, unless (a \"|\" in a text is written \\|)"},
      {"#DEFINE B_MESSAGESPEC 'a|b'", 26,
       "there is no option \"b\"; known: DISABLED, at, size, when, unless (a \"|\" in a text is written \\|)"},
      {"#DEFINE B_SPEC 'B|number|5'", 26, "\"5\" is no range; write 0..100, 0.. or ..100"},
      {"#DEFINE B_SPEC 'B|number|0...5'", 26, "\"0...5\" is no range; write 0..100, 0.. or ..100"},
      {"#DEFINE B_SPEC 'B|number|0..x'", 29, "\"x\" is no number; write 0..100, 0.. or ..100"},
      {"#DEFINE B_SPEC 'B|number|2..1'", 26, "\"2..1\" holds no number; write the lower bound first"},
      {"#DEFINE B_SPEC 'B|check|a;b;c'", 29,
       "a check box has two values; write ON;OFF, or ON alone when off is the empty text"},
      {"#DEFINE B_SPEC 'B|check|a;a'", 27, "on and off have the same value; write ON;OFF"},
      {"#DEFINE B_SPEC 'B|choice'", 19, "the type needs more; write choice|value=Text;value=Text"},
      {"#DEFINE B_SPEC 'B|choice|a;;b'", 28, "a choice has no text; write value=Text;value=Text"},
      {"#DEFINE B_SPEC 'B|lookup|PIES'", 26,
       "section CONSTANT has no table \"PIES\"; define PIES_Text with its value there"},
      {"#DEFINE B_SPEC 'B|text|at 5'", 27, "\"5\" is not of the form at LEFT,TOP, in pixels"},
      {"#DEFINE B_SPEC 'B|text|size 5x-1'", 29, "\"5x-1\" is not of the form size WIDTHxHEIGHT, in pixels"},
      {"#DEFINE B_SPEC 'B|text|when KIND'", 29,
       "the condition needs a setting and its values; write when KEY=value;value"},
      {"#DEFINE B_SPEC 'B|text|at 1,2|DISABLED|at 1,2'", 40, "the option \"at\" is given twice; remove one of them"},
      {"#DEFINE B_SPEC 'B|text|when KIND=a|when KIND=b'", 36, "the option \"when\" is given twice; remove one of them"},
      {"#DEFINE B_SPEC 'B|text|when KIND=a|unless KIND=b'", 43, "an entry has one condition; remove the other"},
      {"#DEFINE B_COMMENT x", 19, "there is no entry \"B\" that this could be about"},
      {"  B_SPEC 'B|text'", 3, "a line of text means nothing in a window-spec; begin it with #DEFINE"},
      {"#DEFINE B_SPEC ''", 17, "a setting needs a type; write 'Caption:|text'"},
      {"#DEFINE B_SPEC", 1, "the directive needs more: write #DEFINE NAME value (error 5)"},
      {"#DEFINE B_SPEC '$(\\KIND,x)|text'", 17,
       "a replacement needs three parts, $(\\NAME,from,to); \"\\KIND,x\" has 2 (error 9)"},
      {"#DEFINE B_MSGSPEC x", 19,
       "\"B_MSGSPEC\" names no entry; write KEY_SPEC, KEY_COMMENT, NAME_MESSAGESPEC or NAME_DIVIDERSPEC"},
      {"#DEFINE B_SPEC '$(KIND)|txet'", 17,
       "there is no type \"txet\"; known: text, multiline, color, integer, number, check, choice, combo, lookup"},
  };
  for (const Case& c : cases) {
    Reading reading;
    const std::string place = "T.DAT:3:" + std::to_string(c.column) + ": ";
    const std::string entries =
        reading("#DEFINE A_SPEC 'A|text'\n" + std::string(c.line) + "\n#DEFINE C_SPEC 'C|text'\n");
    EXPECT_TRUE(entries.starts_with("text A [A]\nUnreadable ")) << entries;
    EXPECT_TRUE(entries.ends_with(" [" + place + std::string(c.what) + "]\ntext C [C]\n")) << entries;
    EXPECT_EQ(reading.diagnostics(), place + "error: " + std::string(c.what) + "\n  " + std::string(c.line) + "\n  " +
                                         std::string(c.column - 1, ' ') + "^\n");
  }
}

TEST(WindowSpec, GoesOnWithWhatItCanRead) {
  struct Case {
    const char* name;
    std::string_view section, entries, told;
  };
  const Case cases[] = {
      {"a condition on nothing", "#DEFINE A_SPEC 'A|text|when KNID=tip'\n#DEFINE B_SPEC 'B|text'\n",
       "text A [A]\nUnreadable  [T.DAT:2:24: there is no setting \"KNID\" for the condition; it is left out]\n"
       "text B [B]\n",
       "T.DAT:2:24: error: there is no setting \"KNID\" for the condition; it is left out\n"},
      {"text that a reference makes, behind an equal line that does not count",
       "#DEFINE _T x\n#IFDEF NONE\n  $(_T)\n#ENDIF\n\n  \n  $(_T)\n$(NONE)\n",
       "Unreadable  [T.DAT:8:3: a line of text means", "T.DAT:8:3: error: a line of text means nothing"},
      {"text that is brought in", "#INCLUDE M\n[M]\n\tB_SPEC x\n",
       "Unreadable  [T.DAT:4:2: ", "T.DAT:4:2: error: a line of text"},
      {"text that a macro makes", "#MACRO M B_SPEC $(_NAME)\n#M x\n",
       "Unreadable  [T.DAT:3:1: ", "T.DAT:3:1: error: a line of text"},
      {"the last definition counts", "#DEFINE A_SPEC 'A'\n#DEFINE B_SPEC 'B|text'\n#DEFINE A_SPEC 'C|text'\n",
       "text A [C]\ntext B [B]\n", ""},
      {"an inclusion", "#INCLUDE M\n[M]\n#DEFINE A_SPEC 'A|x'\n",
       "Unreadable A [T.DAT:4:19: ", "T.DAT:4:19: error: there is no type \"x\""},
      {"a condition that cannot be read does not hold",
       "#IFINSIDE KIND\n#DEFINE A_SPEC 'A|text'\n#ELSE\n#DEFINE B_SPEC 'B|text'\n#ENDIF\n#DEFINE C_SPEC 'C|text'\n",
       "Unreadable  [T.DAT:2:1: the directive needs more: write #IFINSIDE NAME (one,two) (error 5)]\n"
       "text B [B]\ntext C [C]\n",
       "T.DAT:2:1: error: the directive needs more"},
      {"a section that runs away", "#DEFINE A_SPEC 'A|text'\n#MACRO M x$(M)\n#M\n#DEFINE B_SPEC 'B|text'\n",
       "text A [A]\n", "T.DAT:4:1: error: Out of stack space: "},
  };
  for (const Case& c : cases) {
    Reading reading;
    EXPECT_TRUE(reading(c.section).starts_with(c.entries)) << c.name;
    EXPECT_TRUE(reading.diagnostics().starts_with(c.told)) << c.name << "\n" << reading.diagnostics();
    EXPECT_EQ(reading.session.diagnostics.size(), c.told.empty() ? 0u : 1u) << c.name;
  }
}

TEST(WindowSpec, RunsTheSectionOnceAndShowsNoMessages) {
  Reading reading;
  int days = 0;
  reading.host.platform.short_date = [&days] { return std::to_string(++days); };
  EXPECT_EQ(reading("#DEFINE _DAY '#(%TODAY)'\n#DEFINE A_SPEC '$(_DAY)|text'\n#UNDEF $([)\n"),
            "text A [1]\nUnreadable  [T.DAT:4:8: \"[\" alone names no section; write [NAME] (error 5)]\n");
  EXPECT_EQ(days, 1);
  EXPECT_TRUE(reading.host.messages.empty());
}

TEST(WindowSpec, WhatTheControlBringsIsNoEntry) {
  Reading reading;
  reading.values.atPut("OLD_SPEC", "x");
  EXPECT_EQ(reading("#DEFINE A_SPEC 'A|text'\n"), "text A [A]\n");
  EXPECT_EQ(read_window_spec(reading.session, "NONE.DAT", "S", reading.values).size(), 0u);
  EXPECT_EQ(reading.session.diagnostics.size(), 1u) << "that the file is missing";
  EXPECT_EQ(Reading()("#INCLUDE S FROM NONE.DAT\n"), "");
}

TEST(WindowSpec, TellsAHundredLinesOfATextThatIsNoForm) {
  Reading reading;
  const std::string entries = reading(repeated("<p>\n", 300));
  EXPECT_EQ(std::count(entries.begin(), entries.end(), '\n'), 100);
  EXPECT_EQ(reading.session.diagnostics.size(), 100u);
}

}  // namespace
}  // namespace plexoras
