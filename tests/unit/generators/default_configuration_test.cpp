// SPDX-License-Identifier: MIT
// The default configuration that is shipped, held against the tables of the outputs.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "generators/locale.h"
#include "generators/lxc_rows.h"
#include "generators/property_rows.h"

namespace Cradle::Generators {
namespace {

// "Group/Key" of every key that stands in the shipped files, set or commented out.
std::set<std::string> shippedKeys() {
  std::set<std::string> keys;
  for (const auto& file : std::filesystem::directory_iterator(DEFAULT_CONFIGURATION)) {
    std::ifstream stream(file.path());
    std::string group;
    for (std::string line; std::getline(stream, line);) {
      if (line.starts_with('#')) {
        line.erase(0, 1);
      }
      if (line.starts_with('[')) {
        group = line.substr(1, line.size() - 2);
      }
      const std::size_t equals = line.find('=');
      if (equals != std::string::npos && !line.starts_with(' ')) {
        keys.insert(group + "/" + line.substr(0, equals));
      }
    }
  }
  return keys;
}

// "Group/Key" of every key that an output is made of.
std::set<std::string> readKeys() {
  std::set<std::string> keys;
  const auto add = [&](const ConfigKey& name) {
    if (!name.key.empty()) {
      keys.insert(std::string(name.group) + "/" + std::string(name.key));
    }
  };
  for (const std::span<const OutputRow> rows : {lxcRows(), propertyRows()}) {
    for (const OutputRow& row : rows) {
      add(row.source);
      add(row.when.source);
    }
  }
  add(kLanguageOverride);
  add(kLanguageFilePath);
  return keys;
}

// The keys of `all` that are not in `known`.
std::set<std::string> missing(const std::set<std::string>& all,
                              const std::set<std::string>& known) {
  std::set<std::string> keys;
  std::set_difference(all.begin(), all.end(), known.begin(), known.end(),
                      std::inserter(keys, keys.end()));
  return keys;
}

TEST(DefaultConfiguration, HoldsEveryKeyThatIsRead) {
  EXPECT_EQ(missing(readKeys(), shippedKeys()), std::set<std::string>())
      << "read, but not in conf/cradle.conf.d, neither set nor commented out";
}

TEST(DefaultConfiguration, HoldsNoKeyThatIsNotRead) {
  EXPECT_EQ(missing(shippedKeys(), readKeys()), std::set<std::string>())
      << "in conf/cradle.conf.d, but not read";
}

}  // namespace
}  // namespace Cradle::Generators
