// SPDX-License-Identifier: MIT
// Layered loading. The input is files as in common/file_tree.h: "DIRECTORY/FILE" is one of a
// configuration directory, of which the order is that of their names, and "known" holds the
// declared keys (see common/layer_model.h). "$" is read as "S", because templates
// have targets of their own.
//
// Properties: the directories are merged as a plain map of lists is that does the same line by
// line; a wrong line ends the loading and is reported with its file and number; what is written
// from the result is read back as the same, every text of it; what else the configuration holds,
// and where, makes no difference.

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/check.h"
#include "common/layer_model.h"
#include "common/lines.h"
#include "common/memory_file.h"
#include "common/padding.h"
#include "common/private_directory.h"
#include "common/target.h"
#include "config_parser.h"
#include "config_writer.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using Parser::ConfigParser;
using Parser::ConfigValue;
using Parser::LoadResult;
using Directories = std::vector<std::string>;

struct Loading {
  explicit Loading(const std::vector<KnownKey>& known) : parser(-1) {
    for (const KnownKey& key : known) {
      parser.addKnownKey(key.group, key.key, key.mode);
    }
  }

  // All that has been loaded, and by all means of reading it.
  std::string shown() const {
    std::string text;
    parser.forEachEntry([&](std::string_view group, std::string_view key,
                            std::span<const ConfigValue> values) {
      if (isUnrelated(group)) {
        return;
      }
      text += inQuotes(group) + inQuotes(key) + "=";
      std::vector<std::string> texts;
      parser.getValue(group, key, texts);
      require(texts.size() == values.size(), "a list has as many elements as its key has values");
      for (const std::string& value : texts) {
        text += inQuotes(value);
      }
      text += "\n";
      std::string last;
      parser.getValue(group, key, last);
      requireEqual(last, texts.back(), "a single value is the last one of its key");
      require(parser.hasGroup(group) && parser.hasKey(group, key), "what is visited is there");
    });
    return text;
  }

  ConfigParser parser;
  LoadResult result = LoadResult::NothingToLoad;
  std::string complaints;
};

void load(Loading& loading, const Directories& directories) {
  const Testing::LogCapture log;
  loading.result = loading.parser.loadDirectories(directories);
  loading.complaints = log.text();
}

void compare(const Loading& loading, const ExpectedLoading& expected) {
  requireEqual(loading.shown(), expected.model.shown(), "every entry is merged in its order");
  requireEqual(loading.complaints, expected.complaints,
               "every wrong line is reported with its file and number");
  require(loading.result == expected.result, "the result of loading tells what happened");
}

// Nothing is lost: no value holds ";", "$" or a line feed, and none is empty.
void checkReadBack(const Loading& loading, const std::string& expected) {
  static const MemoryFile file;
  file.write("");
  {
    Parser::ConfigWriter writer(file.path(), Parser::ConfigWriter::Separator::Plain);
    loading.parser.forEachEntry(
        [&](std::string_view group, std::string_view key, std::span<const ConfigValue> values) {
          writer.writeGroup(group);
          for (const ConfigValue& value : values) {
            writer.writeValue(key, value.text());
          }
        });
  }
  Loading again({});
  require(again.parser.loadFile(file.path()), "what is written is read back");
  requireEqual(again.shown(), expected, "what is read back equals what was written");
}

FileTree shallowFilesOf(std::string input) {
  std::replace(input.begin(), input.end(), '$', 'S');
  FileTree files = filesOf(input);
  std::erase_if(files, [](const auto& file) {
    return std::count(file.first.begin(), file.first.end(), '/') > 1;
  });
  return files;
}

// In the order in which the map has their files.
Directories directoriesOf(const FileTree& files, const PrivateDirectory& place) {
  Directories directories;
  for (const auto& file : files) {
    const std::size_t slash = file.first.find('/');
    const std::string directory = place.path(file.first.substr(0, slash));
    if (slash != std::string::npos && (directories.empty() || directories.back() != directory)) {
      directories.push_back(directory);
    }
  }
  return directories;
}

void checkGroups(const FileTree& files, const Loading& loading, const LayerModel& model) {
  for (const auto& file : files) {
    for (const std::string& line : linesOf(file.second)) {
      const std::string group = configLineOf(line).name;
      require(loading.parser.hasGroup(group) == model.hasGroup(group),
              "a group exists once a value has been stored in it", group);
    }
  }
}

}  // namespace

void checkInput(const std::string& input) {
  if (input.find(kUnrelatedGroup) != std::string::npos) {
    return;
  }
  static const PrivateDirectory place;
  const FileTree files = shallowFilesOf(input);
  place.furnish(files);
  const Directories directories = directoriesOf(files, place);
  const std::vector<KnownKey> known = knownKeysOf(files);
  const ExpectedLoading expected = loadByHand(files, place, known);

  Loading loading(known);
  load(loading, directories);
  compare(loading, expected);
  checkGroups(files, loading, expected.model);
  checkReadBack(loading, expected.model.shown());

  static const MemoryFile unrelated;
  unrelated.write(unrelatedEntries(choiceFrom(input) % 64));
  Loading padded(known);
  require(padded.parser.loadFile(unrelated.path()), "a file of entries is read");
  load(padded, directories);
  compare(padded, expected);
}

}  // namespace Cradle::Fuzz
