#include "template/input_stack.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace plexoras {
namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::string_view line_break = "\r\n";

// How many calls by used-up texts a diagnostic lists.
constexpr std::size_t finished_calls_kept = 16;

void append_with_blanks_for_tabs(std::string_view text, std::string& out) {
  std::size_t copied = 0;
  for (std::size_t tab; (tab = text.find('\t', copied)) != npos; copied = tab + 1) {
    out.append(text, copied, tab - copied).append(5, ' ');
  }
  out.append(text, copied);
}

// Whether a block holds nothing that makes a line more than plain text. The vector type, which both compilers know
// on every processor, compares 16 bytes at once; left to themselves they do not for such a loop.
constexpr std::size_t block_size = 64;
bool is_plain_block(const char* block) {
  using Bytes [[gnu::vector_size(16)]] = char;
  using Words [[gnu::vector_size(16)]] = std::uint64_t;
  Words special = {};
  for (std::size_t i = 0; i < block_size; i += sizeof(Bytes)) {
    Bytes bytes;
    std::memcpy(&bytes, block + i, sizeof bytes);
    special |= reinterpret_cast<Words>((bytes == '\t') | (bytes == '\\') | (bytes == '#') | (bytes == '('));
  }
  return (special[0] | special[1]) == 0;
}

// The end of the last whole line of `text`.
std::size_t end_of_last_line(std::string_view text) {
  const std::size_t last = text.rfind(line_break);
  return last == npos ? 0 : last + line_break.size();
}

std::string_view line_at(std::string_view text, std::size_t start) {
  return text.substr(start, text.find(line_break, start) - start);
}

}  // namespace

// Where the line last read from `input` stands; its column is that of its first character that is not blank. Asked for
// line after line it counts each line once.
SourceLocation InputStack::location_in(const Input& input) {
  const std::size_t offset = input.line_start;
  LineMark nearest{0, {}, {}, 1};
  if (input.marks != nullptr && !input.marks->empty()) {
    const auto above = std::upper_bound(input.marks->begin(), input.marks->end(), offset,
                                        [](std::size_t wanted, const LineMark& mark) { return wanted < mark.offset; });
    nearest = *(above == input.marks->begin() ? above : above - 1);
  }
  const bool goes_on =
      input.counted.line > 0 && input.counted.offset >= nearest.offset && input.counted.offset <= offset;
  if (goes_on) nearest = input.counted;
  for (std::size_t at = nearest.offset; (at = input.text.find(line_break, at)) < offset; at += line_break.size()) {
    ++nearest.line;
  }
  nearest.offset = offset;
  input.counted = nearest;
  const std::size_t indent = line_at(input.text, offset).find_first_not_of(" \t");
  return {std::string(nearest.path), std::string(nearest.section), nearest.line, indent == npos ? 1 : indent + 1};
}

InputStack::InputStack(const SourceText& text) { push_section(text); }

InputStack::Input& InputStack::push() {
  if (used_ > 1 && at_end_of_text()) {
    // The text on top has nothing left to read, so the new one takes its place: text that always ends by bringing
    // in more does not pile up. What it was called by stays, and its own call joins the finished ones.
    Input& top = inputs_[used_ - 1];
    const SourceLocation where = location(nullptr);
    top.finished_line = source_line(where);
    top.finished_calls.push_back({where, {}});
    if (top.finished_calls.size() > finished_calls_kept) top.finished_calls.erase(top.finished_calls.begin());
    return top;
  }
  if (used_ == inputs_.size()) inputs_.emplace_back();
  Input& input = inputs_[used_++];
  input.finished_calls.clear();
  return input;
}

void InputStack::pass_plain_line(std::string_view line) {
  Piece& piece = pieces_[piece_count_++ % pieces_.size()];
  piece.several = false;
  piece.copy.assign(line).append(line_break);
  piece.text = piece.copy;
}

void InputStack::push_section(const SourceText& text) {
  Input& input = push();
  input.text = text.text;
  input.marks = text.marks;
  input.is_expansion = false;
  open(input, "included from here");
}

