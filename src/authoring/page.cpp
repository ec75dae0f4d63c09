#include "authoring/page.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "host/atomic_file.h"
#include "host/automation.h"

namespace plexoras {
namespace {

constexpr std::size_t npos = std::string_view::npos;

std::string joined(const std::vector<PageProblem>& problems) {
  std::string text;
  for (const PageProblem& problem : problems) text += (text.empty() ? "" : "\n") + to_text(problem);
  return text;
}

// Reads one opening comment: an identifier, attributes of the control on the first line, state on the others.
class RecordReader {
public:
  RecordReader(std::string_view page, const ControlSpan& span, std::vector<SpanProblem>& problems)
      : page_(page), at_(span.begin + control_opening.size()), end_(span.state_end), problems_(problems) {}

  ControlRecord read() {
    skip_blanks();
    const std::size_t begin = at_;
    while (at_ < end_ && !is_space(page_[at_])) ++at_;
    record_.identifier = page_.substr(begin, at_ - begin);
    if (record_.identifier.empty()) problem(begin, "the mark names no control; write " + example());

    bool in_first_line = true;
    for (;;) {
      if (skip_blanks()) in_first_line = false;
      if (at_ == end_) break;
      if (!read_pair(in_first_line)) return record_;
    }
    if (record_.name.empty()) problem(begin, "the control has no name; write " + example());
    return record_;
  }

private:
  static std::string example() { return "<!--dtc PlexorasDTC.DiagramDTC name=\"Sales\" width=\"480\" height=\"320\""; }
  static bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

  void problem(std::size_t at, std::string what) { problems_.push_back({at, std::move(what)}); }

  // Whether a line ended among the blanks.
  bool skip_blanks() {
    bool line_ended = false;
    for (; at_ < end_ && is_space(page_[at_]); ++at_) line_ended |= page_[at_] == '\n' || page_[at_] == '\r';
    return line_ended;
  }

  bool read_pair(bool in_first_line) {
    const std::size_t key_begin = at_;
    while (at_ < end_ && page_[at_] != '=' && !is_space(page_[at_])) ++at_;
    const std::string_view key_text = page_.substr(key_begin, at_ - key_begin);
    const std::string_view rest = page_.substr(at_, end_ - at_);
    if (!rest.starts_with("=\"")) {
      problem(key_begin, "\"" + std::string(key_text.substr(0, 40)) + "\" has no value; write KEY=\"VALUE\"");
      return false;
    }
    const std::size_t value_begin = at_ + 2;
    const std::size_t value_end = page_.substr(0, end_).find('"', value_begin);
    if (value_end == npos) {
      problem(at_ + 1, "the value of \"" + std::string(key_text) + "\" is not closed; end it with a quotation mark");
      return false;
    }
    std::size_t bad = 0;
    const std::optional<std::string> key = unescape_state(key_text, &bad);
    const std::optional<std::string> value = unescape_state(page_.substr(value_begin, value_end - value_begin), &bad);
    if (!key || !value) {
      problem((key ? value_begin : key_begin) + bad, "this \"&\" begins no entity; write it as &amp;");
      return false;
    }
    at_ = value_end + 1;
    // The attributes of the first line are not the keys of the others: a custom property may be called "name".
    std::set<std::string>& seen = in_first_line ? attributes_ : keys_;
    if (!seen.insert(*key).second) {
      problem(key_begin, "\"" + *key + "\" stands here a second time; keep one of the two");
    } else if (in_first_line) {
      read_attribute(*key, *value, key_begin);
    } else {
      record_.state.emplace_back(*key, *value);
    }
    return true;
  }

