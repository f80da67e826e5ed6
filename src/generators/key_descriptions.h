// SPDX-License-Identifier: MIT
// What each configuration key means: what only a person can tell.
//
// One row per key, in the order of the manual. A key's type, the words that it allows and the lines
// that it becomes are those of the code that reads it; key_reference.h puts them together. The
// programs that write the outputs hold none of these texts.
#pragma once

#include <span>
#include <string_view>

#include "generators/config_reader.h"

namespace Cradle::Generators {

struct KeyDescription {
  ConfigKey name = {};
  std::string_view meaning = {};
  std::string_view absent = {};  // what holds without the key, unless its type and rows tell that
};

struct GroupDescription {
  std::string_view group = {};
  std::string_view meaning = {};
};

std::span<const KeyDescription> keyDescriptions();

// Every group, in the order of the keys.
std::span<const GroupDescription> groupDescriptions();

}  // namespace Cradle::Generators