void InputStack::push_expansion(std::string_view text, std::string_view call) {
  Input& input = push();
  open(input, call);  // first: the call may stand in the text that this one replaces
  input.owned.assign(text).append(line_break);
  input.text = input.owned;
  input.marks = nullptr;
  input.is_expansion = true;
}

void InputStack::open(Input& input, std::string_view call) {
  input.position = 0;
  input.line_start = 0;
  input.counted = {};
  (input.finished_calls.empty() ? input.call : input.finished_calls.back().text).assign(call);
}

void InputStack::remember(std::string_view raw, bool lasts, bool several) {
  Piece& piece = pieces_[piece_count_++ % pieces_.size()];
  piece.several = several;
  piece.text = raw;
  if (lasts) return;
  piece.copy = raw;
  piece.text = piece.copy;
}

std::string_view InputStack::read_physical_line(Input& input) {
  const std::size_t begin = input.position;
  std::size_t end = begin;
  while ((end = input.text.find('\r', end)) != npos) {
    if (end + 1 < input.text.size() && input.text[end + 1] == '\n') break;
    ++end;
  }
  input.position = end == npos ? input.text.size() : end + line_break.size();
  return input.text.substr(begin, end - begin);
}

bool InputStack::next() {
  while (at_end_of_text()) {
    if (used_ == 1) return false;
    --used_;
  }
  line_input_ = used_ - 1;
  Input& input = inputs_[line_input_];
  input.line_start = input.position;
  line_ = read_physical_line(input);

  const bool has_tab = line_.find('\t') != npos;
  if (has_tab || line_.ends_with('\\')) {
    line_buffer_.clear();
    append_with_blanks_for_tabs(line_, line_buffer_);
    line_ = line_buffer_;
    if (line_.ends_with('\\')) {
      join_continued_lines();
      return true;
    }
  }
  remember(input.text.substr(input.line_start, input.position - input.line_start), !input.is_expansion);
  return true;
}

void InputStack::join_continued_lines() {
  const Input& first = inputs_[line_input_];
  std::string raw(first.text.substr(first.line_start, first.position - first.line_start));
  while (line_buffer_.ends_with('\\')) {
    line_buffer_.pop_back();
    while (used_ > 1 && at_end_of_text()) --used_;
    if (at_end_of_text()) continue;  // nothing to append; the joined text is tested again all the same
    Input& input = inputs_[used_ - 1];
    const std::size_t begin = input.position;
    append_with_blanks_for_tabs(read_physical_line(input), line_buffer_);
    raw.append(input.text, begin, input.position - begin);
  }
  line_ = line_buffer_;
  remember(raw, false);
}

std::string_view InputStack::take_plain_lines() {
  Input& input = inputs_[used_ - 1];
  const std::string_view rest = input.text.substr(input.position);
  std::size_t plain = 0;
  while (plain + block_size <= rest.size() && is_plain_block(rest.data() + plain)) plain += block_size;
  const std::string_view lines = rest.substr(0, end_of_last_line(rest.substr(0, plain)));
  if (lines.empty()) return {};
  input.position += lines.size();
  line_input_ = used_ - 1;
  input.line_start = input.position;
  remember(lines, !input.is_expansion, true);
  return lines;
}

std::string InputStack::context() const {
  constexpr std::size_t wanted = 4;
  std::vector<std::string_view> newest_first;
  for (std::size_t i = 0; i < std::min(piece_count_, pieces_.size()) && newest_first.size() < wanted; ++i) {
    const Piece& piece = pieces_[(piece_count_ - 1 - i) % pieces_.size()];
    std::string_view rest = piece.text;
    while (piece.several && !rest.empty() && newest_first.size() < wanted) {
      const std::size_t start = end_of_last_line(rest.substr(0, rest.size() - line_break.size()));
      newest_first.push_back(rest.substr(start));
      rest = rest.substr(0, start);
    }
    if (!piece.several) newest_first.push_back(piece.text);
  }
  std::string context;
  for (auto line = newest_first.rbegin(); line != newest_first.rend(); ++line) context += *line;
  return context;
}

