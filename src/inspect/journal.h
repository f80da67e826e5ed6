// SPDX-License-Identifier: MIT
// Everything that the configuration files said, in the order in which they were loaded: where each
// assignment stands, what its templates gave, and what became of each of its values.
//
// The journal is what a configuration forgets: the merged values are those of a ConfigParser, which
// is filled while the journal is written. A file that is bad does not end the reading.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "config_file_info.h"
#include "config_value.h"

namespace Cradle::Inspect {

// A line of a file.
struct Place {
  std::uint32_t file = 0;  // its position in Journal::files
  std::uint32_t line = 0;

  bool operator<(const Place& other) const {
    return std::tie(file, line) < std::tie(other.file, other.line);
  }
};

// What became of a substitution "${...}".
enum class Outcome : std::uint8_t {
  Text,
  Reference,
  NotRun,   // a command that has not been started
  NoValue,  // the source has none
  Malformed,
  UnknownName,
  UnknownFormat,
  NoFile,  // what it names is no file to be opened
};

struct Substitution {
  std::string spec;  // what stands between the braces
  Outcome outcome;
  std::string text;  // what it gave; of a reference "Group/Key", of no file why
};

// What became of a value.
enum class Fate : std::uint8_t {
  Kept,
  Empty,        // its templates gave the empty text
  Unclosed,     // a "${" without "}"
  StrayDollar,  // a "$" before anything else
  Failed,       // the last substitution failed
};

// One of the values that an assignment separates with ";".
struct Part {
  std::string raw;
  Fate fate = Fate::Kept;
  Parser::ConfigValue value = {};
  std::vector<Substitution> substitutions = {};  // up to the first one that failed

  // Whether a command has not been run, so that the text is not what it will be.
  bool awaitsCommand() const;
};

// A line "key=value". One without a value clears the key.
struct Assignment {
  Place place;
  std::string raw;
  std::vector<Part> parts;

  bool clears() const { return raw.empty(); }
};

using History = std::vector<Assignment>;  // of one key, in load order
using Group = std::map<std::string, History, std::less<>>;

struct ReadFile {
  std::string path;
  std::string fault = {};  // why it could not be read to its end; empty where it could
  std::vector<Parser::RejectedLine> rejected = {};
};

struct Journal {
  std::vector<ReadFile> files;
  std::map<std::string, Group, std::less<>> groups;

  // What happened to a key, or null.
  const History* find(std::string_view group, std::string_view key) const;

  // "path:line".
  std::string nameOf(Place place) const;
};

// Whether the name of a group is a line that could not be read as one; a bad file is read on.
bool isRefusedLine(std::string_view group);

// "[Group]", or the refused line as it stands.
std::string titleOf(std::string_view group);

// "Group/Key".
std::string nameOfKey(std::string_view group, std::string_view key);

// A value that nothing has cleared.
struct KeptValue {
  const Assignment* assignment;
  const Part* part;
};

// The values that a history leaves, oldest first.
std::vector<KeptValue> keptValues(const History& history);

}  // namespace Cradle::Inspect
