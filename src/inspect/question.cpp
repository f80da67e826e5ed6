// SPDX-License-Identifier: MIT
#include "inspect/question.h"

#include <algorithm>
#include <map>
#include <vector>

#include "generators/key_descriptions.h"
#include "inspect/key_table.h"
#include "inspect/nearest_name.h"

namespace Cradle::Inspect {
namespace {

using Names = std::vector<std::string_view>;

Names groupNames() {
  Names names;
  for (const Generators::GroupDescription& row : Generators::groupDescriptions()) {
    names.push_back(row.group);
  }
  return names;
}

// By group; they are asked for with every unknown key.
const Names& keyNames(std::string_view group) {
  static const std::map<std::string_view, Names> groups = [] {
    std::map<std::string_view, Names> all;
    for (const Generators::KeyReference& key : knownKeys()) {
      all[key.name.group].push_back(key.name.key);
    }
    return all;
  }();
  static const Names none;
  const auto known = groups.find(group);
  return known == groups.end() ? none : known->second;
}

// "GROUP/KEY" of the first key of that name, or "".
std::string keyOfAnyGroup(std::string_view key) {
  for (const Generators::KeyReference& known : knownKeys()) {
    if (known.name.key == key) {
      return std::string(known.name.group) + "/" + std::string(key);
    }
  }
  return "";
}

std::string ask(std::string_view name, std::string_view remark = "") {
  return name.empty() ? ""
                      : " (" + std::string(remark) + "did you mean " + std::string(name) + "?)";
}

}  // namespace

std::string question(std::string_view name, std::span<const std::string_view> candidates) {
  const std::string_view nearest = nearestName(name, candidates);
  return nearest == name ? "" : ask(nearest);
}

std::string questionForGroup(std::string_view group) {
  return question(group, groupNames());
}

std::string questionForKey(std::string_view group, std::string_view key) {
  const std::string other = keyOfAnyGroup(key);
  if (!other.empty()) {
    return ask(other);
  }
  return ask(nearestName(key, keyNames(group)),
             key.ends_with(' ') ? "its name ends with a blank; " : "");
}

bool isKnownGroup(std::string_view group) {
  const Names names = groupNames();
  return std::find(names.begin(), names.end(), group) != names.end();
}

}  // namespace Cradle::Inspect
