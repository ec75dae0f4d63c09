#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "authoring/page.h"
#include "authoring/snapshot.h"
#include "template/template_session.h"

namespace plexoras {

/// What came of publishing one file.
struct PublishedFile {
  enum class Outcome {
    Written,    ///< the target has new bytes
    Unchanged,  ///< the target has these bytes already and was not touched
    Copied,     ///< no page with controls: copied as it is
    Failed,     ///< at least one control, or the page, has an error; what could be done was done
  };
  std::string source;
  std::string target = {};
  Outcome outcome = Outcome::Unchanged;
  std::size_t controls = 0;  ///< whose text was made
  std::size_t pictures = 0;  ///< that were drawn for it
  std::vector<PageProblem> problems = {};
  std::vector<Diagnostic> diagnostics = {};  ///< what the templates had to say about the problems
};

/// Makes pages for readers: the text of every control is made anew from its state and its template.
///
/// A template finds some custom properties more than the page keeps, for this run alone: DATATABLE, a chart's data as
/// an HTML table (`data_table`); SNAPSHOT, its picture (`snapshot_element`), where pictures are drawn; and
/// DIAGRAMSCRIPT, the address of the script that draws charts, until one control of the page has used it. The script
/// itself is put beside the pages by `publish_scripts`, once for each site. A chart whose picture fails goes without
/// one, which is a warning.
///
/// A page that is published into another file holds the text of its controls and not their state, which is the
/// author's; in place the state stays, for there is no other. A target that holds states of its own is not written: it
/// may be where an author works. States that are those of the source may go, and with `StateInMirrors::Keep` the
/// source's replace those of the same controls.
///
/// The same input gives the same bytes. A control that fails keeps the text that readers of the target have of it, so
/// that a page never shows half a chart; the other controls of the page, and the other pages, come out all the same.
/// Targets that would not change are not touched, and those that change are replaced whole.
class Publisher {
public:
  enum class Writing { Write, DryRun };
  enum class StateInMirrors { LeaveOut, Keep };

  /// `session` outlives the publisher; each template file is read once in its life. Without `draw` there are no
  /// pictures.
  explicit Publisher(TemplateSession& session, Writing writing = Writing::Write, DrawChart draw = {},
                     StateInMirrors state_in_mirrors = StateInMirrors::LeaveOut)
      : session_(session), writing_(writing), draw_(std::move(draw)), state_in_mirrors_(state_in_mirrors) {}

  /// Publishes the page `source` to `target`, which may be the same file. Folders are made as needed. `root` is the
  /// folder of the published site that the target is in, where the script goes; empty: the target's own folder.
  PublishedFile publish_page(const std::string& source, const std::string& target, const std::string& root = {});
  /// Copies a file that is no page.
  PublishedFile copy_file(const std::string& source, const std::string& target);
  /// Whether `publish_scripts` puts a file at `target` for the pages published so far: no other belongs there.
  bool brings(const std::string& target);
  /// Puts the script that draws charts where the pages published so far look for it, and the licences of what it is
  /// built on beside it.
  std::vector<PublishedFile> publish_scripts();

private:
  std::string make_text(const Page& page, const Page::Control& place, const std::string& script, PublishedFile& result);
  std::string make_snapshot(LiveControl& control, const Page& page, const Page::Control& place, PublishedFile& result);
  PublishedFile put_beside_pages(std::string_view name, const std::string& target);
  bool write(const std::string& target, std::string_view bytes);

  TemplateSession& session_;
  Writing writing_;
  DrawChart draw_;
  StateInMirrors state_in_mirrors_;
  std::set<std::string> scripts_;  // paths of scripts that pages ask for
};

/// One file of a site, and where it goes.
struct SiteFile {
  std::string source;
  std::string target = {};
  std::string root = {};     ///< the folder of the site that the target is in
  bool is_page = false;      ///< by its extension: may hold controls
  std::string problem = {};  ///< why it can be neither read nor listed; empty for a file
};

/// The files to publish for `paths`, in a fixed order, pages before others. With no `output` pages go where they are
/// and other files are left out; else a file goes into `output`, and what is in a folder goes to the same place below
/// `output`.
///
/// Links to folders are followed for a mirror, each folder once, and left alone in place. The output folder itself, the
/// folders of version control systems and this program's temporary files are passed over. What cannot be listed is an
/// entry with a `problem`, and so is what would be written over another one's source. Raises error 5 when two files
/// would go to one place, and 75 when `output` is a file.
std::vector<SiteFile> site_files(const std::vector<std::string>& paths, const std::string& output);

}  // namespace plexoras
