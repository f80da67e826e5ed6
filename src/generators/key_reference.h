// SPDX-License-Identifier: MIT
// The reference of the configuration keys: for each what it means, what it may hold, what holds
// without it, and every line of an output that is made of it or hangs on it.
//
// Put together from the tables of the outputs (lxc_rows.h, property_rows.h), from notes on what
// their formats, conditions and the code around them do, and from the meanings in
// key_descriptions.h. Only the notes and meanings are written for it; tests hold them to what the
// code reads, in both directions. For manuals and tools: the programs that write the outputs do not
// link it. A configuration may hold other keys, which only references (${config:...}) read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "generators/config_reader.h"
#include "generators/value_kind.h"

namespace Cradle::Generators {

// What one output does with a key.
struct KeyUse {
  std::string_view output;  // as the command line calls its type
  // The line that is written: VALUE stands for what is made of this key, "<Group/Key>" and
  // "<the user name>" for what comes from elsewhere. Empty where the key makes no line.
  std::string line;
  std::string value;      // what VALUE is, or what becomes of a key that makes no line
  std::string condition;  // "when ...", "if ..." or "unless ..."; empty for always
};

struct KeyReference {
  ConfigKey name;
  std::string_view meaning;  // sentences
  std::string_view type;     // as the formats call it
  ValueKind kind;
  std::vector<std::string_view> words;  // the only ones that are meant, sorted; empty for any
  std::string absent;                   // what holds without the key
  std::vector<KeyUse> uses;             // in the order of the outputs and their lines
};

// Every key, in the order of its description.
std::vector<KeyReference> keyReference();

// Every key that an output reads, once, the keys of the container first.
std::vector<ConfigKey> readKeys();

// Whether `text` is a value as the key means it; an element of it for a list.
bool accepts(const KeyReference& key, const std::string& text);

}  // namespace Cradle::Generators
