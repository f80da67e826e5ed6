// SPDX-License-Identifier: MIT
#include "generators/fragments.h"

#include "base/text.h"
#include "file_walk.h"
#include "glob_paths.h"

namespace Cradle::Generators {

using Parser::ConfigWriter;

void collectStatic(ConfigWriter& writer, const std::string& pattern, std::string_view key) {
  Parser::forEachFile(pattern, [&](const std::string& /*path*/, std::string_view text) {
    for (const std::string_view line : split(text, '\n', EmptyParts::DropAll)) {
      writer.writeValue(key, line);
    }
  });
}

void collectPropertyHooks(ConfigWriter& writer, const std::string& pattern, std::string_view key,
                          std::span<const std::string> arguments) {
  Parser::forEachHookLine(pattern, arguments,
                          [&](const std::string& /*path*/, std::string_view line) {
                            if (!line.empty()) {
                              writer.writeValue(key, line);
                            }
                          });
}

void runPropertyHooks(ConfigWriter& writer, std::string directory, std::string_view kind,
                      std::span<const std::string> arguments) {
  const std::string pattern = directory.append("/property-").append(kind).append("/*.sh");
  Parser::forEachHookLine(
      pattern, arguments,
      [&](const std::string& /*path*/, std::string_view line) { writer.writeContent(line); });
}

std::string devicePath(const std::string& name) {
  return name.starts_with('/') ? name : "/dev/" + name;
}

std::vector<std::string> gatherDeviceNodes(std::span<const std::string> names) {
  std::vector<std::string> nodes;
  for (const std::string& name : names) {
    const std::vector<std::string> matches = Parser::globPaths(devicePath(name));
    nodes.insert(nodes.end(), matches.begin(), matches.end());
  }
  return nodes;
}

}  // namespace Cradle::Generators
