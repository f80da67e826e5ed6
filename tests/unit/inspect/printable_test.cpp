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
