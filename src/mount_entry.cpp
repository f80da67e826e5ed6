// SPDX-License-Identifier: MIT
#include "mount_entry.h"

#include "base/text.h"
#include "library_logger.h"

namespace Cradle::Parser {
namespace {

constexpr std::size_t kFieldCount = 6;

bool sourceIsAllowed(std::string_view source) {
  return source.starts_with('/') || source == "tmpfs" || source == "none";
}

bool typeIsAllowed(std::string_view type) {
  return type == "none" || type == "tmpfs" || type == "devpts";
}

std::string unexpected(std::string_view what, std::string_view allowed, std::string_view value,
                       const std::string& entry) {
  std::string fault(what);
  fault.append(" must be ").append(allowed).append(" instead of '").append(value);
  return fault.append("' in mount entry: ").append(entry);
}

}  // namespace

std::string mountEntryFault(const std::string& entry) {
  const auto fields = split(entry, ' ', EmptyParts::DropTrailing);
  if (fields.size() != kFieldCount) {
    // Also said of too many.
    return "Not enough parts in mount entry: " + entry;
  }
  if (!sourceIsAllowed(fields[0])) {
    return "Mount entry must begin with '/' or be 'tmpfs' or 'none': " + entry;
  }
  if (!typeIsAllowed(fields[2])) {
    return unexpected("File system type", "'none' or 'tmpfs'", fields[2], entry);
  }
  if (fields[4] != "0") {
    return unexpected("Dump value", "'0'", fields[4], entry);
  }
  return fields[5] == "0" ? "" : unexpected("Backup value", "'0'", fields[5], entry);
}

bool validateMountEntry(const std::string& entry) {
  const std::string fault = mountEntryFault(entry);
  if (!fault.empty()) {
    libraryLogger().error() << fault;
  }
  return fault.empty();
}

}  // namespace Cradle::Parser
