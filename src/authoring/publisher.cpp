#include "authoring/publisher.h"

#include <algorithm>
#include <filesystem>

#include "authoring/data_table.h"
#include "authoring/live_control.h"
#include "host/atomic_file.h"

namespace fs = std::filesystem;

namespace plexoras {
namespace {

// Stands beside the template files, and is put beside the published pages.
constexpr std::string_view script_name = "plexoras-diagram.js";
constexpr std::string_view licences_name = "plexoras-diagram.LICENSES.txt";

// The page that stands where another one is to go. It is scanned when something of it is asked for.
class ReplacedPage {
public:
  /// Raises when there is a file that cannot be read.
  explicit ReplacedPage(const std::string& path) : path_(path) {
    std::error_code there_is_none;
    if (fs::exists(path, there_is_none)) bytes_ = read_file(path);
  }

  /// What readers get of the control `name`; nothing where there is none. Its line ends are those of a template where
  /// they can be told, so that it takes those of the page that it goes to.
  std::optional<std::string> text_of(std::string_view name) {
    try {
      const auto index = page().find(name);
      std::optional<std::string> text = index ? page().text(*index) : page().published_text(name);
      if (text && page().line_break() == "\n") text = replaced_all(with_line_breaks(*text, "\n"), "\n", "\r\n");
      return text;
    } catch (const PageError&) {
      return std::nullopt;
    }
  }

  /// Raises `PageError` when it holds the state of a control that would be lost: `page` has no such control, or, where
  /// its own states are left out, another state.
  void refuse_loss(const Page& page, Publisher::StateInMirrors states) {
    if (bytes_.find(control_opening) == std::string::npos) return;
    std::vector<PageProblem> problems;
    for (const Page::Control& control : this->page().controls()) {
      const std::string& name = control.record.name;
      const auto index = page.find(name);
      const bool is_kept =
          index && (states == Publisher::StateInMirrors::Keep || page.controls()[*index].record == control.record);
      if (is_kept) continue;
      problems.push_back({path_, control.place,
                          "this page holds a state of control \"" + name + "\" that " + page.path() +
                              " does not have, and that would be lost; bring there what you need of it, and remove "
                              "this page"});
    }
    if (!problems.empty()) throw PageError(std::move(problems));
  }

private:
  const Page& page() {
    if (!page_) page_ = Page::parse(path_, bytes_);
    return *page_;
  }

  const std::string& path_;
  std::string bytes_;
  std::optional<Page> page_;
};

bool is_same_file(const std::string& a, const std::string& b) {
  std::error_code one_is_not_there;
  return fs::equivalent(a, b, one_is_not_there);
}

// The address of the file `to` on a page in the folder `from`, as pages write it.
std::string relative_address(const fs::path& to, const fs::path& from) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string address;
  for (const char c : to.lexically_normal().lexically_relative(from.lexically_normal()).generic_string()) {
    const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                       std::string_view("/.-_~").find(c) != std::string_view::npos;
    if (plain) {
      address += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      address += {'%', digits[byte / 16], digits[byte % 16]};
    }
  }
  return address;
}

}  // namespace

// The picture of a chart for its template, or nothing.
std::string Publisher::make_snapshot(LiveControl& control, const Page& page, const Page::Control& place,
                                     PublishedFile& result) {
  if (!draw_ || !place.record.visible) return {};
  try {
    const std::optional<ChartPicture> picture = picture_of(control, page.language());
    if (!picture) return {};
    std::string element = snapshot_element(draw_(*picture), picture->stamp);
    ++result.pictures;
    return element;
  } catch (const AutomationError& error) {
    result.problems.push_back({.path = page.path(),
                               .place = place.place,
                               .what = "control \"" + place.record.name + "\": no picture: " + error.description(),
                               .is_warning = true});
    return {};
  }
}

// The text of one control. What its template had to say goes to the diagnostics; any of it is a failure here, since
// readers would see its traces.
std::string Publisher::make_text(const Page& page, const Page::Control& place, const std::string& script,
                                 PublishedFile& result) {
  const ControlRecord& record = place.record;
  std::vector<Diagnostic>& told = result.diagnostics;
  const std::size_t told_before = session_.diagnostics.size();
  const std::size_t told_of_others = told.size();
  const auto collect = [&] {
    for (Diagnostic& diagnostic : session_.take_diagnostics(told_before)) told.push_back(std::move(diagnostic));
    return told.size() > told_of_others;
  };
  std::string text;
  try {
    LiveControl live(session_, record);
    DesignTimeControl& control = live.control();
    const std::string file(control.templateFile());
    if (session_.files.section(file, "TEMPLATE").text.empty()) {
      throw AutomationError(RunTimeError::InvalidCall,
                            file + " has nothing in section \"TEMPLATE\", so that the control would vanish");
    }
    const std::string caption = control.GetProperty("CAPTION");
    control.SetProperty("DATATABLE", data_table(live, caption.empty() ? record.name : caption, page.language()));
    control.SetProperty("SNAPSHOT", make_snapshot(live, page, place, result));
    control.SetProperty("DIAGRAMSCRIPT", script);
    text = control.GetRuntimeTextOnErrorReport();
  } catch (const AutomationError&) {
    collect();
    throw;
  }
  if (collect()) {
    throw AutomationError(RunTimeError::InvalidCall, "its template failed: " + told[told_of_others].what, "Publisher");
  }
  return text;
}

