#include "literal_engine.h"

#include <algorithm>

namespace plexoras {
namespace {

std::string trim(std::string text) {
  while (!text.empty() && text.front() == ' ') text.erase(0, 1);
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

std::string replace_all(std::string text, const std::string& from, const std::string& to) {
  if (from.empty()) return text;
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::vector<std::string> split_at_commas(const std::string& text) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == ',') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

std::string url_encode(const std::string& text) {
  std::string encoded;
  for (const char c : text) {
    const bool kept = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.';
    const auto code = static_cast<unsigned char>(c);
    encoded +=
        kept ? std::string(1, c) : std::string{'%', "0123456789ABCDEF"[code / 16], "0123456789ABCDEF"[code % 16]};
  }
  return encoded;
}

long long to_32_bits(const std::string& text) {
  const bool has_sign = text.starts_with('-') || text.starts_with('+');
  const std::string digits = text.substr(has_sign ? 1 : 0);
  if (digits.empty()) throw LiteralSection::Failure();
  long long value = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') throw LiteralSection::Failure();
    value = std::min(value * 10 + (c - '0'), 99'999'999'999LL);
  }
  if (text.starts_with('-')) value = -value;
  if (value > 2147483647LL || value < -2147483648LL) throw LiteralSection::Failure();
  return value;
}

// The place of the ")" that balances the "(" before `from`, or the end.
std::size_t balance(const std::string& text, std::size_t from) {
  int depth = 0;
  for (; from < text.size(); ++from) {
    if (text[from] == '(') ++depth;
    if (text[from] == ')' && --depth < 0) break;
  }
  return from;
}

// "before" and "after" of "before FROM after"; without a "FROM " only the second.
std::pair<std::string, std::string> split_at_from(const std::string& text, const std::string& otherwise) {
  const std::size_t from = text.find("FROM ");
  if (from == std::string::npos) return {otherwise, text};
  return {trim(text.substr(0, from)), trim(text.substr(from + 5))};
}

}  // namespace

void LiteralSection::spend() {
  if (world_.budget == 0 || world_.depth > 60 || source_.size() > 200'000) throw Runaway();
  --world_.budget;
}

std::string LiteralSection::ReadSection(const std::string& file, const std::string& section) const {
  std::string path;
  for (const std::string& candidate : {"DTC\\" + file, world_.module_directory + file, file}) {
    if (path.empty() && world_.files.contains(candidate)) path = candidate;
  }
  if (path.empty()) return "<!-- ERROR: NO TEMPLATE FILE " + file + "-->\r\n";

  std::string text = world_.files.at(path);
  text = replace_all(replace_all(text, "\r\n", "\n"), "\r", "\n");
  if (!text.empty() && text.back() != '\n') text += '\n';
  std::string result;
  bool inside = false;
  for (std::size_t start = 0; start < text.size(); start = text.find('\n', start) + 1) {
    const std::string line = text.substr(start, text.find('\n', start) - start);
    if (section.empty()) {
      result += line + "\r\n";
    } else if (line.starts_with(';')) {
      continue;
    } else if (line.size() > 1 && line.starts_with('[') && line.ends_with(']')) {
      inside = line.substr(1, line.size() - 2) == section;
    } else if (inside) {
      result += line + "\r\n";
    }
  }
  return result;
}

void LiteralSection::Read(const std::string& file, const std::string& section) {
  file_name_ = file;
  SetContents(ReadSection(file, section));
}

void LiteralSection::SetContents(const std::string& text) {
  raw_ = text;
  result_ = "";
}

const std::string& LiteralSection::GetContents() {
  if (result_.empty()) Preprocess();
  return result_;
}

const std::vector<std::pair<std::string, std::string>>& LiteralSection::GetVariables() {
  if (result_.empty()) Preprocess();
  return variables_;
}

// Variables.

std::string LiteralSection::variable(const std::string& name) const {
  for (const auto& [key, value] : variables_) {
    if (key == name) return value;
  }
  return "";
}

void LiteralSection::Define(const std::string& name, const std::string& value) {
  for (auto& [key, old] : variables_) {
    if (key != name) continue;
    old = value;
    return;
  }
  if (value.empty()) return;
  if (variables_.size() == 129) throw Failure();
  variables_.emplace_back(name, value);
}

std::string LiteralSection::Find(const std::string& name) {
  if (!name.starts_with('[')) return variable(name);
  if (name.size() == 1) throw Failure();
  const auto [file, section] = split_at_from(name.substr(1, name.size() - 2), file_name_);
  LiteralSection fresh(world_);
  for (const auto& [key, value] : variables_) fresh.Define(key, value);
  fresh.Read(file, section);
  ++world_.depth;
  fresh.Preprocess();
  --world_.depth;
  return fresh.variable(section);
}

bool LiteralSection::isAbsent(const std::string& name) { return Find(name).empty(); }

// References.

std::string LiteralSection::SubstituteLine(const std::string& text) {
  return replace_all(replace_all(ExpandReferences(text), "\\$(", "$("), "\\#(", "#(");
}

std::string LiteralSection::ExpandReferences(const std::string& text) {
  spend();
  ++world_.depth;
  std::string output;
  std::size_t position = 0;
  while (true) {
    std::size_t match = std::min(text.find("#(", position), text.find("$(", position));
    if (match == std::string::npos) break;
    const bool escaped = match > position && text[match - 1] == '\\';
    if (escaped) --match;
    output += text.substr(position, match - position);
    if (escaped) {
      output += text.substr(match, 3);
      position = match + 3;
      continue;
    }
    const std::size_t end = balance(text, match + 2);
    const std::string inner = text.substr(match + 2, end - match - 2);
    position = std::min(end + 1, text.size());
    if (text[match] == '#') {
      output += CallMacro(inner);
    } else if (trim(inner).starts_with('?')) {
      const std::string reference = trim(trim(inner).substr(1));
      const std::string value = EvaluateReference(reference);
      if (!value.empty()) output += reference + "=\"" + value + "\"";
    } else {
      output += EvaluateReference(trim(inner));
    }
  }
  output += text.substr(position);
  if (output.size() > 100'000) throw Runaway();
  if (output != text) output = ExpandReferences(output);
  --world_.depth;
  return output;
}

std::string LiteralSection::EvaluateReference(const std::string& reference) {
  if (!reference.starts_with('\\')) return Find(SubstituteLine(reference));
  if (reference.find(',') == std::string::npos) return url_encode(Find(SubstituteLine(reference).substr(1)));
  const std::vector<std::string> parts = split_at_commas(reference);
  if (parts.size() < 3) throw Failure();
  const std::string name = SubstituteLine(parts[0]).substr(1);
  const std::string from = SubstituteLine(parts[1]);
  const std::string to = SubstituteLine(parts[2]);
  return replace_all(Find(name), from, to);
}

std::string LiteralSection::CallMacro(const std::string& call_text) {
  const std::string call = SubstituteLine(call_text);
  const std::size_t blank = call.find(' ');
  const std::string name = trim(call.substr(0, blank));
  const std::string argument = blank == std::string::npos ? "" : trim(call.substr(blank));

  if (isAbsent(name)) {
    const std::string result = CallBuiltin(name, argument);
    return result.empty() ? call : result;
  }
  if (name.starts_with('?') && isAbsent(argument)) return "";
  const std::string old_name = variable("_NAME");
  const std::string old_value = variable("_VALUE");
  Define("_NAME", argument);
  Define("_VALUE", EvaluateReference(argument));
  const std::string result = SubstituteLine(EvaluateReference(name));
  Define("_NAME", old_name);
  Define("_VALUE", old_value);
  return result;
}

std::string LiteralSection::CallBuiltin(const std::string& name, const std::string& argument) const {
  if (name == "%TODAY") return world_.today;
  if (name == "%LENGTH") return std::to_string(argument.size());
  if (name != "%INC" && name != "%DEC") return "";
  const long long result = to_32_bits(argument) + (name == "%INC" ? 1 : -1);
  return std::to_string(to_32_bits(std::to_string(result)));
}

// The preprocessor.

void LiteralSection::Preprocess() {
  source_ = raw_;
  position_ = 0;
  line_starts_.clear();
  output_ = "";
  skip_.assign(129, false);
  level_ = 0;
  splices_ = 0;
  step_mode_ = false;
  const std::size_t depth = world_.depth;
  try {
    while (position_ < source_.size()) {
      line_starts_.push_back(position_);
      const std::string line = read_line();
      const std::size_t first = line.find_first_not_of(' ');
      handle(first != std::string::npos && line[first] == '#' ? line.substr(first) : line);
    }
    result_ = output_;
  } catch (const Failure&) {
    world_.depth = depth;
    const std::size_t start = line_starts_.size() < 4 ? 0 : line_starts_[line_starts_.size() - 4];
    world_.messages.push_back("Template Build Internal Error|An error occured near \r\n" +
                              source_.substr(start, position_ - start));
    result_ = "";
  }
}

std::string LiteralSection::read_line() {
  std::string line;
  do {
    if (line.ends_with('\\')) line.pop_back();
    const std::size_t end = std::min(source_.find("\r\n", position_), source_.size());
    line += replace_all(source_.substr(position_, end - position_), "\t", "     ");
    position_ = std::min(end + 2, source_.size());
  } while (line.ends_with('\\') && position_ < source_.size());
  while (line.ends_with('\\')) line.pop_back();
  spend();
  return line;
}

void LiteralSection::open_level(bool skip) {
  if (level_ == 128) throw Failure();
  skip_[++level_] = skip;
}

std::pair<std::string, std::string> LiteralSection::name_and_value(const std::string& argument) const {
  const std::size_t blank = argument.find(' ');
  if (blank == std::string::npos) throw Failure();
  return {trim(argument.substr(0, blank)), trim(argument.substr(blank))};
}

void LiteralSection::store(const std::string& argument) {
  auto [name, value] = name_and_value(argument);
  if (value.starts_with('"') || value.starts_with('\'')) {
    if (value.size() == 1) throw Failure();
    value = value.substr(1, value.size() - 2);
  }
  Define(name, value);
}

void LiteralSection::splice(const std::string& text) {
  if (++splices_ > 200) throw Runaway();
  source_.insert(position_, text);
}

void LiteralSection::handle(const std::string& line) {
  const auto is = [&](const char* keyword) { return line.starts_with(keyword); };
  const auto rest = [&](const char* keyword) { return trim(line.substr(std::string(keyword).size())); };

  if (skip_[level_]) {
    if (is("#ENDIF")) {
      if (level_ > 0) --level_;
    } else if (is("#ELSE")) {
      if (level_ == 0) throw Failure();
      skip_[level_] = skip_[level_ - 1];
    } else if (is("#IFEQUAL ") || is("#IFNEQUAL") || is("#IFINSIDE") || is("#IFDEF ") || is("#IFUNDEF ")) {
      open_level(true);
    }
  } else if (is("#HALT")) {
    step_mode_ = rest("#HALT") != "VB" && world_.halt(line);
  } else if (is("#INCLUDE ")) {
    const std::string argument = SubstituteLine(rest("#INCLUDE "));
    const std::size_t from = argument.find("FROM ");
    splice(from == std::string::npos ? ReadSection(file_name_, argument)
                                     : ReadSection(trim(argument.substr(from + 5)), trim(argument.substr(0, from))));
  } else if (is("#DEFINE ")) {
    store(SubstituteLine(rest("#DEFINE ")));
  } else if (is("#MACRO ")) {
    store(rest("#MACRO "));
  } else if (is("#UNDEF ")) {
    const std::string name = SubstituteLine(rest("#UNDEF "));
    std::erase_if(variables_, [&](const auto& entry) { return entry.first == name; });
  } else if (is("#IFINSIDE")) {
    auto [name, list] = name_and_value(SubstituteLine(rest("#IFINSIDE")));
    if (list.starts_with('(')) list.erase(0, 1);
    if (list.ends_with(')')) list.pop_back();
    open_level(true);
    const std::string actual = EvaluateReference(name);
    for (const std::string& item : split_at_commas(list)) {
      if (item == actual) skip_[level_] = false;
    }
  } else if (is("#IFEQUAL ") || is("#IFNEQUAL")) {
    const auto [name, expected] = name_and_value(SubstituteLine(rest(is("#IFEQUAL ") ? "#IFEQUAL " : "#IFNEQUAL")));
    const bool wanted = is("#IFEQUAL ");
    open_level(true);
    skip_[level_] = (EvaluateReference(name) == expected) != wanted;
  } else if (is("#IFDEF ") || is("#IFUNDEF ")) {
    open_level(true);
    const std::string name = trim(SubstituteLine(line).substr(is("#IFDEF ") ? 7 : 9));
    skip_[level_] = isAbsent(name) == is("#IFDEF ");
  } else if (is("#ELSE")) {
    skip_[level_] = true;
  } else if (is("#ENDIF")) {
    if (level_ > 0) --level_;
  } else if (is("#")) {
    if (step_mode_) step_mode_ = world_.halt(line);
    const std::string expansion = CallMacro(line.substr(1));
    if (!expansion.empty()) splice(expansion + "\r\n");
  } else {
    if (step_mode_) step_mode_ = world_.halt(line);
    output_ += SubstituteLine(line) + "\r\n";
  }
}

}  // namespace plexoras
