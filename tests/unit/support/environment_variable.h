// SPDX-License-Identifier: MIT
// Sets, or with a null value unsets, an environment variable while it lives.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace Cradle::Testing {

class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const char* value) : name_(name) {
    if (const char* const previous = std::getenv(name)) {
      previous_ = previous;
    }
    assign(value);
  }
  ~EnvironmentVariable() { assign(previous_ ? previous_->c_str() : nullptr); }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  void assign(const char* value) {
    if (value == nullptr) {
      unsetenv(name_);
    } else {
      setenv(name_, value, 1);
    }
  }

  const char* name_;
  std::optional<std::string> previous_;
};

}  // namespace Cradle::Testing
