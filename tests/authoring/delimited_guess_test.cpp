#include "authoring/delimited_guess.h"

#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "applet/contents_reader.h"
#include "authoring/cell_kind.h"
#include "authoring/delimited_reading.h"
#include "host/automation.h"

namespace plexoras {
namespace {

using namespace std::string_literals;

// "delimiter qualifier labels", the labels as "row", "column", "row column" or "-", and the encoding if there is one.
std::string settings(const DelimitedGuess& guess) {
  const DelimitedFormat& format = guess.format;
  std::string text = format.delimiter == "\t" ? "tab" : format.delimiter == " " ? "blank" : format.delimiter;
  if (!format.qualifier.empty()) text += " " + format.qualifier;
  if (format.first_row) text += " row";
  if (format.first_col) text += " column";
  if (!guess.encoding.empty()) text += " " + guess.encoding;
  return text;
}

std::string reasons(const DelimitedGuess& guess) {
  std::string text;
  for (const DelimitedGuess::Choice& choice : guess.choices) {
    text += choice.setting + " " + choice.chosen + ": " + choice.reason + "\n";
  }
  return text;
}

std::string utf16(std::string_view ascii, bool little) {
  std::string text;
  for (const char c : ascii) text += little ? std::string{c, '\0'} : std::string{'\0', c};
  return text;
}

TEST(GuessDelimited, FindsTheSettingsOfRealTables) {
  struct Case {
    const char* name;
    std::string text, settings;
  };
  const Case cases[] = {
      // Delimiters
      {"comma", "Region,Q1,Q2\nNorth,1,2\nSouth,3,4\n", ", row column"},
      {"semicolon", "Region;Q1;Q2\r\nNorth;1;2\r\nSouth;3;4\r\n", "; row column"},
      {"tab, CR alone", "Region\tQ1\rNorth\t1\rSouth\t3\r", "tab row column"},
      {"pipe", "Region|Q1\nNorth|1\nSouth|3", "| row column"},
      {"blank", "t x y\n0 1.5 2.5\n1 1.6 2.1\n2 1.7 2.2\n", "blank row column"},
      {"decimal commas", "1,5;2,5\n3,5;4,5\n", ";"},
      {"decimal commas with labels", "Monat;mm\nJan;117,5\nFeb;106,2\nMar;99,0\n", "; row column"},
      {"decimal commas, tab", "a\tb\n1,5\t2,5\n", "tab row"},
      {"decimal commas, blank", "1,5 2,5 3,5\n4,5 5,5 6,5\n", "blank"},
      {"thousands", "Land;Leute\nA;1.234.567\nB;83.200.000\n", "; row column"},
      {"dates with times", "when,load\n2020-01-01 10:00,5.5\n2020-01-01 11:00,6.5\n", ", row column"},
      {"commas in names", "M\xC3\xBCller, Hans;Berlin;5\nMeier, Ute;Bonn;6\n", "; column"},
      {"blanks in names", "name,age\nJohn Smith,34\nAnn Lee,41\n", ", row column"},
      {"pipes in one column", "key,a,b,c\nx|y,1,2,3\nz|w,4,5,6\n", ", row column"},
      {"empty cells at the ends", "a,b,c\nx,1,\ny,,2\nz,3,\n", ", row column"},
      {"rows of different length", "x,1\ny,1,2,3\nz,1,2\nw,1,2,3,4\n", ", column"},
      {"a title above", "Rain in mm\n\nMonth,Rain,Sun\nJan,117,2\nFeb,106,3\n", ","},
      {"times", "Month,00:00,02:00\nJan,4.9,4.6\nFeb,5.3,4.8\n", ", row column"},
      // Qualifiers
      {"quoted", "\"Region\",\"Q1\"\n\"North\",\"1\"\n\"South\",\"3\"\n", ", \" row column"},
      {"quoted where needed", "name,n\n\"Smith, John\",1\nLee,2\n", ", \" row column"},
      {"semicolons in quotes", "\"a;b\",\"c;d\"\n\"e;f\",\"g;h\"\n", ", \""},
      {"commas in quotes", "\"a,b\";\"c,d\"\n\"e,f\";\"g,h\"\n", "; \""},
      {"doubled quotes", "name,n\n\"the \"\"best\"\" one\",1\nother,2\n", ", \" row column"},
      {"single quotes", "'North, up','1'\n'South','3'\n", ", ' column"},
      {"apostrophes in words", "name,n\nO'Neill,1\nd'Or,2\n", ", row column"},
      {"apostrophes before words", "name,n\n'tis,1\n't Hooft,2\n'a',3\n", ", row column"},
      {"apostrophes around few words", "name,n\n'So What',1\nBlue,2\nGreen,3\nFreddie,4\n", ", row column"},
      {"inches", "size,n\n5\",1\n7\",2\n", ", row column"},
      {"speech", "said,n\n\"No\" he said,1\n\"Yes\" she said,2\n", ", row column"},
      // Labels
      {"no labels", "1,2\n3,4\n7,9\n", ","},
      {"ascending years", "Year,ppm\n1958,315.3\n1959,316.0\n1960,316.9\n", ", row column"},
      {"descending years", "1960,316.9\n1959,316.0\n1958,315.3\n", ", column"},
      {"one year", "Year,ppm\n1958,315.3\n", ", row column"},
      {"years above", "Region,2019,2020\nNorth,1,2\nSouth,3,4\n", ", row column"},
      {"years above and beside", "Region,2019,2020\n1990,1,2\n1991,3,4\n", ", row column"},
      {"years above small counts", "Region,2019,2020,2021\nNorth,1,2,3\nSouth,2,3,4\n", ", row column"},
      {"numbers beside an empty corner", ",10,20\nx,1,2\ny,3,4\n", ", row column"},
      {"values beside an empty label", ",1.5,2.5\nx,3,4\ny,5,6\n", ", column"},
      {"an empty corner", ",Q1,Q2\n7,1,2\n3,3,4\n", ", row column"},
      {"numbered rows", "1,10\n2,35\n3,12\n", ", column"},
      {"no numbered rows", "1,2\n2,3\n3,4\n", ","},
      {"values in order", "x,y\n5,1\n7,2\n9,3\n", ", row"},
      {"dates beside", "31.12.2020;5\n30.12.2020;6\n", "; column"},
      {"quarters beside", "2020-Q1,5\n2020-Q2,6\n", ", column"},
      {"missing values", "k,a,b\nx,n/a,1\ny,2,-\nz,3,5\n", ", row column"},
      {"per cent and money", "k,a,b\nx,5 %,$3\ny,6 %,$4.50\n", ", row column"},
      {"texts alone", "name,city\nAnna,Berlin\nBob,Paris\n", ","},
      {"an empty line forbids row labels", "a,1\n\nb,2\n", ","},
      {"empty lines at the end", "a,1\nb,2\n\n", ", column"},
      {"one line", "a,b,c\n", ","},
      {"labels above one column", "mm\n1\n2\n", ", row"},
      // Little to go by
      {"nothing", "", ","},
      {"a line end", "\n", ","},
      {"one column", "1\n2\n3\n", ","},
      {"prose", "It was, they say, a dark night.\nNothing stirred.\nThe end, then.\nAnd so on.\n", ","},
      {"two words a line", "Berlin Mitte\nParis Nord\nLondon South\n", ","},
      // Encodings
      {"UTF-8", "Stadt;n\nK\xC3\xB6ln;5\n", "; row column"},
      {"UTF-8 with a mark", "\xEF\xBB\xBFStadt;n\nK\xC3\xB6ln;5\n", "; row column UTF-8"},
      {"UTF-16 with a mark", "\xFF\xFE" + utf16("Region\tQ1\nNorth\t1\n", true), "tab row column UTF-16LE"},
      {"UTF-16LE", utf16("Region,Q1\nNorth,1\n", true), ", row column UTF-16LE"},
      {"UTF-16BE", utf16("Region,Q1\nNorth,1\n", false), ", row column UTF-16BE"},
      {"UTF-32 with a mark", "\xFF\xFE\0\0a\0\0\0;\0\0\0b\0\0\0"s, "; UTF-32LE"},
      {"western", "Stadt;n\nZ\xFCrich;5\nK\xF6ln;6\n", "; row column windows-1252"},
      {"a euro sign", "Artikel;Preis \x80\nA;5\nB;6\n", "; row column windows-1252"},
      {"Cyrillic",
       "\xC3\xEE\xF0\xEE\xE4;\xCD\xE0\xF1\xE5\xEB\xE5\xED\xE8\xE5\n\xCC\xEE\xF1\xEA\xE2\xE0;"
       "12\n\xCA\xE0\xE7\xE0\xED\xFC;1\n\xD1\xE0\xED\xEA\xF2-"
       "\xCF\xE5\xF2\xE5\xF0\xE1\xF3\xF0\xE3;5\n",
       "; row column windows-1251"},
      {"a little Greek", "\xD0\xFC\xEB\xE7;n\n\xC1\xE8\xDE\xED\xE1;5\n", "; row column ISO-8859-7"},
      {"western of DOS", "Stadt;n\nZ\x81rich;5\n", "; row column IBM850"},
      {"a mark and then nonsense",
       "\xEF\xBB\xBF"
       "a;b\n\xFF;1\n",
       ", UTF-8"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(settings(guess_delimited(c.text, true)), c.settings) << c.name << "\n"
                                                                   << reasons(guess_delimited(c.text, true));
}

TEST(GuessDelimited, SaysWhy) {
  EXPECT_EQ(reasons(guess_delimited("Region;Q1\nNorth;1,5\n\"South; up\";3\nx\n", true)),
            "encoding UTF-8: all bytes are ASCII\n"
            "delimiter ';': gives 2 fields on 3 of 4 lines\n"
            "qualifier double quote: encloses 1 field\n"
            "first row labels: labels stand above 1 column of numbers or dates\n"
            "first column labels: texts stand beside numbers\n");
  EXPECT_EQ(reasons(guess_delimited("1\t2\n3\t4\n5\t", false)),
            "encoding UTF-8: all bytes are ASCII\n"
            "delimiter tab: gives 2 fields on each of the first 2 lines\n"
            "qualifier none: no field is enclosed in quotes\n"
            "first row data: numbers or dates stand in it as in the lines below\n"
            "first column data: it holds numbers as the other columns do\n");
  EXPECT_EQ(reasons(guess_delimited("", true)),
            "encoding UTF-8: all bytes are ASCII\n"
            "delimiter ',': there are no lines; this is the usual one\n"
            "qualifier none: no field is enclosed in quotes\n"
            "first row data: there are no lines\n"
            "first column data: there is one column only\n");
}

TEST(GuessDelimited, TakesWhatIsKnown) {
  const DelimitedGuess guess = guess_delimited(
      "\xC4;a::b\n1;x::2\n", true,
      {.encoding = "ISO-8859-1", .delimiter = "::", .qualifier = "'", .first_row = false, .first_col = true});
  EXPECT_EQ(settings(guess), ":: ' column ISO-8859-1");
  for (const DelimitedGuess::Choice& choice : guess.choices) EXPECT_EQ(choice.reason, "as given");

  EXPECT_EQ(settings(guess_delimited("a,b;1\nc,d;2\n", true, {.delimiter = ","})), ",");
  EXPECT_THROW(guess_delimited("a", true, {.encoding = "UTF-9000"}), AutomationError);
  EXPECT_THROW(guess_delimited("a\xE4", false, {.encoding = "US-ASCII"}), AutomationError);
  EXPECT_THROW(guess_delimited("a\xC3", true, {.encoding = "UTF-8"}), AutomationError);
  EXPECT_EQ(settings(guess_delimited("a\xC3", false, {.encoding = "UTF-8"})), ", UTF-8");
}

TEST(GuessDelimited, GoesByWholeLinesOfACutSample) {
  EXPECT_EQ(settings(guess_delimited("a;1\nb;2\nc,d,e,f,g", false)), "; column");
  EXPECT_EQ(settings(guess_delimited("1;2,5", false)), ";") << "unless there is no other";
  EXPECT_EQ(settings(guess_delimited("x;1\n\xC3\xB6;1\nx\xC3", false)), "; column") << "cut in a character";
}

// Whatever the text, there is a format that can be imported with.
TEST(GuessDelimited, RefusesNothingButWhatIsNoText) {
  std::mt19937 random(20);
  const auto below = [&random](std::size_t limit) { return static_cast<std::size_t>(random()) % limit; };
  const std::string alphabets[] = {",;\t| \"'\r\n12a", std::string("\0\xFF\xFE\n,1", 6), "\xEF\xBB\xBF\xC3\xA4,\n\"1"};
  int refused = 0;
  for (int round = 0; round < 1000; ++round) {
    std::string bytes;
    for (std::size_t i = below(200); i > 0; --i) {
      const std::string& alphabet = alphabets[below(3)];
      bytes += below(4) == 0 ? static_cast<char>(below(256)) : alphabet[below(alphabet.size())];
    }
    for (const bool is_whole : {false, true}) {
      try {
        const DelimitedGuess guess = guess_delimited(bytes, is_whole);
        ASSERT_FALSE(guess.format.delimiter.empty());
        ASSERT_EQ(guess.choices.size(), 5U);
      } catch (const AutomationError& error) {
        ASSERT_TRUE(error.description().starts_with("this is no text: ")) << error.description();
        ++refused;
      }
    }
  }
  EXPECT_GT(refused, 0);
  EXPECT_LT(refused, 2000);
}

TEST(GuessDelimited, WarnsOfQualifiersThatTheImportReadsOtherwise) {
  const auto warned_lines = [](std::string_view text) {
    std::string lines;
    for (const ImportWarning& warning : guess_delimited(text, true).warnings) lines += std::to_string(warning.line);
    return lines;
  };
  EXPECT_EQ(warned_lines("a,b\n\"x, y\",1\n"), "");
  EXPECT_EQ(warned_lines("a,b\n\"x, y\",1\n\"the \"\"best\"\"\",2\n\"a \"\"\",2\n\"\",3\n"), "3");
  EXPECT_EQ(warned_lines("a,b\n\"x, y\",1\n\"x, z\",1\n\"x\ny\",2\n\"c\",2\n"), "4");
}

// What is guessed from are the fields that the import will make.
TEST(DelimitedReading, CutsLinesAsTheImportDoes) {
  std::mt19937 random(16);
  const std::string_view parts[] = {",", ",", "\"", "\"", "a", ":", "::", "\xC2\xA7", "\xC2", " "};
  for (int round = 0; round < 5000; ++round) {
    std::string line = "a";
    for (std::size_t i = random() % 12; i > 0; --i) line += parts[random() % std::size(parts)];
    line.erase(0, random() % 2);
    for (const char* const delimiter : {",", "::", "\xC2\xA7"}) {
      if (line.empty()) continue;
      DelimitedImport import({.delimiter = delimiter, .qualifier = "\""});
      import.add(line);
      std::vector<std::string> fields;
      for (const DelimitedField& field : split(line, delimiter, "\"").fields) fields.emplace_back(field.text);
      ASSERT_EQ(fields, read_contents(import.finish().take_text()).values) << line << " at " << delimiter;
    }
  }
}

TEST(KindOfCell, TellsNumbersAndDatesFromTexts) {
  struct Row {
    CellKind kind;
    std::vector<const char*> cells;
  };
  const Row rows[] = {
      {CellKind::Missing, {"", "  ", "-", "n/a", "NaN", "..", "\xE2\x80\x94"}},
      {CellKind::Number,
       {"1",
        " 12 ",
        "-1.5",
        "+1,5",
        ".5",
        "5.",
        "1e-3",
        "1.5E10",
        "1,234.56",
        "1.234,56",
        "1.234.567",
        "1,234,567",
        "1 234 567,8",
        "1\xC2\xA0"
        "234",
        "1'234.5",
        "12 %",
        "$5",
        "-$1.50",
        "\xE2\x82\xAC 5",
        "5 \xE2\x82\xAC",
        "(1,234)",
        "\xE2\x88\x92"
        "5",
        "007",
        "2020"}},
      {CellKind::Date,
       {"2020-12-31", "2020/1/2", "31.12.2020", "1.2.20", "12/31/2020", "2020-12", "12/2020", "12:30", "9:05:10.25",
        "10:00 PM", "2020-12-31 12:30", "2020-12-31T12:30:00Z", "2020-12-31T12:30:00+01:00", "2020-Q1", "2020Q4",
        "Q1 2020", "2020-W07", "2020M11"}},
      {CellKind::Text,
       {"a",
        "Jan",
        "1a",
        "a1",
        "1-2",
        "1.2.3.4",
        "12 34",
        "1,23,4",
        "1 2 3",
        "192.168.0.1",
        "5\"",
        "1:2",
        "e5",
        "1e",
        "2020-",
        "+",
        "1..2",
        "()",
        "2020-01-01-01",
        "1,234.567.890",
        "12345678901234567890123456789012345678901234567890123456789012345"}},
  };
  for (const Row& row : rows) {
    for (const char* const cell : row.cells) EXPECT_EQ(kind_of_cell(cell), row.kind) << cell;
  }
}

}  // namespace
}  // namespace plexoras
