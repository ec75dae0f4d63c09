#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace plexoras {

/// Which variables may hold text that an author has typed, at the place in a template that a reading has come to.
///
/// A definition overwrites what was there; behind a condition a variable may hold what it has got in either branch.
class AuthorText {
public:
  explicit AuthorText(const std::set<std::string>& names) : holding_(names.begin(), names.end()) {}

  bool holds(const std::string& name) const { return holding_.contains(name); }
  std::set<std::string> names() const { return {holding_.begin(), holding_.end()}; }
  void set(const std::string& name, bool is_author_text);

  void open_condition() { conditions_.push_back({changes_.size(), {}}); }
  /// At the #ELSE of the innermost condition.
  void switch_branch();
  void close_condition();

private:
  using State = std::pair<std::string, bool>;
  struct Condition {
    std::size_t first_change;
    std::vector<State> first_branch;  // of variables that it has changed, at its end
  };

  void put(const std::string& name, bool is_author_text);
  std::vector<State> undo(const Condition& condition);

  std::unordered_set<std::string> holding_;
  std::vector<Condition> conditions_;
  std::vector<State> changes_;  // in open conditions: what was before
};

}  // namespace plexoras
