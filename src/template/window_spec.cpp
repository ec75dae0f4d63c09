#include "template/window_spec.h"

#include <algorithm>
#include <utility>

#include "host/text_lines.h"
#include "template/ini_section.h"
#include "template/window_spec_line.h"

namespace plexoras {
namespace {

using Kind = WindowSpecEntry::Kind;

// What the ending of a name makes of a definition.
struct Ending {
  std::string_view text;
  std::optional<Kind> kind;  // nothing: words about another entry
};
constexpr Ending endings[] = {
    {"_SPEC", Kind::Setting},
    {"_MESSAGESPEC", Kind::Message},
    {"_DIVIDERSPEC", Kind::Divider},
    {"_COMMENT", std::nullopt},
};

const Ending* find_ending(std::string_view name) {
  for (const Ending& ending : endings) {
    if (name.ends_with(ending.text)) return &ending;
  }
  return nullptr;
}

// Whether somebody meant this name for an entry.
bool resembles_entry(std::string_view name) {
  return !name.starts_with('_') && (name.ends_with("SPEC") || name.ends_with("COMMENT"));
}

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
    variables_ = loaded.GetVariables();
    if (!loaded.failed()) tell_of_text(loaded.GetContents());
    for (std::int32_t i = 0; i < variables_->Count(); ++i) add(variables_->keyAtIndex(i), variables_->valueAtIndex(i));
    for (const std::string& name : comments_) attach_comment(name);
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

  void add(const std::string& name, const std::string& value) {
    // What the control brought is no entry, unless the section has made one of it.
    if (values_.includes(name) && values_.atGet(name) == value) return;
    const Ending* ending = find_ending(name);
    if (ending == nullptr && !resembles_entry(name)) return;
    Pending pending;
    pending.entry.name = name;
    try {
      if (ending == nullptr || ending->text.size() == name.size()) {
        throw WindowSpecFault{0, "\"" + name +
                                     "\" names no entry; write KEY_SPEC, KEY_COMMENT, NAME_MESSAGESPEC or "
                                     "NAME_DIVIDERSPEC"};
      }
      if (!ending->kind) return comments_.push_back(name);
      pending.entry.key = name.substr(0, name.size() - ending->text.size());
      pending.entry.kind = *ending->kind;
      read_window_spec_line(value, constants(), pending.entry, pending.condition_at);
    } catch (const WindowSpecFault& fault) {
      WindowSpecEntry unreadable;
      unreadable.kind = Kind::Unreadable;
      unreadable.key = pending.entry.key;
      unreadable.name = name;
      unreadable.text = tell(name, value, fault);
      pending.entry = std::move(unreadable);
    }
    pending_.push_back(std::move(pending));
  }

  void attach_comment(const std::string& name) {
    constexpr std::string_view ending = "_COMMENT";
    const std::string_view key = std::string_view(name).substr(0, name.size() - ending.size());
    const auto about =
        std::find_if(pending_.begin(), pending_.end(), [&](const Pending& p) { return p.entry.key == key; });
    if (about != pending_.end()) {
      about->entry.comment = variables_->atGet(name);
    } else {
      tell(name, variables_->atGet(name),
           {0, "there is no entry \"" + std::string(key) + "\" that this could be about"});
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
         {pending.condition_at, "there is no setting \"" + key + "\" for the condition; it is left out"});
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
    diagnostic.what = "a line of text means nothing in a window-spec; begin it with #DEFINE";
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
    const auto made = std::find_if(definitions_.rbegin(), definitions_.rend(),
                                   [&](const Definition& definition) { return definition.name == name; });
    if (made != definitions_.rend()) {
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
  std::shared_ptr<Dictionary> variables_;
  std::shared_ptr<Dictionary> constants_;
  std::vector<Pending> pending_;
  std::vector<std::string> comments_;
};

}  // namespace

std::vector<WindowSpecEntry> read_window_spec(TemplateSession& session, std::string_view file, std::string_view section,
                                              const Dictionary& values) {
  return Reader(session, file, section, values).read();
}

}  // namespace plexoras
