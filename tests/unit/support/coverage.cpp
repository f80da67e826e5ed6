// SPDX-License-Identifier: MIT
// A failed assertion ends its process by a signal; that it failed counts all the same.

#include "support/coverage.h"

#include <csignal>

namespace Cradle::Testing {
namespace {

[[maybe_unused]] const auto kPreviousHandler =
    std::signal(SIGABRT, [](int /*signal*/) { keepCounts(); });

}  // namespace
}  // namespace Cradle::Testing
