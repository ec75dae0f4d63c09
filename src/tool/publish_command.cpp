#include <nlohmann/json.hpp>
#include <set>

#include "authoring/publisher.h"
#include "host/headless_platform.h"
#include "tool/commands.h"
#include "tool/json_text.h"
#include "tool/node_renderer.h"

namespace plexoras {
namespace {

struct Totals {
  std::size_t pages = 0;
  std::size_t controls = 0;
  std::size_t pictures = 0;
  std::size_t written = 0;
  std::size_t copied = 0;
  std::size_t unchanged = 0;
  std::size_t failed = 0;

  void add(const SiteFile& file, const PublishedFile& result) {
    const bool has_controls = result.controls > 0 || !result.problems.empty();
    pages += file.is_page && has_controls ? 1 : 0;
    controls += result.controls;
    pictures += result.pictures;
    switch (result.outcome) {
      case PublishedFile::Outcome::Written:
        ++written;
        break;
      case PublishedFile::Outcome::Copied:
        ++copied;
        break;
      case PublishedFile::Outcome::Unchanged:
        unchanged += has_controls ? 1 : 0;
        break;
      case PublishedFile::Outcome::Failed:
        ++failed;
        break;
    }
  }

  std::string sentence() const {
    const auto count = [](std::size_t n, const char* one, const char* more) {
      return std::to_string(n) + " " + (n == 1 ? one : more);
    };
    std::string text = count(controls, "control", "controls") + " on " + count(pages, "page", "pages") + ": " +
                       std::to_string(written) + " written, " + std::to_string(unchanged) + " unchanged";
    if (pictures > 0) text += ", " + count(pictures, "picture", "pictures") + " drawn";
    if (copied > 0) text += ", " + count(copied, "other file", "other files") + " copied";
    return text + ", " + std::to_string(failed) + " failed";
  }
};

constexpr const char* outcome_words[] = {"written", "unchanged", "copied", "failed"};

void report(const PublishedFile& result, Console& console) {
  const char* const outcome = outcome_words[static_cast<std::size_t>(result.outcome)];
  if (console.options().json) {
    nlohmann::json object{{"version", json_version},
                          {"source", result.source},
                          {"target", result.target},
                          {"outcome", outcome},
                          {"controls", result.controls},
                          {"pictures", result.pictures},
                          {"problems", to_json(result.problems)},
                          {"diagnostics", to_json(result.diagnostics)}};
    console.result(json_line(object));
    return;
  }
  for (const PageProblem& problem : result.problems) console.problem(to_text(problem) + "\n");
  // Controls that share a template fail in the same place: once is enough.
  std::set<std::string> told;
  for (const Diagnostic& diagnostic : result.diagnostics) {
    const std::string text = to_text(diagnostic);
    if (told.insert(text).second) console.problem(text);
  }
  console.detail(result.target + ": " + outcome);
}

PublishedFile publish(Publisher& publisher, const SiteFile& file) {
  if (!file.problem.empty()) {
    return {.source = file.source,
            .target = file.target,
            .outcome = PublishedFile::Outcome::Failed,
            .problems = {{file.source, {}, file.problem}}};
  }
  return file.is_page ? publisher.publish_page(file.source, file.target, file.root)
                      : publisher.copy_file(file.source, file.target);
}

// Starts what draws. Where that is impossible, it is told once, and there are no pictures.
DrawChart drawing(TemplateSession& session, Console& console) {
  try {
    const auto renderer = std::make_shared<NodeRenderer>(NodeRenderer::installed(session));
    renderer->start();
    return [renderer](const ChartPicture& picture) { return renderer->draw(picture); };
  } catch (const AutomationError& error) {
    const std::string what = "pages are published without pictures: " + error.description();
    if (console.options().json) {
      console.result(json_line(warning_json(what)));
    } else {
      console.problem("plexoras: warning: " + what + "\n");
    }
    return {};
  }
}

}  // namespace

int run_publish(const PublishOptions& options, HeadlessPlatform& host, Console& console) {
  SilentMessageBox silent;  // what the templates have to say is told with the page it concerns
  host.platform().message_box = &silent;
  TemplateSession session(host.platform());
  Publisher publisher(session, console.options().dry_run ? Publisher::Writing::DryRun : Publisher::Writing::Write,
                      options.snapshot ? drawing(session, console) : DrawChart(),
                      options.keep_state ? Publisher::StateInMirrors::Keep : Publisher::StateInMirrors::LeaveOut);
  Totals totals;
  defer_interrupts();
  for (const SiteFile& file : site_files(options.paths, options.output)) {
    if (interrupted()) break;
    if (publisher.brings(file.target)) continue;  // the site has one of an earlier version
    const PublishedFile result = publish(publisher, file);
    totals.add(file, result);
    report(result, console);
  }
  for (const PublishedFile& script : publisher.publish_scripts()) {
    totals.add({.source = script.source}, script);
    report(script, console);
  }
  console.say(totals.sentence() + (interrupted() ? "; interrupted" : "") +
              (console.options().dry_run ? "; nothing was written (--dry-run)" : ""));
  if (interrupted()) return exit_interrupted;
  return totals.failed > 0 ? exit_failed : exit_done;
}

}  // namespace plexoras
