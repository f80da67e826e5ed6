// SPDX-License-Identifier: MIT
// Looking up a row of a constant table.
#pragma once

#include <algorithm>
#include <ranges>

namespace Cradle {

// The first row whose `member` equals `value`, or null.
template <std::ranges::contiguous_range Table, typename Row, typename Member, typename Value>
const Row* findRow(const Table& table, Member Row::*member, const Value& value) {
  const auto row = std::ranges::find(table, value, member);
  return row == std::ranges::end(table) ? nullptr : &*row;
}

}  // namespace Cradle
