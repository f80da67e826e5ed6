// SPDX-License-Identifier: MIT
// Writes what the fuzzer starts from: DIRECTORY/TARGET.dict with words, DIRECTORY/TARGET/ with
// inputs. Both are made of the program's own tables and of the golden cases of the end-to-end
// tests.
//
// Usage: make-seeds DIRECTORY

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "common/file_tree.h"
#include "common/lines.h"
#include "generators/generated_group.h"
#include "generators/locale.h"
#include "generators/lxc_formats.h"
#include "generators/lxc_rows.h"
#include "generators/property_formats.h"
#include "generators/property_rows.h"
#include "generators/row_formats.h"
#include "logging/log_level.h"
#include "main/options.h"
#include "template_evaluator.h"

namespace Cradle::Fuzz {
namespace {

namespace fs = std::filesystem;
using Generators::ConfigKey;
using Generators::OutputRow;
using Texts = std::set<std::string>;

struct Start {
  Texts words;
  Texts inputs;
};
using Starts = std::map<std::string, Start>;

std::vector<OutputRow> allRows() {
  std::vector<OutputRow> rows;
  for (const std::span<const OutputRow> table :
       {Generators::lxcRows(), Generators::propertyRows()}) {
    rows.insert(rows.end(), table.begin(), table.end());
  }
  return rows;
}

void addKey(Texts& words, const ConfigKey& name) {
  if (!name.key.empty()) {
    words.insert("[" + std::string(name.group) + "]\n");
    words.insert(std::string(name.key) + "=");
  }
}

Texts templateWords() {
  Texts words{"${", "$$", "}"};
  for (const Parser::TemplateFormat& format : Parser::templateFormats()) {
    words.insert("${" + std::string(format.name) + ":");
  }
  return words;
}

Texts configurationWords() {
  Texts words = templateWords();
  for (const OutputRow& row : allRows()) {
    addKey(words, row.source);
    addKey(words, row.when.source);
    words.insert(std::string(row.when.text) + "\n");
    if (!row.source.key.empty()) {
      words.insert("${config:" + std::string(row.source.group) + "/" + std::string(row.source.key) +
                   "}");
    }
  }
  for (const std::string_view fact : Generators::GeneratedGroup::kFacts) {
    addKey(words, {Generators::GeneratedGroup::kName, fact});
  }
  addKey(words, Generators::kLanguageFilePath);
  return words;
}

// The numbers around the limits of the types that a text converts to.
Texts limits() {
  using Int = std::numeric_limits<std::int32_t>;
  using Long = std::numeric_limits<std::int64_t>;
  Texts texts;
  for (const std::int64_t number : {std::int64_t{Int::min()}, std::int64_t{Int::max()}}) {
    texts.merge(
        Texts{std::to_string(number - 1), std::to_string(number), std::to_string(number + 1)});
  }
  for (const std::uint64_t number :
       {Long::max() + std::uint64_t{0}, Long::max() + std::uint64_t{1}}) {
    texts.merge(Texts{std::to_string(number), std::to_string(number + 1),
                      "-" + std::to_string(number), "-" + std::to_string(number + 1)});
  }
  return texts;
}

void addOptions(Starts& starts) {
  Start& start = starts["command_line"];
  std::string all;
  for (const CommandLine::Option& option : CommandLine::options()) {
    start.words.insert("\n" + std::string(option.name) + "\n");
    for (const std::string_view word : split(option.placeholder, '|', EmptyParts::DropAll)) {
      start.words.insert("\n" + std::string(word) + "\n");
      start.inputs.insert(std::string(option.name) + "\n" + std::string(word) + "\noutput");
    }
    all += std::string(option.name) + "\n" + std::to_string(all.size()) + "\n";
  }
  start.inputs.insert(all + "--\noutput");
  for (const std::string& number : limits()) {
    start.words.insert("\n" + number + "\n");
  }
  for (const Parser::Logging::LevelRow& level : Parser::Logging::kLevels) {
    start.words.insert("\n" + std::string(level.inputName) + "\n");
  }
}

// Templates of every format, and the mount entries that the tables hold themselves.
void addRows(Starts& starts) {
  for (const Parser::TemplateFormat& format : Parser::templateFormats()) {
    const std::string name(format.name);
    starts["templates"].inputs.insert("a${" + name + ":x/y}b${" + name + ":-}c${" + name + ":x:y}");
  }
  starts["templates"].inputs.insert("$$${USER}${ODD}${EMPTY}${config:a/b}${config:c/d}");
  for (const OutputRow& row : Generators::lxcRows()) {
    const std::string entry =
        std::string(row.text.empty() ? "/source" : row.text).append(row.suffix);
    if (row.key == "lxc.mount.entry") {
      starts["mount_entry"].inputs.insert(entry);
      for (const std::string_view word : split(entry, ' ', EmptyParts::DropAll)) {
        starts["mount_entry"].words.insert(std::string(word) + " ");
      }
    }
  }
}

// Chains of references around the limit of a resolution, a wide value and a circle.
void addReferences(Starts& starts) {
  for (const std::size_t length : {4U, 16U, 26U}) {
    std::string chain;
    for (std::size_t i = 0; i < length; ++i) {
      const char next = static_cast<char>('a' + (i + 1) % length);
      chain += {static_cast<char>('a' + i), '=', 'x', '@', next, '\n'};
    }
    starts["references"].inputs.insert(chain);
    starts["references"].inputs.insert(chain + static_cast<char>('a' + length - 1) + "=end\n");
  }
  starts["references"].inputs.insert("b=y\na=@b@b@b@b@b@b@b@b\nc=@a@a@a@b@b@b@b@b\nd=@c;z@b\n");
  starts["references"].inputs.insert("b=y\na=@b;@c\nb=\nb=1;2\nc=@a\n");
}

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The regular files below a directory, under their names there.
FileTree treeOf(const fs::path& root) {
  FileTree files;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.is_regular_file()) {
      files[entry.path().lexically_relative(root)] = contentOf(entry.path());
    }
  }
  return files;
}

