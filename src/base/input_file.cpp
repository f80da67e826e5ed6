// SPDX-License-Identifier: MIT
#include "base/input_file.h"

#include <array>

namespace Cradle {
namespace {

constexpr std::size_t kPieceSize = 16384;  // on the stack

}  // namespace

InputFile::InputFile(const std::string& path) : file_(path, O_RDONLY) {}

std::optional<std::size_t> InputFile::read(std::span<char> piece) const {
  const ssize_t count =
      uninterrupted([&] { return ::read(file_.number(), piece.data(), piece.size()); });
  return count < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(count));
}

std::optional<std::string> readWholeFile(const std::string& path) {
  const InputFile file(path);
  std::string text;
  std::array<char, kPieceSize> piece;
  for (;;) {
    const std::optional<std::size_t> count = file.read(piece);
    if (!count) {
      return std::nullopt;
    }
    if (*count == 0) {
      return text;
    }
    text.append(piece.data(), *count);
  }
}

}  // namespace Cradle
