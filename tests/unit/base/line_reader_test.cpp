// SPDX-License-Identifier: MIT
#include "base/line_reader.h"

#include <cstring>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/child_process.h"
#include "support/temporary_directory.h"

namespace Cradle {
namespace {

using namespace std::string_literals;
using Testing::inChildProcess;
using Testing::interruptOften;
using Testing::TemporaryDirectory;

// Each line between bars, "!" for a failure behind them.
std::string linesOf(const std::string& path) {
  LineReader lines(path);
  std::string all = "|";
  while (lines.next()) {
    all.append(lines.line()) += '|';
  }
  EXPECT_EQ(lines.line(), "");
  EXPECT_FALSE(lines.next());
  return lines.failed() ? all + "!" : all;
}

TEST(LineReader, StaysAtTheEndOfAFileThatGrows) {
  const TemporaryDirectory directory;
  LineReader lines(directory.write("file", "a\n"));
  EXPECT_TRUE(lines.next());
  EXPECT_FALSE(lines.next());
  std::ofstream(directory.path("file"), std::ios::app) << "b\n";
  EXPECT_FALSE(lines.next());
  EXPECT_FALSE(lines.next());
}

TEST(LineReader, WaitsForNothingBehindTheEnd) {
  const std::string left = inChildProcess([] {
    alarm(10);
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    EXPECT_EQ(write(ends[1], "a", 1), 1);
    close(ends[1]);
    const std::string path = "/proc/self/fd/" + std::to_string(ends[0]);
    LineReader lines(path);
    std::string read = lines.next() ? std::string(lines.line()) : "nothing";
    const int silentWriter = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    read += lines.next() ? " and more" : "";
    close(silentWriter);
    return read;
  });
  EXPECT_EQ(left, "a");
}

struct Text {
  std::string file;
  std::string lines;
};

const Text kTexts[] = {
    {"", "|"},
    {"a", "|a|"},
    {"a\n", "|a|"},
    {"\n", "||"},
    {"\n\n", "|||"},
    {"\na", "||a|"},
    {"a\nb", "|a|b|"},
    {"a\nb\n", "|a|b|"},
    {"a\n\nb\n\n", "|a||b||"},
    {"a\r\n", "|a\r|"},
    {"\0\xff\n\0"s, "|\0\xff|\0|"s},
};

TEST(LineReader, EndsALineAtALineFeedOrAtTheEndOfTheFile) {
  const TemporaryDirectory directory;
  for (const Text& row : kTexts) {
    EXPECT_EQ(linesOf(directory.write("file", row.file)), row.lines) << row.file;
  }
}

// A text of 200 lines whose lengths go up and down around the size given.
Text linesAround(std::size_t size) {
  Text text{"", "|"};
  for (std::size_t i = 0; i < 200; ++i) {
    const std::string line(size - 100 + i * 7 % 200, static_cast<char>('a' + i % 26));
    text.file += line + "\n";
    text.lines += line + "|";
  }
  return text;
}

TEST(LineReader, TakesLinesOfEveryLength) {
  const TemporaryDirectory directory;
  for (const std::size_t size : {100U, 4096U, 16384U, 65536U, 131072U}) {
    const Text text = linesAround(size);
    EXPECT_TRUE(linesOf(directory.write("file", text.file)) == text.lines) << size;
  }
}

TEST(LineReader, TakesALastLineThatFillsAllMemoryReadSoFar) {
  const TemporaryDirectory directory;
  for (const std::size_t size : {65535U, 65536U, 65537U, 131072U}) {
    const std::string line(size, 'x');
    EXPECT_TRUE(linesOf(directory.write("file", line)) == "|" + line + "|") << size;
    EXPECT_TRUE(linesOf(directory.write("file", line + "\n")) == "|" + line + "|") << size;
  }
}

// Writes a few bytes at a time into a FIFO, in a process of its own.
void writeSlowly(const std::string& fifo) {
  if (fork() == 0) {
    alarm(5);  // where nobody reads
    usleep(30'000);
    const int file = open(fifo.c_str(), O_WRONLY);
    for (const char* const piece : {"ab", "c\nd", "\n", "e"}) {
      usleep(30'000);
      if (write(file, piece, std::strlen(piece)) < 0) {
        break;
      }
    }
    _exit(0);
  }
}

TEST(LineReader, LosesNothingToPausesAndSignals) {
  const TemporaryDirectory directory;
  const std::string fifo = directory.path("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  EXPECT_EQ(inChildProcess([&] {
              writeSlowly(fifo);
              interruptOften();
              return linesOf(fifo);
            }),
            "|abc|d|e|");
}

TEST(LineReader, StaysAtTheEndWhenTheFileGrows) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("file", "a\n");
  LineReader lines(path);
  EXPECT_TRUE(lines.next());
  EXPECT_FALSE(lines.next());
  directory.write("file", "a\nb\n");
  EXPECT_FALSE(lines.next());
}

// Failures

TEST(LineReader, FailsWhereTheFileCannotBeOpenedOrRead) {
  const TemporaryDirectory directory;
  EXPECT_EQ(linesOf(directory.path("missing")), "|!");
  EXPECT_EQ(linesOf(directory.path()), "|!");
}

}  // namespace
}  // namespace Cradle
