// SPDX-License-Identifier: MIT
// How every output says that a configuration value is wrong.
#pragma once

#include <string_view>

#include "generators/config_reader.h"

namespace Cradle::Generators {

// Logs the error "Invalid value for GROUP/KEY: VALUE", followed directly by `hint`.
void reportInvalidValue(const ConfigKey& name, std::string_view value, std::string_view hint = "");

}  // namespace Cradle::Generators
