// SPDX-License-Identifier: MIT
#include "generators/opengl_version.h"

#include "base/character_set.h"
#include "base/conversion.h"
#include "base/text.h"

namespace Cradle::Generators {
namespace {

constexpr CharacterSet kVersionCharacters(".0123456789");
constexpr unsigned kMajorShift = 16;

std::optional<std::int32_t> unlessNegative(std::int32_t version) {
  return version < 0 ? std::nullopt : std::optional(version);
}

}  // namespace

std::optional<std::int32_t> parseOpenGlVersion(const std::string& text) {
  bool ok = false;
  if (const std::int32_t packed = convertInt(text, &ok); ok) {
    return unlessNegative(packed);
  }
  const auto parts = split(text, '.', EmptyParts::KeepAll);
  if (!kVersionCharacters.containsAll(text) || parts.size() != 2) {
    return std::nullopt;
  }
  bool majorOk = false;
  bool minorOk = false;
  const auto major = static_cast<std::uint32_t>(convertInt(std::string(parts[0]), &majorOk));
  const auto minor = static_cast<std::uint32_t>(convertInt(std::string(parts[1]), &minorOk));
  if (!majorOk || !minorOk) {
    return std::nullopt;
  }
  return unlessNegative(static_cast<std::int32_t>((major << kMajorShift) + minor));
}

}  // namespace Cradle::Generators
