// SPDX-License-Identifier: MIT
// The parser inih, and the standard library's tables for what it hands out.

#include <unordered_map>

#include <ini.h>

#include "common/failure.h"
#include "loading/loaders.h"

namespace Cradle::Bench {
namespace {

class InihFile : public KeyedFile {
 public:
  explicit InihFile(const std::string& path) {
    require(ini_parse(path.c_str(), &store, &groups_) == 0, "inih failed");
  }

 private:
  using Group = std::unordered_map<std::string, std::string>;
  using Groups = std::unordered_map<std::string, Group>;

  static int store(void* groups, const char* group, const char* key, const char* value) {
    (*static_cast<Groups*>(groups))[group][key] = value;
    return 1;
  }

  std::optional<std::string> value(const Entry& entry) const override {
    const auto group = groups_.find(entry.group);
    if (group == groups_.end()) {
      return std::nullopt;
    }
    const auto text = group->second.find(entry.key);
    return text != group->second.end() ? std::optional(text->second) : std::nullopt;
  }

  Groups groups_;
};

}  // namespace

std::unique_ptr<LoadedFile> loadWithInih(const std::string& path) {
  return std::make_unique<InihFile>(path);
}

}  // namespace Cradle::Bench
