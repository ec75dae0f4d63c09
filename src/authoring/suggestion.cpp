#include "authoring/suggestion.h"

#include <algorithm>
#include <vector>

#include "host/ascii.h"

namespace plexoras {
namespace {

bool same(char a, char b) { return ascii_lower(a) == ascii_lower(b); }

// How many letters must be inserted, dropped, replaced or swapped with their neighbour.
std::size_t edits(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before_last(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t change = same(a[i - 1], b[j - 1]) ? 0 : 1;
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
      const bool swapped = i > 1 && j > 1 && same(a[i - 1], b[j - 2]) && same(a[i - 2], b[j - 1]);
      if (swapped) row[j] = std::min(row[j], before_last[j - 2] + 1);
    }
    before_last.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

}  // namespace

std::string closest_match(std::string_view word, std::span<const std::string> known) {
  constexpr std::size_t longest = 64;
  if (word.empty() || word.size() > longest) return {};
  std::size_t nearest = std::min(1 + word.size() / 3, word.size() / 2);  // half of a short word at most
  std::string match;
  for (const std::string& candidate : known) {
    const std::size_t distance = candidate.size() > longest ? longest : edits(word, candidate);
    if (distance > nearest || (distance == nearest && !match.empty())) continue;
    nearest = distance;
    match = candidate;
  }
  return match;
}

std::string did_you_mean(std::string_view word, std::span<const std::string> known) {
  const std::string match = closest_match(word, known);
  return match.empty() ? "" : "; did you mean \"" + match + "\"?";
}

}  // namespace plexoras
