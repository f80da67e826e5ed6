// SPDX-License-Identifier: MIT
// A host inside this process, for whole runs of the program.
//
// While a Visit lives, what the program asks of the operating system by a name is answered here:
// paths lead into a private directory, there are two users and a few environment variables, no
// library can be opened, and no shell runs. In place of one, a hook prints its own text and any
// other command line itself; it fails where the command line holds "!".
//
// The linker leads these calls here (--wrap in CMakeLists.txt). The program's own objects stay as
// they are, whichever way they come to ask for a file or for a command, so that nothing that a
// fuzzed configuration says can reach the machine. Outside of visits the calls are what they were.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "common/file_tree.h"
#include "common/private_directory.h"

namespace Cradle::Fuzz {

struct HostUser {
  std::uint32_t id;
  const char* name;
  const char* home;
};

class PrivateHost {
 public:
  // Patterns can multiply. After so many look-ups nothing more is found in a visit.
  static constexpr int kMostLookups = 4000;

  class Visit {
   public:
    explicit Visit(const PrivateHost& host);
    ~Visit();
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

    // Whether the look-ups have been used up, so that what was found is left to chance.
    bool isExhausted() const;
  };

  // Replaces the host's files.
  void furnish(const FileTree& files) const { directory_.furnish(files); }

  // What the file at an absolute path of the host holds, or nothing where there is none.
  std::optional<std::string> read(const std::string& path) const;

  const PrivateDirectory& directory() const { return directory_; }

  static const HostUser* findUser(std::uint32_t id);

 private:
  PrivateDirectory directory_;
};

}  // namespace Cradle::Fuzz
