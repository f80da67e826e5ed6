// SPDX-License-Identifier: MIT
// The libraries that a run may open with SharedLibrary, one row each.
//
// They are no dependencies that the loader knows of. The program file therefore names them in a
// note (section ".note.dlopen", a JSON list of sonames with what they are for), which is made from
// these rows and which tools that make packages read.
#pragma once

#include <string_view>

namespace Cradle {

struct OptionalLibrary {
  const char* soname;
  std::string_view feature{};
  std::string_view description{};
  std::string_view priority{};  // "required", "recommended" or "suggested"
};

extern const OptionalLibrary kSystemdLibrary;
extern const OptionalLibrary kDconfLibrary;
extern const OptionalLibrary kAndroidPropertiesLibrary;

}  // namespace Cradle
