// SPDX-License-Identifier: MIT
#include "file_walk.h"

#include <optional>

#include "base/input_file.h"
#include "base/text.h"
#include "glob_paths.h"
#include "run_command.h"

namespace Cradle::Parser {

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
    if (const std::optional<std::string> text = readWholeFile(path)) {
      action(path, *text);
    }
  }
}

}  // namespace Cradle::Parser
