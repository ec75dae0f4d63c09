#pragma once

#include <string>
#include <vector>

#include "authoring/data_source.h"
#include "authoring/live_control.h"
#include "authoring/page.h"
#include "authoring/table_changes.h"
#include "template/template_session.h"

namespace plexoras {

/// What came of one chart.
struct RefreshedChart {
  enum class Outcome {
    NoSource,   ///< it remembers none and is left alone
    Unchanged,  ///< its data are those of the source already
    Changed,
    Failed,  ///< it stays as it was
  };
  std::string name;
  Outcome outcome = Outcome::NoSource;
  std::string source = {};  ///< as the page has it
  TableChanges changes = {};
  std::vector<PageProblem> problems = {};
};

/// What came of one page. A page that cannot be read or written has problems of its own; one that was published
/// without states, a warning.
struct RefreshedPage {
  std::string page;
  std::vector<RefreshedChart> charts = {};  ///< in page order
  std::vector<PageProblem> problems = {};
};

/// Gives charts the present data of the sources that they remember.
///
/// A chart whose source cannot be read keeps its data; the others of the page come out all the same. A page where
/// nothing is different is not touched, one that changes is replaced whole. The text for readers stays as it is:
/// publishing makes it anew.
class Refresher {
public:
  enum class Writing { Write, DryRun };

  /// `session` outlives the refresher.
  explicit Refresher(TemplateSession& session, Writing writing = Writing::Write)
      : session_(session), writing_(writing) {}

  RefreshedPage refresh_page(const std::string& path);

private:
  class Documents;

  void refresh_chart(const Page& page, std::size_t index, Documents& documents, Page::Edit& edit,
                     RefreshedChart& chart);

  TemplateSession& session_;
  Writing writing_;
};

}  // namespace plexoras
