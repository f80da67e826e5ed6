// SPDX-License-Identifier: MIT
// OpenGL ES versions. The input is the text of one.
//
// Property: a text gives what a stream and 64-bit arithmetic make of it. An integer stands for
// itself, two decimal numbers around a dot for the lower 32 bits of 65536 times the first and the
// second; what is negative as 32 bits is none.

#include "generators/opengl_version.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <sstream>
#include <string>

#include "common/check.h"
#include "common/target.h"

namespace Cradle::Fuzz {
namespace {

using Version = std::optional<std::int64_t>;

// The number that the whole text is, if it fits into 32 bits with a sign.
Version integer(const std::string& text) {
  std::istringstream stream(text);
  if (text.substr(0, 2) == "0x") {
    stream >> std::hex;
  }
  std::int32_t number = 0;
  stream >> number;
  const bool whole = !stream.fail() && stream.peek() == std::char_traits<char>::eof();
  return whole ? Version(number) : std::nullopt;
}

Version versionByHand(const std::string& text) {
  if (const Version number = integer(text)) {
    return *number < 0 ? std::nullopt : number;
  }
  const std::size_t dot = text.find('.');
  if (dot == std::string::npos || text.find_first_not_of("0123456789.") != std::string::npos) {
    return std::nullopt;
  }
  const Version major = integer(text.substr(0, dot));
  const Version minor = integer(text.substr(dot + 1));
  if (!major || !minor) {
    return std::nullopt;
  }
  const std::int64_t packed = (*major * 65536 + *minor) % 4294967296;
  return packed > std::numeric_limits<std::int32_t>::max() ? std::nullopt : Version(packed);
}

std::string shown(const Version& version) {
  return version ? std::to_string(*version) : "none";
}

}  // namespace

void checkInput(const std::string& input) {
  const Version version = Generators::parseOpenGlVersion(input);
  requireEqual(shown(version), shown(versionByHand(input)), "a version is packed as it says");
}

}  // namespace Cradle::Fuzz
