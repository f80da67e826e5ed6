// SPDX-License-Identifier: MIT
// ConfigParser::resolve(): follows the references of a value to the text that it stands for.

#include "config_parser_implementation.h"
#include "library_logger.h"

namespace Cradle::Parser {
namespace {

// How many values one resolution may have begun before the next one ends it.
constexpr int kMaxSteps = 32;

// One resolution. It counts every value that it resolves, siblings included, and never counts down:
// this also bounds a value with many references, not only a chain or a circle.
class Resolution {
 public:
  Resolution(const ConfigParser& parser, const ConfigStore& store)
      : parser_(parser), store_(store) {}

  bool failed() const { return failed_; }

  void resolve(const ConfigValue& value, std::string& out) {
    if (steps_ > kMaxSteps) {
      failed_ = true;
      return;
    }
    ++steps_;
    std::vector<std::string> texts;
    for (const auto& [group, key] : value.references()) {
      std::string& text = texts.emplace_back();
      if (parser_.hasKey(group, key)) {
        resolve(store_.find(group, key).back(), text);
      }
      if (failed_) {
        return;
      }
    }
    out = value.render(texts);
  }

 private:
  const ConfigParser& parser_;
  const ConfigStore& store_;
  int steps_ = 0;
  bool failed_ = false;
};

}  // namespace

void ConfigParser::resolve(const ConfigValue& value, std::string& out) const {
  Resolution resolution(*this, implementation_->store);
  resolution.resolve(value, out);
  if (resolution.failed()) {
    libraryLogger().error() << "Max depth reached, possibly circular reference.";
    out.clear();
  }
}

}  // namespace Cradle::Parser
