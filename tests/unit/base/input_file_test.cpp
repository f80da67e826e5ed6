// SPDX-License-Identifier: MIT
#include "base/input_file.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace Cradle {
namespace {

using namespace std::string_literals;
using Testing::TemporaryDirectory;

// What the reads of pieces of that size give: each text between bars, "!" for a failure.
std::string pieces(const std::string& path, std::size_t size) {
  const InputFile file(path);
  std::string piece(size, '\0');
  std::string all = "|";
  for (;;) {
    const std::optional<std::size_t> count = file.read(piece);
    if (!count || *count == 0) {
      return count ? all : all + "!";
    }
    all += piece.substr(0, *count) + "|";
  }
}

TEST(InputFile, IsReadInPiecesToItsEnd) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("file", "abcdefg");
  EXPECT_EQ(pieces(path, 3), "|abc|def|g|");
  EXPECT_EQ(pieces(path, 7), "|abcdefg|");
  EXPECT_EQ(pieces(path, 100), "|abcdefg|");
  EXPECT_EQ(pieces(directory.write("empty", ""), 3), "|");
}

TEST(InputFile, IsReadWholeWhateverItHolds) {
  const TemporaryDirectory directory;
  for (const std::string& text : {""s, "a"s, "\0\xff\n\r"s, std::string(100'000, 'x') + "y"}) {
    EXPECT_EQ(readWholeFile(directory.write("file", text)), text);
  }
}

// Failures

TEST(InputFile, CannotBeReadWhereItCannotBeOpened) {
  const TemporaryDirectory directory;
  EXPECT_EQ(pieces(directory.path("missing"), 3), "|!");
  EXPECT_EQ(readWholeFile(directory.path("missing")), std::nullopt);
}

TEST(InputFile, CannotBeReadAsADirectory) {
  const TemporaryDirectory directory;
  EXPECT_EQ(pieces(directory.path(), 3), "|!");
  EXPECT_EQ(readWholeFile(directory.path()), std::nullopt);
}

}  // namespace
}  // namespace Cradle
