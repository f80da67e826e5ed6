// SPDX-License-Identifier: MIT
// Reads configuration values for the outputs, where an absent key has a meaning of its own.
//
// An absent text is empty, an absent boolean false, an absent number 0 and an absent list empty. A
// number whose text does not convert reads as what could be read of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config_parser.h"

namespace Cradle::Generators {

// Names one configuration value by literals, which outlive it.
struct ConfigKey {
  std::string_view group = {};
  std::string_view key = {};
};

class ConfigReader {
 public:
  // `parser` must outlive the reader.
  explicit ConfigReader(const Parser::ConfigParser& parser) : parser_(parser) {}

  bool has(const ConfigKey& name) const { return parser_.hasKey(name.group, name.key); }
  bool hasGroup(std::string_view group) const { return parser_.hasGroup(group); }

  std::string text(const ConfigKey& name, std::string_view absent = "") const {
    return read(name, std::string(absent));
  }
  bool flag(const ConfigKey& name) const { return read(name, false); }
  int integer(const ConfigKey& name) const { return read(name, 0); }
  long longInteger(const ConfigKey& name) const { return read(name, 0L); }
  double real(const ConfigKey& name) const { return read(name, 0.0); }
  std::vector<std::string> list(const ConfigKey& name) const {
    return read(name, std::vector<std::string>());
  }

 private:
  template <typename Value>
  Value read(const ConfigKey& name, Value value) const {
    if (has(name)) {
      parser_.getValue(name.group, name.key, value);
    }
    return value;
  }

  const Parser::ConfigParser& parser_;
};

}  // namespace Cradle::Generators
