// SPDX-License-Identifier: MIT
#include "base/name_table.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory_resource>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <gtest/gtest.h>

namespace Cradle {
namespace {

class NameTableTest : public ::testing::Test {
 protected:
  void set(std::string_view name, int number) { table_.findOrMake(name, memory_).record = number; }

  // The record of a name, -1 for none.
  int get(std::string_view name) const {
    const int* const record = table_.find(name);
    return record == nullptr ? -1 : *record;
  }

  std::pmr::monotonic_buffer_resource memory_;
  NameTable<int> table_;
};

TEST_F(NameTableTest, BeginsEmpty) {
  EXPECT_EQ(get(""), -1);
  EXPECT_EQ(get("a"), -1);
  EXPECT_TRUE(table_.entries().empty());
}

TEST_F(NameTableTest, MakesARecordOnFirstUse) {
  EXPECT_EQ(table_.findOrMake("a", memory_).record, 0);
  EXPECT_EQ(get("a"), 0);
  EXPECT_EQ(get("b"), -1);
  set("a", 7);
  EXPECT_EQ(table_.findOrMake("a", memory_).record, 7);
  EXPECT_EQ(table_.entries().size(), 1U);
}

TEST_F(NameTableTest, MakesAnEmptyRecordInMemoryThatWasUsed) {
  const auto make = [&](int number) {
    NameTable<int> table;
    int& record = table.findOrMake("a", memory_).record;
    return std::exchange(record, number);
  };
  EXPECT_EQ(make(7), 0);
  EXPECT_EQ(make(7), 0);
}

TEST_F(NameTableTest, TellsAllNamesApart) {
  const std::string_view names[] = {"", "a", "A", "a ", std::string_view("a\0", 2), "aa"};
  for (int i = 0; i < 6; ++i) {
    set(names[i], i);
  }
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(get(names[i]), i) << names[i];
  }
}

// Two names whose hashes agree in all bits that a table keeps.
std::pair<std::string, std::string> namesOfOneHash() {
  std::unordered_map<std::uint32_t, std::string> names;
  for (int i = 0;; ++i) {
    const std::string name = std::to_string(i);
    const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
    const auto [earlier, isNew] = names.emplace(hash, name);
    if (!isNew) {
      return {earlier->second, name};
    }
  }
}

TEST_F(NameTableTest, TellsNamesOfOneHashApart) {
  const auto [first, second] = namesOfOneHash();
  set(first, 1);
  EXPECT_EQ(get(second), -1);
  set(second, 2);
  EXPECT_EQ(get(first), 1);
  EXPECT_EQ(get(second), 2);
}

TEST_F(NameTableTest, EndsTheSearchForAMissingNameHoweverFullItIs) {
  for (int i = 0; i < 100; ++i) {
    set(std::to_string(i), i);
    EXPECT_EQ(get("missing"), -1) << i;
  }
}

TEST_F(NameTableTest, ChangesARecordThatItFinds) {
  set("a", 1);
  *table_.find("a") = 2;
  EXPECT_EQ(get("a"), 2);
  EXPECT_EQ(table_.find("b"), nullptr);
}

TEST_F(NameTableTest, KeepsNamesAndRecordsWhereTheyAre) {
  auto& first = table_.findOrMake(std::string("first"), memory_);
  const char* const name = first.name.data();
  for (int i = 0; i < 10'000; ++i) {
    set(std::to_string(i), i);
  }
  EXPECT_EQ(&table_.findOrMake("first", memory_), &first);
  EXPECT_EQ(first.name.data(), name);
  EXPECT_EQ(first.name, "first");
}

TEST_F(NameTableTest, ListsItsEntriesInTheOrderOfTheirMaking) {
  for (const char* const name : {"z", "a", "m", "a", "z"}) {
    set(name, 0);
  }
  std::string names;
  for (const auto& entry : table_.entries()) {
    names += entry.name;
  }
  EXPECT_EQ(names, "zam");
}

TEST_F(NameTableTest, AgreesWithATreeOnRandomNames) {
  std::mt19937 random(20);  // a failure has to happen again
  std::map<std::string, int> tree;
  for (int i = 0; i < 50'000; ++i) {
    const std::string name = std::to_string(random() % 20'000);
    tree[name] = i;
    set(name, i);
  }
  EXPECT_EQ(table_.entries().size(), tree.size());
  for (const auto& [name, number] : tree) {
    ASSERT_EQ(get(name), number) << name;
  }
  for (int i = 20'000; i < 30'000; ++i) {
    ASSERT_EQ(get(std::to_string(i)), -1) << i;
  }
}

}  // namespace
}  // namespace Cradle
