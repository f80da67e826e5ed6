// SPDX-License-Identifier: MIT
#include "generator_helpers.h"

#include "file_walk.h"
#include "library_logger.h"
#include "mount_entry.h"

namespace Cradle::Parser::GeneratorHelpers {

void parseDefaults(ConfigWriter& writer, const std::string& pattern) {
  forEachFile(pattern, [&](const std::string& path, std::string_view text) {
    writer.writeEmptyLine();
    writer.writeComment(path + " content");
    writer.writeContent(text);
    writer.writeComment("end of " + path + " content");
  });
}

void runMountHooks(ConfigWriter& writer, const std::string& pattern, const std::string& key,
                   std::span<const std::string> arguments) {
  forEachHookLine(pattern, arguments, [&](const std::string& path, std::string_view line) {
    const std::string entry(line);
    if (validateMountEntry(entry)) {
      writer.writeValue(key, entry);
    } else {
      libraryLogger().warning() << "Invalid mount entry from " << path << ": " << entry;
    }
  });
}

}  // namespace Cradle::Parser::GeneratorHelpers
