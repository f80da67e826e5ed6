#include "base/systemd_library.h"

#include "base/optional_libraries.h"

namespace Cradle {

const SharedLibrary& systemdLibrary() {
  static const SharedLibrary library(kSystemdLibrary.soname);
  return library;
}

}  // namespace Cradle