bool Publisher::write(const std::string& target, std::string_view bytes) {
  if (writing_ == Writing::Write) {
    std::error_code told_by_the_write;
    fs::create_directories(fs::path(target).parent_path(), told_by_the_write);
    return write_if_changed(target, bytes);
  }
  try {
    return read_file(target) != bytes;
  } catch (const AutomationError&) {
    return true;
  }
}

PublishedFile Publisher::publish_page(const std::string& source, const std::string& target, const std::string& root) {
  PublishedFile result{.source = source, .target = target};
  const fs::path folder = fs::path(target).parent_path();
  const std::string script_path = ((root.empty() ? folder : fs::path(root)) / script_name).lexically_normal().string();
  std::string script = relative_address(script_path, folder);
  const bool in_place = is_same_file(source, target);
  const bool keeps_state = in_place || state_in_mirrors_ == StateInMirrors::Keep;
  try {
    const Page page = Page::read(source);
    if (const auto warning = warning_of_no_states(page); in_place && warning) result.problems.push_back(*warning);
    std::optional<ReplacedPage> replaced;  // by another one
    if (!in_place) replaced.emplace(target).refuse_loss(page, state_in_mirrors_);
    Page::Edit edit(page);
    const auto put = [&](std::size_t index, const std::string& text) {
      keeps_state ? edit.replace_text(index, text) : edit.replace_control(index, text);
    };
    // The first text that loads the script does so for the page.
    const auto look_for_script = [&](const std::string& text) {
      if (script.empty() || text.find(script) == std::string::npos) return;
      scripts_.insert(script_path);
      script.clear();
    };
    for (std::size_t i = 0; i < page.controls().size(); ++i) {
      const Page::Control& control = page.controls()[i];
      try {
        const std::string text = make_text(page, control, script, result);
        put(i, text);
        look_for_script(text);
        ++result.controls;
      } catch (const AutomationError& error) {
        std::string text = page.text(i);
        if (replaced) {  // in place the text is there already, and stays byte for byte
          text = replaced->text_of(control.record.name).value_or(std::move(text));
          put(i, text);
        }
        look_for_script(text);
        result.problems.push_back(
            {source, control.place, "control \"" + control.record.name + "\": " + error.description()});
      }
    }
    using Outcome = PublishedFile::Outcome;
    const bool written = write(target, edit.result());
    result.outcome = !written ? Outcome::Unchanged : page.controls().empty() ? Outcome::Copied : Outcome::Written;
  } catch (const PageError& error) {
    result.problems = error.problems();
  } catch (const AutomationError& error) {
    result.problems.push_back({source, {}, error.description()});
  }
  const bool failed = std::any_of(result.problems.begin(), result.problems.end(),
                                  [](const PageProblem& problem) { return !problem.is_warning; });
  if (failed) result.outcome = PublishedFile::Outcome::Failed;
  return result;
}

PublishedFile Publisher::copy_file(const std::string& source, const std::string& target) {
  PublishedFile result{.source = source, .target = target, .outcome = PublishedFile::Outcome::Copied};
  try {
    if (!write(target, read_file(source))) {
      result.outcome = PublishedFile::Outcome::Unchanged;
    } else if (writing_ == Writing::Write) {
      std::error_code not_ours_to_change;
      fs::permissions(target, fs::status(source).permissions() | fs::perms::owner_write, not_ours_to_change);
    }
  } catch (const AutomationError& error) {
    result.problems.push_back({source, {}, error.description()});
    result.outcome = PublishedFile::Outcome::Failed;
  }
  return result;
}

PublishedFile Publisher::put_beside_pages(std::string_view name, const std::string& target) {
  PublishedFile result{.source = session_.files.LocateTemplateFile(name), .target = target};
  try {
    if (result.source.empty()) {
      throw AutomationError(RunTimeError::FileNotFound,
                            std::string(name) +
                                " is not installed with the template files; readers see the data as tables until "
                                "you put it there",
                            "Publisher");
    }
    if (write(target, session_.platform.files.read(result.source))) result.outcome = PublishedFile::Outcome::Copied;
  } catch (const AutomationError& error) {
    result.problems.push_back({target, {}, error.description()});
    result.outcome = PublishedFile::Outcome::Failed;
  }
  return result;
}

bool Publisher::brings(const std::string& target) {
  const fs::path path = fs::path(target).lexically_normal();
  const std::string name = path.filename().string();
  return (name == script_name || name == licences_name) &&
         scripts_.contains((path.parent_path() / script_name).string()) &&
         !session_.files.LocateTemplateFile(name).empty();
}

std::vector<PublishedFile> Publisher::publish_scripts() {
  std::vector<PublishedFile> results;
  for (const std::string& script : scripts_) {
    results.push_back(put_beside_pages(script_name, script));
    // A script of the author's own may come without.
    if (session_.files.LocateTemplateFile(licences_name).empty()) continue;
    results.push_back(put_beside_pages(licences_name, (fs::path(script).parent_path() / licences_name).string()));
  }
  return results;
}

}  // namespace plexoras
