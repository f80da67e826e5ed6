// SPDX-License-Identifier: MIT
// JSON for programs. Texts that are no UTF-8 have U+FFFD in the place of each wrong byte.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace Cradle::Inspect {

using Json = nlohmann::ordered_json;  // members in the order of their making

// The document as text, with a line feed at its end.
std::string dump(const Json& document);

}  // namespace Cradle::Inspect
