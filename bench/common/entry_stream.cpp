// SPDX-License-Identifier: MIT
#include "common/entry_stream.h"

#include <array>
#include <fstream>

#include "common/failure.h"

namespace Cradle::Bench {
namespace {

constexpr std::size_t kLineSize = 50;
constexpr std::size_t kShortestKey = 12;
constexpr std::size_t kKeyLengths = 9;
constexpr std::size_t kNumberWidth = 2;

constexpr std::array<std::string_view, 24> kWords{
    "Audio",   "Bridge", "Camera", "Data",    "Density", "Display", "Gateway", "Gralloc",
    "Host",    "Input",  "Locale", "Memory",  "Mount",   "Network", "Path",    "Platform",
    "Product", "Root",   "Sensor", "Storage", "Timeout", "User",    "Vendor",  "Wayland"};

std::string paddedNumber(std::size_t number, std::size_t width) {
  const std::string digits = std::to_string(number);
  return std::string(width - std::min(width, digits.size()), '0') + digits;
}

}  // namespace

std::string groupName(std::size_t number) {
  return "Device" + paddedNumber(number, 7);
}

// Not a distribution of the standard library: those may differ between its versions.
std::string_view EntryStream::word() {
  return kWords[random_() % kWords.size()];
}

std::string EntryStream::words(std::size_t length, std::string_view separator) {
  std::string text;
  while (text.size() < length) {
    text.append(separator).append(word());
  }
  text.resize(length);
  return text;
}

const Entry& EntryStream::next() {
  if (count_ % kKeysPerGroup == 0) {
    entry_.group = groupName(count_ / kKeysPerGroup);
  }
  const std::size_t keyLength = kShortestKey + random_() % kKeyLengths;
  entry_.key =
      words(keyLength - kNumberWidth, "") + paddedNumber(count_ % kKeysPerGroup, kNumberWidth);
  entry_.value = words(kLineSize - keyLength - std::string_view("=\n").size(), "/");
  ++count_;
  return entry_;
}

void writeEntries(const std::string& path, std::size_t count) {
  std::ofstream file(path, std::ios::binary);
  EntryStream entries;
  std::string group;
  for (std::size_t i = 0; i < count; ++i) {
    const Entry& entry = entries.next();
    if (entry.group != group) {
      group = entry.group;
      file << '[' << group << "]\n";
    }
    file << entry.key << '=' << entry.value << '\n';
  }
  require(file.flush().good(), "cannot write " + path);
}

}  // namespace Cradle::Bench
