// SPDX-License-Identifier: MIT
#include "environment_file.h"

#include "base/line_reader.h"
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
  LineReader lines(path);
  std::optional<std::string> value;
  while (lines.next()) {
    const auto parts = split(lines.line(), '=', EmptyParts::KeepAll, 1);
    if (parts.size() == 2 && trim(parts[0]) == name) {
      value = unquote(trim(parts[1]));
    }
  }
  if (report && lines.failed()) {
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
