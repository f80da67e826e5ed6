// SPDX-License-Identifier: MIT
// Environment files. The first line of the input is the name of a variable, the rest is the file.
//
// Properties: the last line for the name gives the value; a missing variable is reported; where the
// reader's buffer ends makes no difference.

#include "environment_file.h"

#include <cctype>
#include <optional>
#include <string>

#include "common/check.h"
#include "common/lines.h"
#include "common/memory_file.h"
#include "common/target.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using Value = std::optional<std::string>;

bool isBlank(char character) {
  return std::isspace(static_cast<unsigned char>(character)) != 0;
}

std::string trimmed(std::string text) {
  while (!text.empty() && isBlank(text[text.size() - 1])) {
    text.erase(text.size() - 1);
  }
  while (!text.empty() && isBlank(text[0])) {
    text.erase(0, 1);
  }
  return text;
}

std::string withoutQuotes(const std::string& text) {
  const bool isQuoted = text.size() > 1 && text[0] == '"' && text[text.size() - 1] == '"';
  return isQuoted ? std::string(text.begin() + 1, text.end() - 1) : text;
}

Value valueByHand(const std::string& text, const std::string& name) {
  Value value;
  for (const std::string& line : linesOf(text)) {
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos && trimmed(line.substr(0, equals)) == name) {
      value = withoutQuotes(trimmed(line.substr(equals + 1)));
    }
  }
  return value;
}

std::string shown(const Value& value) {
  return value ? inQuotes(*value) : "none";
}

void checkFile(const std::string& text, const std::string& name) {
  static const MemoryFile file;
  file.write(text);
  const std::string expected = shown(valueByHand(text, name));
  const Testing::LogCapture log(Parser::Logging::LoggerConfig::LogDebug);
  requireEqual(shown(Parser::readEnvironmentFile(file.path(), name, false)), expected,
               "the last line for a name gives its value");
  requireEqual(log.text(), "", "nothing is reported unless asked for");
  requireEqual(shown(Parser::readEnvironmentFile(file.path(), name, true)), expected,
               "the value does not depend on whether failures are reported");
  requireEqual(log.text(),
               expected != "none"
                   ? ""
                   : "ERROR: No '" + name + "' variable specified in environment file '" +
                         file.path() + "'\n",
               "a missing variable is reported");
}

}  // namespace

void checkInput(const std::string& input) {
  const std::size_t end = input.find('\n');
  const std::string name = input.substr(0, end);
  const std::string text = end == std::string::npos ? "" : input.substr(end + 1);
  checkFile(text, name);
  if (const std::string padding = paddingLine(text, ' '); !padding.empty()) {
    checkFile(padding + text, name);
  }
}

}  // namespace Cradle::Fuzz
