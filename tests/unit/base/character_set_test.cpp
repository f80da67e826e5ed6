// SPDX-License-Identifier: MIT
#include "base/character_set.h"

#include <string_view>

#include <gtest/gtest.h>

namespace Cradle {
namespace {

using namespace std::string_view_literals;

static_assert(CharacterSet("ab").contains('a'), "a set is made at compile time");

TEST(CharacterSet, ContainsExactlyItsCharacters) {
  constexpr std::string_view characters = "b-\0\xff"sv;
  constexpr CharacterSet set(characters);
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    EXPECT_EQ(set.contains(character), characters.find(character) != std::string_view::npos)
        << "byte " << byte;
  }
}

TEST(CharacterSet, WithoutCharactersContainsNone) {
  constexpr CharacterSet set("");
  EXPECT_FALSE(set.contains('a'));
  EXPECT_FALSE(set.contains('\0'));
}

TEST(CharacterSet, ContainsAllOfATextWithoutOtherCharacters) {
  constexpr CharacterSet set("ab");
  for (const std::string_view text : {"a", "b", "abba"}) {
    EXPECT_TRUE(set.containsAll(text)) << text;
  }
  for (const std::string_view text : {"c"sv, "cab"sv, "acb"sv, "abc"sv, "A"sv, "a\0"sv}) {
    EXPECT_FALSE(set.containsAll(text)) << text;
  }
}

TEST(CharacterSet, MeasuresAPrefixOfItsCharacters) {
  constexpr CharacterSet set("ab");
  EXPECT_EQ(set.prefixLength(""), 0U);
  EXPECT_EQ(set.prefixLength("c"), 0U);
  EXPECT_EQ(set.prefixLength("ca"), 0U);
  EXPECT_EQ(set.prefixLength("abc"), 2U);
  EXPECT_EQ(set.prefixLength("abacab"), 3U);
  EXPECT_EQ(set.prefixLength("abba"), 4U);
}

TEST(CharacterSet, ContainsAllOfTheEmptyText) {
  EXPECT_TRUE(CharacterSet("ab").containsAll(""));
  EXPECT_TRUE(CharacterSet("").containsAll(""));
}

}  // namespace
}  // namespace Cradle
