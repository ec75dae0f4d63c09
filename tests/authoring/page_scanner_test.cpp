#include "authoring/page_scanner.h"

#include <gtest/gtest.h>

#include "template/engine_fixture.h"

namespace plexoras {
namespace {

// "{text}" for every control and "!offset what" for every problem, the first words of it.
std::string scanned(std::string_view page) {
  const ScannedPage result = scan_page(page);
  std::string text;
  for (const ControlSpan& span : result.spans) {
    EXPECT_TRUE(page.substr(span.begin).starts_with("<!--dtc"));
    EXPECT_EQ(page.substr(span.state_end, span.text_begin - span.state_end), "-->");
    EXPECT_EQ(page.substr(span.text_end, span.end - span.text_end), "<!--/dtc-->");
    text += "{" + std::string(page.substr(span.text_begin, span.text_end - span.text_begin)) + "}";
  }
  for (const SpanProblem& problem : result.problems) {
    text += "!" + std::to_string(problem.at) + " " + problem.what.substr(0, problem.what.find(';'));
  }
  return text;
}

TEST(PageScanner, FindsControlsWhereTheyAreControls) {
  constexpr std::string_view one = "<!--dtc X name=\"a\"\n-->1<!--/dtc-->";
  struct Case {
    const char* name;
    std::string_view page;  // @ stands for a control
    std::string_view found;
  };
  const Case cases[] = {
      {"alone", "@", "{1}"},
      {"two in a row", "@@", "{1}{1}"},
      {"in a table", "<table><tr><td>@</td></tr></table>", "{1}"},
      {"in preformatted text", "<pre>\n@\n</pre>", "{1}"},
      {"in a script", "<script>@</script>", ""},
      {"behind a script", "<script src='a>b'></script>@", "{1}"},
      {"tags in any case", "<SCRIPT type=x>@</Script >@", "{1}"},
      {"a script that names its end", "<script>'</scripts>' @</script>@", "{1}"},
      {"a script without an end", "<script>@", ""},
      {"in a style sheet", "<style>@</style>", ""},
      {"in a text area", "<textarea rows=2>@</textarea>@", "{1}"},
      {"in a title", "<title>@</title>", ""},
      {"in an element whose name begins so", "<scripted>@</scripted><titles/>@", "{1}{1}"},
      {"in an attribute", "<a title='@' alt = '@'>", ""},
      {"behind an attribute with a bracket", "<a title=\">\">@", "{1}"},
      {"an apostrophe in a tag is none", "<a it's>@", "{1}"},
      {"in an ordinary comment", "<!-- old: @ --> @", "{1}{1}"},
      {"behind a comment with a quote", "<!-- it's <b title=\" -->@", "{1}"},
      {"behind empty comments", "<!--><title>@</title><!--->@", "{1}"},
      {"behind declarations", "<!DOCTYPE html><?xml version='1.0'?><![CDATA[x]]>@", "{1}"},
      {"in a server's script", "<?php if ($a->b) echo '@' ?>@<%= \"@\" %>@", "{1}{1}"},
      {"in a server's script without an end", "@<?php echo '@';", "{1}"},
      {"behind stray brackets", "1 < 2 <> <3 </ > @", "{1}"},
      {"at an unclosed tag", "@<a href=\"x", "{1}"},
      {"at an unclosed comment", "@<!-- x", "{1}"},
      {"another mark that begins alike", "<!--dtcs X-->@<!--dtc-->", "{1}"},
      {"tags in the text", "<!--dtc X name=\"a\"-->\n<script>'</p>'<!--/dtc-->", "{\n<script>'</p>'}"},
      {"an empty page", "", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(scanned(replaced_all(c.page, "@", one)), c.found) << c.name;
}

TEST(PageScanner, TellsOfMarksThatDoNotFit) {
  struct Case {
    const char* name;
    std::string_view page, found;
  };
  const Case cases[] = {
      {"open state", "<p><!--dtc X name=\"a\"", "!3 the comment that holds this control's state is not closed"},
      {"open control", "<p><!--dtc X name=\"a\"-->text", "!3 this control is not closed"},
      {"a control in the text of another", "<!--dtc X-->1<!--dtc Y-->2<!--/dtc--><!--/dtc-->",
       "{2}!0 this control is not closed!37 this closing mark belongs to no control"},
      {"a closing mark alone", "a<!--/dtc-->", "!1 this closing mark belongs to no control"},
  };
  for (const Case& c : cases) EXPECT_EQ(scanned(c.page), c.found) << c.name;
}

TEST(PageScanner, FindsTheEndOfTheContent) {
  struct Case {
    std::string_view page, content;
  };
  const Case cases[] = {{"a<b></BODY></html>", "a<b>"},
                        {"a</html >\n", "a"},
                        {"<script>'</body>'</script>b", "<script>'</body>'</script>b"},
                        {"1</body>2</body>", "1</body>2"},
                        {"", ""}};
  for (const Case& c : cases) EXPECT_EQ(c.page.substr(0, scan_page(c.page).content_end), c.content);
}

}  // namespace
}  // namespace plexoras
