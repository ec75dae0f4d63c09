#include "applet/date_text.h"

#include <charconv>
#include <chrono>
#include <cmath>

#include "host/automation.h"

namespace plexoras {
namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view time_characters = "0123456789:.,+-Zz";
// What a date can be in browsers too: a hundred million days on either side of 1970.
constexpr double furthest = 8.64e15;

// Takes `count` digits off the front of `text`.
std::optional<int> take_digits(std::string_view& text, std::size_t count) {
  const std::string_view digits = text.substr(0, count);
  // from_chars would take a sign.
  if (digits.size() < count || digits.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  int number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  text.remove_prefix(count);
  return number;
}

bool is_time(std::string_view text) {
  return (text.front() == 'T' || text.front() == 't' || text.front() == ' ') && text.size() > 1 &&
         text.find_first_not_of(time_characters, 1) == std::string_view::npos;
}

std::optional<double> written_day(std::string_view text) {
  const std::optional<int> year = take_digits(text, 4);
  if (!year) return std::nullopt;
  int parts[] = {1, 1};  // month and day
  bool is_full = true;
  for (int& part : parts) {
    if (!text.starts_with('-')) {
      is_full = false;
      break;
    }
    text.remove_prefix(1);
    const std::optional<int> number = take_digits(text, 2);
    if (!number) return std::nullopt;
    part = *number;
  }
  if (!text.empty() && !(is_full && is_time(text))) return std::nullopt;

  const std::chrono::year_month_day day(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(parts[0])),
                                        std::chrono::day(static_cast<unsigned>(parts[1])));
  if (!day.ok()) return std::nullopt;
  const std::chrono::milliseconds since_1970 = std::chrono::sys_days(day).time_since_epoch();
  return static_cast<double>(since_1970.count());
}

}  // namespace

std::optional<double> date_of(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return std::nullopt;
  text = text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
  if (const std::optional<double> day = written_day(text)) return day;
  try {
    const double number = Variant(text).to_double();
    return std::abs(number) <= furthest ? std::optional(number) : std::nullopt;
  } catch (const AutomationError&) {
    return std::nullopt;
  }
}

}  // namespace plexoras
