// SPDX-License-Identifier: MIT
// What every row of an output table must look like.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "generators/row_formats.h"

namespace Cradle::Testing {

inline std::string nameOf(const Generators::ConfigKey& source) {
  return std::string(source.group) + "/" + std::string(source.key);
}

// A row in a message: its comment, key, source and texts.
inline std::string nameOf(const Generators::OutputRow& row) {
  return "row '" + std::string(row.comment) + "' " + std::string(row.key) + " " +
         nameOf(row.source) + " '" + std::string(row.text) + std::string(row.suffix) + "'";
}

// Whether a group or key is in upper camel case.
inline bool isCamelCase(std::string_view name) {
  const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return !name.empty() && name.front() >= 'A' && name.front() <= 'Z' &&
         std::all_of(name.begin(), name.end(),
                     [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
}

inline bool isNamedWell(const Generators::ConfigKey& source) {
  return (source.group.empty() && source.key.empty()) ||
         (isCamelCase(source.group) && isCamelCase(source.key));
}

// Whether the row has the source, or the other value, that its condition looks at.
inline bool hasWhatItsConditionNeeds(const Generators::OutputRow& row) {
  if (row.condition == &Generators::kWhen || row.condition == &Generators::kUnless) {
    return !row.when.source.key.empty() && !row.when.text.empty();
  }
  return row.condition == nullptr || !row.source.key.empty();
}

// The rules that the row breaks, one line each.
inline std::string brokenRules(const Generators::OutputRow& row) {
  std::string broken;
  const auto rule = [&](bool kept, const char* text) {
    broken += kept ? "" : std::string(text) + "\n";
  };
  rule(!row.comment.empty() || !row.key.empty() || row.lines != nullptr, "writes something");
  rule(row.key.empty() || row.format != nullptr || row.lines != nullptr,
       "has a format or lines for its key");
  rule(row.format == nullptr || row.lines != nullptr || row.format->text != nullptr,
       "has a format that makes text, or lines");
  rule(row.lines == nullptr || row.source.key.empty() || row.format != nullptr,
       "names the type of its source");
  rule(row.format != &Generators::kFixed || !row.text.empty(), "has its fixed text");
  rule(isNamedWell(row.source) && isNamedWell(row.when.source), "names its values in camel case");
  rule(hasWhatItsConditionNeeds(row), "has what its condition looks at");
  return broken;
}

}  // namespace Cradle::Testing
