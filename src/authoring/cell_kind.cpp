#include "authoring/cell_kind.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace plexoras {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Takes `part` off the front of `text`, if it is there.
bool take(std::string_view& text, std::string_view part) {
  if (!text.starts_with(part)) return false;
  text.remove_prefix(part.size());
  return true;
}

bool take_back(std::string_view& text, std::string_view part) {
  if (!text.ends_with(part)) return false;
  text.remove_suffix(part.size());
  return true;
}

template <std::size_t Count>
bool take_any(std::string_view& text, const std::string_view (&parts)[Count],
              bool (*take_one)(std::string_view&, std::string_view)) {
  return std::any_of(std::begin(parts), std::end(parts), [&](std::string_view part) { return take_one(text, part); });
}

constexpr std::string_view blanks[] = {" ", "\t", "\xC2\xA0", "\xE2\x80\xAF"};    // the last two do not break lines
constexpr std::string_view signs[] = {"+", "-", "\xE2\x88\x92", "\xE2\x80\x93"};  // minus sign, dash
constexpr std::string_view units[] = {"%", "$", "\xE2\x82\xAC", "\xC2\xA3", "\xC2\xA5"};  // euro, pound, yen
constexpr std::string_view nothings[] = {"",     "-",    "--",   ".",   "..",           "...",         ":",   "?",
                                         "NA",   "N/A",  "n/a",  "na",  "#N/A",         "NaN",         "nan", "null",
                                         "NULL", "None", "none", "\\N", "\xE2\x80\x93", "\xE2\x80\x94"};

std::string_view trimmed(std::string_view text) {
  while (take_any(text, blanks, take)) {
  }
  while (take_any(text, blanks, take_back)) {
  }
  return text;
}

// Groups of digits, and the marks between them.
struct Groups {
  static constexpr std::size_t most = 10;
  std::size_t count = 1;
  std::array<std::size_t, most> sizes = {};       // a group may be empty
  std::array<std::string_view, most> marks = {};  // each behind the group of its index

  std::string_view last_mark() const { return marks[count - 2]; }
};

// Cuts `text` at `known` marks; nothing else but digits may stand in it.
template <std::size_t Count>
bool cut(std::string_view text, const std::string_view (&known)[Count], Groups& groups) {
  while (!text.empty()) {
    const std::string_view before = text;
    if (is_digit(text.front())) {
      ++groups.sizes[groups.count - 1];
      text.remove_prefix(1);
    } else if (groups.count < Groups::most && take_any(text, known, take)) {
      groups.marks[groups.count - 1] = before.substr(0, before.size() - text.size());
      ++groups.count;
    } else {
      return false;
    }
  }
  return true;
}

void take_exponent(std::string_view& text) {
  const std::size_t at = text.find_first_of("eE");
  if (at == std::string_view::npos || at == 0) return;
  std::string_view exponent = text.substr(at + 1);
  take_any(exponent, signs, take);
  if (!exponent.empty() && std::all_of(exponent.begin(), exponent.end(), is_digit)) text = text.substr(0, at);
}

// Whether the groups but the last are thousands with the same mark between them: 1 to 3 digits, then 3 each.
bool are_thousands(const Groups& groups, std::size_t count) {
  if (groups.sizes[0] == 0 || groups.sizes[0] > 3) return false;
  for (std::size_t i = 1; i < count; ++i) {
    if (groups.sizes[i] != 3 || groups.marks[i - 1] != groups.marks[0]) return false;
  }
  return true;
}

