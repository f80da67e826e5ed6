// SPDX-License-Identifier: MIT
// The host's Android system properties as a value source.
#pragma once

#include <string>

namespace Cradle::Parser {

// The value of the property `name`, or the empty text where it is missing or empty, which cannot be
// told apart. Read through property_get of libandroid-properties.so.1, which is looked for once per
// process; without the library no property has a value.
std::string readProperty(const std::string& name);

}  // namespace Cradle::Parser
