#include "template/window_spec.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

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
    loaded.Preprocess();
    variables_ = &loaded.present_variables();

    for (const Definition& made : definitions_) last_made_[made.name] = &made;
    std::unordered_set<std::string_view> added;
    for (const Definition& made : definitions_) {
      if (made.name.empty()) {
        add_unreadable_line(made);
      } else if (variables_->includes(made.name, Dictionary::EmptyValues::Keep) && added.insert(made.name).second) {
        add(made.name, variables_->atGet(made.name));
      }
    }
    for (Pending& pending : pending_) {
      if (pending.is_comment) attach_comment(pending);
      if (pending.entry.kind == Kind::Setting) settings_.insert(pending.entry.key);
    }
    std::vector<WindowSpecEntry> entries;
    for (Pending& pending : pending_) {
      if (pending.is_comment) continue;  // it is with its entry
      const std::string fault = check_condition(pending);
      entries.push_back(std::move(pending.entry));
      if (!fault.empty()) entries.push_back(unreadable(next_unreadable_name(), fault));
    }
    return entries;
  }

private:
  struct Pending {
    WindowSpecEntry entry;
    std::size_t condition_at = 0;
    bool is_comment = false;  // words about the entry with its key, and none itself
  };

  void add(const std::string& written, const std::string& value) {
    const WindowSpecName name = parse_window_spec_name(written);
    if (name.role == Role::Helper) return;
    Pending pending;
    pending.is_comment = name.role == Role::Comment;
    pending.entry.key = name.key;
    pending.entry.kind = pending.is_comment ? Kind::Message : name.kind;
    pending.entry.name = written;
    try {
      if (name.role == Role::Misnamed) throw WindowSpecFault{0, names_no_entry(written)};
      if (!pending.is_comment) read_window_spec_line(value, constants(), pending.entry, pending.condition_at);
    } catch (const WindowSpecFault& fault) {
      pending.entry = unreadable(written, tell(written, value, fault));
      pending.entry.key = name.key;
    }
    pending_.push_back(std::move(pending));
  }

  // A line that makes no definition stands under a name of its own. Where it failed, that has been told. Text is what a
  // line without its #DEFINE is taken for.
  void add_unreadable_line(const Definition& line) {
    constexpr std::size_t most_lines = 100;  // a text that was never meant for a form may have any number
    if (unreadable_lines_ == most_lines) return;
    const std::string what = !line.failure.empty()
                                 ? to_text(line.value) + ": " + line.failure
                                 : tell(line, 0, std::string(text_in_window_spec) + "; begin it with #DEFINE");
    pending_.push_back({unreadable(next_unreadable_name(), what)});
  }

  std::string next_unreadable_name() { return "UNREADABLE_" + std::to_string(++unreadable_lines_); }

  static WindowSpecEntry unreadable(const std::string& name, std::string text) {
    WindowSpecEntry entry;
    entry.kind = Kind::Unreadable;
    entry.name = name;
    entry.text = std::move(text);
    return entry;
  }

  void attach_comment(Pending& comment) {
    const std::string name = comment.entry.name;
    const std::string words = variables_->atGet(name);
    const auto about = std::find_if(pending_.begin(), pending_.end(), [&](const Pending& p) {
      return !p.is_comment && p.entry.key == comment.entry.key;
    });
    if (about != pending_.end()) {
      about->entry.comment = words;
    } else {
      comment = {unreadable(name, tell(name, words, {0, comments_on_no_entry(comment.entry.key)}))};
    }
  }

  // An entry that depends on nothing shows always. What is wrong, or the empty text.
  std::string check_condition(Pending& pending) {
    if (!pending.entry.condition) return {};
    const std::string key = pending.entry.condition->key;
    if (settings_.contains(key) || values_.includes(key, Dictionary::EmptyValues::Keep)) return {};
    pending.entry.condition.reset();
    return tell(pending.entry.name, variables_->atGet(pending.entry.name),
                {pending.condition_at, depends_on_no_setting(key) + "; it is left out"});
  }

  // Notes a diagnostic about the entry `name` and gives it as one line.
  std::string tell(const std::string& name, std::string_view value, const WindowSpecFault& fault) {
    const auto found = last_made_.find(name);
    if (found == last_made_.end()) return tell({}, 0, fault.what);
    const std::string_view line = found->second->source_line;
    const std::size_t begin = std::min(found->second->value.column - 1, line.size());
    const std::size_t quote = line.substr(begin).starts_with('\'') || line.substr(begin).starts_with('"') ? 1 : 0;
    // Where references have made another text of the value, its beginning has to do.
    const bool stands_there = line.substr(begin + quote).starts_with(value.substr(0, fault.offset));
    return tell(*found->second, quote + (stands_there ? fault.offset : 0), fault.what);
  }

  // The same at `offset` behind where the value or the text of the line begins.
  std::string tell(const Definition& made, std::size_t offset, const std::string& what) {
    Diagnostic diagnostic;
    diagnostic.what = what;
    diagnostic.where = made.value;
    diagnostic.where.column += offset;
    diagnostic.source_line = made.source_line;
    std::string text = to_text(diagnostic.where) + ": " + what;
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
  std::set<std::string> settings_;
  std::size_t unreadable_lines_ = 0;
};

}  // namespace

std::vector<WindowSpecEntry> read_window_spec(TemplateSession& session, std::string_view file, std::string_view section,
                                              const Dictionary& values) {
  return Reader(session, file, section, values).read();
}

}  // namespace plexoras
