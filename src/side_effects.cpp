#include "side_effects.h"

namespace Cradle::Parser {
namespace {

RefusalListener refusalListener = nullptr;

}  // namespace

void refuseSideEffects(RefusalListener listener) {
  refusalListener = listener;
}

bool isRefused(const std::string& what) {
  if (refusalListener == nullptr) {
    return false;
  }
  refusalListener(what);
  return true;
}

}  // namespace Cradle::Parser
