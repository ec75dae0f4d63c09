#include "authoring/page.h"

#include <gtest/gtest.h>

#include "authoring_fixture.h"
#include "host/temporary_directory.h"

namespace plexoras {
namespace {

ControlRecord sample_record() {
  ControlRecord record{.identifier = "X.Chart", .name = "A", .width = 300, .height = 0, .visible = false, .state = {}};
  record.state = {{"AppletID", "A"}, {"a b='/\"\n-->", "1\r\n2--"}, {"Z", ""}};
  return record;
}

std::string problems_of(std::string_view bytes) {
  try {
    Page::parse("p.html", std::string(bytes));
    return "";
  } catch (const PageError& error) {
    return error.what();
  }
}

TEST(Page, WritesAControlInLines) {
  EXPECT_EQ(readable(Page::span_text(sample_record(), "<p>\r\n</p>\r\n", "\r\n")),
            "<!--dtc X.Chart name=\"A\" width=\"300\" height=\"0\" visible=\"False\"\n"
            "AppletID=\"A\"\n"
            "a&#32;b&#61;&#39;&#47;&quot;&#10;-&#45;&gt;=\"1&#13;&#10;\n2-&#45;\"\n"
            "Z=\"\"\n"
            "-->\n<p>\n</p>\n<!--/dtc-->");
}

TEST(Page, ReadsWhatItWrites) {
  for (const std::string_view line_break : {"\n", "\r\n"}) {
    ControlRecord visible = sample_record();
    visible.name = "B";
    visible.visible = true;
    visible.state.clear();
    const std::string bytes = page_of(sample_record(), "1", line_break) + page_of(visible, "", line_break);
    const Page page = Page::parse("p.html", bytes);
    ASSERT_EQ(page.controls().size(), 2u);
    EXPECT_EQ(page.controls()[0].record, sample_record());
    EXPECT_EQ(page.controls()[1].record, visible);
    EXPECT_EQ(page.find("B"), 1u);
    EXPECT_EQ(page.find("b"), std::nullopt);
    EXPECT_EQ(page.line_break(), line_break);

    // Writing it all again gives the same bytes.
    Page::Edit edit(page);
    edit.replace_text(1, "");
    edit.replace_record(1, visible);
    edit.replace_text(0, "1");
    edit.replace_record(0, sample_record());
    EXPECT_EQ(edit.result(), bytes);
  }
}

TEST(Page, TakesHandWrittenForms) {
  const Page page = Page::parse("p", "<!--dtc\tX\tname=\"A\" \r\n\r\n  K=\"1\"\tL=\"&apos;\"   --><!--/dtc-->");
  ControlRecord expected{.identifier = "X", .name = "A", .state = {{"K", "1"}, {"L", "'"}}};
  EXPECT_EQ(page.controls().at(0).record, expected);
}

TEST(Page, EditKeepsEveryOtherByte) {
  const std::string before = "\xEF\xBB\xBF<p>\r\n\xE9\r\0\n", between = "\t<br>\r", after = "\n</body>\r\n\r";
  const ControlRecord record{.identifier = "X", .name = "A", .state = {}};
  const auto whole = [&](const std::string& a, const std::string& b) { return before + a + between + b + after; };
  const Page page =
      Page::parse("p", whole(Page::span_text(record, "1", "\r\n"), "<!--dtc X name=\"B\"-->  untouched <!--/dtc-->"));
  EXPECT_EQ(Page::Edit(page).result(), page.bytes());

  ControlRecord wider = record;
  wider.width = 500;
  wider.state = {{"K", "v"}};
  Page::Edit edit(page);
  edit.insert(page.content_end(), "<i>");
  edit.replace_record(0, wider);
  edit.replace_text(0, "2\r\n3");
  EXPECT_EQ(edit.result(), before + Page::span_text(wider, "2\r\n3", "\r\n") + between +
                               "<!--dtc X name=\"B\"-->  untouched <!--/dtc-->" + "\n<i></body>\r\n\r");
}

TEST(Page, RefusesTextsThatHoldMarks) {
  const Page page = Page::parse("p", page_of(sample_record()));
  for (const std::string_view text :
       {"<!--dtc X-->", "a<!--/dtc-->", "<!--/dtc", "<!--published B-->", "<!--/published-->"}) {
    Page::Edit edit(page);
    EXPECT_EQ(brief_outcome([&] { return edit.replace_text(0, text), ""; }), "error 5") << text;
    EXPECT_EQ(edit.result(), page.bytes());
    EXPECT_EQ(brief_outcome([&] { return Page::span_text(sample_record(), text, "\n"); }), "error 5") << text;
  }
}

TEST(Page, FindsPublishedTextsInRealComments) {
  constexpr std::string_view one = "<!--published A&amp;-->\n1<!--/published-->";
  struct Case {
    const char* name;
    std::string_view page;   // @ stands for a published text
    std::string_view found;  // "-" for none
  };
  const Case cases[] = {
      {"alone", "@", "1"},
      {"the first of two", "@<!--published A&amp;-->2<!--/published-->", "1"},
      {"in a script", "<script>'@'</script>", "-"},
      {"in an attribute", "<p title='@'>", "-"},
      {"behind one that is not closed", "<!--published B-->@", "1"},
      {"without an end", "<!--published A&amp;-->", "-"},
      {"an end alone", "<!--/published-->", "-"},
      {"around a control", "<!--published A&amp;--><!--dtc X name=\"A\"--><!--/dtc--><!--/published-->", "-"},
  };
  for (const Case& c : cases) {
    const Page page = Page::parse("p", replaced_all(c.page, "@", one));
    EXPECT_EQ(page.published_text("A&").value_or("-"), c.found) << c.name;
    EXPECT_EQ(page.is_published(), c.found != "-") << c.name;
  }
}

TEST(Page, TellsEveryProblemAndItsPlace) {
  constexpr std::string_view no_name =
      "; write <!--dtc PlexorasDTC.DiagramDTC name=\"Sales\" width=\"480\" height=\"320\"";
  struct Case {
    std::string_view page;
    std::string problems;
  };
  const Case cases[] = {
      {"\r\n <!--dtc X name=\"A\"\r\nK=\"&x;\"--><!--/dtc-->",
       "3:4: error: this \"&\" begins no entity; write it as &amp;"},
      {"<!--dtc X name=\"A\"\nK&=\"1\"--><!--/dtc-->", "2:2: error: this \"&\" begins no entity; write it as &amp;"},
      {"<!--dtc X name=\"A\" K=\"1\"--><!--/dtc-->",
       "1:20: error: \"K\" is not known here; the first line takes name, width, height and visible"},
      {"<!--dtc X name=\"A\"\nK='1'--><!--/dtc-->", "2:1: error: \"K\" has no value; write KEY=\"VALUE\""},
      {"<!--dtc X name=\"A\"\nK=\"1--><!--/dtc-->",
       "2:3: error: the value of \"K\" is not closed; end it with a quotation mark"},
      {"<!--dtc X name=\"A\"\nK=\"1\"\nK=\"2\"--><!--/dtc-->",
       "3:1: error: \"K\" stands here a second time; keep one of the two"},
      {"<!--dtc X name=\"A\" name=\"B\"--><!--/dtc-->",
       "1:20: error: \"name\" stands here a second time; keep one of the two"},
      {"<!--dtc X name=\"A\" width=\"1px\"--><!--/dtc-->",
       "1:20: error: width must be a whole number of pixels from 0 to 32767, not \"1px\""},
      {"<!--dtc X name=\"A\" height=\"32768\"--><!--/dtc-->",
       "1:20: error: height must be a whole number of pixels from 0 to 32767, not \"32768\""},
      {"<!--dtc X name=\"A\" visible=\"no\"--><!--/dtc-->", "1:20: error: visible must be True or False, not \"no\""},
      {"<!--dtc X --><!--/dtc-->", "1:9: error: the control has no name" + std::string(no_name)},
  };
  for (const Case& c : cases) EXPECT_EQ(problems_of(c.page), "p.html:" + c.problems);

  EXPECT_EQ(problems_of("<!--/dtc-->\n<!--dtc X name=\"A\"--><!--/dtc-->\n  <!--dtc X name=\"A\"\nK--><!--/dtc-->"),
            "p.html:1:1: error: this closing mark belongs to no control; remove it\n"
            "p.html:3:3: error: the name \"A\" is taken by the control in line 2; give this one another\n"
            "p.html:4:1: error: \"K\" has no value; write KEY=\"VALUE\"");
  EXPECT_EQ(brief_outcome([] { return Page::read("/no such page").path(); }), "error 53");
}

TEST(Page, WritesOnlyWhatChanges) {
  const TemporaryDirectory folder;
  const std::string path = folder.path("p.html");
  EXPECT_TRUE(write_if_changed(path, "1"));
  EXPECT_FALSE(write_if_changed(path, "1"));
  EXPECT_TRUE(write_if_changed(path, ""));
  EXPECT_EQ(folder.read("p.html"), "");
  EXPECT_EQ(Page::read(path).bytes(), "");
}

}  // namespace
}  // namespace plexoras
