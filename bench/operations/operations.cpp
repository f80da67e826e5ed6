// SPDX-License-Identifier: MIT
#include "operations/operations.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "operations/subject.h"

namespace Cradle::Bench {
namespace {

using Parser::ConfigParser;
using List = std::vector<std::string>;

template <typename Value>
Value valueOf(const ConfigParser& parser, const std::string& group, std::string_view key) {
  Value value{};
  parser.getValue(group, key, value);
  return value;
}

template <typename Value, const auto& kSpecial>
void read(const ConfigParser& parser, const std::string& group) {
  benchmark::DoNotOptimize(valueOf<Value>(parser, group, kSpecial.key));
}

template <typename Value, const auto& kSpecial>
bool readHolds(const ConfigParser& parser, const std::string& group) {
  return valueOf<Value>(parser, group, kSpecial.key) == kSpecial.value;
}

bool readListHolds(const ConfigParser& parser, const std::string& group) {
  return std::ranges::equal(valueOf<List>(parser, group, kList.key), kList.value);
}

void missKey(const ConfigParser& parser, const std::string& group) {
  benchmark::DoNotOptimize(parser.hasValue(group, "Missing"));
}

bool missKeyHolds(const ConfigParser& parser, const std::string& group) {
  return parser.hasGroup(group) && !parser.hasValue(group, "Missing");
}

// No group begins so, and each look-up is for another one.
void missGroup(const ConfigParser& parser, const std::string& group) {
  benchmark::DoNotOptimize(parser.hasValue(std::string_view(group).substr(1), kText.key));
}

bool missGroupHolds(const ConfigParser& parser, const std::string& group) {
  return !parser.hasValue(std::string_view(group).substr(1), kText.key);
}

static_assert(kList.value.size() == 3 && kReferenceChain == 10);  // as they are called here
constexpr std::array<Lookup, 10> kLookups{{
    {"string", read<std::string, kText>, readHolds<std::string, kText>},
    {"bool", read<bool, kFlag>, readHolds<bool, kFlag>},
    {"int", read<int, kNumber>, readHolds<int, kNumber>},
    {"long", read<long, kLarge>, readHolds<long, kLarge>},
    {"double", read<double, kRatio>, readHolds<double, kRatio>},
    {"list of 3", read<List, kList>, readListHolds},
    {"1 reference", read<std::string, kReference>, readHolds<std::string, kReference>},
    {"chain of 10 references", read<std::string, kFirstLink>, readHolds<std::string, kFirstLink>},
    {"missing key", missKey, missKeyHolds},
    {"missing group", missGroup, missGroupHolds},
}};

constexpr std::array<Store, 3> kStores{{
    {"store plain text", kStoredValue},
    {"store a named template", "${BENCH}"},
    {"store an env template", "${env:CRADLE_BENCH}"},
}};

}  // namespace

std::span<const Lookup> lookups() {
  return kLookups;
}

std::span<const Store> stores() {
  return kStores;
}

}  // namespace Cradle::Bench
