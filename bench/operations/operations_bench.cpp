// SPDX-License-Identifier: MIT
// What an operation on a loaded configuration costs, in a small and in a large one. The names are
// "operation/KEYS/NAME".

#include <chrono>
#include <map>
#include <memory>

#include "common/cases.h"
#include "common/failure.h"
#include "operations/operations.h"
#include "operations/subject.h"

namespace Cradle::Bench {
namespace {

constexpr std::array<std::size_t, 2> kSizes{1'000, 1'000'000};

class Subjects {
 public:
  Subject& ofSize(std::size_t keys) {
    std::unique_ptr<Subject>& subject = subjects_[keys];
    if (!subject) {
      subject = std::make_unique<Subject>(keys);
    }
    return *subject;
  }

 private:
  std::map<std::size_t, std::unique_ptr<Subject>> subjects_;
};

// A round is 1000 operations. `prepare` checks what they give, and returns one.
using Round = std::function<void()>;
using Prepare = std::function<Round()>;

Round lookupRound(const Subject& subject, const Lookup& lookup) {
  for (const std::string& group : subject.groups()) {
    require(lookup.holds(subject.parser(), group), std::string(lookup.name) + " is wrong");
  }
  return [&] {
    const std::size_t turns = kRoundSize / subject.groups().size();
    for (std::size_t turn = 0; turn < turns; ++turn) {
      for (const std::string& group : subject.groups()) {
        lookup.run(subject.parser(), group);
      }
    }
  };
}

Round storeRound(Subject& subject, const Store& store) {
  const std::string path = subject.storeFile(store.value);
  require(subject.load(path), "loading failed");
  for (const std::string& group : subject.groups()) {
    std::string text;
    subject.parser().getValue(group, kStoredKey, text);
    require(text == kStoredValue, std::string(store.name) + " is wrong");
  }
  return [path, &subject] { subject.load(path); };
}

void time(benchmark::State& state, const Round& round) {
  using Clock = std::chrono::steady_clock;
  for ([[maybe_unused]] const auto ignored : state) {
    const Clock::time_point start = Clock::now();
    round();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
  state.counters[kItems] = static_cast<double>(kRoundSize);
}

Case operationCase(std::size_t keys, const std::string& name, const Prepare& prepare) {
  const std::string title = "operation/" + std::to_string(keys) + '/' + name;
  return {title, [prepare](benchmark::State& state) { time(state, prepare()); },
          [title, prepare] { countInstructions(title, kRoundSize, prepare()); }};
}

std::vector<Case> operationCases() {
  const auto subjects = std::make_shared<Subjects>();
  std::vector<Case> cases;
  for (const std::size_t keys : kSizes) {
    for (const Lookup& lookup : lookups()) {
      cases.push_back(operationCase(
          keys, lookup.name, [=, &lookup] { return lookupRound(subjects->ofSize(keys), lookup); }));
    }
    for (const Store& store : stores()) {
      cases.push_back(operationCase(
          keys, store.name, [=, &store] { return storeRound(subjects->ofSize(keys), store); }));
    }
  }
  return cases;
}

}  // namespace
}  // namespace Cradle::Bench

int main(int argc, char** argv) {
  return Cradle::Bench::runCases(argc, argv, Cradle::Bench::operationCases);
}
