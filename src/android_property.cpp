// SPDX-License-Identifier: MIT
#include "android_property.h"

#include <array>
#include <cstring>

#include "base/shared_library.h"

namespace Cradle::Parser {
namespace {

using PropertyGet = int(const char* name, char* value, const char* defaultValue);

// The longest value with its terminating NUL is 92 bytes; the interface asks for this much.
constexpr std::size_t kPropertyBufferSize = 96;

}  // namespace

std::string readProperty(const std::string& name) {
  static const SharedLibrary library(kAndroidPropertiesLibrary);
  auto* const propertyGet = library.find<PropertyGet>("property_get");
  if (propertyGet == nullptr) {
    return "";
  }
  std::array<char, kPropertyBufferSize> value{};
  if (propertyGet(name.c_str(), value.data(), "") <= 0) {
    return "";
  }
  return {value.data(), strnlen(value.data(), value.size())};
}

}  // namespace Cradle::Parser
