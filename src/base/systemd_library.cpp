#include "base/systemd_library.h"

namespace Cradle {

const SharedLibrary& systemdLibrary() {
  static const SharedLibrary library("libsystemd.so.0");
  return library;
}

}  // namespace Cradle
