#include "authoring/check/page_check.h"

#include <algorithm>

#include "authoring/live_control.h"
#include "authoring/page.h"
#include "authoring/snapshot.h"
#include "chart_control/chart_component.h"
#include "chart_control/diagram_dtc.h"
#include "contents/menu_document.h"

namespace plexoras {
namespace {

// Reads the controls of one page, in order.
class PageCheck {
public:
  PageCheck(TemplateSession& session, const Page& page) : session_(session), page_(page) {}

  std::vector<Finding> check() {
    for (const Page::Control& control : page_.controls()) {
      check_control(control);
      check_place(control);
    }
    // Places are told fastest in their order.
    std::stable_sort(found_.begin(), found_.end(), [](const Found& a, const Found& b) { return a.offset < b.offset; });
    PlaceFinder places(page_.bytes());
    std::vector<Finding> findings;
    for (Found& found : found_) {
      const TextPlace place = places.place(found.offset);
      found.finding.line = place.line;
      found.finding.column = place.column;
      findings.push_back(std::move(found.finding));
    }
    return findings;
  }

private:
  struct Found {
    std::size_t offset;
    Finding finding;
  };

  void check_control(const Page::Control& control) {
    const std::size_t found_before = found_.size();
    try {
      if (find_control_type(control.record.identifier).identifier == DiagramDTC::identifier) check_chart(control);
    } catch (const AutomationError& error) {
      add(control, {}, "unknown-control", error.description(), "mend the identifier behind \"<!--dtc\"");
    }
    if (found_.size() > found_before) return;
    try {
      LiveControl live(session_, control.record);
      check_picture(control, live);
    } catch (const AutomationError& error) {
      add(control, {}, "unloadable-control", error.description(),
          "mend the value in its state, or remove it, so that the control has its default");
    }
  }

  // Whether the picture in the text for readers shows what the state says.
  void check_picture(const Page::Control& control, LiveControl& live) {
    const std::string_view page = page_.bytes();
    const std::string_view text = page.substr(control.span.text_begin, control.span.text_end - control.span.text_begin);
    const std::string_view stamp = stamp_in(text);
    if (stamp.empty()) return;
    const std::optional<ChartPicture> picture = picture_of(live, page_.language());
    if (picture && picture->stamp == stamp) return;
    add_at(static_cast<std::size_t>(stamp.data() - page.data()), control, "stale-picture",
           "its picture shows other settings or data than it has now",
           "publish the page again, with --snapshot for a new picture");
  }

  void check_place(const Page::Control& control) {
    if (!control.span.in_paragraph || control.record.identifier != DiagramDTC::identifier) return;
    add(control, {}, "chart-in-paragraph", "it stands in a paragraph, which the table of its data ends",
        "make the <p> around it a <div> or a <figure>, or close it before the chart");
  }

  // The documents in the state of a chart.
  void check_chart(const Page::Control& control) {
    for (const auto& [key, value] : control.record.state) {
      if (key == "XmlStyle") {
        check_document(control, key, value, "XmlStyle", "refused-style");
      } else if (key == "Contents" && !value.empty()) {
        check_document(control, key, value, "XmlContents", "refused-contents");
      } else if (key == "MENU") {
        check_menu(control, value);
      }
    }
  }

  // `member` of the chart component takes the document.
  void check_document(const Page::Control& control, std::string_view key, const std::string& document,
                      std::string_view member, std::string_view rule) {
    ObjectRef chart;
    // Without a chart component nothing refuses; that is told when the control is loaded.
    ignoring_errors([&] { chart = session_.platform.components.create(chart_component::identifier); });
    if (chart == nullptr) return;
    try {
      chart->put(member, document);
    } catch (const AutomationError& error) {
      add(control, key, rule, "the chart refuses " + std::string(key) + ": " + error.description(),
          "the place counts in the document, after its escapes are resolved; \"plexoras set\" writes a new one");
    }
  }

  // As the menu builder judges its list.
  void check_menu(const Page::Control& control, std::string_view document) {
    try {
      std::int16_t previous = -1;
      for (const MenuNode& node : read_menu_document(document, Dictionary())) {
        if (node.Level > previous + 1) {
          add(control, "MENU", "refused-menu", "the menu entry \"" + node.Caption + "\" skips a level",
              "close as many elements before it as were opened");
          return;
        }
        previous = node.Level;
      }
    } catch (const AutomationError& error) {
      add(control, "MENU", "refused-menu", error.description(), "make the menu anew with the menu builder");
    }
  }

  // At the key of the control's state, or at its opening where the key is empty.
  void add(const Page::Control& control, std::string_view key, std::string_view rule, std::string what,
           std::string mend) {
    const std::size_t offset = key.empty() ? control.span.begin : offset_of(control, key);
    add_at(offset, control, rule, std::move(what), std::move(mend));
  }

  void add_at(std::size_t offset, const Page::Control& control, std::string_view rule, std::string what,
              std::string mend) {
    Finding finding{.rule = find_check_rule(rule),
                    .path = page_.path(),
                    .what = "control \"" + control.record.name + "\": " + std::move(what),
                    .mend = std::move(mend),
                    .first_line = control.place.line};
    found_.push_back({offset, std::move(finding)});
  }

  std::size_t offset_of(const Page::Control& control, std::string_view key) const {
    const std::string_view state = std::string_view(page_.bytes()).substr(0, control.span.state_end);
    const std::string written = std::string(key) + "=\"";
    std::size_t at = control.span.begin;
    while ((at = state.find(written, at + 1)) != std::string_view::npos) {
      // No value holds a quotation mark, so this is a key.
      if (state[at - 1] == '\n' || state[at - 1] == '\r' || state[at - 1] == ' ' || state[at - 1] == '\t') return at;
    }
    return control.span.begin;
  }

  TemplateSession& session_;
  const Page& page_;
  std::vector<Found> found_;
};

}  // namespace

CheckedPage check_page(TemplateSession& session, const std::string& path, std::string bytes) {
  try {
    const Page page = Page::parse(path, std::move(bytes));
    return {PageCheck(session, page).check(), warning_of_no_states(page).has_value()};
  } catch (const PageError& error) {
    std::vector<Finding> findings;
    for (const PageProblem& problem : error.problems()) {
      // What is wrong says how to mend it behind a semicolon.
      const std::size_t semicolon = problem.what.find("; ");
      Finding finding{.rule = find_check_rule(problem.is_name_taken ? "duplicate-name" : "unreadable-page"),
                      .path = problem.path,
                      .line = problem.place.line,
                      .column = problem.place.column,
                      .what = problem.what.substr(0, semicolon),
                      .first_line = problem.place.line};
      if (semicolon != std::string::npos) finding.mend = problem.what.substr(semicolon + 2);
      findings.push_back(std::move(finding));
    }
    return {std::move(findings)};
  }
}

}  // namespace plexoras
