#include "template/window_spec_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "template/lookup_table.h"
#include "template/references.h"

namespace plexoras {
namespace {

using Input = WindowSpecEntry::Input;
using Choice = WindowSpecEntry::Choice;

// A fault at a piece of the value, before its offset is counted.
struct Fault {
  std::string_view at;
  std::string what;
  bool lacks_table = false;
};

constexpr std::string_view escapable = "|;=\\";

bool is_escape(std::string_view text, std::size_t at) {
  return text[at] == '\\' && at + 1 < text.size() && escapable.find(text[at + 1]) != std::string_view::npos;
}

// The first `separator` that no "\" stands before, or npos.
std::size_t find_separator(std::string_view text, char separator) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (is_escape(text, at)) {
      ++at;
    } else if (text[at] == separator) {
      return at;
    }
  }
  return std::string_view::npos;
}

// The pieces between separators, without the blanks around them. They are views of `text`.
std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const std::size_t end = find_separator(text, separator);
    pieces.push_back(trimmed(text.substr(0, end)));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

std::string unescaped(std::string_view piece) {
  std::string text;
  for (std::size_t at = 0; at < piece.size(); ++at) {
    if (is_escape(piece, at)) ++at;
    text += piece[at];
  }
  return text;
}

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

bool is_number(std::string_view text) {
  bool reads = true;
  try {
    Variant(text).to_double();
  } catch (const AutomationError&) {
    reads = false;
  }
  return reads;
}

// What stands behind the type, for the type's own reader.
struct Argument {
  std::string_view text;
  const Dictionary& constants;
};

void read_range(const Argument& argument, WindowSpecEntry& entry) {
  const std::size_t dots = argument.text.find("..");
  const bool is_unclear = argument.text.substr(std::min(dots, argument.text.size())).starts_with("...");
  if (dots == std::string_view::npos || is_unclear) {
    throw Fault{argument.text, quoted(argument.text) + " is no range; write 0..100, 0.. or ..100"};
  }
  const auto bound = [](std::string_view text) {
    if (!text.empty() && !is_number(text))
      throw Fault{text, quoted(text) + " is no number; write 0..100, 0.. or ..100"};
    return std::string(text);
  };
  entry.lowest = bound(trimmed(argument.text.substr(0, dots)));
  entry.highest = bound(trimmed(argument.text.substr(dots + 2)));
  if (entry.lowest.empty() || entry.highest.empty()) return;
  if (Variant(entry.lowest).to_double() > Variant(entry.highest).to_double()) {
    throw Fault{argument.text, quoted(argument.text) + " holds no number; write the lower bound first"};
  }
}

void read_check(const Argument& argument, WindowSpecEntry& entry) {
  if (argument.text.empty()) {
    entry.choices = {{"True", {}}, {"False", {}}};
    return;
  }
  const std::vector<std::string_view> states = split(argument.text, ';');
  if (states.size() > 2) {
    throw Fault{states[2], "a check box has two values; write ON;OFF, or ON alone when off is the empty text"};
  }
  entry.choices = {{unescaped(states[0]), {}}, {states.size() == 2 ? unescaped(states[1]) : std::string(), {}}};
  if (entry.choices[0].value == entry.choices[1].value) {
    throw Fault{states.back(), "on and off have the same value; write ON;OFF"};
  }
}

void read_choices(const Argument& argument, WindowSpecEntry& entry) {
  for (const std::string_view piece : split(argument.text, ';')) {
    const std::size_t equals = find_separator(piece, '=');
    const std::string value = unescaped(trimmed(piece.substr(0, equals)));
    const bool has_label = equals != std::string_view::npos;
    const std::string label = has_label ? unescaped(trimmed(piece.substr(equals + 1))) : value;
    if (label.empty()) throw Fault{piece, "a choice has no text; write value=Text;value=Text"};
    entry.choices.push_back({value, label});
  }
}

// The values alone: what is typed into a box that takes any text is the value itself.
void read_suggestions(const Argument& argument, WindowSpecEntry& entry) {
  for (const std::string_view piece : split(argument.text, ';')) {
    const std::string value = unescaped(piece);
    if (value.empty()) throw Fault{piece, "a choice has no text; write one;two;three"};
    entry.choices.push_back({value, value});
  }
}

