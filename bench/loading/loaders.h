// SPDX-License-Identifier: MIT
// The ways to get a configuration file into memory that are compared: this program's, those of the
// libraries that could be used instead, and two floors, which only find the lines.
//
// The caller owns what a loader returns: one object with everything that was loaded, whatever the
// library behind it. A loader throws when its library reports an error; whether the file arrived
// whole is asked of the object.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "common/entry_stream.h"

namespace Cradle::Bench {

// A file in memory, in whatever form.
class LoadedFile {
 public:
  LoadedFile() = default;
  LoadedFile(const LoadedFile&) = delete;
  LoadedFile& operator=(const LoadedFile&) = delete;
  virtual ~LoadedFile() = default;

  // Whether it is what a file of so many entries must give.
  virtual bool isComplete(std::size_t entries) const = 0;
};

// One whose values can be asked for.
class KeyedFile : public LoadedFile {
 public:
  // Looks up every key, and compares its value.
  bool isComplete(std::size_t entries) const override;

 private:
  virtual std::optional<std::string> value(const Entry& entry) const = 0;
};

using Loading = std::unique_ptr<LoadedFile>(const std::string& path);

Loading loadWithConfigParser;
Loading loadWithGKeyFile;
Loading loadWithSimpleIni;
Loading loadWithInih;
Loading loadWithPropertyTree;
Loading findLinesWithMemchr;
Loading findLinesWithGetline;

struct Loader {
  const char* name;
  Loading* load;
};

inline constexpr std::array<Loader, 7> kLoaders{{
    {"ConfigParser", loadWithConfigParser},
    {"GKeyFile", loadWithGKeyFile},
    {"SimpleIni", loadWithSimpleIni},
    {"inih", loadWithInih},
    {"PropertyTree", loadWithPropertyTree},
    {"getline", findLinesWithGetline},
    {"memchr", findLinesWithMemchr},
}};

}  // namespace Cradle::Bench
