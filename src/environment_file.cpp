#include "environment_file.h"

#include <fstream>

#include "base/text.h"
#include "library_logger.h"

namespace Cradle::Parser {
namespace {

std::string_view unquote(std::string_view value) {
  if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
    return value.substr(1, value.size() - 2);
  }
  return value;
}

}  // namespace

std::optional<std::string> readEnvironmentFile(const std::string& path, std::string_view name,
                                               bool report) {
  std::ifstream file(path);
  const bool opened = file.is_open();
  std::optional<std::string> value;
  for (std::string line; std::getline(file, line);) {
    const auto parts = split(line, '=', EmptyParts::KeepAll, 1);
    if (parts.size() == 2 && trim(parts[0]) == name) {
      value = unquote(trim(parts[1]));
    }
  }
  if (report && (!opened || file.bad())) {
    libraryLogger().error() << "Reading environment file '" << path << "' failed";
    return std::nullopt;
  }
  if (report && !value) {
    libraryLogger().error() << "No '" << name << "' variable specified in environment file '"
                            << path << "'";
  }
  return value;
}

}  // namespace Cradle::Parser
