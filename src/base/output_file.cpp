#include "base/output_file.h"

namespace Cradle {
namespace {

constexpr mode_t kReadWriteForAll = 0666;

}  // namespace

OutputFile::OutputFile(const std::string& path)
    : owned_(std::in_place, path, O_WRONLY | O_CREAT | O_TRUNC, kReadWriteForAll),
      number_(owned_->number()),
      good_(owned_->isOpen()) {}

void OutputFile::write(std::string_view text) {
  while (good_ && !text.empty()) {
    const ssize_t count = uninterrupted([&] { return ::write(number_, text.data(), text.size()); });
    good_ = count >= 0;
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
