// SPDX-License-Identifier: MIT
// What a configuration value is read as, and which texts are meant.
//
// The outputs make something of every text: "yes" reads as false, "12 px" as 12. This is for those
// who want to tell beforehand whether a text says what its author thinks that it says.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace Cradle::Generators {

enum class ValueKind : std::uint8_t {
  Text,
  List,
  Boolean,
  Integer,      // of 32 bits
  LongInteger,  // of 64 bits
  Real,
  Path,
  DeviceName,
  DeviceList,
  MountList,
  UserName,
  Word,  // one of a few
  Version,
  LocaleName,
  LogLevel,
  Lines,
};

struct ValueKindRow {
  ValueKind kind;
  bool isList;                   // every value of the key counts, otherwise the last one
  std::string_view description;  // sentences for the manual
  bool (*accepts)(const std::string& text);
};

// One row per kind, in the order of their values.
std::span<const ValueKindRow> valueKinds();

const ValueKindRow& valueKindRow(ValueKind kind);

}  // namespace Cradle::Generators
