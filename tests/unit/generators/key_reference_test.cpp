// SPDX-License-Identifier: MIT
#include "generators/key_reference.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "generators/key_notes.h"
#include "generators/lxc_rows.h"
#include "generators/property_rows.h"
#include "support/golden_cases.h"
#include "support/log_capture.h"
#include "support/row_rules.h"

namespace Cradle::Generators {
namespace {

using Testing::nameOf;

KeyReference of(const std::string& name) {
  for (const KeyReference& key : keyReference()) {
    if (nameOf(key.name) == name) {
      return key;
    }
  }
  ADD_FAILURE() << "no key " << name;
  return {};
}

// A key's reference on a few lines.
std::string shown(const std::string& name) {
  const KeyReference key = of(name);
  std::string text = std::string(key.type) + ", " + key.absent;
  for (const std::string_view word : key.words) {
    text += " " + std::string(word);
  }
  for (const KeyUse& use : key.uses) {
    text +=
        "\n" + std::string(use.output) + ": " + use.line + "|" + use.value + "|" + use.condition;
  }
  return text;
}

// As the enumeration calls them, in its order.
constexpr std::array kKinds{"Text",        "List",       "Boolean",  "Integer",
                            "LongInteger", "Real",       "Path",     "DeviceName",
                            "DeviceList",  "MountList",  "UserName", "Word",
                            "Version",     "LocaleName", "LogLevel", "Lines"};

// The whole reference but for the meanings of the keys, a paragraph for each.
std::string wholeReference() {
  std::string text;
  for (const KeyReference& key : keyReference()) {
    text += nameOf(key.name) + ": " + kKinds.at(static_cast<std::size_t>(key.kind)) + ", " +
            shown(nameOf(key.name)) + "\n\n";
  }
  return text;
}

std::vector<std::string> paragraphsOf(const std::string& text) {
  std::vector<std::string> paragraphs;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find("\n\n", start)) != std::string::npos;
       start = end + 2) {
    paragraphs.push_back(text.substr(start, end - start));
  }
  return paragraphs;
}

// A change of what the reference says of a key is a change of that file, for somebody to read.
TEST(KeyReference, SaysOfEveryKeyWhatIsWrittenDown) {
  const auto file = std::filesystem::path(SOURCE_DIRECTORY) / "../tests/unit/golden/key_reference";
  EXPECT_THAT(paragraphsOf(wholeReference()),
              ::testing::ElementsAreArray(paragraphsOf(Testing::readGolden(file) + "\n")));
}

TEST(KeyReference, HasAUseForEveryKey) {
  for (const KeyReference& key : keyReference()) {
    EXPECT_FALSE(key.uses.empty()) << nameOf(key.name);
    EXPECT_FALSE(key.type.empty()) << nameOf(key.name);
    EXPECT_FALSE(key.absent.empty()) << nameOf(key.name);
    EXPECT_FALSE(key.meaning.empty()) << nameOf(key.name);
  }
}

TEST(KeyReference, ExplainsEveryValue) {
  for (const KeyReference& key : keyReference()) {
    for (const KeyUse& use : key.uses) {
      const bool hasValue = use.line.empty() || use.line.find("VALUE") != std::string::npos;
      EXPECT_EQ(use.value.empty(), !hasValue) << nameOf(key.name) << ": " << use.line;
      EXPECT_EQ(use.line.find("<>"), std::string::npos) << nameOf(key.name) << ": " << use.line;
    }
  }
}

TEST(KeyReference, HasEveryRowThatAKeyDecidesAbout) {
  std::set<std::string> lines;
  for (const KeyReference& key : keyReference()) {
    for (const KeyUse& use : key.uses) {
      lines.insert(use.line.substr(0, use.line.find('=')));
    }
  }
  for (const OutputRow& row : lxcRows()) {
    EXPECT_EQ(lines.count(std::string(row.key) + " "), 1U) << nameOf(row);
  }
  for (const OutputRow& row : propertyRows()) {
    const bool isOfNoKey = row.source.key.empty() && row.when.source.key.empty();
    const bool isNamed = lines.count(std::string(row.key)) == 1;
    EXPECT_TRUE(isNamed || row.key.empty() || isOfNoKey) << nameOf(row);
  }
}

TEST(KeyReference, TellsWhatBecomesOfAValue) {
  EXPECT_EQ(shown("Config/Arch"), "text, aarch64\nlxc: lxc.arch = VALUE|as it stands|");
  EXPECT_EQ(shown("Features/CameraEnabled"),
            "boolean, false false true\n"
            "property: ro.quoll.no_camera=VALUE|0 for true, otherwise 1|");
  EXPECT_EQ(shown("Config/WaylandSocketPath"),
            "path, empty, so that . is the source of the mount\n"
            "lxc: lxc.mount.entry = VALUE run/display none rbind,nodev,nosuid,create=dir 0 0|"
            "the directory: what stands before the last /|\n"
            "property: ro.quoll.wayland_display=VALUE|the name: what stands behind the last /|");
  EXPECT_EQ(shown("Config/CustomProperties"),
            "list of lines, none\nproperty: VALUE|each element as it stands|");
  EXPECT_EQ(shown("Config/BatteryCapacity"),
            "integer, not written\n"
            "property: ro.host.battery.capacity=VALUE|as a decimal number|if greater than 0");
}