  void read_attribute(const std::string& key, const std::string& value, std::size_t at) {
    if (key == "name") {
      record_.name = value;
    } else if (key == "width" || key == "height") {
      std::int32_t pixels = 0;
      const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), pixels);
      if (error != std::errc() || end != value.data() + value.size() || pixels < 0 || pixels > max_pixels) {
        problem(at, key + " must be a whole number of pixels from 0 to 32767, not \"" + value + "\"");
      }
      (key == "width" ? record_.width : record_.height) = pixels;
    } else if (key == "visible") {
      if (value != "True" && value != "False") problem(at, "visible must be True or False, not \"" + value + "\"");
      record_.visible = value != "False";
    } else {
      problem(at, "\"" + key + "\" is not known here; the first line takes name, width, height and visible");
    }
  }

  static constexpr std::int32_t max_pixels = 32767;

  std::string_view page_;
  std::size_t at_;
  std::size_t end_;
  std::vector<SpanProblem>& problems_;
  ControlRecord record_;
  std::set<std::string> attributes_;
  std::set<std::string> keys_;
};

// A key as it stands before its "=".
std::string escape_key(std::string_view key) {
  std::string out;
  for (const char c : escape_state(key, "")) {
    if (c == ' ' || c == '=' || c == '\'' || c == '/') {
      out.append("&#").append(std::to_string(static_cast<int>(c))).append(";");
    } else {
      out += c;
    }
  }
  return out;
}

// The opening comment and the line break behind it.
std::string opening_text(const ControlRecord& record, std::string_view line_break) {
  std::string out(control_opening);
  const auto attribute = [&](std::string_view key, std::string_view value) {
    out.append(key).append("=\"").append(escape_state(value, line_break)).append("\"");
  };
  out.append(" ").append(record.identifier);
  attribute(" name", record.name);
  attribute(" width", std::to_string(record.width));
  attribute(" height", std::to_string(record.height));
  if (!record.visible) attribute(" visible", "False");
  out += line_break;
  for (const auto& [key, value] : record.state) {
    attribute(escape_key(key), value);
    out += line_break;
  }
  return out.append("-->");
}

std::string text_between(std::string_view text, std::string_view line_break) {
  std::string out(line_break);
  out += with_line_breaks(text, line_break);
  if (!out.ends_with(line_break)) out += line_break;
  return out;
}

// The line break behind an opening comment belongs to the span.
std::string without_first_line_break(std::string text, std::string_view line_break) {
  if (text.starts_with(line_break)) text.erase(0, line_break.size());
  return text;
}

void refuse_marks(std::string_view text) {
  for (const std::string_view mark :
       {control_opening, std::string_view("<!--/dtc"), published_opening, published_closing}) {
    if (text.find(mark) == npos) continue;
    throw AutomationError(RunTimeError::InvalidCall,
                          "the text for readers holds \"" + std::string(mark) +
                              "\", which marks a control; mend the template that wrote it",
                          "Page");
  }
}

}  // namespace

std::string to_text(const PageProblem& problem) {
  return problem.path + ":" + std::to_string(problem.place.line) + ":" + std::to_string(problem.place.column) +
         (problem.is_warning ? ": warning: " : ": error: ") + problem.what;
}

PageError::PageError(std::vector<PageProblem> problems)
    : std::runtime_error(joined(problems)), problems_(std::move(problems)) {}

Page Page::read(const std::string& path) { return parse(path, read_file(path)); }

