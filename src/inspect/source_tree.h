// SPDX-License-Identifier: MIT
// Every file that a run reads, runs or copies, in the order in which it does, and what stands
// beside them and is passed over.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "inspect/inspection.h"

namespace Cradle::Inspect {

// Where a configuration directory keeps hooks and fragments.
struct SourceKind {
  std::string_view directory;  // below the configuration directory; empty for itself
  std::string_view suffix;     // of the names that count
  bool isHook;
};

enum class Action : std::uint8_t { Read, Run, Copy, PassOver };

// "read", "run", "copy" or "-".
std::string_view nameOf(Action action);

struct SourceFile {
  std::string path;
  Action action = Action::PassOver;
  const SourceKind* kind = nullptr;  // of its directory; null where nothing is looked for
  std::string mode = {};             // four octal digits; empty where the file cannot be looked at
  std::string owner = {};
  std::string fault = {};     // why it is passed over, or fails
  std::int64_t modified = 0;  // when it was changed, in nanoseconds
};

struct SourceTree {
  std::vector<SourceFile> used;    // in the order of a run
  std::vector<SourceFile> passed;  // by directory and name
};

SourceTree findSources(const Inspection& inspection);

// The directories that may stand in a configuration directory.
std::vector<std::string_view> sourceDirectories();

// Modes as four octal digits, and users by their names or numbers.
std::string octalMode(mode_t mode);
std::string nameOfUser(uid_t uid);

}  // namespace Cradle::Inspect
