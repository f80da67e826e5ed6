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

}  // namespace

bool validateMountEntry(const std::string& entry) {
  const auto fields = split(entry, ' ', EmptyParts::DropTrailing);
  if (fields.size() != kFieldCount) {
    // Also said of too many.
    libraryLogger().error() << "Not enough parts in mount entry: " << entry;
    return false;
  }
  const std::string_view source = fields[0];
  const std::string_view type = fields[2];
  const std::string_view dump = fields[4];
  const std::string_view backup = fields[5];
  if (!sourceIsAllowed(source)) {
    libraryLogger().error() << "Mount entry must begin with '/' or be 'tmpfs' or 'none': " << entry;
    return false;
  }
  if (!typeIsAllowed(type)) {
    libraryLogger().error() << "File system type must be 'none' or 'tmpfs' instead of '" << type
                            << "' in mount entry: " << entry;
    return false;
  }
  if (dump != "0") {
    libraryLogger().error() << "Dump value must be '0' instead of '" << dump
                            << "' in mount entry: " << entry;
    return false;
  }
  if (backup != "0") {
    libraryLogger().error() << "Backup value must be '0' instead of '" << backup
                            << "' in mount entry: " << entry;
    return false;
  }
  return true;
}

}  // namespace Cradle::Parser
