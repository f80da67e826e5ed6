// SPDX-License-Identifier: MIT
#include "side_effects.h"

#include <utility>

namespace Cradle::Parser {
namespace {

RefusalListener refusalListener = nullptr;

}  // namespace

RefusalListener refuseSideEffects(RefusalListener listener) {
  return std::exchange(refusalListener, listener);
}

bool isRefused(const std::string& command) {
  if (refusalListener == nullptr) {
    return false;
  }
  refusalListener("run " + command);
  return true;
}

bool isDirectoryRefused(const std::string& path) {
  if (refusalListener == nullptr) {
    return false;
  }
  refusalListener("make the directory " + path);
  return true;
}

}  // namespace Cradle::Parser
