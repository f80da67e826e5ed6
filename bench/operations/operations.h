// SPDX-License-Identifier: MIT
// The operations on a loaded configuration whose cost must not depend on its size: those that read
// or look up something, and those that store.
//
// They are tables of constants. Each operation tells what it must give on the keys that Subject
// puts into every group, so that it is checked before it is measured.
#pragma once

#include <span>
#include <string>

#include "config_parser.h"

namespace Cradle::Bench {

// Reads or looks up something in a group.
struct Lookup {
  const char* name;
  void (*run)(const Parser::ConfigParser& parser, const std::string& group);
  // Whether the same gives what it must.
  bool (*holds)(const Parser::ConfigParser& parser, const std::string& group);
};

std::span<const Lookup> lookups();

// Removes a key and sets it, as a line of a file does that is loaded. Every value expands to
// kStoredValue.
struct Store {
  const char* name;
  const char* value;
};

std::span<const Store> stores();

}  // namespace Cradle::Bench
