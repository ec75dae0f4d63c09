#include "template/references.h"

#include <algorithm>
#include <charconv>
#include <functional>

#include "template/ini_section.h"

namespace plexoras {
namespace {

constexpr std::size_t npos = std::string_view::npos;

std::size_t next_unescaped_reference(std::string_view text, std::size_t from) {
  std::size_t at = next_reference(text, from);
  while (at != npos && is_escaped(text, at)) at = next_reference(text, at + 2);
  return at;
}

// The ")" that balances the "(" before `from`; without one, the end of the text.
std::size_t closing_parenthesis(std::string_view text, std::size_t from) {
  std::size_t depth = 0;
  for (std::size_t at = from; at < text.size(); ++at) {
    if (text[at] == '(') {
      ++depth;
    } else if (text[at] == ')' && depth-- == 0) {
      return at;
    }
  }
  return text.size();
}

void append_unescaped(std::string_view text, std::string& out) {
  std::size_t copied = 0;
  for (std::size_t at = 0; (at = next_reference(text, at)) != npos; at += 2) {
    if (!is_escaped(text, at)) continue;
    out.append(text, copied, at - 1 - copied);
    copied = at;
  }
  out.append(text, copied);
}

bool is_kept_in_urls(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.';
}

void append_url_encoded(std::string_view text, std::string& out) {
  constexpr char digits[] = "0123456789ABCDEF";
  for (const char c : text) {
    if (is_kept_in_urls(c)) {
      out += c;
    } else {
      const auto code = static_cast<unsigned char>(c);
      const char encoded[] = {'%', digits[code >> 4], digits[code & 15]};
      out.append(encoded, sizeof encoded);
    }
  }
}

std::size_t occurrences(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  if (part.empty()) return count;
  for (std::size_t at = 0; (at = text.find(part, at)) != npos; at += part.size()) ++count;
  return count;
}

// A variable that a macro call binds and gives its earlier value back, an absent one the empty text. It is looked up
// once: while a call is expanded nothing is removed from the variables.
class Binding {
public:
  Binding(Dictionary& variables, std::string_view name)
      : variables_(variables), name_(name), slot_(variables.slot_of(name)) {
    if (slot_ >= 0) outer_ = variables.valueAtIndex(slot_);
  }

