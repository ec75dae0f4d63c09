#include <algorithm>
#include <nlohmann/json.hpp>

#include "authoring/publisher.h"
#include "authoring/refresher.h"
#include "host/headless_platform.h"
#include "tool/commands.h"
#include "tool/json_text.h"

namespace plexoras {
namespace {

using Outcome = RefreshedChart::Outcome;

// As a whole.
bool has_failed(const RefreshedPage& page) {
  return std::ranges::any_of(page.problems, [](const PageProblem& problem) { return !problem.is_warning; });
}

struct Totals {
  std::size_t unchanged = 0;
  std::size_t changed = 0;
  std::size_t failed = 0;  // charts, and pages as a whole

  void add(const RefreshedPage& page) {
    failed += has_failed(page) ? 1 : 0;
    for (const RefreshedChart& chart : page.charts) {
      unchanged += chart.outcome == Outcome::Unchanged ? 1 : 0;
      changed += chart.outcome == Outcome::Changed ? 1 : 0;
      failed += chart.outcome == Outcome::Failed && !chart.problems.empty() ? 1 : 0;
    }
  }

  std::string sentence() const {
    if (changed + unchanged + failed == 0) return "no chart here remembers a file of data; new and set --csv give one";
    return std::to_string(changed) + " changed, " + std::to_string(unchanged) + " unchanged, " +
           std::to_string(failed) + " failed";
  }
};

constexpr const char* outcome_words[] = {"no source", "unchanged", "changed", "failed"};

nlohmann::json to_json(const TableChanges& changes) {
  return {{"rows_added", changes.rows_added},       {"rows_removed", changes.rows_removed},
          {"columns_added", changes.columns_added}, {"columns_removed", changes.columns_removed},
          {"cells_changed", changes.cells_changed}, {"labels_changed", changes.labels_changed},
          {"order_changed", changes.order_changed}};
}

nlohmann::json report_json(const std::string& page, const char* outcome, const std::vector<PageProblem>& problems) {
  return {{"version", json_version}, {"page", page}, {"outcome", outcome}, {"problems", to_json(problems)}};
}

void report_objects(const RefreshedPage& page, Console& console) {
  for (const RefreshedChart& chart : page.charts) {
    if (chart.outcome == Outcome::NoSource) continue;
    nlohmann::json object =
        report_json(page.page, outcome_words[static_cast<std::size_t>(chart.outcome)], chart.problems);
    object["control"] = chart.name;
    object["source"] = chart.source;
    object["changes"] = to_json(chart.changes);
    console.result(json_line(object));
  }
  if (page.problems.empty()) return;
  const char* const outcome = has_failed(page) ? "failed" : outcome_words[static_cast<std::size_t>(Outcome::NoSource)];
  console.result(json_line(report_json(page.page, outcome, page.problems)));
}

void report_lines(const RefreshedPage& page, Console& console) {
  for (const RefreshedChart& chart : page.charts) {
    const std::string begin = page.page + "#" + chart.name + ": ";
    for (const PageProblem& problem : chart.problems) console.problem(to_text(problem) + "\n");
    if (chart.outcome == Outcome::NoSource) console.detail(begin + "no source");
    if (chart.outcome == Outcome::Unchanged) console.result(begin + "unchanged\n");
    if (chart.outcome == Outcome::Changed) {
      // A chart that had no data, or none that can be read, may get a table with nothing in it.
      const bool is_empty = chart.changes == TableChanges();
      console.result(begin + (is_empty ? "the empty table stored" : to_text(chart.changes)) + "\n");
    }
  }
  for (const PageProblem& problem : page.problems) console.problem(to_text(problem) + "\n");
}

}  // namespace

int run_refresh(const RefreshOptions& options, HeadlessPlatform& host, Console& console) {
  SilentMessageBox silent;  // what the templates have to say is told with the chart it concerns
  host.platform().message_box = &silent;
  TemplateSession session(host.platform());
  const bool writes = !options.check && !console.options().dry_run;
  Refresher refresher(session, writes ? Refresher::Writing::Write : Refresher::Writing::DryRun);
  Totals totals;
  defer_interrupts();
  for (const SiteFile& file : site_files(options.paths, "")) {
    if (interrupted()) break;
    const RefreshedPage page = file.problem.empty() ? refresher.refresh_page(file.source)
                                                    : RefreshedPage{file.source, {}, {{file.source, {}, file.problem}}};
    totals.add(page);
    if (console.options().json) {
      report_objects(page, console);
    } else {
      report_lines(page, console);
    }
  }
  console.say(totals.sentence() + (interrupted() ? "; interrupted" : "") + (writes ? "" : "; nothing was written"));
  if (interrupted()) return exit_interrupted;
  return totals.failed > 0 || (options.check && totals.changed > 0) ? exit_failed : exit_done;
}

}  // namespace plexoras