// The innermost text that stands in a file: what a macro made stands where it was called. Null when that text has
// been used up.
const InputStack::Input* InputStack::input_in_file() const {
  std::size_t index = line_input_;
  while (inputs_[index].is_expansion) {
    if (!inputs_[index].finished_calls.empty()) return nullptr;
    --index;
  }
  return &inputs_[index];
}

SourceLocation InputStack::location(const char* at) const {
  const Input* input = input_in_file();
  if (input == nullptr) {
    std::size_t index = line_input_;
    while (inputs_[index].finished_calls.empty()) --index;
    return inputs_[index].finished_calls.back().where;
  }
  SourceLocation location = location_in(*input);
  if (at == nullptr || input != &inputs_[line_input_]) return location;

  const auto logical = static_cast<std::size_t>(at - line_.data());
  const std::vector<LinePlace> all = places();
  const LinePlace& place =
      *(std::upper_bound(all.begin(), all.end(), logical,
                         [](std::size_t wanted, const LinePlace& p) { return wanted < p.offset; }) -
        1);
  location.line = place.line;
  location.column = place.column + (logical - place.offset);
  return location;
}

std::vector<LinePlace> InputStack::places() const {
  const Input& input = inputs_[line_input_];
  std::vector<LinePlace> places = {{0, location_in(input).line, 1}};
  if (line_.data() != line_buffer_.data()) return places;
  const std::string_view whole = raw_line();
  LinePlace present = places.front();
  for (std::size_t i = 0; i < whole.size() && present.offset < line_.size(); ++i) {
    if (whole.substr(i).starts_with("\\\r\n")) {
      i += 2;
      present = {present.offset, line_behind(input, present.line, input.line_start + i + 1), 1};
      // What the line before gave nothing to is not a place in it.
      if (places.back().offset == present.offset) places.pop_back();
      places.push_back(present);
    } else {
      present.offset += whole[i] == '\t' ? 5 : 1;
      ++present.column;
      if (whole[i] == '\t') places.push_back(present);
    }
  }
  return places;
}

// The number of the line that begins at `offset`, behind line `line`. Comments may stand between the two.
std::size_t InputStack::line_behind(const Input& input, std::size_t line, std::size_t offset) {
  if (input.marks == nullptr) return line + 1;
  const auto mark = std::lower_bound(input.marks->begin(), input.marks->end(), offset,
                                     [](const LineMark& m, std::size_t wanted) { return m.offset < wanted; });
  return mark != input.marks->end() && mark->offset == offset ? mark->line : line + 1;
}

std::string InputStack::source_line(const SourceLocation& where) const {
  const Input* input = input_in_file();
  if (input == nullptr) {
    std::size_t index = line_input_;
    while (inputs_[index].finished_calls.empty()) --index;
    return inputs_[index].finished_line;
  }
  std::size_t start = input->line_start;
  for (std::size_t line = location_in(*input).line; line < where.line && start < input->text.size();) {
    start += line_at(input->text, start).size() + line_break.size();
    line = line_behind(*input, line, start);
  }
  return std::string(line_at(input->text, std::min(start, input->text.size())));
}

std::vector<Diagnostic::Note> InputStack::notes() const {
  std::vector<Diagnostic::Note> notes;
  for (std::size_t i = std::min(line_input_ + 1, used_); i-- > 0;) {
    const Input& input = inputs_[i];
    notes.insert(notes.end(), input.finished_calls.rbegin(), input.finished_calls.rend());
    if (i == 0) break;
    // The call stands in the text below, at the line last read there.
    std::size_t below = i - 1;
    while (inputs_[below].is_expansion && inputs_[below].finished_calls.empty()) --below;
    const Input& caller = inputs_[below];
    notes.push_back({caller.is_expansion ? caller.finished_calls.back().where : location_in(caller), input.call});
  }
  for (Diagnostic::Note& note : notes) {
    if (note.text.starts_with('#')) note.text.insert(0, "in the expansion of ");
  }
  return notes;
}

}  // namespace plexoras
