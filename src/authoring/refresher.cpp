#include "authoring/refresher.h"

#include <algorithm>
#include <map>
#include <optional>

#include "authoring/chart_data.h"

namespace plexoras {
namespace {

using Outcome = RefreshedChart::Outcome;

}  // namespace

// The documents of one page's sources: charts that have one in common read it once.
class Refresher::Documents {
public:
  Documents(FileSystem& files, const std::string& page) : files_(files), page_(page) {}

  const std::string& of(const DataSource& source) {
    std::string key = source.path;
    for (const NamedSetting& setting : named_settings(source.settings)) {
      key.append(1, '\0').append(setting.name).append("=").append(setting.value);
    }
    const auto found = documents_.find(key);
    return found != documents_.end() ? found->second : documents_.emplace(key, import(source)).first->second;
  }

private:
  std::string import(const DataSource& source) {
    const std::string file = path_of_source(page_, source.path);
    if (!can_be_read_again(file)) {
      throw AutomationError(RunTimeError::PathFileAccess, "DATASOURCE: " + file + ": this is no file that holds data");
    }
    try {
      return import_data(file_bytes(files_, file), request_for(source.settings)).document.take_text();
    } catch (const AutomationError& error) {
      if (error.number() != RunTimeError::FileNotFound) throw;
      throw AutomationError(error.number(), error.description() + "; put the file there, or mend DATASOURCE");
    }
  }

  FileSystem& files_;
  const std::string& page_;
  std::map<std::string, std::string> documents_;
};

void Refresher::refresh_chart(const Page& page, std::size_t index, Documents& documents, Page::Edit& edit,
                              RefreshedChart& chart) {
  const std::size_t told_before = session_.diagnostics.size();
  LiveControl control(session_, page.controls()[index].record);
  const std::vector<Diagnostic> told = session_.take_diagnostics(told_before);
  if (!told.empty()) {
    // What a control saves depends on what its template declares.
    const Diagnostic& first = told.front();
    throw AutomationError(RunTimeError::InvalidCall,
                          "its template cannot be used: " + to_text(first.where) + ": " + first.what);
  }
  const std::optional<DataSource> source = remembered_source(control.control());
  if (!source) return;
  chart.source = source->path;

  const std::string& document = documents.of(*source);
  const std::optional<TableChanges> changes = give_data(control, document, source->settings.format);
  chart.outcome = changes ? Outcome::Changed : Outcome::Unchanged;
  if (!changes) return;
  chart.changes = *changes;
  edit.replace_record(index, control.record());
}

RefreshedPage Refresher::refresh_page(const std::string& path) {
  RefreshedPage result{path};
  try {
    const Page page = Page::read(path);
    if (const auto warning = warning_of_no_states(page)) result.problems.push_back(*warning);
    Page::Edit edit(page);
    Documents documents(session_.platform.files, page.path());
    for (std::size_t i = 0; i < page.controls().size(); ++i) {
      const Page::Control& control = page.controls()[i];
      result.charts.push_back({control.record.name});
      RefreshedChart& chart = result.charts.back();
      try {
        refresh_chart(page, i, documents, edit, chart);
      } catch (const AutomationError& error) {
        chart.outcome = Outcome::Failed;
        chart.problems = {{path, control.place, "control \"" + chart.name + "\": " + error.description()}};
      }
    }
    const bool changes = std::any_of(result.charts.begin(), result.charts.end(),
                                     [](const RefreshedChart& chart) { return chart.outcome == Outcome::Changed; });
    if (changes && writing_ == Writing::Write) write_if_changed(path, edit.result());
  } catch (const PageError& error) {
    result.problems = error.problems();
  } catch (const AutomationError& error) {
    result.problems.push_back({path, {}, error.description()});
    for (RefreshedChart& chart : result.charts) {
      if (chart.outcome == Outcome::Changed) chart.outcome = Outcome::Failed;  // nothing of the page was written
    }
  }
  return result;
}

}  // namespace plexoras
