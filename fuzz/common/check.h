// SPDX-License-Identifier: MIT
// What a target says when a property of the program does not hold.
//
// A broken property ends the process, which counts as a finding and keeps the input. Results are
// compared as texts, in which every part stands in quotes, so that two different ones never look
// the same.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace Cradle::Fuzz {

// `text` between quotes, with all but printable characters as octal numbers.
inline std::string inQuotes(std::string_view text) {
  std::string shown = "'";
  for (const char character : text) {
    const unsigned byte = static_cast<unsigned char>(character);
    if (byte >= ' ' && byte <= '~' && character != '\'' && character != '\\') {
      shown += character;
    } else {
      shown += '\\';
      for (const unsigned digit : {byte >> 6U, byte >> 3U & 7U, byte & 7U}) {
        shown += static_cast<char>('0' + digit);
      }
    }
  }
  return shown + "'";
}

inline void require(bool holds, std::string_view property, const std::string& detail = "") {
  if (!holds) {
    std::fprintf(stderr, "broken property: %s\n%s\n", std::string(property).c_str(),
                 detail.c_str());
    std::abort();
  }
}

inline void requireEqual(std::string_view actual, std::string_view expected,
                         std::string_view property) {
  require(actual == expected, property,
          "expected: " + inQuotes(expected) + "\n     got: " + inQuotes(actual));
}

// A number that depends on every byte of the input, for choices that the input need not spell out.
inline std::size_t choiceFrom(std::string_view input) {
  std::size_t hash = 14695981039346656037U;  // FNV-1a
  for (const char character : input) {
    hash = (hash ^ static_cast<unsigned char>(character)) * 1099511628211U;
  }
  return hash ^ (hash >> 32U);
}

}  // namespace Cradle::Fuzz
