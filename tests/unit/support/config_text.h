// SPDX-License-Identifier: MIT
// Configurations written in the tests themselves.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "config_parser.h"
#include "support/temporary_directory.h"

namespace Cradle::Testing {

// Loads `text` as one configuration file.
inline bool loadText(Parser::ConfigParser& parser, std::string_view text) {
  const TemporaryDirectory directory;
  return parser.loadFile(directory.write("test.conf", text));
}

// The values of a key between bars, "|a|b|", or "missing".
inline std::string valuesOf(const Parser::ConfigParser& parser, std::string_view group,
                            std::string_view key) {
  if (!parser.hasValue(group, key)) {
    return "missing";
  }
  std::vector<std::string> values;
  parser.getValue(group, key, values);
  return "|" + join(values, "|") + "|";
}

}  // namespace Cradle::Testing
