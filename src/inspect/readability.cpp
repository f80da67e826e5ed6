#include "inspect/readability.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "base/file_descriptor.h"

namespace Cradle::Inspect {

std::string whyUnreadable(const std::string& path) {
  const FileDescriptor file(path, O_RDONLY);
  char byte = 0;
  const bool readable =
      file.isOpen() && uninterrupted([&] { return read(file.number(), &byte, 1); }) >= 0;
  return readable ? "" : std::strerror(errno);
}

std::string whyNotRunnable(const std::string& path) {
  if (path.ends_with('/')) {
    return std::strerror(EISDIR);
  }
  return faccessat(AT_FDCWD, path.c_str(), R_OK | X_OK, AT_EACCESS) == 0 ? ""
                                                                         : std::strerror(errno);
}

}  // namespace Cradle::Inspect
