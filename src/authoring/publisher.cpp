#include "authoring/publisher.h"

#include <filesystem>

#include "authoring/live_control.h"
#include "host/atomic_file.h"

namespace plexoras {
namespace {

// The text of one control. What its template had to say goes to `details`; any of it is a failure here, since readers
// would see its traces.
std::string make_text(TemplateSession& session, const ControlRecord& record, std::string& details) {
  const std::size_t told_before = session.diagnostics.size();
  const auto collect = [&] {
    for (std::size_t i = told_before; i < session.diagnostics.size(); ++i) details += to_text(session.diagnostics[i]);
    return session.diagnostics.size() > told_before;
  };
  try {
    LiveControl control(session, record);
    std::string text = control.control().GetRuntimeTextOnErrorReport();
    if (!collect()) return text;
  } catch (const AutomationError&) {
    collect();
    throw;
  }
  throw AutomationError(RunTimeError::InvalidCall, "its template failed", "Publisher");
}

// What readers of `target` get of the control `name` now; nothing where there is no such page or control.
std::optional<std::string> last_text(const std::string& target, std::string_view name) {
  try {
    const Page page = Page::read(target);
    const auto index = page.find(name);
    if (!index) return std::nullopt;
    const ControlSpan& span = page.controls()[*index].span;
    std::string text = page.bytes().substr(span.text_begin, span.text_end - span.text_begin);
    // The line break behind the opening comment belongs to the span.
    if (text.starts_with(page.line_break())) text.erase(0, page.line_break().size());
    return text;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace

bool Publisher::write(const std::string& target, std::string_view bytes) {
  if (writing_ == Writing::Write) {
    std::error_code told_by_the_write;
    std::filesystem::create_directories(std::filesystem::path(target).parent_path(), told_by_the_write);
    return write_if_changed(target, bytes);
  }
  try {
    return read_file(target) != bytes;
  } catch (const AutomationError&) {
    return true;
  }
}

PublishedFile Publisher::publish_page(const std::string& source, const std::string& target) {
  PublishedFile result{.source = source, .target = target};
  try {
    const std::string bytes = read_file(source);
    const Page page = Page::parse(source, bytes);
    Page::Edit edit(page);
    for (std::size_t i = 0; i < page.controls().size(); ++i) {
      const Page::Control& control = page.controls()[i];
      try {
        edit.replace_text(i, make_text(session_, control.record, result.details));
        ++result.controls;
      } catch (const AutomationError& error) {
        // In place the text is there already, and stays byte for byte.
        const auto last = target == source ? std::nullopt : last_text(target, control.record.name);
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
  if (!result.problems.empty()) result.outcome = PublishedFile::Outcome::Failed;
  return result;
}

PublishedFile Publisher::copy_file(const std::string& source, const std::string& target) {
  PublishedFile result{.source = source, .target = target, .outcome = PublishedFile::Outcome::Copied};
  try {
    if (!write(target, read_file(source))) result.outcome = PublishedFile::Outcome::Unchanged;
  } catch (const AutomationError& error) {
    result.problems.push_back({source, {}, error.description()});
    result.outcome = PublishedFile::Outcome::Failed;
  }
  return result;
}

}  // namespace plexoras
