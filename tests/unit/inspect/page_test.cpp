// SPDX-License-Identifier: MIT
#include "inspect/page.h"

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

TEST(Page, ShowsControlCharactersAsText) {
  EXPECT_EQ(Page(true).put("a\tb\n").line("\x1b[1m", Tone::Note).text(),
            "a\\tb\\n\x1b[36m\\x1b[1m\x1b[0m\n");
}

TEST(Page, IsColouredOnlyWhereThatIsWanted) {
  EXPECT_EQ(Page(false).line("x", Tone::Error).text(), "x\n");
  EXPECT_EQ(Page(true).put("a").line("x", Tone::Error).text(), "a\x1b[1;31mx\x1b[0m\n");
}

TEST(Page, AlignsTheColumnsOfATable) {
  Page page(false);
  page.table({{{"a"}, {"bb"}, {"c"}},
              {{"aaa"}, {"b"}, {"c"}},
              {{"a"}},
              {{"\xc3\xa4"}, {"b"}},
              {{"\xc3\xa5"}, {"b"}}},
             1);
  EXPECT_EQ(page.text(), " a    bb  c\n aaa  b   c\n a\n \xc3\xa4    b\n \xc3\xa5    b\n");
}

TEST(Page, DoesNotLetOneLongCellPushTheOthersAway) {
  const std::string word(60, 'x');
  Page page(false);
  page.table({{{word}, {"b"}}, {{"a"}, {"b"}}});
  EXPECT_EQ(page.text(), word + "  b\na" + std::string(49, ' ') + "b\n");
}

TEST(Page, HoldsNothingForATableWithoutRows) {
  EXPECT_EQ(Page(true).table({}).text(), "");
}

}  // namespace
}  // namespace Cradle::Inspect
