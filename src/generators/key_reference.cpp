// SPDX-License-Identifier: MIT
#include "generators/key_reference.h"

#include <algorithm>
#include <array>

#include "generators/key_descriptions.h"
#include "generators/key_notes.h"
#include "generators/lxc_rows.h"
#include "generators/property_formats.h"
#include "generators/property_rows.h"
#include "generators/row_formats.h"

namespace Cradle::Generators {
namespace {

constexpr std::string_view kValue = "VALUE";
constexpr std::string_view kTrue = "true";
constexpr std::string_view kFalse = "false";

struct OutputTable {
  std::string_view output;
  std::string_view separator;
  std::span<const OutputRow> (*rows)();
};

constexpr std::array<OutputTable, 2> kTables{{
    {kLxcOutput, " = ", lxcRows},
    {kPropertyOutput, "=", propertyRows},
}};

// Calls `visit` with every row of every output and its table.
template <typename Visit>
void forEachRow(const Visit& visit) {
  for (const OutputTable& table : kTables) {
    for (const OutputRow& row : table.rows()) {
      visit(table, row);
    }
  }
}

bool same(const ConfigKey& left, const ConfigKey& right) {
  return left.group == right.group && left.key == right.key;
}

std::string nameOf(const ConfigKey& name) {
  return std::string(name.group) + "/" + std::string(name.key);
}

// The further key `name` that the row's format or condition reads, or null.
const FurtherKey* furtherKey(const OutputRow& row, const ConfigKey& name) {
  const auto further = furtherKeys();
  const auto found = std::ranges::find_if(further, [&](const FurtherKey& key) {
    const bool isOfRow =
        key.format != nullptr ? key.format == row.format : key.condition == row.condition;
    return isOfRow && same(key.name, name);
  });
  return found == further.end() ? nullptr : &*found;
}

// Whether the line holds what is made of the key.
bool makesValue(const OutputRow& row, const ConfigKey& name) {
  if (row.key.empty() && row.lines == nullptr) {
    return false;
  }
  const FurtherKey* const further = furtherKey(row, name);
  return same(row.source, name) || (further != nullptr && further->format != nullptr);
}

// What stands in the row's line, seen from the key.
std::string textOf(const OutputRow& row, const ConfigKey& name) {
  if (row.format == &kFixed) {
    return std::string(row.text);
  }
  if (row.lines != nullptr) {
    return std::string(noteOf(row.lines).text);
  }
  if (makesValue(row, name)) {
    return std::string(kValue);
  }
  return "<" +
         (row.source.key.empty() ? std::string(noteOf(*row.format).value) : nameOf(row.source)) +
         ">";
}

std::string lineOf(const OutputTable& table, const OutputRow& row, const ConfigKey& name) {
  if (row.key.empty() && row.lines == nullptr) {
    return "# " + std::string(row.comment);
  }
  const std::string head =
      row.key.empty() ? "" : std::string(row.key) + std::string(table.separator);
  return head + std::string(row.prefix) + textOf(row, name) + std::string(row.suffix);
}

std::string valueOf(const OutputRow& row, const ConfigKey& name) {
  if (!makesValue(row, name)) {
    return "";
  }
  if (row.format == &kIsRequired) {
    return "1 for " + std::string(row.when.text) + ", otherwise 0";
  }
  return std::string(row.lines == nullptr ? noteOf(*row.format).value : noteOf(row.lines).value);
}

std::string conditionOf(const OutputRow& row, const ConfigKey& name) {
  if (const FurtherKey* const further = furtherKey(row, name); further != nullptr) {
    return std::string(further->rule);
  }
  if (row.condition == nullptr) {
    return "";
  }
  std::string condition(row.condition->name);
  if (row.condition != &kWhen && row.condition != &kUnless) {
    return condition;
  }
  const std::string subject =
      same(row.when.source, name) ? " " : " " + nameOf(row.when.source) + " is ";
  return condition.append(subject).append(row.when.text);
}

bool reads(const OutputRow& row, const ConfigKey& name) {
  return same(row.source, name) || same(row.when.source, name) || furtherKey(row, name) != nullptr;
}

std::vector<KeyUse> usesOf(const ConfigKey& name) {
  std::vector<KeyUse> uses;
  forEachRow([&](const OutputTable& table, const OutputRow& row) {
    if (reads(row, name)) {
      uses.push_back(
          {table.output, lineOf(table, row, name), valueOf(row, name), conditionOf(row, name)});
    }
  });
  for (const StoredKey& stored : storedKeys()) {
    if (same(stored.name, name)) {
      uses.push_back({stored.output, std::string(stored.line), std::string(stored.value),
                      std::string(stored.rule)});
    }
  }
  return uses;
}

// The format of the key's own row; of one that is no row's source, that of its further or stored
// reading. Null for a key that only decides whether lines are written.
const Format* formatOf(const ConfigKey& name) {
  const Format* format = nullptr;
  const auto take = [&](const Format* candidate, const ConfigKey& source) {
    if (format == nullptr && same(source, name)) {
      format = candidate;
    }
  };
  forEachRow(
      [&](const OutputTable& /*table*/, const OutputRow& row) { take(row.format, row.source); });
  for (const FurtherKey& key : furtherKeys()) {
    take(key.type, key.name);
  }
  for (const StoredKey& key : storedKeys()) {
    take(key.type, key.name);
  }
  return format;
}

// The words that rows compare the key with.
std::vector<std::string_view> wordsOf(const ConfigKey& name) {
  std::vector<std::string_view> words;
  forEachRow([&](const OutputTable& /*table*/, const OutputRow& row) {
    if (same(row.when.source, name)) {
      words.push_back(row.when.text);
    }
    if (!same(row.source, name)) {
      return;
    }
    const auto add = [&](std::span<const std::string_view> more) {
      words.insert(words.end(), more.begin(), more.end());
    };
    if (row.format != nullptr) {
      add(noteOf(*row.format).words);
    }
    if (row.condition != nullptr) {
      add(noteOf(*row.condition).words);
    }
  });
  std::ranges::sort(words);
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

// Whether every line that is made of the key is left out without it.
bool isOnlyWrittenWhenThere(const ConfigKey& name) {
  bool written = false;
  bool always = false;
  forEachRow([&](const OutputTable& /*table*/, const OutputRow& row) {
    if (same(row.source, name)) {
      const bool needsIt = row.condition != nullptr && noteOf(*row.condition).needsSource;
      written = true;
      if (!needsIt) {
        always = true;
      }
    }
  });
  return written && !always;
}

// The text that a row has for an absent key.
std::string_view defaultTextOf(const ConfigKey& name) {
  std::string_view text;
  forEachRow([&](const OutputTable& /*table*/, const OutputRow& row) {
    if (same(row.source, name) && row.format == &kText) {
      text = row.text;
    }
  });
  return text;
}

std::string_view absentValue(ValueKind kind) {
  switch (kind) {
    case ValueKind::Boolean:
      return kFalse;
    case ValueKind::Integer:
    case ValueKind::LongInteger:
    case ValueKind::Real:
      return "0";
    default:
      return valueKindRow(kind).isList ? "none" : "empty";
  }
}

std::string_view absentOf(const KeyDescription& description, ValueKind kind) {
  if (!description.absent.empty()) {
    return description.absent;
  }
  if (isOnlyWrittenWhenThere(description.name)) {
    return "not written";
  }
  const std::string_view text = defaultTextOf(description.name);
  return text.empty() ? absentValue(kind) : text;
}

KeyReference referenceOf(const KeyDescription& description) {
  const ConfigKey& name = description.name;
  const Format* const format = formatOf(name);
  // What only decides about lines is compared with "true".
  const Format& type = format == nullptr ? kBool : *format;
  const ValueKind kind = noteOf(type).kind;
  return {.name = name,
          .meaning = description.meaning,
          .type = type.name,
          .kind = kind,
          .words = kind == ValueKind::Boolean ? std::vector{kFalse, kTrue} : wordsOf(name),
          .absent = std::string(absentOf(description, kind)),
          .uses = usesOf(name)};
}

}  // namespace

std::vector<KeyReference> keyReference() {
  std::vector<KeyReference> keys;
  for (const KeyDescription& description : keyDescriptions()) {
    keys.push_back(referenceOf(description));
  }
  return keys;
}

std::vector<ConfigKey> readKeys() {
  std::vector<ConfigKey> keys;
  const auto add = [&](const ConfigKey& name) {
    const bool known = std::ranges::any_of(keys, [&](const auto& key) { return same(key, name); });
    if (!name.key.empty() && !known) {
      keys.push_back(name);
    }
  };
  forEachRow([&](const OutputTable& /*table*/, const OutputRow& row) {
    add(row.source);
    add(row.when.source);
  });
  for (const FurtherKey& key : furtherKeys()) {
    add(key.name);
  }
  for (const StoredKey& key : storedKeys()) {
    add(key.name);
  }
  return keys;
}

bool accepts(const KeyReference& key, const std::string& text) {
  const bool isWord = key.words.empty() || std::ranges::find(key.words, text) != key.words.end();
  return isWord && valueKindRow(key.kind).accepts(text);
}

}  // namespace Cradle::Generators
