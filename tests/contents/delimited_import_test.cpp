#include "contents/delimited_import.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "host/headless_platform.h"
#include "host/outcome.h"
#include "host/temporary_directory.h"
#include "literal_import.h"

namespace plexoras {
namespace {

// The document, or the beginning of an error's text, as LiteralImport tells it.
std::string imported(std::string_view file, const DelimitedFormat& format, std::size_t piece_size) {
  try {
    DelimitedImport import(format);
    for (std::size_t from = 0; from < file.size(); from += piece_size) import.add(file.substr(from, piece_size));
    return import.finish().take_text();
  } catch (const AutomationError& error) {
    EXPECT_EQ(error.number(), RunTimeError::SubscriptOutOfRange);
    return error.description().substr(0, error.description().find(" is empty"));
  }
}

std::string document(std::string_view rows, std::string_view columns, std::string_view values) {
  return "<xml><rows>" + std::string(rows) + "</><cols>" + std::string(columns) + "</><data>" + std::string(values) +
         "</></xml>";
}

TEST(DelimitedImport, MakesDocuments) {
  const DelimitedFormat plain, quoted{.qualifier = "\""}, labels{.first_row = true, .first_col = true};
  const DelimitedFormat first_row{.first_row = true}, first_col{.first_col = true};
  struct Case {
    const char* name;
    DelimitedFormat format;
    std::string_view file;
    std::string expected;
  };
  const Case cases[] = {
      {"nothing", plain, "", "<xml><cols/><rows/><data/></>"},
      {"two lines", plain, "a,b\r\n1,2\r\n",
       document("<row/><row/>", "", "<value>a</><value>b</><value>1</><value>2</>")},
      {"both labels", labels, "a,b\r\n1,2", document("a<row>1</>", "<col>b</>", "<value>2</>")},
      {"column labels", first_row, "a,b\n1", document("<row/>", "<col>a</><col>b</>", "<value>1</>")},
      {"row labels", first_col, "a,b\n1", document("<row>a</><row>1</>", "", "<value>b</>")},
      {"labels alone", first_row, "a,b\r\n", document("", "<col>a</><col>b</>", "")},
      {"empty field between", plain, "x,,y", document("<row/>", "", "<value>x</><value></><value>y</>")},
      {"no field behind the last delimiter", plain, "x,y,", document("<row/>", "", "<value>x</><value>y</>")},
      {"delimiter alone", plain, ",", document("<row/>", "", "<value></>")},
      {"text behind the closing qualifier", quoted, "\"a,b\"junk,c",
       document("<row/>", "", "<value>a,b</><value>c</>")},
      {"doubled qualifier", quoted, "\"a\"\"b\",c", document("<row/>", "", "<value>a</><value>c</>")},
      {"qualifier inside a field", quoted, "a\"b,c\"", document("<row/>", "", "<value>a&quot;b</><value>c&quot;</>")},
      {"unclosed qualifier", quoted, "\"a,b\n1", document("<row/><row/>", "", "<value>a,b</><value>1</>")},
      {"lone qualifier", quoted, "a,\"", document("<row/>", "", "<value>a</><value></>")},
      {"qualifier of two bytes",
       {.qualifier = "''"},
       "''a''",
       document("<row/>", "", "<value>&apos;&apos;a&apos;&apos;</>")},
      {"escapes", quoted, "<&>'\t,\"\t\"", document("<row/>", "", "<value>&lt;&amp;&gt;&apos;&tab;</><value>&tab;</>")},
      {"blanks stay", plain, " a , b", document("<row/>", "", "<value> a </><value> b</>")},
      {"line ends of all kinds", plain, "a\rb\nc\r\nd\n\re",
       document("<row/><row/><row/><row/><row/><row/>", "", "<value>a</><value>b</><value>c</><value>d</><value>e</>")},
      {"empty last line", plain, "a\n\n", document("<row/>", "", "<value>a</>")},
      {"empty last lines", plain, "a\n\n\n", document("<row/><row/>", "", "<value>a</>")},
      {"one empty line", plain, "\r\n", document("", "", "")},
      {"longer delimiter", {.delimiter = "::"}, "a::b::", document("<row/>", "", "<value>a</><value>:b</><value>:</>")},
      {"overlapping delimiters",
       {.delimiter = "aa"},
       "aaab",
       document("<row/>", "", "<value></><value></><value>ab</>")},
      {"its rest is a qualifier",
       {.delimiter = ";'", .qualifier = "'"},
       "a;'b'c;'",
       document("<row/>", "", "<value>a</><value>b</><value></>")},
      {"its rest begins another one",
       {.delimiter = "a\"\"a", .qualifier = "\""},
       "xa\"\"a\"\"ay",
       document("<row/>", "", "<value>x</><value></><value></>")},
      {"one character beyond ASCII",
       {.delimiter = "\xC2\xA7", .qualifier = "\""},
       "a\xC2\xA7\xC2\xA7\"b\xC2\xA7\"\xC2\xA7\xC2\xC2\xA7\n",
       document("<row/>", "", "<value>a</><value></><value>b\xC2\xA7</><value>\xC2</>")},
      {"a delimiter that begins with such a one",
       {.delimiter = "\xF0\x9F\x98\x80|"},
       "a\xF0\x9F\x98\x80|b",
       document("<row/>", "", "<value>a</><value>|b</>")},
      {"a delimiter that is no UTF-8",
       {.delimiter = "\xE0\x9F\x98"},
       "a\xE0\x9F\x98",
       document("<row/>", "", "<value>a</><value>\x9F\x98</>")},
      {"line end as delimiter", {.delimiter = "\n"}, "a\nb", document("<row/><row/>", "", "<value>a</><value>b</>")},
      {"label missing", first_col, "a,b\n\nc", "Line 2"},
      {"label missing above an empty last line", first_col, "a\r\n\r\n\r\n", "Line 2"},
      {"corner missing", labels, "\na", "Line 1"},
      {"bytes stay",
       plain,
       {"\0\xFF\xC3\xA4\x0B", 5},
       document("<row/>", "", std::string("<value>\0\xFF\xC3\xA4\x0B</>", 15))},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(LiteralImport(c.file, c.format).result(), c.expected) << c.name << ", literally";
    for (const std::size_t piece_size : {1U, 2U, 1000U}) {
      EXPECT_EQ(imported(c.file, c.format, piece_size), c.expected) << c.name << ", pieces of " << piece_size;
    }
  }
}

// Random texts of the bytes that matter, with stretches of others that reach over blocks of 64, cut at random places.
TEST(DelimitedImport, EqualsTheLiteralImport) {
  std::mt19937 random(1);
  const auto below = [&](std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  };
  const std::string_view delimiters[] = {",",   ",",      ";",     "\t",       " ",
                                         "\"",  "a",      "\n",    "aa",       ",a",
                                         ",\"", "a\"a\"", "aabaa", "\xC2\xA7", "\xC2\xA7\"\xC2\xA7"};
  const std::string_view qualifiers[] = {"", "\"", "\"", "'", ",", "a", "\r", "\"\""};
  const std::string_view bytes = ",,,;aab\"\"'\r\n\n\t <>&\x0B\xE4\xC2\xA7\xC2\xA7";
  for (int round = 0; round < 20'000; ++round) {
    const DelimitedFormat format{.delimiter = std::string(delimiters[below(std::size(delimiters))]),
                                 .qualifier = std::string(qualifiers[below(std::size(qualifiers))]),
                                 .first_row = below(2) == 1,
                                 .first_col = below(3) == 1};
    std::string file;
    for (std::size_t count = below(round % 50 == 0 ? 400 : 30); count > 0; --count) {
      file += below(8) == 0 ? std::string(below(below(4) == 0 ? 200 : 20), 'x')
                            : std::string(1, bytes[below(bytes.size())]);
    }
    std::string given;
    try {
      DelimitedImport import(format);
      for (std::string_view rest = file; !rest.empty();) {
        const std::size_t size = std::min(rest.size(), 1 + below(below(2) == 0 ? 5 : 300));
        // A copy without a byte behind it, so that a sanitizer notices reading too far.
        const std::vector<char> piece(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(size));
        import.add({piece.data(), piece.size()});
        rest.remove_prefix(size);
      }
      given = import.finish().take_text();
    } catch (const AutomationError& error) {
      given = error.description().substr(0, error.description().find(" is empty"));
    }
    ASSERT_EQ(given, LiteralImport(file, format).result())
        << "delimiter " << format.delimiter << ", qualifier " << format.qualifier << ", labels " << format.first_row
        << format.first_col << ":\n"
        << file;
  }
}

// What gives the most text for its bytes, more of it than the first pieces of memory hold.
TEST(DelimitedImport, HasRoomForTheDensestTexts) {
  const std::string long_delimiter = "," + std::string(200, '\'');
  for (const std::string_view unit :
       {std::string_view(","), std::string_view("'"), std::string_view("\n"), std::string_view("x\n"),
        std::string_view("x,"), std::string_view(",\n"), std::string_view("\"\","), std::string_view(",,,\n\n<"),
        std::string_view(long_delimiter), std::string_view(long_delimiter).substr(1)}) {
    std::string file = "first" + std::string(unit) + "\n";
    for (int i = 0; i < 40'000; ++i) file += unit;
    for (const DelimitedFormat& format :
         {DelimitedFormat{}, DelimitedFormat{.qualifier = "\"", .first_row = true}, DelimitedFormat{.delimiter = ",,"},
          DelimitedFormat{.delimiter = long_delimiter}}) {
      EXPECT_TRUE(imported(file, format, 65'536) == LiteralImport(file, format).result()) << unit << format.delimiter;
    }
  }
}

TEST(DelimitedImport, SaysWhatIsWrong) {
  const auto result = [](std::string_view file, const DelimitedFormat& format) {
    return outcome([&] {
      DelimitedImport import(format);
      import.add(file);
      return import.finish().take_text();
    });
  };
  EXPECT_EQ(
      result("a\n\nb\n", {.first_col = true}),
      "error 9: Line 2 is empty, but its first field is to be a label; take the line out, or import without labels "
      "in the first column");
  EXPECT_EQ(result("a", {.delimiter = ""}), "error 5: The delimiter between fields must not be empty");
}

TEST(DelimitedImport, ReadsFiles) {
  const TemporaryDirectory directory;
  NativeFileSystem files(directory.path());
  const std::string path = directory.write("table.csv", "a,b\n1,2\n");
  EXPECT_EQ(import_delimited_file(files, path, {.first_row = true}),
            document("<row/>", "<col>a</><col>b</>", "<value>1</><value>2</>"));
  EXPECT_EQ(import_delimited_file(files, directory.write("empty", ""), {}), empty_contents_document);
  EXPECT_EQ(brief_outcome([&] { return import_delimited_file(files, directory.path("none"), {}); }), "error 53");
}

}  // namespace
}  // namespace plexoras
