#include "inspect/readability.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include "base/file_descriptor.h"

namespace Cradle::Inspect {

std::string whyNoFile(const std::string& path) {
  const dev_t nullDevice = makedev(1, 3);
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    return "";
  }
  if (S_ISFIFO(status.st_mode)) {
    return "it is a named pipe, where a run waits for a writer";
  }
  return S_ISCHR(status.st_mode) && status.st_rdev != nullDevice ? "it is a device" : "";
}

std::string whyUnreadable(const std::string& path) {
  const std::string reason = whyNoFile(path);
  if (!reason.empty()) {
    return reason;
  }
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
