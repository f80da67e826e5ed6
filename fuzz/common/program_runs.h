// SPDX-License-Identifier: MIT
// Whole runs of the program in a private host: all three outputs, one after the other.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/file_tree.h"
#include "common/private_host.h"
#include "main/options.h"

namespace Cradle::Fuzz {

// The settings that the input's file "arguments" gives, or those for alice; nothing where it is
// wrong.
std::optional<CommandLine::Settings> settingsOf(const FileTree& files);

// Directories of the host that no input names: entries of no meaning, which are removed again, and
// a place for a generated configuration.
std::string unrelatedDirectory();
std::string generatedDirectory();

// All files of the host: the input's and those of the two directories.
FileTree hostFiles(FileTree files, const std::string& input, const std::string& generated = "");

struct Output {
  int status = 0;
  std::optional<std::string> text = {};
  std::string log = {};

  std::string shown() const;
};

struct Outputs {
  Output config = {};
  Output lxc = {};
  Output property = {};
  bool byChance = false;  // patterns have used up all look-ups
};

// Runs the program on a host with these files. A run that fails must say why, any other must write
// its file.
Outputs allOutputs(const PrivateHost& host, const FileTree& files,
                   const CommandLine::Settings& settings,
                   const std::vector<std::string>& directories);

}  // namespace Cradle::Fuzz
