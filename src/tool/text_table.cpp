#include "tool/text_table.h"

#include <algorithm>

#include "authoring/page_text.h"

namespace plexoras {
namespace {

constexpr std::size_t gap = 2;  // blanks between columns

bool begins_character(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

std::size_t width_of(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins_character));
}

}  // namespace

std::string cut_to(std::string_view text, std::size_t width) {
  if (width_of(text) <= width) return std::string(text);
  std::size_t end = 0;
  for (std::size_t characters = 0; end < text.size(); ++end) {
    if (begins_character(text[end]) && ++characters == std::max<std::size_t>(width, 1)) break;
  }
  return std::string(text.substr(0, end)) + "…";
}

void TextTable::add(const std::vector<std::string>& cells) {
  // Of a long text only the beginning is shown, and only that is worth looking at.
  const std::size_t most_bytes = 8 * options_.line_width;
  std::vector<std::string>& row = rows_.emplace_back();
  for (const std::string& cell : cells) row.push_back(escape_listing(std::string_view(cell).substr(0, most_bytes)));
  while (!row.empty() && row.back().empty()) row.pop_back();
}

std::string TextTable::text() const {
  std::vector<std::size_t> widths(options_.widest.size());
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < widths.size() && i + 1 < row.size(); ++i) {
      widths[i] = std::max(widths[i], std::min(width_of(row[i]), options_.widest[i]));
    }
  }
  std::string text;
  for (const auto& row : rows_) {
    std::string line;
    std::size_t column = 0;  // where the next cell begins
    for (std::size_t i = 0; i < row.size(); ++i) {
      line.append(column - std::min(column, width_of(line)), ' ');
      const bool is_last = i + 1 == row.size() || i >= widths.size();
      line += cut_to(row[i], is_last ? std::max(options_.line_width, column + 1) - column : widths[i]);
      if (!is_last && widths[i] > 0) column += widths[i] + gap;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace plexoras
