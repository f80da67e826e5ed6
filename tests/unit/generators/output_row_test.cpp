// SPDX-License-Identifier: MIT
#include "generators/output_row.h"

#include <string>

#include <gtest/gtest.h>

#include "support/output_bench.h"

namespace Cradle::Generators {
namespace {

using Testing::OutputBench;

std::optional<std::string> sourceText(OutputContext& context, const OutputRow& row) {
  return context.config.text(row.source, row.text);
}
std::optional<std::string> noText(OutputContext& /*context*/, const OutputRow& /*row*/) {
  return std::nullopt;
}
bool isThere(const OutputContext& context, const OutputRow& row) {
  return context.config.has(row.source);
}
bool writeTwoLines(OutputContext& context, const OutputRow& row) {
  context.writer.writeValue(row.key, "one");
  context.writer.writeValue(row.key, "two");
  return true;
}
bool writeOneLineAndFail(OutputContext& context, const OutputRow& row) {
  context.writer.writeValue(row.key, "one");
  return false;
}

constexpr Format kSource{"text", sourceText};
constexpr Format kWrong{"wrong", noText};
constexpr Condition kThere{"if there", isThere};
constexpr OutputRow kFirst{.key = "first", .source = {"G", "A"}, .format = &kSource};
constexpr OutputRow kLast{.comment = "the last", .key = "last", .format = &kSource, .text = "x"};

class OutputRowTest : public ::testing::Test {
 protected:
  // What these rows write, followed by "wrong" where one of them is.
  std::string written(std::initializer_list<OutputRow> rows) {
    OutputBench bench("[G]\nA=a\nList=one;two words;#three\nEmpty=${config:G/None}\n");
    const bool right = writeRows(bench.context, {rows.begin(), rows.size()});
    return bench.written() + (right ? "" : "wrong");
  }
};

TEST_F(OutputRowTest, IsALineOfKeyAndText) {
  EXPECT_EQ(written({kFirst}), "first=a\n");
}

TEST_F(OutputRowTest, IsHeadedByItsComment) {
  EXPECT_EQ(written({{.comment = "c", .key = "k", .source = {"G", "A"}, .format = &kSource}}),
            "# c\nk=a\n");
}

TEST_F(OutputRowTest, FramesItsText) {
  const OutputRow framed{
      .key = "k", .source = {"G", "A"}, .format = &kSource, .prefix = "<", .suffix = "> 0"};
  EXPECT_EQ(written({framed}), "k=<a> 0\n");
}

TEST_F(OutputRowTest, GivesAnAbsentValueItsOwnText) {
  const OutputRow absent{
      .key = "k", .source = {"G", "None"}, .format = &kSource, .text = "default"};
  EXPECT_EQ(written({absent}), "k=default\n");
}

TEST_F(OutputRowTest, IsItsCommentAloneWithoutAKey) {
  EXPECT_EQ(written({{.comment = "c"}}), "# c\n");
}

TEST_F(OutputRowTest, LeavesOutLineAndCommentWhereItsConditionIsNotMet) {
  const OutputRow met{
      .comment = "c", .key = "k", .source = {"G", "A"}, .format = &kSource, .condition = &kThere};
  OutputRow notMet = met;
  notMet.source = {"G", "None"};
  OutputRow lines = notMet;
  lines.lines = writeOneLineAndFail;
  EXPECT_EQ(written({met}), "# c\nk=a\n");
  EXPECT_EQ(written({notMet, lines, kFirst}), "first=a\n");
}

TEST_F(OutputRowTest, WritesItsOwnLinesBehindItsComment) {
  EXPECT_EQ(written({{.comment = "c", .key = "k", .format = &kWrong, .lines = writeTwoLines}}),
            "# c\nk=one\nk=two\n");
}

TEST_F(OutputRowTest, ComesInItsOrder) {
  EXPECT_EQ(written({kLast, kFirst, kLast}), "# the last\nlast=x\nfirst=a\n# the last\nlast=x\n");
  EXPECT_EQ(written({}), "");
}

TEST(StoredBlock, WritesEveryElementBetweenItsComments) {
  OutputBench bench("[G]\nList=one;a = b;#three\n", Parser::ConfigWriter::Separator::Spaced);
  writeStoredBlock(bench.context, {"G", "List"}, "begin", "end");
  EXPECT_EQ(bench.written(), "# begin\none\na = b\n#three\n# end\n");
}

TEST(StoredBlock, IsTheTwoCommentsForAListWithoutElements) {
  OutputBench bench("[G]\nList=${config:G/None}\n");
  writeStoredBlock(bench.context, {"G", "List"}, "begin", "end");
  EXPECT_EQ(bench.written(), "# begin\n# end\n");
}

TEST(StoredBlock, IsNothingWithoutItsKey) {
  OutputBench bench("[G]\nList=one\nList=\n");
  writeStoredBlock(bench.context, {"G", "List"}, "begin", "end");
  writeStoredBlock(bench.context, {"H", "List"}, "begin", "end");
  EXPECT_EQ(bench.written(), "");
}

// Failures

TEST_F(OutputRowTest, EndsTheRowsWithItsCommentWhereItsValueIsWrong) {
  EXPECT_EQ(written({kFirst, {.comment = "c", .key = "k", .format = &kWrong}, kLast}),
            "first=a\n# c\nwrong");
}

TEST_F(OutputRowTest, EndsTheRowsWithTheLinesThatItHasWritten) {
  EXPECT_EQ(written({kFirst, {.key = "k", .lines = writeOneLineAndFail}, kLast}),
            "first=a\nk=one\nwrong");
}

}  // namespace
}  // namespace Cradle::Generators
