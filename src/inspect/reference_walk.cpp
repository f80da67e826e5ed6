// SPDX-License-Identifier: MIT
#include "inspect/reference_walk.h"

#include <algorithm>
#include <iterator>

namespace Cradle::Inspect {
namespace {

std::string nameOf(const Parser::ValueName& name) {
  return name.first + "/" + name.second;
}

class Walk {
 public:
  explicit Walk(const Journal& journal) : journal_(journal) {}

  ReferenceWalk run(const std::string& name, const Part& part) {
    enter(name, part);
    return std::move(walk_);
  }

 private:
  using End = ReferenceWalk::End;

  struct Stage {
    std::string name;
    const Part* part;
  };

  void enter(const std::string& name, const Part& part) {
    const auto former = std::find_if(path_.begin(), path_.end(),
                                     [&](const Stage& stage) { return stage.part == &part; });
    if (former != path_.end()) {
      walk_.end = End::Circle;
      std::transform(former, path_.end(), std::back_inserter(walk_.circle),
                     [](const Stage& stage) { return stage.name; });
      walk_.circle.push_back(name);
      return;
    }
    if (++values_ > kMostValues) {
      walk_.end = End::TooDeep;
      return;
    }
    path_.push_back({name, &part});
    for (const Parser::ValueName& referred : part.value.references()) {
      follow(referred);
      if (walk_.end != End::Resolved) {
        return;
      }
    }
    path_.pop_back();
  }

  void follow(const Parser::ValueName& name) {
    const KeptValue value = lastValue(journal_.find(name.first, name.second));
    walk_.steps.push_back({path_.size(), &name, value});
    if (value.part != nullptr) {
      enter(nameOf(name), *value.part);
    }
  }

  const Journal& journal_;
  ReferenceWalk walk_;
  std::vector<Stage> path_;
  std::size_t values_ = 0;
};

}  // namespace

KeptValue lastValue(const History* history) {
  const std::vector<KeptValue> values =
      history == nullptr ? std::vector<KeptValue>() : keptValues(*history);
  return values.empty() ? KeptValue{nullptr, nullptr} : values.back();
}

ReferenceWalk followReferences(const Journal& journal, const std::string& name, const Part& part) {
  return Walk(journal).run(name, part);
}

}  // namespace Cradle::Inspect
