// SPDX-License-Identifier: MIT
#include "inspect/printable.h"

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

TEST(Printable, LeavesTextAsItIs) {
  for (const char* const text : {"", "a b\\x1b", "\xc3\xa4", "\xe2\x82\xac", "\xf0\x9f\x99\x82",
                                 "\xef\xbf\xbd", "\xe0\xa0\x80", "\xf0\x90\x80\x80"}) {
    EXPECT_EQ(printable(text), text);
  }
}

TEST(Printable, ShowsControlCharactersAsText) {
  EXPECT_EQ(printable("a\tb\nc\x1b[1m\x7f\x01 \xc3\xa4"), "a\\tb\\nc\\x1b[1m\\x7f\\x01 \xc3\xa4");
  EXPECT_EQ(printable("\xc2\x9b"
                      "31m"),
            "\\u009b31m");
}

TEST(Printable, ShowsWhatReordersOrHidesText) {
  EXPECT_EQ(printable("\xef\xbb\xbf[A]"), "\\ufeff[A]");
  EXPECT_EQ(printable("\xe2\x80\xae\xe2\x81\xa6\xe2\x80\x8b\xd8\x9c"),
            "\\u202e\\u2066\\u200b\\u061c");
  EXPECT_EQ(printable("\xf3\xa0\x81\x81"), "\\ue0041");
}

// The character of a number, in the shortest form.
std::string character(std::uint32_t code) {
  const auto next = [&](unsigned shift) {
    return static_cast<char>(0x80U | ((code >> shift) & 0x3fU));
  };
  if (code < 0x80) {
    return {static_cast<char>(code)};
  }
  if (code < 0x800) {
    return {static_cast<char>(0xc0U | code >> 6U), next(0)};
  }
  if (code < 0x10000) {
    return {static_cast<char>(0xe0U | code >> 12U), next(6), next(0)};
  }
  return {static_cast<char>(0xf0U | code >> 18U), next(12), next(6), next(0)};
}

TEST(Printable, ShowsEveryCharacterOfARangeAndNoneBesideIt) {
  struct Range {
    std::uint32_t first;
    std::uint32_t last;
  };
  for (const auto& [first, last] :
       {Range{0, 0x1f}, Range{0x7f, 0x9f}, Range{0xad, 0xad}, Range{0x61c, 0x61c},
        Range{0x200b, 0x200f}, Range{0x2028, 0x202e}, Range{0x2060, 0x206f}, Range{0xd800, 0xdfff},
        Range{0xfeff, 0xfeff}, Range{0xfff9, 0xfffb}, Range{0xe0000, 0xe0fff}}) {
    for (const std::uint32_t code : {first, last}) {
      EXPECT_TRUE(printable(character(code)).starts_with('\\')) << code;
    }
    if (first != 0) {
      EXPECT_EQ(printable(character(first - 1)), character(first - 1)) << first;
    }
    EXPECT_EQ(printable(character(last + 1)), character(last + 1)) << last;
  }
  EXPECT_EQ(printable(character(0x10ffff)), character(0x10ffff));
  EXPECT_EQ(printable(character(0x110000)), "\\u110000");
  EXPECT_EQ(printable(character(0x1fffff)), "\\u1fffff");
}

TEST(Printable, TakesOnlyTheShortestFormOfACharacter) {
  EXPECT_EQ(printable("\xc1\xbf"), "\\xc1\\xbf");
  EXPECT_EQ(printable("\xc2\x80"), "\\u0080");
  EXPECT_EQ(printable("\xe0\x9f\xbf"), "\\xe0\\x9f\\xbf");
  EXPECT_EQ(printable("\xf0\x8f\xbf\xbf"), "\\xf0\\x8f\\xbf\\xbf");
}

TEST(Printable, ShowsACharacterThatIsCutOff) {
  EXPECT_EQ(printable("a\xc3"), "a\\xc3");
  EXPECT_EQ(printable("\xf0\x9f\x99"), "\\xf0\\x9f\\x99");
}

TEST(Printable, ShowsWhatIsNoUtf8) {
  EXPECT_EQ(printable("\x9b"
                      "31m"),
            "\\x9b31m");
  EXPECT_EQ(printable("\xc3"), "\\xc3");
  EXPECT_EQ(printable("\xc3x\xff"), "\\xc3x\\xff");
  EXPECT_EQ(printable("\xc0\x9b"), "\\xc0\\x9b");
  EXPECT_EQ(printable("\xed\xa0\x80"), "\\ud800");
  EXPECT_EQ(printable("\xf4\x90\x80\x80"), "\\u110000");
}

TEST(Printable, KeepsLinesApart) {
  EXPECT_EQ(printableLines("a\x1b\nb\tc\n\nd"), "a\\x1b\nb\\tc\n\nd");
  EXPECT_EQ(printableLines(""), "");
}

}  // namespace
}  // namespace Cradle::Inspect
