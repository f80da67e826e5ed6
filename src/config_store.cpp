// SPDX-License-Identifier: MIT
#include "config_store.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Cradle::Parser {
namespace {

template <typename Record>
std::vector<const typename NameTable<Record>::Entry*> inOrder(const NameTable<Record>& table) {
  std::vector<const typename NameTable<Record>::Entry*> entries;
  entries.reserve(table.entries().size());
  for (const auto& entry : table.entries()) {
    entries.push_back(&entry);
  }
  std::sort(entries.begin(), entries.end(),
            [](const auto* left, const auto* right) { return left->name < right->name; });
  return entries;
}

}  // namespace

KeyValues& ConfigStore::valuesOf(std::string_view group, std::string_view key) {
  // Files give the keys of a group one after the other.
  if (lastGroup_ == nullptr || lastGroup_->name != group) {
    lastGroup_ = &groups_.findOrMake(group, names_);
  }
  return lastGroup_->record.findOrMake(key, names_).record;
}

void ConfigStore::append(std::string_view group, std::string_view key, ConfigValue&& value) {
  valuesOf(group, key).append(std::move(value));
}

void ConfigStore::replace(std::string_view group, std::string_view key, ConfigValue&& value) {
  valuesOf(group, key).replace(std::move(value));
}

void ConfigStore::remove(std::string_view group, std::string_view key) {
  Keys* const keys = groups_.find(group);
  KeyValues* const values = keys == nullptr ? nullptr : keys->find(key);
  if (values != nullptr) {
    values->clear();
  }
}

std::span<const ConfigValue> ConfigStore::find(std::string_view group, std::string_view key) const {
  const Keys* const keys = groups_.find(group);
  const KeyValues* const values = keys == nullptr ? nullptr : keys->find(key);
  return values == nullptr ? std::span<const ConfigValue>() : values->all();
}

void ConfigStore::visitInOrder(const Visitor& visit) const {
  for (const auto* const group : inOrder(groups_)) {
    for (const auto* const key : inOrder(group->record)) {
      if (!key->record.empty()) {
        visit(group->name, key->name, key->record.all());
      }
    }
  }
}

}  // namespace Cradle::Parser
