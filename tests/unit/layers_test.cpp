// SPDX-License-Identifier: MIT
// That no source includes what belongs to a layer above its own. That a layer does not call what is
// above it, the linker checks (cmake/layers.cmake); a header alone would escape it.

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Cradle {
namespace {

namespace fs = std::filesystem;

// The directories of src/ from the lowest one up. The library's own files are in none.
constexpr auto kLayers =
    std::to_array<std::string_view>({"base", "logging", "", "generators", "main", "inspect"});

// Attributes for every layer.
const fs::path kAttributes = "export.h";

std::string layerOf(const fs::path& file) {
  return file.has_parent_path() ? file.begin()->string() : "";
}

auto heightOf(const fs::path& file) {
  return std::ranges::find(kLayers, layerOf(file)) - kLayers.begin();
}

struct Include {
  fs::path from;
  fs::path to;
};

// The file that is meant: one beside the source, as in the public headers, or one below src/.
fs::path meant(const fs::path& from, const fs::path& name) {
  const fs::path beside = (from.parent_path() / name).lexically_normal();
  return fs::exists(SOURCE_DIRECTORY / beside) ? beside : name;
}

std::vector<Include> allIncludes() {
  const fs::path root = SOURCE_DIRECTORY;
  const std::regex directive("#include \"([^\"]+)\".*");
  std::vector<Include> includes;
  for (const auto& file : fs::recursive_directory_iterator(root)) {
    std::ifstream stream(file.path());
    std::smatch match;
    for (std::string line; file.is_regular_file() && std::getline(stream, line);) {
      if (std::regex_match(line, match, directive)) {
        const fs::path from = file.path().lexically_relative(root);
        includes.push_back({from, meant(from, match[1].str())});
      }
    }
  }
  return includes;
}

TEST(Layers, EveryDirectoryOfTheSourcesIsOne) {
  for (const auto& entry : fs::directory_iterator(SOURCE_DIRECTORY)) {
    if (entry.is_directory()) {
      EXPECT_THAT(kLayers, testing::Contains(entry.path().filename().string()));
    }
  }
}

TEST(Layers, NoSourceIncludesWhatIsAboveIt) {
  std::array<bool, kLayers.size()> isUsed{};
  for (const auto& [from, to] : allIncludes()) {
    ASSERT_TRUE(fs::exists(SOURCE_DIRECTORY / to)) << from << " includes " << to;
    if (to != kAttributes) {
      EXPECT_LE(heightOf(to), heightOf(from)) << from << " includes " << to;
    }
    isUsed.at(static_cast<std::size_t>(heightOf(to))) = true;
  }
  EXPECT_THAT(isUsed, testing::Each(true));
}

}  // namespace
}  // namespace Cradle
