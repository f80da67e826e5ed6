// SPDX-License-Identifier: MIT
// Looks into a JSON document that a program printed. An exception tells of a document that is none
// or that has no such part, which fails the test.
#pragma once

#include <string>

namespace Cradle::Testing {

// What stands at a JSON pointer ("/keys/0/name"), as JSON on one line.
std::string jsonAt(const std::string& document, const std::string& pointer);

// How many elements or members that has.
std::size_t jsonSizeAt(const std::string& document, const std::string& pointer);

}  // namespace Cradle::Testing
