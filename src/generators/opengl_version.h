// SPDX-License-Identifier: MIT
// The OpenGL ES version as Android packs it: the major number in the upper 16 bits, the minor in
// the lower.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Cradle::Generators {

// The packed number of a text that is an integer already or "MAJOR.MINOR"; nothing for any other
// text and for a result that is negative.
std::optional<std::int32_t> parseOpenGlVersion(const std::string& text);

}  // namespace Cradle::Generators
