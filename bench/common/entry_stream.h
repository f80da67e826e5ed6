// SPDX-License-Identifier: MIT
// The configuration that is measured: entries like those of a device, made with a fixed seed, so
// that every program and every run reads the same bytes.
//
// A group has 100 keys. A line "key=value" has 50 bytes with its line feed: a key of 12 to 20
// characters, and a value for the rest.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace Cradle::Bench {

struct Entry {
  std::string group;
  std::string key;
  std::string value;
};

inline constexpr std::size_t kKeysPerGroup = 100;

// Endless; the first entries are the same for every length of a file.
class EntryStream {
 public:
  const Entry& next();

 private:
  std::string_view word();
  std::string words(std::size_t length, std::string_view separator);

  std::mt19937_64 random_;
  std::size_t count_ = 0;
  Entry entry_;
};

// The name of the group with this number, equally long for all.
std::string groupName(std::size_t number);

// Writes the first entries of a stream, each group under its header.
void writeEntries(const std::string& path, std::size_t count);

}  // namespace Cradle::Bench
