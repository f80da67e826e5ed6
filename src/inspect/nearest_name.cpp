// SPDX-License-Identifier: MIT
#include "inspect/nearest_name.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstdint>
#include <numeric>
#include <vector>

namespace Cradle::Inspect {
namespace {

constexpr std::size_t kLettersPerError = 3;

bool same(char left, char right) {
  return std::tolower(static_cast<unsigned char>(left)) ==
         std::tolower(static_cast<unsigned char>(right));
}

std::size_t lowest(const std::vector<std::size_t>& row) {
  return *std::min_element(row.begin(), row.end());
}

// The number of errors between two names (optimal string alignment), or `limit` where there are as
// many or more.
std::size_t distance(std::string_view left, std::string_view right, std::size_t limit) {
  std::vector<std::size_t> former(right.size() + 1);
  std::vector<std::size_t> last(right.size() + 1);
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(last.begin(), last.end(), 0U);
  for (std::size_t i = 0; i < left.size(); ++i) {
    row[0] = i + 1;
    for (std::size_t j = 0; j < right.size(); ++j) {
      const std::size_t replaced = last[j] + (same(left[i], right[j]) ? 0 : 1);
      row[j + 1] = std::min({replaced, last[j + 1] + 1, row[j] + 1});
      if (i > 0 && j > 0 && same(left[i], right[j - 1]) && same(left[i - 1], right[j])) {
        row[j + 1] = std::min(row[j + 1], former[j - 1] + 1);
      }
    }
    // What follows is made of these two rows.
    if (std::min(lowest(last), lowest(row)) >= limit) {
      return limit;
    }
    former.swap(last);
    last.swap(row);
  }
  return std::min(last.back(), limit);
}

// The letters of a name as bits; some letters share one.
std::uint32_t lettersOf(std::string_view name) {
  std::uint32_t letters = 0;
  for (const char letter : name) {
    letters |= 1U << (static_cast<unsigned char>(letter) & 31U);
  }
  return letters;
}

// Whether no more letters are missing in the other name than there may be errors.
bool lettersAreNear(std::uint32_t left, std::uint32_t right, std::size_t limit) {
  return static_cast<std::size_t>(std::popcount(left & ~right)) < limit;
}

bool lengthsAreNear(std::size_t left, std::size_t right, std::size_t limit) {
  return (left < right ? right - left : left - right) < limit;
}

}  // namespace

std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates) {
  std::string_view nearest;
  std::size_t limit = name.size() / kLettersPerError + 1;  // not reached
  const std::uint32_t letters = lettersOf(name);
  for (const std::string_view candidate : candidates) {
    if (!lengthsAreNear(name.size(), candidate.size(), limit) ||
        !lettersAreNear(letters, lettersOf(candidate), limit)) {
      continue;
    }
    const std::size_t errors = distance(name, candidate, limit);
    if (errors < limit) {
      limit = errors;
      nearest = candidate;
    }
  }
  return nearest;
}

}  // namespace Cradle::Inspect
