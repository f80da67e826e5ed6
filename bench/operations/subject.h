// SPDX-License-Identifier: MIT
// A loaded configuration of some size, on which operations are measured.
//
// Every group holds the same special keys for them beside ordinary ones, and the operations go from
// group to group in a shuffled order, so that a large configuration is not measured on a small
// part of it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config_parser.h"
#include "support/temporary_directory.h"

namespace Cradle::Bench {

// A special key: the text in the file that it has, or that its reference leads to, and what reading
// it must give.
template <typename Value>
struct SpecialKey {
  std::string_view key;
  std::string_view text;
  Value value;
};

inline constexpr std::string_view kPath = "/var/lib/device/storage/media/0";
inline constexpr SpecialKey<std::string_view> kText{"Text", kPath, kPath};
inline constexpr SpecialKey<bool> kFlag{"Flag", "true", true};
inline constexpr SpecialKey<int> kNumber{"Number", "12345", 12345};
inline constexpr SpecialKey<long> kLarge{"Large", "1234567890123", 1234567890123};
inline constexpr SpecialKey<double> kRatio{"Ratio", "3.25", 3.25};
inline constexpr SpecialKey<std::array<std::string_view, 3>> kList{
    "List", "camera;sensor;bridge", {"camera", "sensor", "bridge"}};
inline constexpr SpecialKey<std::string_view> kReference{"Reference", kText.text, kText.value};
// Link0 refers to Link1, and so on; after so many references the last one has the text.
inline constexpr std::string_view kLink = "Link";
inline constexpr std::size_t kReferenceChain = 10;
inline constexpr SpecialKey<std::string_view> kFirstLink{"Link0", "end", "end"};

// What is stored: the key that a line sets, and what every value for it expands to.
inline constexpr const char* kStoredKey = "Stored";
inline constexpr const char* kStoredValue = "/var/lib/device";

// How many operations are measured at a time.
inline constexpr std::size_t kRoundSize = 1000;

class Subject {
 public:
  explicit Subject(std::size_t keys);

  const Parser::ConfigParser& parser() const { return parser_; }

  // The names of up to 1000 of the groups. Cycling through them visits each equally often.
  const std::vector<std::string>& groups() const { return groups_; }

  // A file that in each of these groups, taken in turns, removes and then sets a key to `value`,
  // 1000 times in all.
  std::string storeFile(const std::string& value) const;
  bool load(const std::string& path) { return parser_.loadFile(path); }

 private:
  void writeConfiguration(const std::string& path, std::size_t keys) const;

  Testing::TemporaryDirectory directory_;
  Parser::ConfigParser parser_{-1};
  std::vector<std::string> groups_;
};

}  // namespace Cradle::Bench
