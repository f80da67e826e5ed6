// SPDX-License-Identifier: MIT
#include "base/text.h"

#include <algorithm>

#include "base/character_set.h"

namespace Cradle {
namespace {

constexpr CharacterSet kSpaces(" \t\n\v\f\r");

bool isSpace(char character) {
  return kSpaces.contains(character);
}

}  // namespace

std::vector<std::string_view> split(std::string_view text, char separator, EmptyParts emptyParts,
                                    std::size_t maxSplits) {
  std::vector<std::string_view> parts;
  const auto add = [&](std::string_view part, bool last) {
    const bool dropped = part.empty() && (emptyParts == EmptyParts::DropAll ||
                                          (last && emptyParts == EmptyParts::DropTrailing));
    if (!dropped) {
      parts.push_back(part);
    }
  };
  for (std::size_t splits = 0; splits < maxSplits; ++splits) {
    const std::size_t end = text.find(separator);
    if (end == std::string_view::npos) {
      break;
    }
    add(text.substr(0, end), false);
    text.remove_prefix(end + 1);
  }
  add(text, true);
  return parts;
}

std::string_view trimLeft(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) {
    text.remove_prefix(1);
  }
  return text;
}

std::string_view trim(std::string_view text) {
  text = trimLeft(text);
  while (!text.empty() && isSpace(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

std::string join(std::span<const std::string> parts, std::string_view separator) {
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i != 0) {
      text += separator;
    }
    text += parts[i];
  }
  return text;
}

void toLowerCase(std::string& text) {
  std::transform(text.begin(), text.end(), text.begin(), lowerCase);
}

}  // namespace Cradle
