// SPDX-License-Identifier: MIT
#include "common/file_tree.h"

#include <algorithm>

#include "base/character_set.h"
#include "base/text.h"

namespace Cradle::Fuzz {
namespace {

constexpr std::string_view kHead = "%% ";
constexpr std::string_view kNextHead = "\n%% ";
constexpr std::size_t kMostFiles = 16;
constexpr std::size_t kLongestName = 100;
constexpr CharacterSet kNameCharacters(
    "-./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");

// Whether one of the two names lies below the other.
bool areNested(const std::string& left, const std::string& right) {
  return left.starts_with(right + "/") || right.starts_with(left + "/");
}

bool fits(const FileTree& files, const std::string& name) {
  return files.size() < kMostFiles && isUsualName(name) &&
         std::none_of(files.begin(), files.end(),
                      [&](const auto& file) { return areNested(file.first, name); });
}

}  // namespace

bool isUsualName(std::string_view name) {
  const auto parts = split(name, '/', EmptyParts::KeepAll);
  return name.size() <= kLongestName && kNameCharacters.containsAll(name) &&
         std::none_of(parts.begin(), parts.end(), [](std::string_view part) {
           return part.empty() || part == "." || part == "..";
         });
}

FileTree filesOf(std::string_view input) {
  FileTree files;
  std::size_t head = input.starts_with(kHead) ? 0 : input.find(kNextHead);
  while (head != std::string_view::npos) {
    const std::size_t name = input.find(kHead, head) + kHead.size();
    const std::size_t nextHead = std::min(input.find(kNextHead, name), input.size());
    const std::size_t nameEnd = std::min(input.find('\n', name), nextHead);
    const std::size_t text = std::min(nameEnd + 1, nextHead);
    const std::string path(input.substr(name, nameEnd - name));
    if (fits(files, path)) {
      files.emplace(path, input.substr(text, nextHead - text));
    }
    head = input.find(kNextHead, name);
  }
  return files;
}

std::string inputOf(const FileTree& files) {
  std::string input;
  for (const auto& [name, text] : files) {
    input.append(input.empty() ? kHead : kNextHead).append(name).append("\n").append(text);
  }
  return input;
}

}  // namespace Cradle::Fuzz