Page Page::parse(std::string path, std::string bytes) {
  Page page;
  page.path_ = std::move(path);
  page.bytes_ = std::move(bytes);
  ScannedPage scanned = scan_page(page.bytes_);
  page.content_end_ = scanned.content_end;
  page.language_ = scanned.language;

  PlaceFinder places(page.bytes_);
  for (const ControlSpan& span : scanned.spans) {
    Control control{RecordReader(page.bytes_, span, scanned.problems).read(), span, places.place(span.begin)};
    const auto [earlier, is_new] = page.indices_.emplace(control.record.name, page.controls_.size());
    if (!is_new && !control.record.name.empty()) {
      scanned.problems.push_back({span.begin,
                                  "the name \"" + control.record.name + "\" is taken by the control in line " +
                                      std::to_string(page.controls_[earlier->second].place.line) +
                                      "; give this one another",
                                  true});
    }
    page.controls_.push_back(std::move(control));
  }
  for (const PublishedSpan& span : scanned.published) {
    page.published_.emplace(span.name, Text{span.text_begin, span.text_end});
  }
  if (!scanned.problems.empty()) {
    std::sort(scanned.problems.begin(), scanned.problems.end(),
              [](const SpanProblem& a, const SpanProblem& b) { return a.at < b.at; });
    std::vector<PageProblem> problems;
    for (SpanProblem& problem : scanned.problems) {
      problems.push_back({page.path_, places.place(problem.at), std::move(problem.what), problem.is_name_taken});
    }
    throw PageError(std::move(problems));
  }
  return page;
}

std::optional<std::size_t> Page::find(std::string_view name) const {
  const auto found = indices_.find(name);
  return found == indices_.end() ? std::nullopt : std::optional(found->second);
}

std::string Page::text(std::size_t index) const {
  const ControlSpan& span = controls_[index].span;
  return without_first_line_break(bytes_.substr(span.text_begin, span.text_end - span.text_begin), line_break());
}

std::optional<std::string> Page::published_text(std::string_view name) const {
  const auto found = published_.find(escape_state(name, {}));
  if (found == published_.end()) return std::nullopt;
  const auto [begin, end] = found->second;
  return without_first_line_break(bytes_.substr(begin, end - begin), line_break());
}

std::string Page::span_text(const ControlRecord& record, std::string_view text, std::string_view line_break) {
  refuse_marks(text);
  return opening_text(record, line_break) + text_between(text, line_break) + std::string(control_closing);
}

void Page::Edit::replace_text(std::size_t index, std::string_view text) {
  refuse_marks(text);
  const ControlSpan& span = page_.controls_[index].span;
  changes_.push_back({span.text_begin, span.text_end, text_between(text, page_.line_break())});
}

void Page::Edit::replace_control(std::size_t index, std::string_view text) {
  refuse_marks(text);
  const Control& control = page_.controls_[index];
  std::string bytes(published_opening);
  bytes.append(escape_state(control.record.name, {})).append("-->");
  bytes.append(text_between(text, page_.line_break())).append(published_closing);
  changes_.push_back({control.span.begin, control.span.end, std::move(bytes)});
}

void Page::Edit::replace_record(std::size_t index, const ControlRecord& record) {
  const ControlSpan& span = page_.controls_[index].span;
  changes_.push_back({span.begin, span.text_begin, opening_text(record, page_.line_break())});
}

void Page::Edit::insert(std::size_t offset, std::string bytes) {
  changes_.push_back({offset, offset, std::move(bytes)});
}

std::string Page::Edit::result() const {
  std::vector<const Change*> in_order;
  for (const Change& change : changes_) in_order.push_back(&change);
  std::stable_sort(in_order.begin(), in_order.end(),
                   [](const Change* a, const Change* b) { return a->begin < b->begin; });
  std::string out;
  std::size_t copied = 0;
  for (const Change* change : in_order) {
    out.append(page_.bytes_, copied, change->begin - copied).append(change->bytes);
    copied = change->end;
  }
  return out.append(page_.bytes_, copied);
}

std::optional<PageProblem> warning_of_no_states(const Page& page) {
  if (!page.controls().empty() || !page.is_published()) return std::nullopt;
  return PageProblem{
      .path = page.path(), .place = {}, .what = std::string(published_without_state), .is_warning = true};
}

bool write_if_changed(const std::string& path, std::string_view bytes) {
  try {
    if (read_file(path) == bytes) return false;
  } catch (const AutomationError&) {
    // There is no such file yet, or it cannot be read: writing tells.
  }
  replace_file(path, bytes);
  return true;
}

}  // namespace plexoras