// The target that checks values of the row's format, or null.
const char* targetOf(const OutputRow& row) {
  const std::map<const Generators::Format*, const char*> targets{
      {&Generators::kInt, "conversions"},
      {&Generators::kU64, "conversions"},
      {&Generators::kReal, "conversions"},
      {&Generators::kBool, "conversions"},
      {&Generators::kFlag, "conversions"},
      {&Generators::kNotFlag, "conversions"},
      {&Generators::kMountList, "mount_entry"},
      {&Generators::kLocale, "locale"},
      {&Generators::kOpenGlVersion, "opengl_version"}};
  const auto found = targets.find(row.format);
  return found == targets.end() ? nullptr : found->second;
}

// The values in a configuration file, each for the target of its key.
void addValues(Starts& starts, const std::string& text) {
  for (const ConfigLine& line : configLinesOf(text)) {
    for (const OutputRow& row : allRows()) {
      const char* const target = targetOf(row);
      if (target != nullptr && row.source.group == line.group && row.source.key == line.name) {
        for (const std::string_view part : split(line.value, ';', EmptyParts::DropAll)) {
          starts[target].inputs.insert(std::string(part));
        }
      }
    }
  }
}

// The files of a host by the kind of target that reads such files.
void addTree(Starts& starts, const FileTree& files) {
  FileTree layers;
  for (const auto& [name, text] : files) {
    if (name.ends_with(".conf") && text.starts_with("LANG")) {
      starts["environment_file"].inputs.insert("LANG\n" + text);
      starts["locale"].inputs.insert(text.substr(text.find('=') + 1));
    } else if (name.ends_with(".conf")) {
      starts["config_file"].inputs.insert(text);
      addValues(starts, text);
      const fs::path path(name);
      layers[path.parent_path().filename() / path.filename()] = text;
    }
  }
  starts["layered_loading"].inputs.insert(inputOf(layers));
}

void addGoldenCases(Starts& starts) {
  for (const auto& entry : fs::directory_iterator(GOLDEN_DIRECTORY)) {
    FileTree files = treeOf(entry.path() / "host");
    addTree(starts, files);
    std::istringstream words(contentOf(entry.path() / "arguments"));
    for (std::string word; words >> word;) {
      files["arguments"] += word + "\n";
    }
    starts["whole_program"].inputs.insert(inputOf(files));
    starts["inspection"].inputs.insert(inputOf(files));
  }
  addTree(starts, treeOf(CONFIGURATION_DIRECTORY));
}

// As the fuzzer reads a dictionary.
std::string dictionaryLine(std::string_view word) {
  std::string line = "\"";
  for (const char character : word) {
    if (character == '"' || character == '\\') {
      line += {'\\', character};
    } else if (character == '\n') {
      line += "\\x0A";
    } else {
      line += character;
    }
  }
  return line + "\"\n";
}

void write(const fs::path& directory, const std::string& target, const Start& start) {
  std::ofstream dictionary(directory / (target + ".dict"), std::ios::binary);
  for (const std::string& word : start.words) {
    dictionary << dictionaryLine(word);
  }
  fs::create_directories(directory / target);
  std::size_t number = 0;
  for (const std::string& input : start.inputs) {
    std::ofstream(directory / target / std::to_string(++number), std::ios::binary) << input;
  }
}

Starts allStarts() {
  Starts starts;
  for (const char* const target :
       {"config_file", "inspection", "layered_loading", "whole_program"}) {
    starts[target].words = configurationWords();
  }
  starts["layered_loading"].words.merge(
      Texts{"\n%% a/a.conf\n", "\n%% a/b.conf\n", "\n%% b/c.conf\n"});
  starts["templates"].words = templateWords();
  starts["conversions"].words = limits();
  starts["opengl_version"].words = limits();
  addOptions(starts);
  addRows(starts);
  addReferences(starts);
  addGoldenCases(starts);
  return starts;
}

}  // namespace
}  // namespace Cradle::Fuzz

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("Usage: make-seeds DIRECTORY\n", stderr);
    return 2;
  }
  for (const auto& [target, start] : Cradle::Fuzz::allStarts()) {
    Cradle::Fuzz::write(argv[1], target, start);
  }
  return 0;
}
