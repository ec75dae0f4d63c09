#pragma once

namespace plexoras {

/// Sets a flag until the end of a scope, however that is left. The flag outlives the scope.
///
///     const WhileSet showing(showing_);
class WhileSet {
public:
  explicit WhileSet(bool& flag) : flag_(flag) { flag_ = true; }
  ~WhileSet() { flag_ = false; }
  WhileSet(const WhileSet&) = delete;
  WhileSet& operator=(const WhileSet&) = delete;

private:
  bool& flag_;
};

}  // namespace plexoras
