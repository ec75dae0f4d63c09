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

// What readers of a target get of its controls now. The target is read when the first one is asked for.
class LastTexts {
public:
  explicit LastTexts(const std::string& target) : target_(target) {}

  /// Nothing where there is no such page or control.
  std::optional<std::string> of(std::string_view name) {
    if (!looked_) {
      looked_ = true;
      ignoring_errors([&] { page_ = Page::read(target_); });
    }
    const auto index = page_ ? page_->find(name) : std::nullopt;
    if (!index) return std::nullopt;
    const ControlSpan& span = page_->controls()[*index].span;
    std::string text = page_->bytes().substr(span.text_begin, span.text_end - span.text_begin);
    // The line break behind the opening comment belongs to the span.
    if (text.starts_with(page_->line_break())) text.erase(0, page_->line_break().size());
    return text;
  }

private:
  const std::string& target_;
  bool looked_ = false;
  std::optional<Page> page_;
};

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
  try {
    const Page page = Page::read(source);
    Page::Edit edit(page);
    LastTexts last_texts(target);
    for (std::size_t i = 0; i < page.controls().size(); ++i) {
      const Page::Control& control = page.controls()[i];
      try {
        const std::string text = make_text(page, control, script, result);
        edit.replace_text(i, text);
        ++result.controls;
        if (!script.empty() && text.find(script) != std::string::npos) {
          scripts_.insert(script_path);
          script.clear();
        }
      } catch (const AutomationError& error) {
        // In place the text is there already, and stays byte for byte.
        const auto last = target == source ? std::nullopt : last_texts.of(control.record.name);
        if (last) edit.replace_text(i, *last);
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

std::vector<PublishedFile> Publisher::publish_scripts() {
  std::vector<PublishedFile> results;
  for (const std::string& target : scripts_) {
    PublishedFile result{.source = session_.files.LocateTemplateFile(script_name), .target = target};
    try {
      if (result.source.empty()) {
        throw AutomationError(RunTimeError::FileNotFound,
                              std::string(script_name) +
                                  " is not installed with the template files; readers see the data as tables until "
                                  "you put it there",
                              "Publisher");
      }
      if (write(target, session_.platform.files.read(result.source))) {
        result.outcome = PublishedFile::Outcome::Copied;
      }
    } catch (const AutomationError& error) {
      result.problems.push_back({target, {}, error.description()});
      result.outcome = PublishedFile::Outcome::Failed;
    }
    results.push_back(std::move(result));
  }
  return results;
}

}  // namespace plexoras
