#include "operations/operations.h"

#include <array>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

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

// The keys are those that Subject puts in every group.
template <typename Value>
struct Typed {
  std::string_view key;
  Value expected;
};
constexpr Typed<bool> kFlag{"Flag", true};
constexpr Typed<int> kNumber{"Number", 12345};
constexpr Typed<long> kLarge{"Large", 1234567890123};
constexpr Typed<double> kRatio{"Ratio", 3.25};
constexpr std::string_view kText = "/var/lib/device/storage/media/0";
constexpr Typed<std::string_view> kString{"Text", kText};
constexpr Typed<std::string_view> kReference{"Reference", kText};
constexpr Typed<std::string_view> kChain{"Link0", "end"};
const List kListItems{"camera", "sensor", "bridge"};

template <typename Value, const auto& kTyped>
void read(const ConfigParser& parser, const std::string& group) {
  benchmark::DoNotOptimize(valueOf<Value>(parser, group, kTyped.key));
}

template <typename Value, const auto& kTyped>
bool readHolds(const ConfigParser& parser, const std::string& group) {
  return valueOf<Value>(parser, group, kTyped.key) == kTyped.expected;
}

void readList(const ConfigParser& parser, const std::string& group) {
  benchmark::DoNotOptimize(valueOf<List>(parser, group, "List"));
}

bool readListHolds(const ConfigParser& parser, const std::string& group) {
  return valueOf<List>(parser, group, "List") == kListItems;
}

void missKey(const ConfigParser& parser, const std::string& group) {
  benchmark::DoNotOptimize(parser.hasValue(group, "Missing"));
}

bool missKeyHolds(const ConfigParser& parser, const std::string& group) {
  return parser.hasGroup(group) && !parser.hasValue(group, "Missing");
}

// No group begins so, and each look-up is for another one.
void missGroup(const ConfigParser& parser, const std::string& group) {
  benchmark::DoNotOptimize(parser.hasValue(std::string_view(group).substr(1), "Text"));
}

bool missGroupHolds(const ConfigParser& parser, const std::string& group) {
  return !parser.hasValue(std::string_view(group).substr(1), "Text");
}

constexpr std::array<Lookup, 10> kLookups{{
    {"string", read<std::string, kString>, readHolds<std::string, kString>},
    {"bool", read<bool, kFlag>, readHolds<bool, kFlag>},
    {"int", read<int, kNumber>, readHolds<int, kNumber>},
    {"long", read<long, kLarge>, readHolds<long, kLarge>},
    {"double", read<double, kRatio>, readHolds<double, kRatio>},
    {"list of 3", readList, readListHolds},
    {"1 reference", read<std::string, kReference>, readHolds<std::string, kReference>},
    {"chain of 10 references", read<std::string, kChain>, readHolds<std::string, kChain>},
    {"missing key", missKey, missKeyHolds},
    {"missing group", missGroup, missGroupHolds},
}};

constexpr std::array<Store, 3> kStores{{
    {"store plain text", "/var/lib/device", "/var/lib/device"},
    {"store a named template", "${BENCH}", "/var/lib/device"},
    {"store an env template", "${env:CRADLE_BENCH}", "/var/lib/device"},
}};

}  // namespace

std::span<const Lookup> lookups() {
  return kLookups;
}

std::span<const Store> stores() {
  return kStores;
}

}  // namespace Cradle::Bench
