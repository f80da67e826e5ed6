// SPDX-License-Identifier: MIT
#include "generators/key_notes.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "base/table.h"
#include "generators/generated_group.h"
#include "generators/locale.h"
#include "generators/lxc_formats.h"
#include "generators/property_formats.h"
#include "generators/row_formats.h"

namespace Cradle::Generators {
namespace {

using Words = std::span<const std::string_view>;

constexpr std::array kManglingWords{kNoMangling, kNoDots};
constexpr std::array kLaunchWords{kFreeform, kFullscreen};
constexpr std::array kNetworkWords{kDisabledNetwork, kSkippedNetwork};
constexpr Words kNoneWord = Words(kManglingWords).first(1);

constexpr std::string_view kAsItStands = "as it stands";
constexpr std::string_view kEachElement = "each element as it stands";

constexpr auto kFormats = std::to_array<FormatNote>({
    {&kText, ValueKind::Text, kAsItStands},
    {&kWords, ValueKind::List, "the elements with single blanks between them"},
    {&kInt, ValueKind::Integer, "as a decimal number"},
    {&kU64, ValueKind::LongInteger, "its 64 bits as a decimal number without sign"},
    {&kReal, ValueKind::Real, "with six significant digits"},
    {&kBool, ValueKind::Boolean, "true or false"},
    {&kFlag, ValueKind::Boolean, "1 for true, otherwise 0"},
    {&kNotFlag, ValueKind::Boolean, "0 for true, otherwise 1"},
    {&kFixed, ValueKind::Boolean, {}},
    {.format = &kUserId, .value = "the user id"},
    {.format = &kUserName, .value = "the user name"},
    {.format = &kHome, .value = "the user's home directory"},
    {.format = &kInstance, .value = "the name of the instance"},
    {&kDevicePath, ValueKind::DeviceName, "the path of the node"},
    {&kDirectory, ValueKind::Path, "the directory: what stands before the last /"},
    {&kDeviceList, ValueKind::DeviceList, {}},
    {&kMountList, ValueKind::MountList, {}},
    {&kForced, ValueKind::Boolean, "force_on for true, otherwise force_off"},
    {&kBaseName, ValueKind::Path, "the name: what stands behind the last /"},
    {&kHostUser, ValueKind::UserName, "the user's id, 0 when there is no such user"},
    {&kManglingType, ValueKind::Word, "1 for NoDots; any other word is an error that ends the run",
     kManglingWords},
    {&kIsRequired, ValueKind::Word, "1 for the word, otherwise 0"},
    {&kOpenGlVersion, ValueKind::Version,
     "the integer; any other text is an error that ends the run"},
    {&kLanguage, ValueKind::LocaleName, "the language of the locale"},
    {&kCountry, ValueKind::LocaleName, "the country of the locale"},
    {&kLocale, ValueKind::LocaleName, "language and country with - between them"},
    {&kLogLevel, ValueKind::LogLevel, "the first letter as a capital"},
    {&kLaunchMode, ValueKind::Word,
     "1 for fullscreen, 5 for freeform; any other word is an error that ends the run",
     kLaunchWords},
    {&kRawLines, ValueKind::Lines, {}},
});

constexpr auto kLines = std::to_array<LinesNote>({
    {writeRequiredDeviceNodes, "VALUE none bind,nosuid,create=file 0 0",
     "each node and the same path in the container; a name without a node is an error that ends "
     "the run"},
    {writeOptionalDeviceNodes, "VALUE none bind,nosuid,create=file 0 0",
     "each node and the same path in the container; for a directory, create=dir"},
    {writeCrashLogDirectory, kCrashLogDirectory, {}},
    {writeMounts, "VALUE",
     "each element as it stands; one that is no mount entry is an error that ends the run"},
    {writeRawLines, "VALUE", kEachElement},
});

constexpr auto kConditions = std::to_array<ConditionNote>({
    {.condition = &kIfPresent},
    {.condition = &kIfNotEmpty},
    {.condition = &kIfPositive},
    {.condition = &kIfGroupPresent, .needsSource = false},
    {.condition = &kWhen, .needsSource = false},
    {.condition = &kUnless, .needsSource = false},
    {.condition = &kIfOutsideDataRoot},
    {.condition = &kIfMangled, .words = kNoneWord, .needsSource = false},
    {.condition = &kIfNotNone, .words = kNoneWord, .needsSource = false},
    {.condition = &kIfNetworkUsed, .words = kNetworkWords, .needsSource = false},
    {.condition = &kIfLogLevel},
});

constexpr std::string_view kWithoutOverride = "when Config/LanguageOverride is absent";

constexpr auto kFurtherKeys = std::to_array<FurtherKey>({
    {.condition = &kIfOutsideDataRoot,
     .name = kDataRoot,
     .type = &kText,
     .rule = "unless Config/StoragePath is absent or below it"},
    {.condition = &kIfMangled,
     .name = kAppIdPrefix,
     .type = &kText,
     .rule = "unless empty with a Config/AppIdManglingType of None"},
    {.format = &kLanguage,
     .name = kLanguageFilePath,
     .type = &kDirectory,
     .rule = kWithoutOverride},
    {.format = &kCountry, .name = kLanguageFilePath, .type = &kDirectory, .rule = kWithoutOverride},
    {.format = &kLocale, .name = kLanguageFilePath, .type = &kDirectory, .rule = kWithoutOverride},
});

constexpr std::string_view kIfAllFacts = "if UserId, User, Home and BaseUid are all there";

constexpr StoredKey fact(std::string_view key, const Format& type, std::string_view value) {
  return {{}, {GeneratedGroup::kName, key}, &type, {}, value, kIfAllFacts};
}

constexpr StoredKey block(std::string_view output, std::string_view key) {
  return {output, {GeneratedGroup::kName, key}, &kRawLines, "VALUE", kEachElement, {}};
}

// The facts of the run, which every output reads that reads a generated configuration.
constexpr std::array kReadingOutputs{kLxcOutput, kPropertyOutput};
constexpr auto kFacts = std::to_array<StoredKey>({
    fact(GeneratedGroup::kUserId, kU64, "in place of --user-id and the user at the machine"),
    fact(GeneratedGroup::kUser, kText, "in place of the user database"),
    fact(GeneratedGroup::kHome, kText, "in place of the user database"),
    fact(GeneratedGroup::kInstance, kText, "in place of --instance"),
    fact(GeneratedGroup::kBaseUid, kU64, "in place of --base-uid"),
});
constexpr auto kBlocks = std::to_array<StoredKey>({
    block(kLxcOutput, GeneratedGroup::kDefaultLxc),
    block(kPropertyOutput, GeneratedGroup::kPropertyPre),
    block(kPropertyOutput, GeneratedGroup::kPropertyPost),
    block(kPropertyOutput, GeneratedGroup::kDefaultRo),
});

constexpr auto kStoredKeys = [] {
  std::array<StoredKey, kReadingOutputs.size() * kFacts.size() + kBlocks.size()> keys;
  auto key = keys.begin();
  for (const std::string_view output : kReadingOutputs) {
    for (const StoredKey& fact : kFacts) {
      *key = fact;
      key++->output = output;
    }
  }
  std::copy(kBlocks.begin(), kBlocks.end(), key);
  return keys;
}();

// The note on something that must have one.
template <typename Table, typename Row, typename Member, typename Value>
const Row& find(const Table& table, Member Row::*member, const Value& value) {
  const Row* const row = findRow(table, member, value);
  assert(row != nullptr && "everything that a row names has a note");
  return *row;
}

}  // namespace

const FormatNote& noteOf(const Format& format) {
  return find(kFormats, &FormatNote::format, &format);
}

const LinesNote& noteOf(bool (*lines)(OutputContext& context, const OutputRow& row)) {
  return find(kLines, &LinesNote::lines, lines);
}

const ConditionNote& noteOf(const Condition& condition) {
  return find(kConditions, &ConditionNote::condition, &condition);
}

std::span<const FurtherKey> furtherKeys() {
  return kFurtherKeys;
}

std::span<const StoredKey> storedKeys() {
  return kStoredKeys;
}

}  // namespace Cradle::Generators
