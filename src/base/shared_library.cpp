#include "base/shared_library.h"

#include <dlfcn.h>

namespace Cradle {

SharedLibrary::SharedLibrary(const char* soname) : handle_(dlopen(soname, RTLD_LAZY)) {}

void* SharedLibrary::address(const char* name) const {
  return isOpen() ? dlsym(handle_, name) : nullptr;
}

}  // namespace Cradle