void read_lookup(const Argument& argument, WindowSpecEntry& entry) {
  const auto table = lookup_table(argument.constants, argument.text);
  for (std::int32_t i = 0; i < table->Count(); ++i) {
    entry.choices.push_back({table->valueAtIndex(i), table->keyAtIndex(i)});
  }
  if (entry.choices.empty()) {
    throw Fault{argument.text,
                "section CONSTANT has no table " + quoted(argument.text) + "; define " + std::string(argument.text) +
                    "_Text with its value there",
                true};
  }
}

struct TypeRow {
  std::string_view word;
  Input input;
  void (*read)(const Argument& argument, WindowSpecEntry& entry);  // null: the type takes no argument
  std::string_view needs;                                          // how to write the type, where it needs an argument
};

constexpr TypeRow types[] = {
    {"text", Input::Text, nullptr, {}},
    {"multiline", Input::MultiLine, nullptr, {}},
    {"color", Input::Color, nullptr, {}},
    {"integer", Input::Integer, read_range, {}},
    {"number", Input::Number, read_range, {}},
    {"check", Input::Check, read_check, {}},
    {"choice", Input::Choice, read_choices, "choice|value=Text;value=Text"},
    {"combo", Input::Combo, read_suggestions, "combo|one;two;three"},
    {"lookup", Input::Choice, read_lookup, "lookup|TABLE"},
};

std::optional<int> pixels(std::string_view text) {
  constexpr int most = 32767;
  int number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool reads = error == std::errc() && stop == text.data() + text.size() && number >= 0 && number <= most;
  return reads ? std::optional(number) : std::nullopt;
}

// Two numbers of pixels with `separator` between them.
std::pair<int, int> read_pixels(std::string_view text, char separator, std::string_view form) {
  const std::size_t middle = std::min(text.find(separator), text.size());
  const auto first = pixels(trimmed(text.substr(0, middle)));
  const auto second = pixels(trimmed(text.substr(std::min(middle + 1, text.size()))));
  if (!first || !second) throw Fault{text, quoted(text) + " is not of the form " + std::string(form) + ", in pixels"};
  return {*first, *second};
}

void read_condition(std::string_view text, WindowSpecEntry& entry, bool negated) {
  if (entry.condition) throw Fault{text, "an entry has one condition; remove the other"};
  const std::size_t equals = find_separator(text, '=');
  if (equals == std::string_view::npos || trimmed(text.substr(0, equals)).empty()) {
    throw Fault{text, "the condition needs a setting and its values; write when KEY=value;value"};
  }
  WindowSpecEntry::Condition condition;
  condition.key = unescaped(trimmed(text.substr(0, equals)));
  for (const std::string_view piece : split(text.substr(equals + 1), ';')) condition.values.push_back(unescaped(piece));
  condition.negated = negated;
  entry.condition = std::move(condition);
}

struct OptionRow {
  std::string_view word;
  bool takes_text;
  void (*read)(std::string_view text, WindowSpecEntry& entry);
};

constexpr OptionRow options[] = {
    {"DISABLED", false, [](std::string_view, WindowSpecEntry& entry) { entry.disabled = true; }},
    {"at", true,
     [](std::string_view text, WindowSpecEntry& entry) {
       const auto [left, top] = read_pixels(text, ',', "at LEFT,TOP");
       entry.placement.left = left;
       entry.placement.top = top;
     }},
    {"size", true,
     [](std::string_view text, WindowSpecEntry& entry) {
       const auto [width, height] = read_pixels(text, 'x', "size WIDTHxHEIGHT");
       entry.placement.width = width;
       entry.placement.height = height;
     }},
    {"when", true, [](std::string_view text, WindowSpecEntry& entry) { read_condition(text, entry, false); }},
    {"unless", true, [](std::string_view text, WindowSpecEntry& entry) { read_condition(text, entry, true); }},
};

const OptionRow* find_option(std::string_view piece) {
  const BlankSplit words = split_at_blank(piece);
  for (const OptionRow& row : options) {
    if (row.takes_text ? words.first == row.word : piece == row.word) return &row;
  }
  return nullptr;
}

