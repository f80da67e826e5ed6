// SPDX-License-Identifier: MIT
#include "base/output_file.h"

#include <utility>

namespace Cradle {
namespace {

constexpr mode_t kReadWriteForAll = 0666;

}  // namespace

OutputFile::OutputFile(const std::string& path)
    : owned_(std::in_place, path, O_WRONLY | O_CREAT | O_TRUNC, kReadWriteForAll),
      number_(owned_->number()),
      good_(isOpen()) {}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : owned_(std::exchange(other.owned_, std::nullopt)),
      number_(std::exchange(other.number_, -1)),
      good_(std::exchange(other.good_, false)) {}

OutputFile& OutputFile::operator=(OutputFile&& other) noexcept {
  std::swap(owned_, other.owned_);
  std::swap(number_, other.number_);
  std::swap(good_, other.good_);
  return *this;
}

void OutputFile::write(std::string_view text) {
  while (good_ && !text.empty()) {
    const ssize_t count = uninterrupted([&] { return ::write(number_, text.data(), text.size()); });
    good_ = count > 0;
    text.remove_prefix(good_ ? static_cast<std::size_t>(count) : 0);
  }
}

OutputFile& standardOutput() {
  static OutputFile file(STDOUT_FILENO);
  return file;
}

OutputFile& standardError() {
  static OutputFile file(STDERR_FILENO);
  return file;
}

}  // namespace Cradle
