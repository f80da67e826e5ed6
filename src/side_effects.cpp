#include "side_effects.h"

#include <utility>

namespace Cradle::Parser {
namespace {

RefusalListener refusalListener = nullptr;

}  // namespace

RefusalListener refuseSideEffects(RefusalListener listener) {
  return std::exchange(refusalListener, listener);
}

bool isRefused(const std::string& what) {
  if (refusalListener == nullptr) {
    return false;
  }
  refusalListener(what);
  return true;
}

}  // namespace Cradle::Parser
