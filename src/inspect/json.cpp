// SPDX-License-Identifier: MIT
#include "inspect/json.h"

namespace Cradle::Inspect {

std::string dump(const Json& document) {
  constexpr int kIndent = 2;
  return document.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace Cradle::Inspect