TEST(KeyReference, TellsWhatAKeyDecides) {
  EXPECT_EQ(shown("Config/MountHome"),
            "boolean, false false true\n"
            "lxc: lxc.mount.entry = <the user's home directory> "
            "mnt/media_rw/8ff87de4-0b37-4799-b09a-82773e869e07 none "
            "rbind,nodev,nosuid,ro,create=dir 0 0||when true");
  EXPECT_EQ(shown("Features/CrashLoggerEnabled"),
            "boolean, false false true\n"
            "lxc: lxc.mount.entry = /tmp/cradle/crashlogs data/vendor/crashlogs none "
            "bind,nodev,nosuid,create=dir 0 0||when true\n"
            "property: ro.quoll.crashlogs=VALUE|true or false|");
  EXPECT_EQ(shown("Config/Multisim"),
            "boolean, false false true\n"
            "property: persist.radio.multisim.config=<Config/MultisimRadioConfig>||when true\n"
            "property: persist.multisim.config=<Config/MultisimConfig>||when true");
  EXPECT_EQ(shown("Config/MultisimConfig"),
            "text, empty\n"
            "property: persist.multisim.config=VALUE|as it stands|when Config/Multisim is true");
}

TEST(KeyReference, TellsOfKeysThatAreReadBesideARowsOwn) {
  EXPECT_EQ(shown("Config/AppIdPrefix"),
            "text, none, as when empty\n"
            "property: # wayland app id mangling||"
            "unless empty with a Config/AppIdManglingType of None\n"
            "property: ro.quoll.app_id_prefix=VALUE|as it stands|if not empty");
  EXPECT_EQ(of("Config/DataRoot").uses.at(1).condition,
            "unless Config/StoragePath is absent or below it");
  EXPECT_EQ(of("Config/LanguageFilePath").type, "path");
  EXPECT_EQ(of("Config/LanguageFilePath").uses.size(), 3U);
  EXPECT_EQ(of("GeneratedConfig/UserId").uses.size(), 2U);
  EXPECT_EQ(shown("GeneratedConfig/DefaultRo"),
            "list of lines, none\nproperty: VALUE|each element as it stands|");
}

TEST(KeyReference, KnowsTheWordsOfAValue) {
  using Words = std::vector<std::string_view>;
  EXPECT_EQ(of("Network/NetConfig").words, (Words{"bridge", "disable", "lagoon", "skip"}));
  EXPECT_EQ(of("Network/NetConfig").kind, ValueKind::Word);
  EXPECT_EQ(of("Config/AppIdManglingType").words, (Words{"NoDots", "None"}));
  EXPECT_EQ(of("Config/AppLaunchMode").words, (Words{"freeform", "fullscreen"}));
  EXPECT_EQ(of("Config/UseIds").words, (Words{"false", "true"}));
  EXPECT_EQ(of("Config/Arch").words, Words{});
}

TEST(KeyReference, GivesWordsToWordsAndBooleansAlone) {
  for (const KeyReference& key : keyReference()) {
    const bool hasWords = key.kind == ValueKind::Word || key.kind == ValueKind::Boolean;
    EXPECT_EQ(!key.words.empty(), hasWords) << nameOf(key.name);
  }
}

TEST(KeyReference, KnowsIntegersOfBothSizes) {
  EXPECT_EQ(of("Display/Width").kind, ValueKind::Integer);
  EXPECT_EQ(of("Display/DMABufModifierLo").kind, ValueKind::LongInteger);
  EXPECT_EQ(of("Display/DPIX").kind, ValueKind::Real);
}

TEST(KeyReference, AcceptsWhatAKeyMeans) {
  struct Value {
    const char* name;
    const char* text;
    bool accepted;
  };
  for (const Value& row :
       {Value{"Network/NetConfig", "bridge", true}, Value{"Network/NetConfig", "Bridge", false},
        Value{"Config/UseIds", "true", true}, Value{"Config/UseIds", "yes", false},
        Value{"Display/Width", "1920", true}, Value{"Display/Width", "1920px", false},
        Value{"Config/Arch", "", true}}) {
    EXPECT_EQ(accepts(of(row.name), row.text), row.accepted) << row.name << ": " << row.text;
  }
}

TEST(ReadKeys, AreThereOnce) {
  std::set<std::string> names;
  for (const ConfigKey& name : readKeys()) {
    EXPECT_TRUE(names.insert(nameOf(name)).second) << nameOf(name);
  }
  EXPECT_EQ(names.size(), keyReference().size());
}

}  // namespace
}  // namespace Cradle::Generators
