// The default configuration that is shipped, held against the tables of the outputs.

#include <filesystem>
#include <fstream>
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

TEST(DefaultConfiguration, HoldsEveryKeyThatIsReadAndNoOther) {
  EXPECT_EQ(shippedKeys(), readKeys());
}

}  // namespace
}  // namespace Cradle::Generators
