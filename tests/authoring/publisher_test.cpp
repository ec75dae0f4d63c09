#include "authoring/publisher.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "authoring_fixture.h"
#include "host/atomic_file.h"
#include "host/temporary_directory.h"

namespace plexoras {
namespace {

namespace fs = std::filesystem;
using Outcome = PublishedFile::Outcome;

struct Site {
  ControlRecord record(std::string_view name, std::string_view fail = {}) {
    LiveControl control = author.make(name);
    ControlProperties(control).set("FAIL", fail);
    return control.record();
  }

  PublishedFile publish(std::string_view name) {
    return Publisher(author.session).publish_page(folder.path(name), folder.path(name));
  }

  // Every problem without the folder, a line each.
  std::string problems(const PublishedFile& file) const {
    std::string text;
    for (const PageProblem& problem : file.problems) text += to_text(problem) + "\n";
    return replaced_all(text, folder.path() + "/", "");
  }

  Author author;
  TemporaryDirectory folder;
};

TEST(Publisher, MakesTheSameBytesAgain) {
  Site site;
  for (const std::string_view line_break : {"\n", "\r\n"}) {
    site.folder.write("p.html", page_of(site.record("A"), "last text", line_break));
    const PublishedFile first = site.publish("p.html");
    EXPECT_EQ(first.outcome, Outcome::Written) << site.problems(first);
    EXPECT_EQ(first.controls, 1u);
    const std::string bytes = site.folder.read("p.html");
    const std::string text = std::string(line_break) + "<!-- Setting Properties; ";
    EXPECT_NE(bytes.find(text), std::string::npos);
    EXPECT_NE(bytes.find("Getting HTML; --><p id=\"A\" style=\"&lt;xml&gt;"), std::string::npos);
    EXPECT_EQ(bytes.find("last text"), std::string::npos);
    EXPECT_EQ(Page::parse("p", bytes).controls().at(0).record, site.record("A"));

    const fs::file_time_type long_ago = fs::file_time_type::clock::now() - std::chrono::hours(1000);
    fs::last_write_time(site.folder.path("p.html"), long_ago);
    EXPECT_EQ(site.publish("p.html").outcome, Outcome::Unchanged);
    EXPECT_EQ(fs::last_write_time(site.folder.path("p.html")), long_ago) << "the file was touched";
    EXPECT_EQ(site.folder.read("p.html"), bytes);
  }
}

TEST(Publisher, DryRunWritesNothing) {
  Site site;
  const std::string page = page_of(site.record("A"), "old");
  site.folder.write("p.html", page);
  Publisher dry(site.author.session, Publisher::Writing::DryRun);
  EXPECT_EQ(dry.publish_page(site.folder.path("p.html"), site.folder.path("p.html")).outcome, Outcome::Written);
  EXPECT_EQ(dry.publish_page(site.folder.path("p.html"), site.folder.path("new/p.html")).outcome, Outcome::Written);
  EXPECT_EQ(site.folder.read("p.html"), page);
  EXPECT_EQ(site.folder.listing(), "p.html ");
}

TEST(Publisher, KeepsTheLastTextOfAControlThatFails) {
  struct Case {
    const char* name;
    std::string_view problem, details;  // what they begin with
    void (*spoil)(ControlRecord& record);
  };
  const Case cases[] = {
      {"its template fails", "its template failed",
       "DIAGRAM.DAT:", [](ControlRecord& record) { record.state.emplace_back("FAIL", "yes"); }},
      {"its state is no state", "XmlStyle: ", "",
       [](ControlRecord& record) {
         record.state = {{"XmlStyle", "<bad"}};
       }},
      {"its data make no text", "FormatXml: ", "",
       [](ControlRecord& record) { record.state.emplace_back("Contents", "<bad"); }},
      {"its type is not known", "there is no control \"X.Chart\" here", "",
       [](ControlRecord& record) { record.identifier = "X.Chart"; }},
  };
  for (const Case& c : cases) {
    Site site;
    ControlRecord bad = site.record("B");
    std::erase_if(bad.state, [](const auto& entry) { return entry.first == "Contents"; });
    c.spoil(bad);
    const std::string page =
        page_of(site.record("A"), "old A") + "\n " + page_of(bad, "old B") + page_of(site.record("C"), "old C");
    site.folder.write("p.html", page);
    const PublishedFile result = site.publish("p.html");
    EXPECT_EQ(result.outcome, Outcome::Failed) << c.name;
    EXPECT_EQ(result.controls, 2u) << c.name;
    const TextPlace place = Page::parse("p", page).controls().at(1).place;
    const std::string where = "p.html:" + std::to_string(place.line) + ":" + std::to_string(place.column);
    EXPECT_TRUE(site.problems(result).starts_with(where + ": error: control \"B\": " + std::string(c.problem)))
        << c.name << ": " << site.problems(result);
    EXPECT_EQ(result.problems.size(), 1u) << c.name << ": " << site.problems(result);
    const std::string details = result.diagnostics.empty() ? "" : to_text(result.diagnostics.front());
    EXPECT_TRUE(details.starts_with(c.details)) << c.name << ": " << details;
    EXPECT_EQ(details.empty(), c.details.empty()) << c.name;

    const std::string bytes = site.folder.read("p.html");
    EXPECT_NE(bytes.find("old B"), std::string::npos) << c.name;
    EXPECT_EQ(bytes.find("old A"), std::string::npos) << c.name;
    EXPECT_EQ(bytes.find("old C"), std::string::npos) << c.name;
  }
}

TEST(Publisher, KeepsWhatReadersOfAMirrorHave) {
  Site site;
  site.folder.write("p.html", page_of(site.record("A"), ""));
  using State = Publisher::StateInMirrors;
  const auto mirror = [&](State state) {
    Publisher publisher(site.author.session, Publisher::Writing::Write, {}, state);
    return publisher.publish_page(site.folder.path("p.html"), site.folder.path("out/p.html")).outcome;
  };
  ASSERT_EQ(mirror(State::Keep), Outcome::Written);
  const std::string with_state = site.folder.read("out/p.html");
  EXPECT_EQ(Page::parse("p", with_state).controls().at(0).record, site.record("A"));
  ASSERT_EQ(mirror(State::LeaveOut), Outcome::Written);
  EXPECT_EQ(mirror(State::LeaveOut), Outcome::Unchanged);
  const std::string without = site.folder.read("out/p.html");
  EXPECT_TRUE(without.starts_with("<body>\n<!--published A-->\n<!-- Setting Properties; ")) << without;
  EXPECT_TRUE(without.ends_with("</p>\n<!--/published-->\n</body>\n")) << without;

  // Whatever a mirror keeps, and kept before, a control that fails has the text of the last good one.
  site.folder.write("p.html", page_of(site.record("A", "yes"), "the source's own"));
  const auto text = [](const std::string& bytes) {
    const std::size_t begin = bytes.find("<!-- Setting");
    return bytes.substr(begin, bytes.find("<!--/", begin) - begin);
  };
  for (const std::string& last : {with_state, without}) {
    for (const State state : {State::Keep, State::LeaveOut}) {
      site.folder.write("out/p.html", last);
      EXPECT_EQ(mirror(state), Outcome::Failed);
      EXPECT_EQ(text(site.folder.read("out/p.html")), text(without));
      const bool stays = state == State::LeaveOut && last == with_state;  // for its state is not the source's
      EXPECT_EQ(Page::read(site.folder.path("out/p.html")).controls().size(), state == State::Keep || stays ? 1u : 0u);
    }
  }
  // Also in a page that has other line ends now.
  site.folder.write("p.html", page_of(site.record("A", "yes"), "", "\r\n"));
  EXPECT_EQ(mirror(State::LeaveOut), Outcome::Failed);
  EXPECT_EQ(site.folder.read("out/p.html"), replaced_all(without, "\n", "\r\n"));
  site.folder.write("p.html", page_of(site.record("A", "yes"), "the source's own"));
  fs::remove(site.folder.path("out/p.html"));
  EXPECT_EQ(mirror(State::LeaveOut), Outcome::Failed);
  EXPECT_EQ(site.folder.read("out/p.html"),
            "<body>\n<!--published A-->\nthe source's own\n<!--/published-->\n</body>\n");
}

TEST(Publisher, RefusesToReplaceStatesThatAreNowhereElse) {
  Site site;
  using State = Publisher::StateInMirrors;
  const std::string a = page_of(site.record("A"), "old"), edited = page_of(site.record("A", "no"), "old");
  const std::string b = page_of(site.record("B"), "old");
  struct Case {
    const char* name;
    std::string source, target;
    std::string_view refused, refused_with_state;  // the names of the controls
  };
  const Case cases[] = {
      {"the states of the source", a, a, "", ""},
      {"an edited state", a, edited, "A", ""},
      {"a control more", a, b + edited, "BA", "B"},
      {"the source itself, from its mirror", "<!--published A-->x<!--/published-->", a, "A", "A"},
      {"a page in place of one with controls", "<p>", a, "A", "A"},
      {"what only looks like a control", a, "<script>" + b + "</script>", "", ""},
      {"what cannot be read", a, b + "<!--dtc X-->", "!", "!"},
  };
  for (const Case& c : cases) {
    for (const State state : {State::LeaveOut, State::Keep}) {
      site.folder.write("p.html", c.source);
      site.folder.write("out.html", c.target);
      Publisher publisher(site.author.session, Publisher::Writing::Write, {}, state);
      const PublishedFile result = publisher.publish_page(site.folder.path("p.html"), site.folder.path("out.html"));
      std::string refused;
      for (const PageProblem& problem : result.problems) {
        EXPECT_EQ(problem.path, site.folder.path("out.html")) << c.name;
        const std::size_t name = problem.what.find("control \"");
        refused += name == std::string::npos ? '!' : problem.what[name + 9];
      }
      EXPECT_EQ(refused, state == State::Keep ? c.refused_with_state : c.refused) << c.name;
      EXPECT_EQ(site.folder.read("out.html") == c.target, !refused.empty()) << c.name;
    }
  }
}

TEST(Publisher, KeepsTheStateOfAPageThatIsItsOwnMirror) {
  Site site;
  site.folder.write("p.html", page_of(site.record("A")));
  fs::create_directory_symlink(site.folder.path(), site.folder.path("link"));
  for (const char* target : {"./p.html", "link/p.html"}) {
    Publisher(site.author.session).publish_page(site.folder.path("p.html"), site.folder.path(target));
    EXPECT_EQ(Page::read(site.folder.path("p.html")).controls().at(0).record, site.record("A")) << target;
  }
}

TEST(Publisher, RefusesTextsThatHoldAMark) {
  Site site;
  site.author.host.files["DIAGRAM.DAT"] = "[TEMPLATE]\n$(NOTE)\n";
  ControlRecord record = site.author.make().record();
  record.state.emplace_back("NOTE", "<!--/dtc-->");
  const std::string page = page_of(record, "old");
  site.folder.write("p.html", page);
  const PublishedFile result = site.publish("p.html");
  EXPECT_EQ(result.outcome, Outcome::Failed);
  EXPECT_EQ(site.folder.read("p.html"), page);
}

TEST(Publisher, TellsOfAMissingTemplateOnEveryPage) {
  Site site;
  const std::string page = page_of(site.record("A"), "old");
  site.author.host.files.clear();
  TemplateSession session(site.author.host.platform);
  for (const std::string_view name : {"a.html", "b.html"}) {
    site.folder.write(name, page);
    const PublishedFile result = Publisher(session).publish_page(site.folder.path(name), site.folder.path(name));
    EXPECT_EQ(result.outcome, Outcome::Failed);
    ASSERT_FALSE(result.diagnostics.empty());
    EXPECT_TRUE(result.diagnostics.front().what.starts_with("no template file \"DIAGRAM.DAT\""));
    EXPECT_EQ(site.folder.read(name), page);
  }
}

TEST(Publisher, LeavesAPageThatCannotBeReadAsItWas) {
  Site site;
  const std::string page = page_of(site.record("A"), "old") + "\n<!--dtc X-->\n";
  site.folder.write("p.html", page);
  const PublishedFile result = site.publish("p.html");
  EXPECT_EQ(result.outcome, Outcome::Failed);
  EXPECT_EQ(result.controls, 0u);
  EXPECT_TRUE(site.problems(result).find("error: this control is not closed") != std::string::npos);
  EXPECT_EQ(site.folder.read("p.html"), page);

  Publisher publisher(site.author.session);
  EXPECT_EQ(publisher.publish_page(site.folder.path("p.html"), site.folder.path("out/p.html")).outcome,
            Outcome::Failed);
  EXPECT_EQ(publisher.publish_page(site.folder.path("none"), site.folder.path("out/p")).outcome, Outcome::Failed);
  EXPECT_EQ(publisher.copy_file(site.folder.path("none"), site.folder.path("out/p")).outcome, Outcome::Failed);
  EXPECT_EQ(site.folder.listing(), "p.html ") << "nothing is made for what cannot be read";
}

// --- What readers get beside the control's own text ---

// A template that shows what the publisher gives it; a control with the note "plain" has no use for it.
constexpr std::string_view showing_template =
    "[PROPERTY]\n#DEFINE Contents x\n#DEFINE Contents ''\n#DEFINE NOTE x\n#DEFINE NOTE ''\n"
    "[TEMPLATE]\n"
    "#IFEQUAL NOTE plain\n<p>plain\n#ELSE\n<p>$(SNAPSHOT)$(DATATABLE)\n"
    "#IFDEF DIAGRAMSCRIPT\n<script src=\"$(DIAGRAMSCRIPT)\"></script>\n#ENDIF\n#ENDIF\n";

TEST(Publisher, PutsTheScriptOncePerPageAndSite) {
  Site site;
  site.author.host.files["DIAGRAM.DAT"] = showing_template;
  site.author.host.files["plexoras-diagram.js"] = "draw()";
  site.author.host.files["plexoras-diagram.LICENSES.txt"] = "draw()";  // as the script, so that one loop will do
  const auto record = [&](std::string_view name, std::string_view note) {
    LiveControl control = site.author.make(name);
    ControlProperties(control).set("NOTE", note);
    return control.record();
  };
  const std::string page = page_of(record("A", "plain")) + page_of(record("B", "")) + page_of(record("C", "")) +
                           page_of(record("D", "plain"));
  site.folder.write("p.html", page);
  site.folder.write("plain.html", page_of(record("A", "plain")));

  Publisher publisher(site.author.session);
  const std::string root = site.folder.path("out (1)");
  struct Case {
    const char* target;
    std::string_view root, address;  // an empty root: the target's own folder
  };
  const Case cases[] = {
      {"out (1)/p.html", "out (1)", "plexoras-diagram.js"},
      {"out (1)/sub/p.html", "out (1)", "../plexoras-diagram.js"},
      {"out (1)/a/./b/../c/p.html", "out (1)/", "../../plexoras-diagram.js"},
      {"odd/\"x\" 50% #1?ä/p.html", "odd/\"x\" 50% #1?ä", "plexoras-diagram.js"},
      {"odd/p.html", "odd/a &b\xFF", "a%20%26b%FF/plexoras-diagram.js"},
      {"alone/p.html", "", "plexoras-diagram.js"},
  };
  for (const Case& c : cases) {
    const PublishedFile result = publisher.publish_page(site.folder.path("p.html"), site.folder.path(c.target),
                                                        c.root.empty() ? "" : site.folder.path(std::string(c.root)));
    ASSERT_EQ(result.outcome, Outcome::Written) << site.problems(result);
    const std::string bytes = site.folder.read(c.target);
    const std::size_t script = bytes.find("<script src=\"" + std::string(c.address) + "\"></script>");
    EXPECT_NE(script, std::string::npos) << c.target;
    EXPECT_EQ(bytes.find("<script"), bytes.rfind("<script")) << c.target;
    EXPECT_GT(script, bytes.find("published B-")) << "the first chart that uses it";
    EXPECT_LT(script, bytes.find("published C-")) << c.target;
  }
  publisher.publish_page(site.folder.path("plain.html"), site.folder.path("plain/p.html"));

  std::string scripts;
  for (const PublishedFile& file : publisher.publish_scripts()) {
    EXPECT_EQ(file.outcome, Outcome::Copied) << site.problems(file);
    EXPECT_EQ(read_file(file.target), "draw()");
    scripts += replaced_all(file.target, site.folder.path() + "/", "") + "|";
  }
  std::string expected;
  for (const std::string folder : {"alone/", "odd/\"x\" 50% #1?ä/", "odd/a &b\xFF/", "out (1)/"}) {
    for (const char* name : {"plexoras-diagram.js|", "plexoras-diagram.LICENSES.txt|"}) expected += folder + name;
  }
  EXPECT_EQ(scripts, expected);
  EXPECT_EQ(publisher.publish_scripts().front().outcome, Outcome::Unchanged);
}

TEST(Publisher, LooksForTheScriptInTheTextOfAControlThatFails) {
  Site site;
  site.author.host.files["plexoras-diagram.js"] = "draw()";
  site.author.host.files["DIAGRAM.DAT"] = std::string(Author::default_template) +
                                          "#IFDEF DIAGRAMSCRIPT\n<script src=\"$(DIAGRAMSCRIPT)\"></script>\n#ENDIF\n";
  for (const std::string target : {"p.html", "out/p.html"}) {
    site.folder.write("p.html", page_of(site.record("A", "yes"), "<script src=\"plexoras-diagram.js\"></script>") +
                                    page_of(site.record("B")));
    Publisher publisher(site.author.session);
    EXPECT_EQ(publisher.publish_page(site.folder.path("p.html"), site.folder.path(target)).controls, 1u);
    const std::string bytes = site.folder.read(target);
    EXPECT_EQ(bytes.find("<script"), bytes.rfind("<script")) << bytes;
    EXPECT_EQ(publisher.publish_scripts().size(), 1u) << target;
  }
}

TEST(Publisher, TellsOfAMissingScript) {
  Site site;
  site.author.host.files["DIAGRAM.DAT"] = showing_template;
  site.folder.write("p.html", page_of(site.author.make("A").record()));
  Publisher publisher(site.author.session);
  EXPECT_EQ(publisher.publish_page(site.folder.path("p.html"), site.folder.path("p.html")).outcome, Outcome::Written);
  const std::vector<PublishedFile> scripts = publisher.publish_scripts();
  ASSERT_EQ(scripts.size(), 1u);
  EXPECT_EQ(scripts[0].outcome, Outcome::Failed);
  EXPECT_TRUE(site.problems(scripts[0]).starts_with("plexoras-diagram.js:1:1: error: plexoras-diagram.js is not "))
      << site.problems(scripts[0]);
}

TEST(Publisher, PutsPicturesAndGoesOnWithoutThoseThatFail) {
  Site site;
  site.author.host.files["DIAGRAM.DAT"] = showing_template;
  ControlRecord hidden = site.author.make("Hidden").record();
  hidden.visible = false;
  LiveControl empty = site.author.make("Empty");
  empty.control().SetProperty("Contents", "");
  LiveControl stale = site.author.make("Bad");
  stale.control().SetProperty("SNAPSHOT", "an author's own");
  site.folder.write("p.html", page_of(site.author.make("A").record()) + page_of(stale.record()) + page_of(hidden) +
                                  page_of(empty.record()));
  std::string drawn;
  Publisher publisher(site.author.session, Publisher::Writing::Write, [&](const ChartPicture& picture) -> std::string {
    drawn += picture.settings.at(0).first + std::to_string(picture.width) + " ";
    if (drawn.size() > 12) throw AutomationError(RunTimeError::InvalidCall, "out of ink");
    return "<svg>drawn</svg>";
  });
  const PublishedFile result = publisher.publish_page(site.folder.path("p.html"), site.folder.path("p.html"));
  EXPECT_EQ(result.outcome, Outcome::Written);
  EXPECT_EQ(result.pictures, 1u);
  EXPECT_EQ(drawn, "XmlStyle480 XmlStyle480 ");
  const std::string problems = site.problems(result);
  EXPECT_NE(problems.find(":1: warning: control \"Bad\": no picture: out of ink\n"), std::string::npos) << problems;
  const std::string bytes = site.folder.read("p.html");
  EXPECT_NE(bytes.find("\"><svg>drawn</svg></div><table>"), std::string::npos);
  EXPECT_EQ(bytes.find("<svg"), bytes.rfind("<svg"));
  EXPECT_EQ(bytes.find("<p>an author's own"), std::string::npos);
}

}  // namespace
}  // namespace plexoras
