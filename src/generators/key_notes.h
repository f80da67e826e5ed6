// SPDX-License-Identifier: MIT
// What formats, conditions and code outside of the tables do with keys, in words for the reference.
//
// The rows of the outputs name these functions, but cannot tell what becomes of a value in them or
// which further keys they read. Tests run them to see that the notes are complete.
#pragma once

#include <span>
#include <string_view>

#include "generators/output_row.h"
#include "generators/value_kind.h"

namespace Cradle::Generators {

inline constexpr std::string_view kLxcOutput = "lxc";
inline constexpr std::string_view kPropertyOutput = "property";

struct FormatNote {
  const Format* format = nullptr;
  ValueKind kind = ValueKind::Text;  // of the source
  std::string_view value = {};       // what becomes of it
  std::span<const std::string_view> words = {};
};

// Lines that a function writes in place of a format.
struct LinesNote {
  bool (*lines)(OutputContext& context, const OutputRow& row) = nullptr;
  std::string_view text = {};  // before the row's suffix
  std::string_view value = {};
};

struct ConditionNote {
  const Condition* condition = nullptr;
  std::span<const std::string_view> words = {};  // that it compares the source with
  bool needsSource = true;                       // is not met without the row's source
};

// A key that a format or a condition reads beside its row's own.
struct FurtherKey {
  const Format* format = nullptr;
  const Condition* condition = nullptr;
  ConfigKey name = {};
  const Format* type = nullptr;  // the format whose source has the same type
  std::string_view rule = {};    // when it counts
};

// A key that is read outside of the rows.
struct StoredKey {
  std::string_view output = {};
  ConfigKey name = {};
  const Format* type = nullptr;
  std::string_view line = {};
  std::string_view value = {};
  std::string_view rule = {};
};

const FormatNote& noteOf(const Format& format);
const LinesNote& noteOf(bool (*lines)(OutputContext& context, const OutputRow& row));
const ConditionNote& noteOf(const Condition& condition);
std::span<const FurtherKey> furtherKeys();
std::span<const StoredKey> storedKeys();

}  // namespace Cradle::Generators
