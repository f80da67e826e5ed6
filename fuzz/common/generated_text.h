// SPDX-License-Identifier: MIT
// What a generated configuration has to hold, put together from the files of a host by plain means.
//
// The entries come from a ConfigParser that has loaded the same directories: its own targets hold
// it to its rules. Hooks print their own text (see common/private_host.h).
#pragma once

#include <string>
#include <vector>

#include "common/file_tree.h"
#include "config_parser.h"
#include "generators/run_facts.h"

namespace Cradle::Fuzz {

// A line "key=value" of a group, in the order of the file.
struct GeneratedEntry {
  std::string group;
  std::string key;
  std::string value;
};

std::vector<GeneratedEntry> generatedEntries(const Parser::ConfigParser& parser,
                                             const FileTree& files,
                                             const std::vector<std::string>& directories,
                                             const Generators::RunFacts& facts);

std::string generatedText(const std::vector<GeneratedEntry>& entries);

// The values by group and key that reading the text gives, as one text. Nothing else survives:
//   - a value with "$" is a template, so that its key is left out here;
//   - of a value, each part between ";" is a value of its own, and empty parts are dropped;
//   - an empty value removes its key.
// A text with a line feed in a value is not to be given: what follows it is a line of its own.
std::string readBackByHand(const std::vector<GeneratedEntry>& entries);

// The same of a parser that has read the text.
std::string readBack(const Parser::ConfigParser& parser,
                     const std::vector<GeneratedEntry>& entries);

}  // namespace Cradle::Fuzz
