// SPDX-License-Identifier: MIT
#include "base/shared_library.h"

#include <dlfcn.h>

namespace Cradle {

SharedLibrary::SharedLibrary(const OptionalLibrary& library)
    : handle_(dlopen(library.soname, RTLD_LAZY)) {}

void* SharedLibrary::address(const char* name) const {
  return isOpen() ? dlsym(handle_, name) : nullptr;
}

}  // namespace Cradle
