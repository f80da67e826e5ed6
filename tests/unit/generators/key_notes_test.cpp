// SPDX-License-Identifier: MIT
// The notes on what code does with keys, held against what it does: the parser tells which keys it
// is asked for.

#include "generators/key_notes.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text.h"
#include "generators/generated_group.h"
#include "generators/generated_user.h"
#include "generators/key_reference.h"
#include "generators/lxc_config.h"
#include "generators/lxc_formats.h"
#include "generators/lxc_rows.h"
#include "generators/property_file.h"
#include "generators/property_formats.h"
#include "generators/property_rows.h"
#include "generators/row_formats.h"
#include "support/log_capture.h"
#include "support/output_bench.h"
#include "support/row_rules.h"

namespace Cradle::Generators {
namespace {

using Testing::LogCapture;
using Testing::nameOf;
using Testing::TemporaryDirectory;
using Names = std::set<std::string>;

// The keys that the row asks for beside its own, which have the given value.
Names furtherReads(const OutputRow& row, const std::string& value) {
  Run run(static_cast<std::uint32_t>(-1));
  std::string text;
  for (const ConfigKey& name : {row.source, row.when.source}) {
    run.parser.addKnownKey(name.group, name.key, Parser::ValueList);
    if (!name.key.empty() && !value.empty()) {
      text += "[" + std::string(name.group) + "]\n" + std::string(name.key) + "=" + value + "\n";
    }
  }
  EXPECT_TRUE(Testing::loadText(run.parser, text));
  const TemporaryDirectory directory;
  const std::vector<std::string> directories;
  Parser::ConfigWriter writer(directory.path("out"), Parser::ConfigWriter::Separator::Plain);
  OutputContext context{.run = run, .directories = directories, .writer = writer};
  const LogCapture log;
  writeRows(context, {&row, 1});
  Names names;
  const std::regex asked("WARNING: (\\S+) has not been added to the parser");
  const std::string messages = log.text();
  for (std::sregex_iterator match(messages.begin(), messages.end(), asked), end; match != end;
       ++match) {
    names.insert((*match)[1]);
  }
  return names;
}

Names notedFor(const OutputRow& row) {
  Names names;
  for (const FurtherKey& key : furtherKeys()) {
    if (key.format != nullptr ? key.format == row.format : key.condition == row.condition) {
      names.insert(nameOf(key.name));
    }
  }
  return names;
}

std::vector<OutputRow> allRows() {
  std::vector<OutputRow> rows;
  for (const auto table : {lxcRows(), propertyRows()}) {
    rows.insert(rows.end(), table.begin(), table.end());
  }
  return rows;
}

TEST(KeyNotes, NameEveryFurtherKeyThatARowReads) {
  for (const OutputRow& row : allRows()) {
    if (row.lines == writeCrashLogDirectory) {
      continue;  // makes a directory of the host, of which the configuration tells nothing
    }
    Names reads;
    for (const char* const value : {"", "None", "true"}) {
      reads.merge(furtherReads(row, value));
    }
    EXPECT_EQ(reads, notedFor(row)) << Testing::nameOf(row);
  }
}

TEST(KeyNotes, AreThereForEverythingThatARowNames) {
  for (const OutputRow& row : allRows()) {
    if (row.format != nullptr) {
      EXPECT_EQ(noteOf(*row.format).format, row.format);
    }
    if (row.lines != nullptr) {
      EXPECT_EQ(noteOf(row.lines).lines, row.lines);
    }
    if (row.condition != nullptr) {
      EXPECT_EQ(noteOf(*row.condition).condition, row.condition);
    }
  }
}

TEST(KeyNotes, KnowWhichConditionsNeedTheSource) {
  const Testing::OutputBench bench("[Other]\nKey=1\n");
  for (const OutputRow& row : allRows()) {
    if (row.condition == nullptr || row.source.key.empty()) {
      continue;
    }
    const bool isMetWithout = bench.holds(*row.condition, row);
    EXPECT_FALSE(noteOf(*row.condition).needsSource && isMetWithout) << nameOf(row);
  }
}

TEST(KeyNotes, KnowThatSomeRowsAreWrittenWithoutTheSource) {
  const Testing::OutputBench bench("[Other]\nKey=1\n");
  const OutputRow row{.source = {"A", "Absent"}, .when = {{"Other", "Key"}, "2"}};
  EXPECT_TRUE(bench.holds(kUnless, row));
  EXPECT_FALSE(noteOf(kUnless).needsSource);
}

TEST(KeyNotes, GiveAKeyTheSameKindEverywhere) {
  std::map<std::string, ValueKind> kinds;
  for (const OutputRow& row : allRows()) {
    if (row.format != nullptr && row.format != &kFixed && !row.source.key.empty()) {
      const ValueKind kind = noteOf(*row.format).kind;
      EXPECT_EQ(kinds.emplace(nameOf(row.source), kind).first->second, kind) << nameOf(row);
    }
  }
  for (const FurtherKey& further : furtherKeys()) {
    const ValueKind kind = noteOf(*further.type).kind;
    EXPECT_EQ(kinds.emplace(nameOf(further.name), kind).first->second, kind)
        << nameOf(further.name);
  }
}

TEST(KeyNotes, MustBeThere) {
  EXPECT_DEATH(noteOf(Format{}), ::testing::HasSubstr("has a note"));
}

// The words, as the formats and conditions take them

TEST(KeyNotes, NameTheWordsThatFormatsTake) {
  for (const Format* const format : {&kManglingType, &kLaunchMode}) {
    std::size_t taken = 0;
    for (const std::string_view word :
         {"None", "NoDots", "freeform", "fullscreen", "nodots", "Freeform", "bridge", ""}) {
      const LogCapture log;
      Testing::OutputBench bench(Testing::keyLine(word));
      const bool isWrong = bench.text(*format, Testing::kKeyRow) == "wrong";
      const auto words = noteOf(*format).words;
      const bool isNoted = std::ranges::find(words, word) != words.end();
      EXPECT_TRUE(isNoted || isWrong) << word;
      taken += isWrong ? 0 : 1;
    }
    EXPECT_GT(taken, 0U);
  }
}

TEST(KeyNotes, NameTheWordsThatConditionsCompareWith) {
  for (const Condition* const condition : {&kIfMangled, &kIfNotNone, &kIfNetworkUsed}) {
    for (const std::string_view word : {"None", "NoDots", "skip", "disable", "bridge", "x"}) {
      const Testing::OutputBench bench(Testing::keyLine(word));
      const auto words = noteOf(*condition).words;
      EXPECT_EQ(!bench.holds(*condition, Testing::kKeyRow),
                std::ranges::find(words, word) != words.end())
          << condition->name << ": " << word;
    }
  }
}

TEST(KeyNotes, NameTheWordsThatRowsRequire) {
  for (const OutputRow& row : allRows()) {
    for (const KeyReference& key : keyReference()) {
      if (row.format == &kIsRequired && nameOf(row.source) == nameOf(key.name)) {
        EXPECT_NE(std::ranges::find(key.words, row.when.text), key.words.end()) << row.when.text;
      }
    }
  }
}

// Keys that are read outside of the rows

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t begin = text.find(from);
  return begin == text.npos ? text : text.replace(begin, from.size(), to);
}

std::string shown(const RunFacts& facts) {
  return std::to_string(facts.userId) + "|" + facts.user + "|" + facts.home + "|" + facts.instance +
         "|" + std::to_string(facts.baseUid);
}

std::string factsOf(const std::string& configuration) {
  const TemporaryDirectory directory;
  directory.write("x.conf", configuration);
  RunFacts facts;
  EXPECT_EQ(resolveGeneratedUser({directory.path()}, facts), GeneratedUser::Found);
  return shown(facts);
}

constexpr const char* kFacts =
    "[GeneratedConfig]\nUserId=0\nUser=u\nHome=h\nInstance=i\nBaseUid=1\n"
    "[Config]\nAppIdManglingType=None\nLanguageOverride=fi_FI\n";

TEST(StoredKeys, OfFactsDecideThem) {
  for (const std::string_view key : GeneratedGroup::kFacts) {
    const std::string name = "\n" + std::string(key) + "=";
    EXPECT_NE(factsOf(kFacts), factsOf(replaced(kFacts, name, name + "7"))) << key;
  }
}

std::string outputOf(std::string_view output, const std::string& configuration) {
  const TemporaryDirectory directory;
  directory.write("c/x.conf", configuration);
  const auto generate = output == kLxcOutput ? generateLxc : generateProperties;
  EXPECT_EQ(generate(directory.path("out"), {directory.path("c")}, 0, "", 0), 0);
  return directory.read("out");
}

TEST(StoredKeys, WithALineAreWrittenToTheirOutputAlone) {
  for (const StoredKey& stored : storedKeys()) {
    if (stored.line.empty()) {
      continue;
    }
    const std::string text =
        replaced(kFacts, "UserId", std::string(stored.name.key) + "=an element\nUserId");
    for (const std::string_view output : {kLxcOutput, kPropertyOutput}) {
      EXPECT_EQ(outputOf(output, text).find("\nan element\n") != std::string::npos,
                output == stored.output)
          << stored.name.key;
    }
  }
}

// Every key that the sources name by literals is one that the reference knows. The sources of the
// reference itself are left out.
TEST(Reference, KnowsEveryKeyThatASourceNames) {
  Names known;
  for (const ConfigKey& name : readKeys()) {
    known.insert("{\"" + std::string(name.group) + "\", \"" + std::string(name.key) + "\"}");
    known.insert("GeneratedGroup::k" + std::string(name.key));
  }
  known.insert({"GeneratedGroup::kName", "GeneratedGroup::kFacts"});
  const std::regex key(R"RE(\{"[A-Z]\w*", "[A-Z]\w*"\}|GeneratedGroup::k\w+)RE");
  std::size_t found = 0;
  for (const auto& file : std::filesystem::recursive_directory_iterator(SOURCE_DIRECTORY)) {
    if (!file.is_regular_file() || file.path().filename().string().starts_with("key_")) {
      continue;
    }
    std::ifstream stream(file.path());
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    for (std::sregex_iterator match(text.begin(), text.end(), key), end; match != end; ++match) {
      EXPECT_EQ(known.count(match->str()), 1U) << match->str() << " in " << file.path();
      ++found;
    }
  }
  EXPECT_GT(found, readKeys().size());
}

}  // namespace
}  // namespace Cradle::Generators
