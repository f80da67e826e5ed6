#include "file_walk.h"

#include <array>
#include <fstream>
#include <optional>
#include <utility>

#include "base/text.h"
#include "glob_paths.h"
#include "run_command.h"

namespace Cradle::Parser {
namespace {

constexpr std::streamsize kPieceSize = 16384;

// The whole file, or nothing where it cannot be opened or read, as with a directory.
std::optional<std::string> readFile(const std::string& path) {
  std::ifstream file(path);
  std::string text;
  std::array<char, kPieceSize> piece{};
  while (file.read(piece.data(), kPieceSize) || file.gcount() > 0) {
    text.append(piece.data(), static_cast<std::size_t>(file.gcount()));
  }
  return file.eof() && !file.bad() ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace

void forEachHookLine(const std::string& pattern, std::span<const std::string> arguments,
                     const FileAction& action) {
  for (const std::string& path : sortedGlobPaths(pattern)) {
    const std::string output = runCommand(path, arguments);
    for (const std::string_view line : split(output, '\n', EmptyParts::DropTrailing)) {
      action(path, line);
    }
  }
}

void forEachFile(const std::string& pattern, const FileAction& action) {
  for (const std::string& path : sortedGlobPaths(pattern)) {
    if (const std::optional<std::string> text = readFile(path)) {
      action(path, *text);
    }
  }
}

}  // namespace Cradle::Parser
