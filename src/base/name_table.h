// SPDX-License-Identifier: MIT
// A hash table from names to records, for a handful of them as well as for millions.
//
// Records stay where they are once made, in the order of their making, and are never taken out. The
// hashes of the names stand beside each other, so that a look-up seldom touches a name other than
// the one it finds, and growing touches none. Names are kept in memory that the owner provides and
// that lives as long as the table.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace Cradle {

template <typename Record>
class NameTable {
 public:
  struct Entry {
    explicit Entry(std::string_view entryName) : name(entryName) {}

    std::string_view name;
    Record record{};
  };

  // The record of that name, or null.
  const Record* find(std::string_view name) const {
    const std::uint32_t position = positionOf(name);
    return position == kNone ? nullptr : &entries_[position - 1].record;
  }
  Record* find(std::string_view name) {
    const std::uint32_t position = positionOf(name);
    return position == kNone ? nullptr : &entries_[position - 1].record;
  }

  // The entry of that name, made on first use with a copy of the name in `memory`.
  Entry& findOrMake(std::string_view name, std::pmr::memory_resource& memory) {
    if (room_ == 0) {
      grow();
    }
    const std::uint32_t hash = hashOf(name);
    Slot& slot = slots_[slotOf(name, hash)];
    if (slot.position != kNone) {
      return entries_[slot.position - 1];
    }
    Entry& entry = entries_.emplace_back(copyOf(name, memory));
    slot = {hash, static_cast<std::uint32_t>(entries_.size())};
    --room_;
    return entry;
  }

  const std::deque<Entry>& entries() const { return entries_; }

 private:
  static constexpr std::uint32_t kNone = 0;
  static constexpr std::size_t kFirstSize = 16;  // a power of two, like every size

  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t position = kNone;  // of the entry, counted from 1
  };

  static std::uint32_t hashOf(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
  }

  static std::string_view copyOf(std::string_view name, std::pmr::memory_resource& memory) {
    auto* const copy = static_cast<char*>(memory.allocate(name.size(), alignof(char)));
    return {copy, name.copy(copy, name.size())};
  }

  std::uint32_t positionOf(std::string_view name) const {
    return slots_.empty() ? kNone : slots_[slotOf(name, hashOf(name))].position;
  }

  // Where the name is, or the free slot where it would be.
  std::size_t slotOf(std::string_view name, std::uint32_t hash) const {
    return probe(hash, [&](const Slot& slot) {
      return slot.hash == hash && entries_[slot.position - 1].name == name;
    });
  }

  // The first slot from the place of `hash` on that is free or that `matches`.
  template <typename Matches>
  std::size_t probe(std::uint32_t hash, const Matches& matches) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t index = hash & mask;
    while (slots_[index].position != kNone && !matches(slots_[index])) {
      index = (index + 1) & mask;
    }
    return index;
  }

  void grow() {
    std::vector<Slot> old(std::max(kFirstSize, 2 * slots_.size()));
    old.swap(slots_);
    room_ = slots_.size() * 7 / 8 - entries_.size();
    for (const Slot& slot : old) {
      if (slot.position != kNone) {
        slots_[probe(slot.hash, [](const Slot&) { return false; })] = slot;
      }
    }
  }

  std::vector<Slot> slots_;  // at most 7/8 are taken
  std::size_t room_ = 0;     // how many more may be before the table grows
  std::deque<Entry> entries_;
};

}  // namespace Cradle
