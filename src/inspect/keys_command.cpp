// SPDX-License-Identifier: MIT
// "keys": the reference of the keys that the outputs read.

#include <utility>

#include "generators/key_descriptions.h"
#include "generators/value_kind.h"
#include "inspect/command_functions.h"
#include "inspect/json.h"
#include "inspect/key_table.h"
#include "inspect/page.h"
#include "inspect/question.h"

namespace Cradle::Inspect {
namespace {

using Generators::KeyReference;
using Keys = std::vector<const KeyReference*>;

Keys keysToShow(std::span<const std::string> operands) {
  const KeyPattern pattern(operands.empty() ? "" : operands.front());
  Keys keys;
  for (const KeyReference& key : knownKeys()) {
    if (operands.empty() || pattern.matches(key.name.group, key.name.key)) {
      keys.push_back(&key);
    }
  }
  return keys;
}

std::string nameOf(const KeyReference& key) {
  return std::string(key.name.group) + "/" + std::string(key.name.key);
}

JsonObject toJson(const KeyReference& key) {
  const auto useJson = [](const Generators::KeyUse& use) {
    return JsonObject()
        .with("output", use.output)
        .with("line", use.line)
        .with("value", use.value)
        .with("condition", use.condition);
  };
  return JsonObject()
      .with("group", key.name.group)
      .with("key", key.name.key)
      .with("meaning", key.meaning)
      .with("type", key.type)
      .with("list", !takesOne(key))
      .with("words", jsonList(key.words))
      .with("absent", key.absent)
      .with("uses", jsonList(key.uses, useJson));
}

std::string jsonOf(const Keys& keys) {
  return dump(
      JsonObject().with("keys", jsonList(keys, [](const auto* key) { return toJson(*key); })));
}

void writeKey(const KeyReference& key, Page& page) {
  page.line(nameOf(key), Tone::Strong).line("  " + std::string(key.meaning));
  std::vector<Page::Row> facts{{{"Type"}, {std::string(key.type)}}};
  if (!key.words.empty()) {
    facts.push_back({{"Words"}, {wordsOf(key, ", ")}});
  }
  facts.push_back({{"Values"}, {std::string(Generators::valueKindRow(key.kind).description)}});
  facts.push_back({{"Absent"}, {key.absent}});
  for (const Generators::KeyUse& use : key.uses) {
    facts.push_back({{"In " + std::string(use.output)}, {use.line.empty() ? "-" : use.line}});
    for (const std::string& more : {use.value, use.condition}) {
      if (!more.empty()) {
        facts.push_back({{""}, {more, Tone::Faint}});
      }
    }
  }
  page.table(facts, 2);
}

void writeGroup(const Generators::GroupDescription& group, const Keys& keys, Page& page) {
  std::vector<Page::Row> rows;
  for (const KeyReference* const key : keys) {
    if (key->name.group == group.group) {
      rows.push_back({{std::string(key->name.key)}, {std::string(key->type)}, {key->absent}});
    }
  }
  if (!rows.empty()) {
    if (!page.text().empty()) {
      page.endLine();
    }
    page.line("[" + std::string(group.group) + "]", Tone::Strong)
        .line(group.meaning, Tone::Faint)
        .table(rows, 2);
  }
}

std::string absenceText(const std::string& name) {
  const KeyPattern pattern(name);
  return printable(name) + ": no such key or group is known" +
         (pattern.key.empty() ? questionForGroup(pattern.group)
                              : questionForKey(pattern.group, pattern.key)) +
         "\n";
}

std::string textOf(const Keys& keys, bool coloured) {
  Page page(coloured);
  if (keys.size() == 1) {
    writeKey(*keys.front(), page);
    return page.text();
  }
  for (const Generators::GroupDescription& group : Generators::groupDescriptions()) {
    writeGroup(group, keys, page);
  }
  return page.text();
}

}  // namespace

Answer runKeys(const Options& options, std::span<const std::string> operands) {
  const Keys keys = keysToShow(operands);
  if (options.format == OutputFormat::Json) {
    return {jsonOf(keys), keys.empty() ? kFindings : kFine};
  }
  if (keys.empty()) {
    return {"", kFindings, absenceText(operands.front())};
  }
  return {textOf(keys, wantsColour(options.colour))};
}

}  // namespace Cradle::Inspect
