#include "authoring/check/author_text.h"

namespace plexoras {

void AuthorText::set(const std::string& name, bool is_author_text) {
  if (holds(name) == is_author_text) return;
  if (!conditions_.empty()) changes_.emplace_back(name, !is_author_text);
  put(name, is_author_text);
}

void AuthorText::put(const std::string& name, bool is_author_text) {
  if (is_author_text) {
    holding_.insert(name);
  } else {
    holding_.erase(name);
  }
}

void AuthorText::switch_branch() { conditions_.back().first_branch = undo(conditions_.back()); }

void AuthorText::close_condition() {
  const Condition condition = std::move(conditions_.back());
  const std::vector<State> last_branch = undo(condition);
  conditions_.pop_back();
  // What either branch leaves may be there; so may what was before, where the other branch has not changed it.
  std::unordered_set<std::string> cleared_first;
  for (const auto& [name, held] : condition.first_branch) {
    if (!held) cleared_first.insert(name);
  }
  for (const auto& [name, held] : last_branch) {
    if (!held && cleared_first.contains(name)) set(name, false);
    if (held) set(name, true);
  }
  for (const auto& [name, held] : condition.first_branch) {
    if (held) set(name, true);
  }
}

// Goes back to the state at the beginning of the branch; what it had made of the variables that it has changed.
std::vector<AuthorText::State> AuthorText::undo(const Condition& condition) {
  std::vector<State> made;
  std::unordered_set<std::string> seen;
  while (changes_.size() > condition.first_change) {
    const auto [name, before] = std::move(changes_.back());
    changes_.pop_back();
    if (seen.insert(name).second) made.emplace_back(name, holds(name));
    put(name, before);
  }
  return made;
}

}  // namespace plexoras