  void set(std::string_view value) {
    if (slot_ >= 0) {
      variables_.putAtIndex(slot_, value);
    } else {
      variables_.atPut(name_, value);
    }
  }
  void restore() { set(outer_); }

private:
  Dictionary& variables_;
  std::string_view name_;
  std::int32_t slot_;
  std::string outer_;
};

// The argument of "%INC" and "%DEC": an optional sign and decimal digits.
std::int64_t integer_argument(std::string_view name, std::string_view argument) {
  std::string_view digits = argument;
  const bool negative = digits.starts_with('-');
  if (negative || digits.starts_with('+')) digits.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  const bool is_number = !digits.empty() && digits.front() != '-' && end == digits.data() + digits.size();
  if (!is_number) {
    throw AutomationError(RunTimeError::TypeMismatch,
                          std::string(name) + " needs a whole number, not \"" + std::string(argument) + "\"",
                          "IniSection");
  }
  if (negative) value = -value;
  if (error != std::errc() || value < INT32_MIN || value > INT32_MAX) {
    throw AutomationError(RunTimeError::Overflow, std::string(argument) + " does not fit into 32 bits", "IniSection");
  }
  return value;
}

std::string stepped(std::string_view name, std::string_view argument, std::int64_t step) {
  const std::int64_t value = integer_argument(name, argument) + step;
  if (value < INT32_MIN || value > INT32_MAX) {
    throw AutomationError(RunTimeError::Overflow,
                          std::string(name) + " of " + std::string(argument) + " does not fit into 32 bits",
                          "IniSection");
  }
  return std::to_string(value);
}

}  // namespace

std::size_t next_reference(std::string_view text, std::size_t from) {
  for (std::size_t at = from + 1; (at = text.find('(', at)) != npos; ++at) {
    if (text[at - 1] == '$' || text[at - 1] == '#') return at - 1;
  }
  return npos;
}

bool is_escaped(std::string_view text, std::size_t at) { return at > 0 && text[at - 1] == '\\'; }

std::string UrlEncode(std::string_view text) {
  std::string out;
  append_url_encoded(text, out);
  return out;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

BlankSplit split_at_blank(std::string_view text) {
  const std::size_t blank = text.find(' ');
  if (blank == npos) return {text, {}, false};
  return {trimmed(text.substr(0, blank)), trimmed(text.substr(blank + 1)), true};
}

FromSplit split_at_from(std::string_view text) {
  constexpr std::string_view word = "FROM ";
  const std::size_t at = text.find(word);
  if (at == npos) return {text, {}, false};
  return {trimmed(text.substr(0, at)), trimmed(text.substr(at + word.size())), true};
}

void References::begin_line(std::string_view line) {
  line_ = line;
  position_ = nullptr;
  calls_.clear();
}

void References::note_position(const char* at) {
  // Values and macro bodies are texts of their own: what is in the line itself is what led to them.
  const bool in_line = !std::less<>()(at, line_.data()) && std::less<>()(at, line_.data() + line_.size());
  if (in_line) position_ = at;
}

void References::open_request(std::string_view text) {
  if (session_.active_ == nullptr) session_.open_request(text.size() + given_);
}

std::string References::SubstituteLine(std::string_view text) {
  open_request(text);
  std::string out;
  substitute(text, out);
  return out;
}

std::string References::ExpandReferences(std::string_view text) {
  open_request(text);
  const std::size_t first = next_reference(text, 0);
  if (first == npos) return std::string(text);
  std::string out;
  expand_once(text, first, out);
  settle(text, out);
  return out;
}

std::string References::EvaluateReference(std::string_view reference) {
  open_request(reference);
  std::string out;
  evaluate(reference, out);
  return out;
}

std::string References::Find(std::string_view name) {
  open_request(name);
  std::string out;
  find(name, out);
  return out;
}

std::string References::CallMacro(std::string_view call) {
  open_request(call);
  std::string out;
  call_macro(call, out);
  return out;
}

bool References::substitute(std::string_view text, std::string& out) {
  const std::size_t first = next_reference(text, 0);
  if (first == npos) {
    out += text;
    return false;
  }
  const TemplateSession::Level level(session_);
  const std::size_t begin = out.size();
  expand_once(text, first, out);
  // Most lines have settled by now, and hold no escape.
  if (next_reference(std::string_view(out).substr(begin), 0) == npos) return true;
  TemplateSession::Scratch expanded(session_);
  expanded.text.assign(out, begin);
  out.resize(begin);
  settle(text, expanded.text);
  append_unescaped(expanded.text, out);
  return true;
}

// Goes on from `text`, of which `out` is the first expansion: passes until one changes nothing. A pass over text
// without an unescaped reference would change nothing, so it is not made.
void References::settle(std::string_view text, std::string& out) {
  if (out == text) return;
  std::size_t first = 0;
  for (std::size_t passes = 1; (first = next_unescaped_reference(out, 0)) != npos; ++passes) {
    if (passes >= session_.limits.nesting) session_.run_out(RunTimeError::OutOfStackSpace);
    if (passes > 2) session_.charge(out.size());
    TemplateSession::Scratch next(session_);
    expand_once(out, first, next.text);
    if (next.text == out) break;
    out.swap(next.text);
  }
}

void References::expand_once(std::string_view text, std::size_t first, std::string& out) {
  std::size_t position = 0;
  for (std::size_t match = first; match != npos; match = next_reference(text, position)) {
    if (is_escaped(text, match)) {
      out.append(text, position, match + 2 - position);
      position = match + 2;
      continue;
    }
    out.append(text, position, match - position);
    note_position(text.data() + match);

    const std::size_t begin = match + 2;
    const std::size_t end = closing_parenthesis(text, begin);
    const std::string_view inner = text.substr(begin, end - begin);
    const std::size_t before = out.size();
    if (text[match] == '#') {
      call_macro(inner, out);
    } else if (const std::string_view reference = trimmed(inner); reference.starts_with('?')) {
      const std::string_view name = trimmed(reference.substr(1));
      TemplateSession::Scratch value(session_);
      evaluate(name, value.text);
      if (!value.text.empty()) out.append(name).append("=\"").append(value.text).append("\"");
    } else {
      evaluate(reference, out);
    }
    session_.charge(out.size() - before);
    position = end < text.size() ? end + 1 : end;
  }
  out.append(text, position);
}

void References::evaluate(std::string_view reference, std::string& out) {
  if (!reference.starts_with('\\')) {
    if (next_reference(reference, 0) == npos) return find(reference, out);
    TemplateSession::Scratch name(session_);
    substitute(reference, name.text);
    return find(name.text, out);
  }

  if (reference.find(',') == npos) {
    // Kept: the text is substituted first, so an escape at its start is gone by the time the "\" is dropped, and
    // the character that then stands first goes with it.
    TemplateSession::Scratch name(session_);
    substitute(reference, name.text);
    TemplateSession::Scratch value(session_);
    find(std::string_view(name.text).substr(name.text.empty() ? 0 : 1), value.text);
    return append_url_encoded(value.text, out);
  }

  const auto given = std::count(reference.begin(), reference.end(), ',') + 1;
  if (given < 3) {
    throw AutomationError(RunTimeError::SubscriptOutOfRange,
                          "a replacement needs three parts, $(\\NAME,from,to); \"" + std::string(reference) +
                              "\" has " + std::to_string(given),
                          "IniSection");
  }
  TemplateSession::Scratch parts[] = {TemplateSession::Scratch(session_), TemplateSession::Scratch(session_),
                                      TemplateSession::Scratch(session_)};
  std::string_view rest = reference;
  for (TemplateSession::Scratch& part : parts) {
    const std::size_t comma = rest.find(',');
    substitute(rest.substr(0, comma), part.text);
    if (comma != npos) rest.remove_prefix(comma + 1);
  }
  const std::string_view name = parts[0].text;
  TemplateSession::Scratch value(session_);
  find(name.substr(name.empty() ? 0 : 1), value.text);
  // A replacement can make far more text than it was given, so it is charged before it is made.
  session_.charge(occurrences(value.text, parts[1].text) * parts[2].text.size());
  out += replaced_all(value.text, parts[1].text, parts[2].text);
}

void References::find(std::string_view name, std::string& out) {
  if (name.starts_with('[')) return find_bracketed(name, out);
  out += variables_.atGet(name);
}

void References::find_bracketed(std::string_view name, std::string& out) {
  if (name.size() < 2) {
    throw AutomationError(RunTimeError::InvalidCall, "\"[\" alone names no section; write [NAME]", "IniSection");
  }
  const TemplateSession::Level level(session_);
  // Kept: the last character goes whatever it is.
  const std::string_view inner = name.substr(1, name.size() - 2);
  const FromSplit from = split_at_from(inner);
  const std::string file(from.found ? from.before : std::string_view(file_name_));
  const std::string section(from.found ? from.after : inner);
  out += GetSectionConstant(session_, file, section, section, &variables_);
}

bool References::isAbsent(std::string_view name) {
  if (!name.starts_with('[')) return !variables_.includes(name);
  return Find(name).empty();
}

void References::call_macro(std::string_view call, std::string& out) {
  TemplateSession::Scratch substituted(session_);
  if (next_reference(call, 0) != npos) {
    substitute(call, substituted.text);
    call = substituted.text;
  }
  const BlankSplit parts = split_at_blank(call);
  const std::string_view name = parts.found ? parts.first : trimmed(call);
  const std::string_view argument = parts.rest;

  if (isAbsent(name)) {
    const std::string result = CallBuiltin(name, argument);
    out += result.empty() ? call : std::string_view(result);
    return;
  }
  if (name.starts_with('?') && isAbsent(argument)) return;

  const TemplateSession::Level level(session_);
  calls_.emplace_back(name);
  Binding bound_name(variables_, "_NAME");
  Binding bound_value(variables_, "_VALUE");
  TemplateSession::Scratch text(session_);

  bound_name.set(argument);
  evaluate(argument, text.text);
  bound_value.set(text.text);

  text.text.clear();
  evaluate(name, text.text);
  substitute(text.text, out);

  bound_name.restore();
  bound_value.restore();
  calls_.pop_back();
}

std::string References::CallBuiltin(std::string_view name, std::string_view argument) {
  if (name == "%TODAY") return session_.platform.short_date();
  if (name == "%LENGTH") return std::to_string(argument.size());
  if (name == "%INC") return stepped(name, argument, 1);
  if (name == "%DEC") return stepped(name, argument, -1);
  return {};
}

}  // namespace plexoras
