// SPDX-License-Identifier: MIT
// What reading alone costs: the lines are found and forgotten.

#include <cstring>
#include <fstream>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "common/failure.h"
#include "loading/loaders.h"

namespace Cradle::Bench {
namespace {

class FoundLines : public LoadedFile {
 public:
  explicit FoundLines(std::size_t count) : count_(count) {}

  bool isComplete(std::size_t entries) const override {
    return count_ == entries + (entries + kKeysPerGroup - 1) / kKeysPerGroup;
  }

 private:
  std::size_t count_;
};

constexpr std::size_t kPieceSize = 65536;

std::size_t countLineFeeds(std::string_view text) {
  std::size_t count = 0;
  const char* rest = text.data();
  const char* const end = rest + text.size();
  while (rest != end) {
    const void* const feed = std::memchr(rest, '\n', static_cast<std::size_t>(end - rest));
    if (feed == nullptr) {
      break;
    }
    rest = static_cast<const char*>(feed) + 1;
    ++count;
  }
  return count;
}

}  // namespace

std::unique_ptr<LoadedFile> findLinesWithMemchr(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  require(file >= 0, "cannot open " + path);
  std::vector<char> piece(kPieceSize);
  std::size_t count = 0;
  ssize_t size = 0;
  while ((size = read(file, piece.data(), piece.size())) > 0) {
    count += countLineFeeds({piece.data(), static_cast<std::size_t>(size)});
  }
  close(file);
  require(size == 0, "cannot read " + path);
  return std::make_unique<FoundLines>(count);
}

std::unique_ptr<LoadedFile> findLinesWithGetline(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  std::size_t count = 0;
  while (std::getline(file, line)) {
    ++count;
  }
  return std::make_unique<FoundLines>(count);
}

}  // namespace Cradle::Bench
