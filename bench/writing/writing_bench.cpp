// SPDX-License-Identifier: MIT
// What writing a line costs: with ConfigWriter, with the plain loop that it could be, and with
// nothing but the system call. All write the same bytes, a system call for every line.

#include <chrono>
#include <fstream>
#include <map>

#include <fcntl.h>
#include <unistd.h>

#include "common/cases.h"
#include "common/entry_stream.h"
#include "common/failure.h"
#include "config_writer.h"
#include "support/temporary_directory.h"

namespace Cradle::Bench {
namespace {

constexpr std::array<std::size_t, 2> kSizes{100'000, 1'000'000};

using Entries = std::vector<Entry>;

void writeWithConfigWriter(const std::string& path, const Entries& entries) {
  Parser::ConfigWriter writer(path, Parser::ConfigWriter::Separator::Plain);
  for (const Entry& entry : entries) {
    writer.writeValue(entry.key, std::string_view(entry.value));
  }
}

void writeWithStream(const std::string& path, const Entries& entries) {
  std::ofstream file(path);
  for (const Entry& entry : entries) {
    file << entry.key << '=' << entry.value << '\n' << std::flush;
  }
}

void writeWithSystemCall(const std::string& path, const Entries& entries) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  std::string line;
  for (const Entry& entry : entries) {
    line.assign(entry.key).append("=").append(entry.value).append("\n");
    require(write(file, line.data(), line.size()) >= 0, "cannot write " + path);
  }
  close(file);
}

struct Way {
  const char* name;
  void (*write)(const std::string& path, const Entries& entries);
};

constexpr std::array<Way, 3> kWays{{
    {"ConfigWriter", writeWithConfigWriter},
    {"ofstream and flush", writeWithStream},
    {"write", writeWithSystemCall},
}};

std::string textOf(const Entries& entries) {
  std::string text;
  for (const Entry& entry : entries) {
    text.append(entry.key).append("=").append(entry.value).append("\n");
  }
  return text;
}

const Entries& entriesOfSize(std::size_t size) {
  static std::map<std::size_t, Entries> made;
  Entries& entries = made[size];
  EntryStream stream;
  while (entries.size() < size) {
    entries.push_back(stream.next());
  }
  return entries;
}

void time(benchmark::State& state, const Way& way, std::size_t size) {
  using Clock = std::chrono::steady_clock;
  const Testing::TemporaryDirectory directory;
  const std::string path = directory.path("output");
  const Entries& entries = entriesOfSize(size);
  for ([[maybe_unused]] const auto ignored : state) {
    const Clock::time_point start = Clock::now();
    way.write(path, entries);
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    unlink(path.c_str());
  }
  way.write(path, entries);
  require(directory.read("output") == textOf(entries), std::string(way.name) + " is wrong");
  state.counters[kItems] = static_cast<double>(size);
}

std::vector<Case> writingCases() {
  std::vector<Case> cases;
  for (const std::size_t size : kSizes) {
    for (const Way& way : kWays) {
      cases.push_back({"write/" + std::to_string(size) + '/' + way.name,
                       [&way, size](benchmark::State& state) { time(state, way, size); }, nullptr});
    }
  }
  return cases;
}

}  // namespace
}  // namespace Cradle::Bench

int main(int argc, char** argv) {
  return Cradle::Bench::runCases(argc, argv, Cradle::Bench::writingCases);
}
