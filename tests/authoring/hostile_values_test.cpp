// Values that could break out of a page, a template or a document: set, saved, loaded and published.

#include <gtest/gtest.h>

#include "applet/contents_reader.h"
#include "applet/format_xml.h"
#include "applet/style_document.h"
#include "authoring/publisher.h"
#include "authoring_fixture.h"
#include "contents/contents_document.h"
#include "host/temporary_directory.h"

namespace plexoras {
namespace {

using NewKeys = ControlProperties::NewKeys;

std::vector<std::string> text_properties() {
  std::vector<std::string> names = {"NOTE", "OWN"};
  for (const StyleProperty& property : style_properties()) {
    if (property.type == ValueType::String) names.emplace_back(property.name);
  }
  return names;
}

std::string contents_with_label(std::string_view label) {
  ContentsWriter writer;
  writer.set_row_title("corner");
  writer.add_column(label);
  writer.add_row(label);
  writer.add_value(label);
  return writer.text();
}

void expect_values(LiveControl& control, const std::vector<std::string>& names, const std::string& value) {
  const ControlProperties properties(control);
  for (const std::string& name : names) EXPECT_TRUE(properties.get(name) == value) << name;
  const ContentsTable table = read_contents(properties.get("XmlContents"));
  ASSERT_EQ(table.rows.size(), 1u);
  EXPECT_TRUE(table.rows[0] == value && table.columns.at(0) == value && table.values.at(0) == value);
}

// Sets `value` everywhere, and follows it through a page.
void follow(const std::string& value, const std::vector<std::string>& names) {
  Author author;
  const ControlRecord neighbour = author.make("Before").record();
  LiveControl control = author.make("Hostile");
  ControlProperties properties(control);
  for (const std::string& name : names) properties.set(name, value, NewKeys::Accept);
  properties.set("XmlContents", contents_with_label(value));
  if (value.size() < 1000) properties.set("K" + value, "1", NewKeys::Accept);
  expect_values(control, names, value);
  const ControlRecord record = control.record();

  const TemporaryDirectory folder;
  const std::string path = folder.write(
      "p.html", page_of(neighbour, "1") + page_of(record, "2", "\n") + page_of(author.make("After").record()));
  const auto expect_same_controls = [&] {
    const Page page = Page::read(path);
    ASSERT_EQ(page.controls().size(), 3u);
    EXPECT_TRUE(page.controls()[0].record == neighbour && page.controls()[1].record == record);
    EXPECT_EQ(page.controls()[2].record.name, "After");
  };
  expect_same_controls();

  LiveControl loaded(author.session, Page::read(path).controls().at(1).record);
  expect_values(loaded, names, value);
  EXPECT_TRUE(loaded.record() == record);

  Publisher publisher(author.session);
  const PublishedFile published = publisher.publish_page(path, path);
  ASSERT_EQ(published.outcome, PublishedFile::Outcome::Written)
      << (published.problems.empty() ? "" : to_text(published.problems[0])) << published.diagnostics.size();
  expect_same_controls();
  const Page page = Page::read(path);
  const ControlSpan& span = page.controls()[1].span;
  const std::string_view text = std::string_view(page.bytes()).substr(span.text_begin, span.text_end - span.text_begin);
  EXPECT_NE(text.find(escape_for_attribute("<row>" + escape_contents(value) + "</>")), std::string::npos);
  EXPECT_NE(text.find(escape_for_attribute("<FontName>" + escape_contents(value) + "</>")), std::string::npos);
  EXPECT_EQ(publisher.publish_page(path, path).outcome, PublishedFile::Outcome::Unchanged);
}

TEST(HostileValues, GoThroughAPageUnharmed) {
  struct Case {
    const char* name;
    std::string value;
  };
  std::string control_characters;
  for (char c = 0; c < 32; ++c) control_characters += c;
  const Case cases[] = {
      {"quotes", "'\"`\"\"''"},
      {"the end of a comment", "-->"},
      {"hyphens", "----"},
      {"another end of a comment", "--!><!-->"},
      {"a hyphen at each end", "-x-"},
      {"a closing mark", "<!--/dtc--><!--dtc X name=\"Q\"\n-->"},
      {"the end of a script", "</script><script>x</SCRIPT"},
      {"elements of text", "<textarea><style></title>"},
      {"control characters and NUL", control_characters + "\x7F"},
      {"bad UTF-8", "\xC3(\xFF\xFE\xED\xA0\x80\xF5"},
      {"separator words", "<row>\x02<col>\x03<value>\x04"},
      {"references", "$(NOTE)$([TEMPLATE])$(\\NOTE)#(LOOP)#(%TODAY)"},
      {"escaped references", "\\$(NOTE)\\#(X)\\\\$("},
      {"the start of a reference", "$"},
      {"half a reference", "$("},
      {"a backslash at the end", "x\\"},
      {"directives", "#HALT\r\n#DEFINE NOTE 1\r\n[TEMPLATE]\r\n;"},
      {"entities", "&amp;#45;&#45;&quot;&"},
      {"line ends alone", "\r\n"},
      {"blanks", "  \t  "},
      {"the end of an element", "</></xml><row/>"},
      {"an equals sign", "=\"\" KEY=\"VALUE\""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    follow(c.value, text_properties());
  }
}

TEST(HostileValues, MayBeLarge) {
  const std::string part = repeated("text ", 200) + "-->\"$(X)\\\n";
  follow(repeated(part, (1u << 20) / part.size()), {"NOTE", "FontName"});
}

}  // namespace
}  // namespace plexoras
