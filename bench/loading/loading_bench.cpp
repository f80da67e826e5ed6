// SPDX-License-Identifier: MIT
// What loading a file costs: time, memory and instructions, for each loader and size. All are given
// the same files, and each is first made to show that it has every value.

#include <chrono>
#include <map>
#include <memory>
#include <utility>

#include "common/cases.h"
#include "common/entry_stream.h"
#include "common/failure.h"
#include "common/fresh_process.h"
#include "common/memory_in_use.h"
#include "loading/loaders.h"
#include "support/temporary_directory.h"

namespace Cradle::Bench {
namespace {

constexpr std::array<std::size_t, 4> kSizes{1'000, 10'000, 100'000, 1'000'000};

// The files, each made when it is first asked for.
class Files {
 public:
  const std::string& path(std::size_t entries) {
    std::string& path = paths_[entries];
    if (path.empty()) {
      path = directory_.path(std::to_string(entries) + ".conf");
      writeEntries(path, entries);
    }
    return path;
  }

 private:
  Testing::TemporaryDirectory directory_;
  std::map<std::size_t, std::string> paths_;
};

struct LoadCost {
  double seconds;
  MemoryInUse memory;
};

LoadCost measureLoad(const Loader& loader, const std::string& path) {
  using Clock = std::chrono::steady_clock;
  const MemoryInUse before = memoryInUse();
  const Clock::time_point start = Clock::now();
  const std::unique_ptr<LoadedFile> loaded = loader.load(path);
  const Clock::time_point end = Clock::now();
  const MemoryInUse after = memoryInUse();
  return {
      .seconds = std::chrono::duration<double>(end - start).count(),
      .memory = {.heap = after.heap - before.heap, .resident = after.resident - before.resident}};
}

class LoadingCase {
 public:
  LoadingCase(std::shared_ptr<Files> files, const Loader& loader, std::size_t entries)
      : files_(std::move(files)), loader_(loader), entries_(entries) {}

  std::string name() const { return "load/" + std::to_string(entries_) + '/' + loader_.name; }

  void time(benchmark::State& state) {
    const std::string& path = files_->path(entries_);
    verify(path);
    LoadCost cost{};
    for ([[maybe_unused]] const auto ignored : state) {
      cost = inFreshProcess<LoadCost>([&] { return measureLoad(loader_, path); });
      state.SetIterationTime(cost.seconds);
    }
    state.counters[kItems] = static_cast<double>(entries_);
    state.counters["heap"] = cost.memory.heap;
    state.counters["resident"] = cost.memory.resident;
  }

  void count() {
    const std::string& path = files_->path(entries_);
    std::unique_ptr<LoadedFile> loaded;
    countInstructions(name(), entries_, [&] { loaded = loader_.load(path); });
  }

 private:
  // In a process of its own too: its memory must not be there when the next one is made.
  void verify(const std::string& path) {
    if (!verified_) {
      verified_ = inFreshProcess<bool>([&] { return loader_.load(path)->isComplete(entries_); });
      require(verified_, std::string(loader_.name) + " does not have every value of " + path);
    }
  }

  std::shared_ptr<Files> files_;
  const Loader& loader_;
  std::size_t entries_;
  bool verified_ = false;
};

std::vector<Case> loadingCases() {
  const auto files = std::make_shared<Files>();
  std::vector<Case> cases;
  for (const std::size_t entries : kSizes) {
    for (const Loader& loader : kLoaders) {
      const auto one = std::make_shared<LoadingCase>(files, loader, entries);
      cases.push_back({one->name(), [one](benchmark::State& state) { one->time(state); },
                       [one] { one->count(); }});
    }
  }
  return cases;
}

}  // namespace
}  // namespace Cradle::Bench

int main(int argc, char** argv) {
  return Cradle::Bench::runCases(argc, argv, Cradle::Bench::loadingCases);
}
