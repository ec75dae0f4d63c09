// Values that could break out of a page, a template or a document: set, saved, loaded and published.

#include <gtest/gtest.h>

#include "applet/contents_reader.h"
#include "applet/format_xml.h"
#include "applet/style_document.h"
#include "authoring/publisher.h"
#include "authoring_fixture.h"
#include "chart_control/events_page.h"
#include "contents/contents_document.h"
#include "host/atomic_file.h"
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

/// An author with the templates that ship.
struct ShippedAuthor : Author {
  ShippedAuthor() {
    for (const std::string file : {"APPLET.DAT", "DIAGRAM.DAT"}) {
      host.files[file] = read_file(PLEXORAS_SOURCE_DIR "/share/DTC/" + file);
    }
  }
};

// What readers get behind the chart when `scripts` (custom property, script) are stored.
std::string published_scripts(const std::vector<std::pair<std::string, std::string>>& scripts) {
  ShippedAuthor author;
  LiveControl control = author.make("Sa\"les");
  ControlProperties properties(control);
  for (const auto& [key, script] : scripts) properties.set(key, script);
  const TemporaryDirectory folder;
  const std::string path = folder.write("p.html", page_of(control.record(), "", "\r\n"));
  Publisher publisher(author.session);
  EXPECT_EQ(publisher.publish_page(path, path).outcome, PublishedFile::Outcome::Written);
  const Page page = Page::read(path);
  const ControlSpan& span = page.controls().at(0).span;
  const std::string text = page.bytes().substr(span.text_begin, span.text_end - span.text_begin);
  constexpr std::string_view element_end =
      "</plexoras-diagram>\r\n<script defer src=\"plexoras-diagram.js\"></script>\r\n";
  return text.substr(text.find(element_end) + element_end.size());
}

std::string listener(std::string_view event, std::string_view script) {
  return "<script "
         "data-for=\"Sa&quot;les\">document.getElementById(document.currentScript.dataset.for).addEventListener(\"" +
         std::string(event) + "\", function (event) {\r\n" + std::string(script) + "\r\n}); //--></script>\r\n";
}

TEST(HostileValues, ScriptsAreWorkingScriptsForReaders) {
  struct Case {
    const char* name;
    std::string_view script;
    std::string_view published = script;
  };
  const Case cases[] = {
      {"the end of a script", "a = '</script>' + '</Script ' + '</b>'", "a = '<\\/script>' + '<\\/Script ' + '</b>'"},
      {"one that is parted already", "'<\\/script>'"},
      {"comments and scripts of a page", "<!--\r\na = '<!-- <script>'; for (i=0; i<scripts.length;) i++\r\n-->"},
      {"marks of controls", "'<!--dtc X -->' + '<!--/dtc-->'", "'<\\!--dtc X -->' + '<\\!--/dtc-->'"},
      {"references", "$(ONSELECT); $([TEMPLATE]); $(\\ALT,a,b); #(HTML ALT) #(LOOP) $(?ALT) $$((#(("},
      {"escaped references", "/\\$(x)/; '\\\\$(y) \\\\\\#(z)'"},
      {"what stands for a parenthesis", "~( $~(a) #~(b) ~~( $~~( &#0040; ~"},
      {"directives", "#HALT\r\n#DEFINE ALT x\r\n  #IFDEF ALT\r\n;\r\n[TEMPLATE]\r\n#%TODAY"},
      {"quotes at the ends", "\"x' + `\t`'"},
      {"blanks at the ends", "  x\t "},
      {"a comment and a backslash at the end", "x // y\\"},
      {"line ends alone", "\r\n\n"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(published_scripts({{"ONSELECT", std::string(c.script)}}), listener("plexoras-select", c.published))
        << c.name;
  }
  EXPECT_EQ(published_scripts({{"ALT", "no script"}, {"EVENTS", "plexoras-select"}}), "");
  EXPECT_EQ(published_scripts({{"ONERROR", "4"}, {"ONCOMMAND", "}"}, {"ONSELECT", "2"}, {"ONREADY", "1"}}),
            listener("plexoras-ready", "1") + listener("plexoras-select", "2") + listener("plexoras-command", "}") +
                listener("plexoras-error", "4"))
      << "an element each, whatever is wrong with one of them";
}

// What the page stores is what the template that ships publishes: the two agree on every event.
TEST(HostileValues, ScriptsOfTheEventsPageReachReaders) {
  ShippedAuthor author;
  LiveControl control = author.make("Sales");
  Events page(author.session);
  page.select({ObjectRef(ObjectRef(), &control.control())});
  const StringList events = page.lstEvents.entries();
  EXPECT_EQ(events, (StringList{"plexoras-ready", "plexoras-select", "plexoras-command", "plexoras-error"}));
  for (const std::string& event : events) {
    page.lstEvents.user_select(static_cast<int>(&event - events.data()));
    EXPECT_TRUE(page.lblDetail.caption.starts_with("event.detail: ")) << event;
    page.txtScript.user_type("of(" + event + ")");
  }
  page.apply();
  EXPECT_EQ(control.control().GetProperty("EVENTS"), "plexoras-ready plexoras-select plexoras-command plexoras-error");
  const std::string text = control.control().GetRuntimeTextOnErrorReport();
  for (const std::string& event : events) {
    EXPECT_NE(text.find("(\"" + event + "\", function (event) {\r\nof(" + event + ")\r\n"), std::string::npos) << event;
  }
}

}  // namespace
}  // namespace plexoras
