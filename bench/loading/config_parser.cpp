// SPDX-License-Identifier: MIT
// This program: templates are looked for in each value and lists are split while loading.

#include "config_parser.h"

#include "common/failure.h"
#include "loading/loaders.h"

namespace Cradle::Bench {
namespace {

constexpr std::int32_t kNoUser = -1;

class ParserFile : public KeyedFile {
 public:
  explicit ParserFile(const std::string& path) {
    require(parser_.loadFile(path), "ConfigParser failed");
  }

 private:
  std::optional<std::string> value(const Entry& entry) const override {
    if (!parser_.hasValue(entry.group, entry.key)) {
      return std::nullopt;
    }
    std::string text;
    parser_.getValue(entry.group, entry.key, text);
    return text;
  }

  Parser::ConfigParser parser_{kNoUser};
};

}  // namespace

std::unique_ptr<LoadedFile> loadWithConfigParser(const std::string& path) {
  return std::make_unique<ParserFile>(path);
}

}  // namespace Cradle::Bench
