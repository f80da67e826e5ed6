// SPDX-License-Identifier: MIT
#include "inspect/readability.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/input_file.h"

namespace Cradle::Inspect {
namespace {

constexpr std::size_t kLongestFirstLine = 256;  // that the kernel looks at
constexpr std::string_view kInterpreterMark = "#!";
constexpr std::string_view kBlanks = " \t";

// What the kernel sees of it.
std::string firstLineOf(const std::string& path) {
  std::array<char, kLongestFirstLine> begin{};
  const std::size_t count = InputFile(path).read(begin).value_or(0);
  const std::string text(begin.data(), count);
  return text.substr(0, text.find('\n'));
}

// Why the program that the line names cannot be run. A script that names none is the shell's own.
std::string interpreterFault(const std::string& line) {
  if (!line.starts_with(kInterpreterMark)) {
    return "";
  }
  if (line.ends_with('\r')) {
    return "its first line ends with a carriage return";
  }
  const std::size_t begin = line.find_first_not_of(kBlanks, kInterpreterMark.size());
  if (begin == line.npos) {
    return "";
  }
  const std::string program = line.substr(begin, line.find_first_of(kBlanks, begin) - begin);
  return faccessat(AT_FDCWD, program.c_str(), X_OK, AT_EACCESS) == 0
             ? ""
             : "its interpreter '" + program + "': " + std::strerror(errno);
}

}  // namespace

std::string whyNoFile(const std::string& path) {
  const dev_t nullDevice = makedev(1, 3);
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    return "";
  }
  if (S_ISFIFO(status.st_mode)) {
    return "it is a named pipe";
  }
  return S_ISCHR(status.st_mode) && status.st_rdev != nullDevice ? "it is a device" : "";
}

std::string whyUnreadable(const std::string& path) {
  std::string reason = whyNoFile(path);
  if (!reason.empty()) {
    return reason;
  }
  const FileDescriptor file(path, O_RDONLY);
  char byte = 0;
  const bool readable =
      file.isOpen() && uninterrupted([&] { return read(file.number(), &byte, 1); }) >= 0;
  return readable ? "" : std::strerror(errno);
}

std::string whyNotListed(const std::string& directory) {
  struct stat status {};
  if (stat(directory.c_str(), &status) != 0) {
    return errno == EACCES ? std::strerror(errno) : "";
  }
  const bool isListed = !S_ISDIR(status.st_mode) ||
                        faccessat(AT_FDCWD, directory.c_str(), R_OK | X_OK, AT_EACCESS) == 0;
  return isListed ? "" : std::strerror(errno);
}

std::string whyNotRunnable(const std::string& path) {
  std::error_code ignored;
  if (path.ends_with('/')) {
    return std::strerror(EISDIR);
  }
  if (faccessat(AT_FDCWD, path.c_str(), R_OK | X_OK, AT_EACCESS) != 0) {
    return std::strerror(errno);
  }
  return std::filesystem::is_regular_file(std::filesystem::path(path), ignored)
             ? interpreterFault(firstLineOf(path))
             : "it is no regular file";
}

}  // namespace Cradle::Inspect
