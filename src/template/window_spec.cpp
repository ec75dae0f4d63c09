#include "template/window_spec.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "host/text_lines.h"
#include "template/ini_section.h"
#include "template/window_spec_line.h"

namespace plexoras {
namespace {

using Kind = WindowSpecEntry::Kind;
using Role = WindowSpecName::Role;

// Turns the definitions of one section into entries.
class Reader {
public:
  Reader(TemplateSession& session, std::string_view file, std::string_view section, const Dictionary& values)
      : session_(session), file_(file), section_(section), values_(values) {}

  std::vector<WindowSpecEntry> read() {
    IniSection loaded(session_);
    loaded.note_definitions(definitions_);
    loaded.SetVariables(values_);
    loaded.Read(file_, section_);
    // The one run: a section without text would be run anew each time that it is asked for something.
    const std::string& text = loaded.GetContents();
    variables_ = &loaded.present_variables();
    tell_of_text(text);

    for (const Definition& made : definitions_) last_made_[made.name] = &made;
    std::unordered_set<std::string_view> added;
    for (const Definition& made : definitions_) {
      if (!made.failure.empty()) {
        add_failed(made);
      } else if (variables_->includes(made.name, Dictionary::EmptyValues::Keep) && added.insert(made.name).second) {
        add(made.name, variables_->atGet(made.name));
      }
    }
    for (const WindowSpecName& name : comments_) attach_comment(name);
    for (Pending& pending : pending_) check_condition(pending);
    std::vector<WindowSpecEntry> entries;
    for (Pending& pending : pending_) entries.push_back(std::move(pending.entry));
    return entries;
  }

private:
  struct Pending {
    WindowSpecEntry entry;
    std::size_t condition_at = 0;
  };

  void add(const std::string& written, const std::string& value) {
    const WindowSpecName name = parse_window_spec_name(written);
    if (name.role == Role::Helper) return;
    if (name.role == Role::Comment) return comments_.push_back(name);
    Pending pending;
    pending.entry.key = name.key;
    pending.entry.kind = name.kind;
    pending.entry.name = written;
    try {
      if (name.role == Role::Misnamed) throw WindowSpecFault{0, names_no_entry(written)};
      read_window_spec_line(value, constants(), pending.entry, pending.condition_at);
    } catch (const WindowSpecFault& fault) {
      pending.entry = unreadable(written, tell(written, value, fault));
      pending.entry.key = name.key;
    }
    pending_.push_back(std::move(pending));
  }

  // A line that makes no definition stands under a name of its own.
  void add_failed(const Definition& line) {
    const std::string name = "UNREADABLE_" + std::to_string(++failed_lines_);
    pending_.push_back({unreadable(name, to_text(line.value) + ": " + line.failure)});
  }

  static WindowSpecEntry unreadable(const std::string& name, std::string text) {
    WindowSpecEntry entry;
    entry.kind = Kind::Unreadable;
    entry.name = name;
    entry.text = std::move(text);
    return entry;
  }

  void attach_comment(const WindowSpecName& comment) {
    const std::string name = std::string(comment.key) + "_COMMENT";
    const auto about =
        std::find_if(pending_.begin(), pending_.end(), [&](const Pending& p) { return p.entry.key == comment.key; });
    if (about != pending_.end()) {
      about->entry.comment = variables_->atGet(name);
    } else {
      tell(name, variables_->atGet(name), {0, comments_on_no_entry(comment.key)});
    }
  }

  void check_condition(Pending& pending) {
    if (!pending.entry.condition) return;
    const std::string& key = pending.entry.condition->key;
    const bool is_setting = std::any_of(pending_.begin(), pending_.end(), [&](const Pending& p) {
      return p.entry.key == key && p.entry.kind == Kind::Setting;
    });
    if (is_setting || values_.includes(key, Dictionary::EmptyValues::Keep)) return;
    tell(pending.entry.name, variables_->atGet(pending.entry.name),
         {pending.condition_at, depends_on_no_setting(key) + "; it is left out"});
    pending.entry.condition.reset();
  }

  // Text is what a line without its #DEFINE is taken for.
  void tell_of_text(std::string_view text) {
    bool is_missing = false;  // which has been told already
    const SourceText source = session_.files.section(file_, section_, &is_missing);
    const std::size_t first = is_missing ? std::string_view::npos : text.find_first_not_of(" \r\n");
    if (first == std::string_view::npos) return;
    const std::size_t line_break = text.substr(0, first).rfind('\n');
    const std::size_t begin = line_break == std::string_view::npos ? 0 : line_break + 1;
    Diagnostic diagnostic;
    diagnostic.what = std::string(text_in_window_spec) + "; begin it with #DEFINE";
    diagnostic.source_line = text.substr(begin, text.find('\r', first) - begin);
    diagnostic.where = place_of(diagnostic.source_line, source);
    diagnostic.where.column = first - begin + 1;
    session_.diagnostics.push_back(std::move(diagnostic));
  }

  // Where `wanted` stands as a line of the section; line 0 when it came from elsewhere.
  SourceLocation place_of(std::string_view wanted, const SourceText& source) const {
    SourceLocation place{std::string(file_), std::string(section_), 0, 0};
    TextLines lines(source.text);
    std::size_t line_number = 0;
    auto mark = source.marks == nullptr ? nullptr : source.marks->data();
    const auto marks_end = mark == nullptr ? nullptr : mark + source.marks->size();
    while (const auto line = lines.next()) {
      const auto offset = static_cast<std::size_t>(line->data() - source.text.data());
      for (; mark != marks_end && mark->offset <= offset; ++mark) {
        place.path = mark->path;
        line_number = mark->line;
      }
      if (*line == wanted) {
        place.line = line_number;
        break;
      }
      ++line_number;
    }
    return place;
  }

  // Notes a diagnostic and gives it as one line.
  std::string tell(const std::string& name, std::string_view value, const WindowSpecFault& fault) {
    Diagnostic diagnostic;
    diagnostic.what = fault.what;
    if (const auto found = last_made_.find(name); found != last_made_.end()) {
      const Definition* const made = found->second;
      diagnostic.where = made->value;
      diagnostic.source_line = made->source_line;
      const std::string_view line = made->source_line;
      std::size_t begin = std::min(made->value.column - 1, line.size());
      if (line.substr(begin).starts_with('\'') || line.substr(begin).starts_with('"')) ++begin;
      // Where references have made another text of the value, its beginning has to do.
      const bool stands_there = line.substr(begin).starts_with(value.substr(0, fault.offset));
      diagnostic.where.column = begin + (stands_there ? fault.offset : 0) + 1;
    }
    std::string text = to_text(diagnostic.where) + ": " + diagnostic.what;
    session_.diagnostics.push_back(std::move(diagnostic));
    return text;
  }

  // Read for the first entry.
  const Dictionary& constants() {
    if (constants_ == nullptr) constants_ = GetSectionVariables(session_, file_, "CONSTANT");
    return *constants_;
  }

  TemplateSession& session_;
  std::string_view file_;
  std::string_view section_;
  const Dictionary& values_;
  std::vector<Definition> definitions_;
  std::unordered_map<std::string_view, const Definition*> last_made_;
  const Dictionary* variables_ = nullptr;
  std::shared_ptr<Dictionary> constants_;
  std::vector<Pending> pending_;
  std::vector<WindowSpecName> comments_;
  std::size_t failed_lines_ = 0;
};

}  // namespace

std::vector<WindowSpecEntry> read_window_spec(TemplateSession& session, std::string_view file, std::string_view section,
                                              const Dictionary& values) {
  return Reader(session, file, section, values).read();
}

}  // namespace plexoras
