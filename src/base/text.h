// SPDX-License-Identifier: MIT
// Text helpers that every layer shares: splitting at one character, trimming and joining.
//
// Views returned from here point into the text given; the caller keeps that text alive. Nothing
// here fails. Which characters are letters or white space is a matter of the "C" locale, whichever
// one a program has chosen.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Cradle {

// What becomes of the empty parts of a split text.
enum class EmptyParts {
  DropTrailing,  // keeps inner and leading ones, drops exactly one trailing one
  DropAll,
  KeepAll,
};

inline constexpr std::size_t kUnlimitedSplits = static_cast<std::size_t>(-1);

// The parts of `text` between the occurrences of `separator`, untrimmed and in order. At most
// `maxSplits` separators count; the last part then holds the rest of the text. The empty text has
// no part, except with KeepAll, where it is one empty part.
std::vector<std::string_view> split(std::string_view text, char separator, EmptyParts emptyParts,
                                    std::size_t maxSplits = kUnlimitedSplits);

// Calls `visit` with each part of `text` between the occurrences of `separator`, in order, empty
// ones included: a split with KeepAll that makes no vector, for what is done to every line.
template <typename Visit>
void forEachPart(std::string_view text, char separator, const Visit& visit) {
  for (;;) {
    const std::size_t end = text.find(separator);
    visit(text.substr(0, end));
    if (end == std::string_view::npos) {
      return;
    }
    text.remove_prefix(end + 1);
  }
}

// `text` without the white space at its two ends, or at its beginning alone.
std::string_view trim(std::string_view text);
std::string_view trimLeft(std::string_view text);

// The parts in order with `separator` between them.
std::string join(std::span<const std::string> parts, std::string_view separator);

// Any character but the letters A to Z, or a to z, stays as it is.
constexpr char lowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}
constexpr char upperCase(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                              : character;
}

// Turns the letters A to Z of `text` into small ones.
void toLowerCase(std::string& text);

}  // namespace Cradle
