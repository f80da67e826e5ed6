// SPDX-License-Identifier: MIT
#include "sections.h"

#include <algorithm>
#include <map>

#include "base/table.h"
#include "generators/key_descriptions.h"
#include "generators/key_reference.h"
#include "inspect_sections.h"
#include "logging/log_level.h"
#include "main/options.h"
#include "mdoc.h"
#include "template_evaluator.h"

namespace Cradle::Manual {
namespace {

using CommandLine::Option;
using CommandLine::options;
using Generators::GroupDescription;
using Generators::KeyReference;
using Generators::KeyUse;
using Generators::ValueKindRow;
using Parser::Logging::kLevels;
using Parser::Logging::LevelRow;

template <typename Rows, typename Row>
std::vector<std::string_view> namesOf(const Rows& rows, std::string_view Row::*name) {
  std::vector<std::string_view> names;
  for (const Row& row : rows) {
    names.push_back(row.*name);
  }
  return names;
}

std::vector<std::string_view> optionNames() {
  return namesOf(options(), &Option::name);
}

std::vector<std::string_view> formatNames() {
  return namesOf(Parser::templateFormats(), &Parser::TemplateFormat::name);
}

// A sentence, even where the usage text leaves its end away.
std::string sentence(const Option& option) {
  const std::string help = std::string(option.help) + std::string(option.helpDefault);
  return help.ends_with('.') ? help : help + ".";
}

std::string optionHead(std::string_view name, std::string_view /*rest*/) {
  const Option& option = *findRow(options(), &Option::name, name);
  std::string_view placeholder = option.placeholder;
  if (placeholder.starts_with('<')) {
    placeholder = placeholder.substr(1, placeholder.size() - 2);
  }
  return ".It Fl " + argument(name.substr(1)) + " Ar " + argument(placeholder) + "\n" +
         prose(sentence(option));
}

std::string formatHead(std::string_view name, std::string_view rest) {
  return ".It Li " + argument("${" + std::string(name) + ":" + std::string(rest) + "}") + "\n";
}

std::string levels() {
  std::string text = ".Bl -column -compact \"critical\" \"number\"\n";
  for (const LevelRow& row : kLevels) {
    text += ".It Cm " + std::string(row.inputName) + " Ta " +
            std::to_string(static_cast<int>(row.level)) + "\n";
  }
  return text + ".El\n";
}

// The types by the names that keys have them under, which may be several for a kind.
std::map<Generators::ValueKind, std::vector<std::string_view>> typeNames() {
  std::map<Generators::ValueKind, std::vector<std::string_view>> names;
  for (const KeyReference& key : Generators::keyReference()) {
    std::vector<std::string_view>& ofKind = names[key.kind];
    if (std::find(ofKind.begin(), ofKind.end(), key.type) == ofKind.end()) {
      ofKind.push_back(key.type);
    }
  }
  return names;
}

std::string types() {
  std::string text = ".Bl -tag -width Ds\n";
  for (const auto& [kind, names] : typeNames()) {
    std::string title;
    for (const std::string_view name : names) {
      title += (title.empty() ? "" : ", ") + std::string(name);
    }
    const ValueKindRow& row = Generators::valueKindRow(kind);
    text += ".It " + argument(title) + "\n" + prose(row.description);
  }
  return text + ".El\n";
}

std::string useItem(const KeyUse& use) {
  std::string text = ".It\n" + std::string(use.output) + ":\n";
  if (!use.line.empty()) {
    text += ".Li " + argument(use.line) + "\n";
  }
  std::string note = use.value;
  if (!use.condition.empty()) {
    note += (note.empty() ? "" : "; ") + use.condition;
  }
  if (use.line.empty()) {
    return text + prose(note);
  }
  return note.empty() ? text : text + prose("(" + note + ")");
}

std::string wordsOf(const KeyReference& key) {
  if (key.kind != Generators::ValueKind::Word) {
    return "";
  }
  std::string text = "One of\n";
  for (std::size_t i = 0; i < key.words.size(); ++i) {
    const bool isLast = i + 1 == key.words.size();
    text += ".Cm " + std::string(key.words[i]) + (isLast ? " .\n" : " ,\n");
  }
  return text;
}

std::string keyItem(const KeyReference& key) {
  std::string text = ".It Sy " + argument(key.name.key) + " Pq " + argument(key.type) + "\n";
  text += prose(key.meaning) + wordsOf(key);
  text += prose("Without the key: " + key.absent + ".");
  text += ".Bl -dash -compact\n";
  for (const KeyUse& use : key.uses) {
    text += useItem(use);
  }
  return text + ".El\n";
}

std::string keys() {
  const std::vector<KeyReference> reference = Generators::keyReference();
  std::string text;
  for (const GroupDescription& group : Generators::groupDescriptions()) {
    text += ".Ss " + argument("Group " + std::string(group.group)) + "\n" + prose(group.meaning);
    text += ".Bl -tag -width Ds\n";
    for (const KeyReference& key : reference) {
      text += key.name.group == group.group ? keyItem(key) : "";
    }
    text += ".El\n";
  }
  return text;
}

}  // namespace

const std::vector<ItemKind>& itemKinds() {
  static const std::vector<ItemKind> kKinds{
      {"option", optionNames, optionHead},
      {"format", formatNames, formatHead},
      {"command", commandNames, commandHead},
      {"inspect-option", inspectOptionNames, inspectOptionHead},
  };
  return kKinds;
}

const std::vector<Section>& sections() {
  static const std::vector<Section> kSections{
      {"levels", levels},
      {"types", types},
      {"keys", keys},
      {"findings", findings},
  };
  return kSections;
}

std::string tables() {
  std::string text;
  for (const ItemKind& kind : itemKinds()) {
    for (const std::string_view row : kind.rows()) {
      text.append(kind.name).append(" ").append(row).append("\n");
    }
  }
  for (const LevelRow& row : kLevels) {
    text.append("level ").append(row.inputName).append("\n");
  }
  for (const KeyReference& key : Generators::keyReference()) {
    text.append("key ").append(key.name.group).append("/").append(key.name.key).append(" ");
    text.append(key.type).append("\n");
    for (const KeyUse& use : key.uses) {
      text.append("line ").append(use.output).append(" ").append(use.line).append("\n");
    }
  }
  return text;
}

}  // namespace Cradle::Manual
