#include "authoring/publisher.h"

#include <filesystem>

#include "authoring/live_control.h"
#include "host/atomic_file.h"

namespace fs = std::filesystem;

namespace plexoras {
namespace {

// The text of one control. What its template had to say goes to `told`; any of it is a failure here, since readers
// would see its traces.
std::string make_text(TemplateSession& session, const ControlRecord& record, std::vector<Diagnostic>& told) {
  const std::size_t told_before = session.diagnostics.size();
  const auto collect = [&] {
    const auto first = session.diagnostics.begin() + static_cast<std::ptrdiff_t>(told_before);
    told.insert(told.end(), first, session.diagnostics.end());
    return first != session.diagnostics.end();
  };
  std::string text;
  try {
    LiveControl control(session, record);
    const std::string file(control.control().templateFile());
    if (session.files.section(file, "TEMPLATE").text.empty()) {
      throw AutomationError(RunTimeError::InvalidCall,
                            file + " has nothing in section \"TEMPLATE\", so that the control would vanish");
    }
    text = control.control().GetRuntimeTextOnErrorReport();
  } catch (const AutomationError&) {
    collect();
    throw;
  }
  if (collect()) {
    throw AutomationError(RunTimeError::InvalidCall, "its template failed: " + session.diagnostics[told_before].what,
                          "Publisher");
  }
  return text;
}

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

}  // namespace

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

PublishedFile Publisher::publish_page(const std::string& source, const std::string& target) {
  PublishedFile result{.source = source, .target = target};
  try {
    const Page page = Page::read(source);
    Page::Edit edit(page);
    LastTexts last_texts(target);
    for (std::size_t i = 0; i < page.controls().size(); ++i) {
      const Page::Control& control = page.controls()[i];
      try {
        edit.replace_text(i, make_text(session_, control.record, result.diagnostics));
        ++result.controls;
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
  if (!result.problems.empty()) result.outcome = PublishedFile::Outcome::Failed;
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

}  // namespace plexoras