// Reads the type and what it takes; the number of pieces used.
std::size_t read_type(const std::vector<std::string_view>& pieces, const Dictionary& constants,
                      WindowSpecEntry& entry) {
  if (pieces.size() < 2) throw Fault{pieces[0], "a setting needs a type; write 'Caption:|text'"};
  const auto type =
      std::find_if(std::begin(types), std::end(types), [&](const TypeRow& row) { return row.word == pieces[1]; });
  if (type == std::end(types)) {
    std::string known;
    for (const TypeRow& row : types) known += (known.empty() ? "" : ", ") + std::string(row.word);
    throw Fault{pieces[1], "there is no type " + quoted(pieces[1]) + "; known: " + known};
  }
  entry.input = type->input;
  const bool is_needed = !type->needs.empty();
  // Where the type can do without, an option may stand in its argument's place.
  const bool is_there = type->read != nullptr && pieces.size() > 2 && (is_needed || find_option(pieces[2]) == nullptr);
  if (is_needed && (!is_there || pieces[2].empty())) {
    throw Fault{pieces[1], "the type needs more; write " + std::string(type->needs)};
  }
  if (is_there && !pieces[2].empty()) {
    type->read({pieces[2], constants}, entry);
  } else if (type->input == Input::Check) {
    type->read({{}, constants}, entry);
  }
  return is_there ? 3 : 2;
}

void read_options(const std::vector<std::string_view>& pieces, std::size_t first, WindowSpecEntry& entry,
                  std::string_view& condition) {
  std::array<bool, std::size(options)> is_given = {};
  for (std::size_t i = first; i < pieces.size(); ++i) {
    const OptionRow* const option = find_option(pieces[i]);
    if (option == nullptr) {
      std::string known;
      for (const OptionRow& row : options) known += (known.empty() ? "" : ", ") + std::string(row.word);
      throw Fault{pieces[i], "there is no option " + quoted(pieces[i]) + "; known: " + known +
                                 " (a \"|\" in a text is written \\|)"};
    }
    if (std::exchange(is_given[static_cast<std::size_t>(option - options)], true)) {
      throw Fault{pieces[i], "the option " + quoted(option->word) + " is given twice; remove one of them"};
    }
    option->read(trimmed(pieces[i].substr(option->word.size())), entry);
    if (entry.condition && condition.data() == nullptr) condition = pieces[i];
  }
}

// What the ending of a name makes of a definition.
struct Ending {
  std::string_view text;
  WindowSpecName::Role role;
  WindowSpecEntry::Kind kind;
};
constexpr Ending endings[] = {
    {"_SPEC", WindowSpecName::Role::Entry, WindowSpecEntry::Kind::Setting},
    {"_MESSAGESPEC", WindowSpecName::Role::Entry, WindowSpecEntry::Kind::Message},
    {"_DIVIDERSPEC", WindowSpecName::Role::Entry, WindowSpecEntry::Kind::Divider},
    {"_COMMENT", WindowSpecName::Role::Comment, {}},
};

}  // namespace

WindowSpecName parse_window_spec_name(std::string_view name) {
  if (name.starts_with('_')) return {};
  for (const Ending& ending : endings) {
    if (name.ends_with(ending.text)) {
      return {ending.role, name.substr(0, name.size() - ending.text.size()), ending.kind};
    }
  }
  const bool resembles_one = name.ends_with("SPEC") || name.ends_with("COMMENT");
  return {.role = resembles_one ? WindowSpecName::Role::Misnamed : WindowSpecName::Role::Helper};
}

std::string names_no_entry(std::string_view name) {
  return quoted(name) + " names no entry; write KEY_SPEC, KEY_COMMENT, NAME_MESSAGESPEC or NAME_DIVIDERSPEC";
}

std::string comments_on_no_entry(std::string_view key) {
  return "there is no entry " + quoted(key) + " that this could be about";
}

std::string depends_on_no_setting(std::string_view key) {
  return "there is no setting " + quoted(key) + " for the condition";
}

void read_window_spec_line(std::string_view value, const Dictionary& constants, WindowSpecEntry& entry,
                           std::size_t& condition_at) {
  const auto offset_of = [&](std::string_view piece) { return static_cast<std::size_t>(piece.data() - value.data()); };
  try {
    const std::vector<std::string_view> pieces = split(value, '|');
    entry.text = unescaped(pieces[0]);
    std::string_view condition;
    const bool is_setting = entry.kind == WindowSpecEntry::Kind::Setting;
    read_options(pieces, is_setting ? read_type(pieces, constants, entry) : 1, entry, condition);
    if (entry.condition) condition_at = offset_of(condition);
  } catch (const Fault& fault) {
    throw WindowSpecFault{offset_of(fault.at), fault.what, fault.lacks_table};
  }
}

}  // namespace plexoras
