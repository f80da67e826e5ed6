// SPDX-License-Identifier: MIT
#include "base/text.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace Cradle {
namespace {

using Parts = std::vector<std::string_view>;

struct Splitting {
  std::string_view text;
  Parts dropTrailing;
  Parts dropAll;
  Parts keepAll;
};

const Splitting kSplittings[] = {
    {"", {}, {}, {""}},
    {"a", {"a"}, {"a"}, {"a"}},
    {"a;b;c", {"a", "b", "c"}, {"a", "b", "c"}, {"a", "b", "c"}},
    {"a;;b", {"a", "", "b"}, {"a", "b"}, {"a", "", "b"}},
    {";a", {"", "a"}, {"a"}, {"", "a"}},
    {"a;", {"a"}, {"a"}, {"a", ""}},
    {"a;;", {"a", ""}, {"a"}, {"a", "", ""}},
    {";", {""}, {}, {"", ""}},
    {";;", {"", ""}, {}, {"", "", ""}},
    {" a ;\tb", {" a ", "\tb"}, {" a ", "\tb"}, {" a ", "\tb"}},
    {"a,b:c", {"a,b:c"}, {"a,b:c"}, {"a,b:c"}},
};

TEST(Split, DropsOneTrailingEmptyPart) {
  for (const Splitting& row : kSplittings) {
    EXPECT_EQ(split(row.text, ';', EmptyParts::DropTrailing), row.dropTrailing) << row.text;
  }
}

TEST(Split, DropsAllEmptyParts) {
  for (const Splitting& row : kSplittings) {
    EXPECT_EQ(split(row.text, ';', EmptyParts::DropAll), row.dropAll) << row.text;
  }
}

TEST(Split, KeepsAllEmptyParts) {
  for (const Splitting& row : kSplittings) {
    EXPECT_EQ(split(row.text, ';', EmptyParts::KeepAll), row.keepAll) << row.text;
  }
}

TEST(ForEachPart, VisitsAllPartsInOrder) {
  for (const Splitting& row : kSplittings) {
    Parts parts;
    forEachPart(row.text, ';', [&](std::string_view part) { parts.push_back(part); });
    EXPECT_EQ(parts, row.keepAll) << row.text;
  }
}

struct BoundedSplitting {
  std::string_view text;
  EmptyParts emptyParts;
  std::size_t maxSplits;
  Parts parts;
};

const BoundedSplitting kBoundedSplittings[] = {
    {"a=b=c", EmptyParts::KeepAll, 0, {"a=b=c"}},
    {"a=b=c", EmptyParts::KeepAll, 1, {"a", "b=c"}},
    {"a=b=c", EmptyParts::KeepAll, 2, {"a", "b", "c"}},
    {"a=b=c", EmptyParts::KeepAll, 3, {"a", "b", "c"}},
    {"a=b=", EmptyParts::DropTrailing, 1, {"a", "b="}},
    {"a=", EmptyParts::KeepAll, 1, {"a", ""}},
    {"a=", EmptyParts::DropTrailing, 1, {"a"}},
    {"=a=", EmptyParts::DropAll, 1, {"a="}},
    {"", EmptyParts::KeepAll, 0, {""}},
    {"", EmptyParts::DropTrailing, 0, {}},
};

TEST(Split, LeavesTheRestOfTheTextInTheLastPart) {
  for (const BoundedSplitting& row : kBoundedSplittings) {
    EXPECT_EQ(split(row.text, '=', row.emptyParts, row.maxSplits), row.parts)
        << row.text << " at most " << row.maxSplits;
  }
}

TEST(Split, GivesViewsOfTheTextItself) {
  const std::string_view text = "ab;c";
  const Parts parts = split(text, ';', EmptyParts::KeepAll);
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_EQ(parts[0].data(), text.data());
  EXPECT_EQ(parts[1].data(), text.data() + 3);
}

struct Trimming {
  std::string_view text;
  std::string_view trimmed;
};

constexpr Trimming kTrimmings[] = {
    {"", ""},
    {"a", "a"},
    {" a", "a"},
    {"a ", "a"},
    {"  a  ", "a"},
    {" \t\n\v\f\ra b\r\f\v\n\t ", "a b"},
    {" \t\n\v\f\r", ""},
    {"\x85 a\xa0", "\x85 a\xa0"},
    {std::string_view("\0a\0", 3), std::string_view("\0a\0", 3)},
};

TEST(Trim, RemovesWhiteSpaceFromTheTwoEnds) {
  for (const Trimming& row : kTrimmings) {
    EXPECT_EQ(trim(row.text), row.trimmed) << row.text;
  }
}

TEST(TrimLeft, RemovesWhiteSpaceFromTheBeginningAlone) {
  EXPECT_EQ(trimLeft(" \t\n\v\f\r a b \n"), "a b \n");
  EXPECT_EQ(trimLeft("a "), "a ");
  EXPECT_EQ(trimLeft(" \n"), "");
  EXPECT_EQ(trimLeft(""), "");
}

TEST(Join, PutsTheSeparatorBetweenTheParts) {
  const auto joined = [](const std::vector<std::string>& parts) { return join(parts, ", "); };
  EXPECT_EQ(joined({}), "");
  EXPECT_EQ(joined({"a"}), "a");
  EXPECT_EQ(joined({"a", "b", "c"}), "a, b, c");
  EXPECT_EQ(joined({"", "b", ""}), ", b, ");
}

// What the compiler knows depends on no locale.
static_assert(lowerCase('A') == 'a' && lowerCase('I') == 'i' && lowerCase('Z') == 'z');
static_assert(upperCase('a') == 'A' && upperCase('i') == 'I' && upperCase('z') == 'Z');

TEST(UpperCase, ChangesTheSmallLettersOnly) {
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    const bool small = character >= 'a' && character <= 'z';
    EXPECT_EQ(upperCase(character), small ? static_cast<char>(byte - ('a' - 'A')) : character)
        << "byte " << byte;
  }
}

TEST(ToLowerCase, ChangesTheCapitalLettersOnly) {
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    const bool capital = character >= 'A' && character <= 'Z';
    std::string text(2, character);
    toLowerCase(text);
    EXPECT_EQ(text, std::string(2, capital ? static_cast<char>(byte + ('a' - 'A')) : character))
        << "byte " << byte;
  }
}

}  // namespace
}  // namespace Cradle