bool is_number(std::string_view text) {
  constexpr std::string_view marks[] = {".", ",", "'", "\xE2\x80\x99", " ", "\xC2\xA0", "\xE2\x80\xAF"};
  if (text.size() > 64) return false;
  if (text.size() > 2 && text.front() == '(' && text.back() == ')') text = text.substr(1, text.size() - 2);
  take_any(text, signs, take);
  if (take_any(text, units, take)) text = trimmed(text);
  take_any(text, signs, take);
  if (take_any(text, units, take_back)) text = trimmed(text);
  take_exponent(text);
  Groups groups;
  if (std::none_of(text.begin(), text.end(), is_digit) || !cut(text, marks, groups)) return false;
  if (groups.count == 1) return true;
  // A point or comma begins the fraction, unless the same mark stands before it.
  const bool may_be_fraction = groups.last_mark() == "." || groups.last_mark() == ",";
  const bool is_first_of_its_kind = groups.count == 2 || groups.last_mark() != groups.marks[0];
  const bool has_fraction = may_be_fraction && is_first_of_its_kind;
  if (has_fraction) return groups.count == 2 || are_thousands(groups, groups.count - 1);
  return are_thousands(groups, groups.count);
}

bool is_time(std::string_view text) {
  constexpr std::string_view colon[] = {":"};
  constexpr std::string_view zones[] = {"Z", "AM", "PM", "am", "pm"};
  if (take_any(text, zones, take_back)) text = trimmed(text);
  if (const std::size_t zone = text.find_first_of("+-"); zone != std::string_view::npos) text = text.substr(0, zone);
  if (const std::size_t fraction = text.find_first_of(".,"); fraction != std::string_view::npos) {
    if (!std::all_of(text.begin() + static_cast<std::ptrdiff_t>(fraction) + 1, text.end(), is_digit)) return false;
    text = text.substr(0, fraction);
  }
  Groups groups;
  if (!cut(text, colon, groups)) return false;
  const auto& sizes = groups.sizes;
  return sizes[0] >= 1 && sizes[0] <= 2 && sizes[1] == 2 && (groups.count == 2 || (groups.count == 3 && sizes[2] == 2));
}

// 2020-Q4, 2020Q4, Q4 2020, 2020-W07, 2020M11.
bool is_part_of_year(std::string_view text) {
  const std::size_t letter = text.find_first_of("QWMT");
  if (letter == std::string_view::npos) return false;
  const auto all_digits = [](std::string_view part, std::size_t least, std::size_t most) {
    return part.size() >= least && part.size() <= most && std::all_of(part.begin(), part.end(), is_digit);
  };
  if (letter == 0) return text.size() == 7 && all_digits(text.substr(1, 1), 1, 1) && all_digits(text.substr(3), 4, 4);
  std::string_view year = text.substr(0, letter);
  if (year.size() == 5 && (year.back() == '-' || year.back() == ' ')) year.remove_suffix(1);
  return all_digits(year, 4, 4) && all_digits(text.substr(letter + 1), 1, 2);
}

bool is_date(std::string_view text) {
  constexpr std::string_view marks[] = {"-", "/", "."};
  if (text.size() > 40) return false;
  if (is_time(text) || is_part_of_year(text)) return true;
  const std::size_t day_end = text.find_first_of("T ");
  if (day_end != std::string_view::npos) {
    if (!is_time(trimmed(text.substr(day_end + 1)))) return false;
    text = text.substr(0, day_end);
  }
  Groups groups;
  if (!cut(text, marks, groups)) return false;
  const auto& sizes = groups.sizes;
  const auto is_small = [](std::size_t size) { return size == 1 || size == 2; };
  if (groups.count == 2) return (sizes[0] == 4 && is_small(sizes[1])) || (is_small(sizes[0]) && sizes[1] == 4);
  if (groups.count != 3 || groups.marks[0] != groups.marks[1] || !is_small(sizes[1])) return false;
  return (sizes[0] == 4 && is_small(sizes[2])) || (is_small(sizes[0]) && (sizes[2] == 4 || sizes[2] == 2));
}

}  // namespace

CellKind kind_of_cell(std::string_view cell) {
  cell = trimmed(cell);
  if (std::find(std::begin(nothings), std::end(nothings), cell) != std::end(nothings)) return CellKind::Missing;
  if (std::none_of(cell.begin(), cell.end(), is_digit)) return CellKind::Text;
  if (is_number(cell)) return CellKind::Number;
  return is_date(cell) ? CellKind::Date : CellKind::Text;
}

}  // namespace plexoras
