// SPDX-License-Identifier: MIT
#include "generators/lxc_formats.h"

#include <cerrno>
#include <cstring>

#include "generators/fragments.h"
#include "generators/user_database.h"
#include "glob_paths.h"
#include "library_logger.h"
#include "mount_entry.h"

namespace Cradle::Generators {
namespace {

using Parser::libraryLogger;

constexpr mode_t kCrashLogMode = 0750;

// A path of the host bound to the same place in the container.
std::string bindEntry(const std::string& source, std::string_view kind) {
  std::string entry = source + " " + source.substr(1) + " none bind,nosuid,create=";
  return entry.append(kind).append(" 0 0");
}

}  // namespace

std::optional<std::string> formatDevicePath(OutputContext& context, const OutputRow& row) {
  return devicePath(context.config.text(row.source));
}

std::optional<std::string> formatDirectory(OutputContext& context, const OutputRow& row) {
  const std::string path = context.config.text(row.source);
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) {
    return ".";
  }
  return slash == 0 ? "/" : path.substr(0, slash);
}

bool storageIsOutsideDataRoot(const OutputContext& context, const OutputRow& row) {
  const std::string dataRoot = context.config.text(kDataRoot) + "/";
  return context.config.has(row.source) && !context.config.text(row.source).starts_with(dataRoot);
}

bool writeRequiredDeviceNodes(OutputContext& context, const OutputRow& row) {
  for (const std::string& name : context.config.list(row.source)) {
    errno = ENOENT;  // a pattern without a match leaves no error of its own
    const std::vector<std::string> nodes = Parser::globPaths(devicePath(name));
    if (nodes.empty()) {
      libraryLogger().error() << "Failed to find required device node file '" << name
                              << "': " << std::strerror(errno);
      return false;
    }
    for (const std::string& node : nodes) {
      context.writer.writeValue(row.key, bindEntry(node, "file"));
    }
  }
  return true;
}

bool writeOptionalDeviceNodes(OutputContext& context, const OutputRow& row) {
  for (std::string& node : gatherDeviceNodes(context.config.list(row.source))) {
    const bool isDirectory = node.ends_with('/');
    if (isDirectory) {
      node.pop_back();
    }
    context.writer.writeValue(row.key, bindEntry(node, isDirectory ? "dir" : "file"));
  }
  return true;
}

bool writeCrashLogDirectory(OutputContext& context, const OutputRow& row) {
  if (!makeUserDirectory(kCrashLogDirectory, kCrashLogMode, context.run.facts.baseUid)) {
    libraryLogger().warning() << "Could not create " << kCrashLogDirectory << ": "
                              << std::strerror(errno);
    return true;
  }
  context.writer.writeValue(row.key, kCrashLogDirectory + std::string(row.suffix));
  return true;
}

bool writeMounts(OutputContext& context, const OutputRow& row) {
  for (const std::string& entry : context.config.list(row.source)) {
    if (!Parser::validateMountEntry(entry)) {
      libraryLogger().error() << "Invalid mount entry in " << row.source.key << ": " << entry;
      return false;
    }
    context.writer.writeValue(row.key, entry);
  }
  return true;
}

}  // namespace Cradle::Generators
