#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace plexoras {

/// Sets an environment variable (or with null takes it away) until the end of its scope.
class EnvironmentVariable {
public:
  EnvironmentVariable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    set(value);
  }
  ~EnvironmentVariable() { set(old_ ? old_->c_str() : nullptr); }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
  void set(const char* value) const {
    if (value == nullptr) {
      ::unsetenv(name_);
    } else {
      ::setenv(name_, value, 1);
    }
  }

  const char* name_;
  std::optional<std::string> old_;
};

}  // namespace plexoras
