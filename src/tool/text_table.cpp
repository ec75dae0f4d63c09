#include "tool/text_table.h"

#include <algorithm>

#include "authoring/page_text.h"

namespace plexoras {
namespace {

constexpr std::size_t gap = 2;     // blanks between columns
constexpr std::size_t indent = 4;  // of a last cell with lines of its own
// A last cell that goes on below itself in less room than this is hard to read.
constexpr std::size_t least_width = 20;

bool begins_character(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

std::size_t width_of(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins_character));
}

// Where the character behind the first `width` ones begins.
std::size_t bytes_of(std::string_view text, std::size_t width) {
  std::size_t at = 0;
  for (std::size_t characters = 0; at < text.size(); ++at) {
    if (begins_character(text[at]) && ++characters > width) break;
  }
  return at;
}

std::string_view without_blanks_behind(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

// Where a line of at most `most` bytes may end, or 0: behind what a column names, else behind a blank.
std::size_t break_before(std::string_view text, std::size_t most, std::string_view break_behind) {
  for (const std::string_view mark : {break_behind, std::string_view(" ")}) {
    // A blank that ends the line may stand outside.
    const std::size_t place = text.substr(0, most + 1).rfind(mark);
    if (place != std::string_view::npos && place > 0) return place + mark.size();
  }
  return 0;
}

// `text` in lines of `width` characters, at most `column.lines` of them.
std::vector<std::string> wrapped(std::string_view text, std::size_t width, const TextTable::Column& column) {
  std::vector<std::string> lines;
  while (lines.size() + 1 < column.lines) {
    const std::size_t most = bytes_of(text, width);
    if (most == text.size()) break;
    const std::size_t place = break_before(text, most, column.break_behind);
    const std::size_t end = place == 0 ? most : place;
    lines.emplace_back(without_blanks_behind(text.substr(0, end)));
    text.remove_prefix(end);
  }
  // Where there was room for more than a line, no word is cut.
  const bool is_whole = column.lines == 1 || bytes_of(text, width) == text.size();
  const std::size_t place = is_whole ? 0 : break_before(text, bytes_of(text, width - 1) - 1, column.break_behind);
  lines.push_back(place == 0 ? cut_to(text, width) : std::string(text.substr(0, place)) + "…");
  return lines;
}

}  // namespace

std::string cut_to(std::string_view text, std::size_t width) {
  if (bytes_of(text, width) == text.size()) return std::string(text);
  return std::string(text.substr(0, bytes_of(text, std::max<std::size_t>(width, 1) - 1))) + "…";
}

void TextTable::add(const std::vector<std::string>& cells) {
  std::vector<std::string>& row = rows_.emplace_back();
  for (const std::string& cell : cells) {
    // Of a long text only the beginning is shown, and only that is worth looking at.
    const std::size_t lines = row.size() < columns_.size() ? columns_[row.size()].lines : 1;
    const std::size_t most_bytes = 8 * line_width_ * std::min<std::size_t>(lines, 1000);
    row.push_back(printable(escape_listing(std::string_view(cell).substr(0, most_bytes))));
  }
  while (!row.empty() && row.back().empty()) row.pop_back();
}

void TextTable::append_row(const std::vector<std::string>& row, const std::vector<std::size_t>& widths,
                           std::string& text) const {
  std::vector<std::string> lines(1);
  std::size_t start = 0;  // where the next cell begins
  for (std::size_t i = 0; i < row.size(); ++i) {
    const bool is_last = i + 1 == row.size();
    const Column column = i < columns_.size() ? columns_[i] : Column();
    std::size_t width = is_last ? std::max(line_width_, start + 1) - start : widths[i];
    std::size_t first_line = 0;
    if (is_last && width < least_width && width_of(row[i]) > width) {
      first_line = 1;
      start = indent;
      width = line_width_ - indent;
    }
    const std::vector<std::string> cell_lines = wrapped(row[i], width, column);
    lines.resize(std::max(lines.size(), first_line + cell_lines.size()));
    for (std::size_t at = 0; at < cell_lines.size(); ++at) {
      std::string& line = lines[first_line + at];
      line.append(start - std::min(start, width_of(line)), ' ');
      line += cell_lines[at];
    }
    if (width > 0) start += width + gap;
  }
  for (const std::string& line : lines) text.append(without_blanks_behind(line)) += '\n';
}

std::string TextTable::text() const {
  std::vector<std::size_t> widths;
  for (const auto& row : rows_) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i + 1 < row.size(); ++i) {
      const std::size_t widest = i < columns_.size() ? columns_[i].widest : any;
      widths[i] = std::max(widths[i], std::min(width_of(row[i]), widest));
    }
  }
  std::string text;
  for (const auto& row : rows_) append_row(row, widths, text);
  return text;
}

}  // namespace plexoras
