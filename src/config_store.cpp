#include "config_store.h"

#include <algorithm>
#include <utility>

namespace Cradle::Parser {
namespace {

// The entry of `key`, made on first use.
template <typename Table>
typename Table::mapped_type& entryOf(Table& table, std::string_view key) {
  const auto found = table.find(key);
  return found != table.end() ? found->second : table[std::string(key)];
}

template <typename Table>
std::vector<const typename Table::value_type*> inOrder(const Table& table) {
  std::vector<const typename Table::value_type*> entries;
  entries.reserve(table.size());
  for (const auto& entry : table) {
    entries.push_back(&entry);
  }
  std::sort(entries.begin(), entries.end(),
            [](const auto* left, const auto* right) { return left->first < right->first; });
  return entries;
}

}  // namespace

ConfigStore::Values& ConfigStore::valuesOf(std::string_view group, std::string_view key) {
  return entryOf(entryOf(groups_, group), key);
}

void ConfigStore::append(std::string_view group, std::string_view key, ConfigValue value) {
  valuesOf(group, key).push_back(std::move(value));
}

void ConfigStore::replace(std::string_view group, std::string_view key, ConfigValue value) {
  Values& values = valuesOf(group, key);
  values.clear();
  values.push_back(std::move(value));
}

void ConfigStore::remove(std::string_view group, std::string_view key) {
  const auto keys = groups_.find(group);
  if (keys == groups_.end()) {
    return;
  }
  const auto values = keys->second.find(key);
  if (values != keys->second.end()) {
    keys->second.erase(values);
  }
}

const ConfigStore::Values* ConfigStore::find(std::string_view group, std::string_view key) const {
  const auto keys = groups_.find(group);
  if (keys == groups_.end()) {
    return nullptr;
  }
  const auto values = keys->second.find(key);
  return values == keys->second.end() ? nullptr : &values->second;
}

void ConfigStore::visitInOrder(const Visitor& visit) const {
  for (const auto* const group : inOrder(groups_)) {
    for (const auto* const key : inOrder(group->second)) {
      visit(group->first, key->first, key->second);
    }
  }
}

}  // namespace Cradle::Parser
