// SPDX-License-Identifier: MIT
#include "inspect/journal_reader.h"

#include <filesystem>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "support/journal_bench.h"

namespace Cradle::Inspect {
namespace {

using Parser::ConfigParser;
using Parser::ConfigValue;
using Testing::JournalBench;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

// Every key with its values, resolved, "Group/Key=|a|b|".
std::string mergedText(const ConfigParser& parser) {
  std::string text;
  parser.forEachEntry(
      [&](std::string_view group, std::string_view key, std::span<const ConfigValue> values) {
        text.append(group).append("/").append(key).append("=|");
        for (const ConfigValue& value : values) {
          std::string resolved;
          parser.resolve(value, resolved);
          text += resolved + "|";
        }
        text += "\n";
      });
  return text;
}

// The same of what a journal says, with the texts that a parser gives.
std::string mergedText(const Journal& journal, const ConfigParser& parser) {
  std::string text;
  for (const auto& [group, histories] : journal.groups) {
    for (const auto& [key, history] : histories) {
      const std::vector<KeptValue> values = keptValues(history);
      text += values.empty() ? "" : group + "/" + key + "=|";
      for (const KeptValue& value : values) {
        std::string resolved;
        parser.resolve(value.part->value, resolved);
        text += resolved + "|";
      }
      text += values.empty() ? "" : "\n";
    }
  }
  return text;
}

void addTemplates(ConfigParser& parser) {
  for (const char* const name : {"HOME", "INSTANCE", "ODM_DIR", "USER", "USER_ID"}) {
    parser.addTemplate(name, std::string("of-") + name);
  }
}

// Reads the directories in both ways.
void expectTheSame(const std::vector<std::string>& directories, const std::string& what) {
  const LogCapture log(LogCapture::Level::LogCritical);
  ConfigParser parser(-1);
  ConfigParser observed(-1);
  addTemplates(parser);
  addTemplates(observed);
  for (const std::string& directory : directories) {
    if (!parser.loadDirectory(directory)) {
      return;  // what the two make of bad files is not the same
    }
  }
  const Journal journal = readJournal(directories, observed, true);
  EXPECT_EQ(mergedText(observed), mergedText(parser)) << what;
  EXPECT_EQ(mergedText(journal, parser), mergedText(parser)) << what;
}

// Configurations that are made of everything that a file may hold.
class RandomTree {
 public:
  explicit RandomTree(unsigned seed) : random_(seed) {}

  void write(const TemporaryDirectory& directory, const std::string& name) {
    std::string text;
    for (std::size_t i = below(30); i > 0; --i) {
      text += line();
    }
    directory.write(name, text);
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  std::string oneOf(std::initializer_list<const char*> choices) {
    return choices.begin()[below(choices.size())];
  }

  std::string line() {
    switch (below(6)) {
      case 0:
        return oneOf({"[A]\n", "[B]\n", "[]\n", "# note\n", "\n", ";note\n"});
      case 1:
        return oneOf({"K=\n", "L=\n", "M=\n"});
      default:
        return oneOf({"K=", "L=", "M=", "N="}) + value() + "\n";
    }
  }

  std::string value() {
    std::string text;
    for (std::size_t i = below(4); i > 0; --i) {
      text += oneOf({"a",
                     ";",
                     "b c",
                     "$$",
                     "$",
                     "${",
                     "}",
                     "${HOME}",
                     "${nope}",
                     "${x:y}",
                     "${config:A/K}",
                     "${config:B/L}",
                     "${config:A}",
                     "${env:PATH}",
                     "${env:}",
                     "${envfile:/dev/null:X}",
                     "${envfile:}",
                     "${system:echo s}",
                     "${system:false}",
                     "${realpath:/..}",
                     "\t",
                     "=",
                     ";;"});
    }
    return text;
  }

  std::mt19937 random_;
};

TEST(JournalReader, MergesRandomTreesAsTheParserDoes) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    const TemporaryDirectory directory;
    RandomTree tree(seed);
    for (const char* const file : {"a/1.conf", "a/2.conf", "b/1.conf"}) {
      tree.write(directory, file);
    }
    expectTheSame({directory.path("a"), directory.path("b")}, "seed " + std::to_string(seed));
  }
}

TEST(JournalReader, MergesTheGoldenDirectoriesAsTheParserDoes) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(GOLDEN_DIRECTORY)) {
    std::vector<std::string> directories;
    for (const char* const name : {"host/etc/cradle.conf.d", "host/etc/device.conf.d"}) {
      if (exists(entry.path() / name)) {
        directories.push_back(entry.path() / name);
      }
    }
    count += directories.size();
    expectTheSame(directories, entry.path());
  }
  EXPECT_GT(count, 20U);
}

TEST(JournalReader, TellsWhereEachAssignmentStands) {
  const JournalBench bench({"[G]\nK=a;b\n\n", "# note\n[G]\nK=\nK=c\n"});
  const History& history = bench.history("G", "K");
  ASSERT_EQ(history.size(), 3U);
  EXPECT_EQ(bench.placeOf(history[0].place), "1:2");
  EXPECT_EQ(bench.placeOf(history[1].place), "2:3");
  EXPECT_EQ(bench.placeOf(history[2].place), "2:4");
  EXPECT_EQ(bench.journal.nameOf(history[2].place), bench.directory.path("2.conf") + ":4");
  EXPECT_FALSE(history[0].clears());
  EXPECT_TRUE(history[1].clears());
}

TEST(JournalReader, KeepsEveryPartWithItsFate) {
  const JournalBench bench({"K=a;;${config:A/B};${nope};${;$x;${envfile:/dev/null:X}\n"});
  const std::vector<Part>& parts = bench.history("", "K").front().parts;
  std::string fates;
  for (const Part& part : parts) {
    fates += part.raw + " " + std::to_string(static_cast<int>(part.fate)) + "\n";
  }
  EXPECT_EQ(fates, "a 0\n${config:A/B} 0\n${nope} 4\n${ 2\n$x 3\n${envfile:/dev/null:X} 4\n");
}

TEST(JournalReader, FindsNothingWhereThereIsNothing) {
  const JournalBench bench({"[G]\nK=a\n"});
  EXPECT_EQ(bench.journal.find("G", "L"), nullptr);
  EXPECT_EQ(bench.journal.find("H", "K"), nullptr);
}

// Failures

TEST(JournalReader, ReadsOnBehindBadLinesAndFiles) {
  TemporaryDirectory directory;
  directory.write("1.conf", "bad\nK=a\n[bad/group]\nK=b\n");
  std::filesystem::create_directory(directory.path("2.conf"));
  directory.write("3.conf", "K=c\nbad");
  const LogCapture log(LogCapture::Level::LogCritical);
  ConfigParser parser(-1);
  const Journal journal = readJournal({directory.path()}, parser, false);
  EXPECT_EQ(mergedText(parser), "/K=|a|c|\n[bad/group]/K=|b|\n");
  ASSERT_EQ(journal.files.size(), 3U);
  EXPECT_EQ(journal.files[0].rejected.size(), 2U);
  EXPECT_EQ(journal.files[0].fault, "");
  EXPECT_EQ(journal.files[1].fault, "Is a directory");
  EXPECT_EQ(journal.files[2].rejected.size(), 1U);
  EXPECT_EQ(journal.files[2].rejected[0].number, 2U);
}

}  // namespace
}  // namespace Cradle::Inspect
