// SPDX-License-Identifier: MIT
// What the templates of one configuration may draw on besides the outside world.
//
// Owned by its ConfigParser: the named templates that a program registers before it loads anything,
// and the user whose dconf database is read.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace Cradle::Parser {

// No user: dconf is read in the environment as it is.
inline constexpr std::int32_t kNoUser = -1;

class TemplateContext {
 public:
  explicit TemplateContext(std::int32_t dconfUser) : dconfUser_(dconfUser) {}

  std::int32_t dconfUser() const { return dconfUser_; }

  // Registers a named template. A name that is there already keeps its value.
  void addTemplate(const std::string& name, const std::string& value) {
    templates_.try_emplace(name, value);
  }

  // The value of a named template, or null. Valid as long as the context.
  const std::string* find(std::string_view name) const {
    const auto found = templates_.find(name);
    return found == templates_.end() ? nullptr : &found->second;
  }

 private:
  std::int32_t dconfUser_;
  std::map<std::string, std::string, std::less<>> templates_;
};

}  // namespace Cradle::Parser
