// SPDX-License-Identifier: MIT
// A page with its markers replaced.
//
// A marker is a comment line `.\" @NAME@` or `.\" @KIND ROW REST@`. A page that shows one row of a
// kind shows all of them, each once, in their order.
#pragma once

#include <string>
#include <string_view>

namespace Cradle::Manual {

// Throws std::runtime_error with a message for the author of the page.
std::string filled(std::string_view source);

}  // namespace Cradle::Manual
