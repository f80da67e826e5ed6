#include "run_command.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/wait.h>

#include "library_logger.h"

namespace Cradle::Parser {
namespace {

constexpr int kPieceSize = 1024;

std::string commandLine(const std::string& command, std::span<const std::string> arguments) {
  std::string line = command;
  for (const std::string& argument : arguments) {
    line += " '";
    line += argument;
    line += '\'';
  }
  return line;
}

std::string readAll(std::FILE* pipe) {
  std::string output;
  std::array<char, kPieceSize> piece{};
  while (std::fgets(piece.data(), kPieceSize, pipe) != nullptr) {
    output += piece.data();
  }
  return output;
}

void reportStatus(const std::string& command, int status) {
  if (status < 0) {
    libraryLogger().error() << command << " pclose() exited with failure: " << std::strerror(errno);
  } else if (WIFEXITED(status) && WEXITSTATUS(status) != 0) {
    // The code is appended as one raw byte; whoever reads these lines knows them so.
    libraryLogger().warning() << command << " exited with non-zero status: "
                              << static_cast<char>(WEXITSTATUS(status));
  }
}

}  // namespace

std::string runCommand(const std::string& command, std::span<const std::string> arguments,
                       std::int32_t* status) {
  std::int32_t ignored = 0;
  std::int32_t& result = status == nullptr ? ignored : *status;
  std::FILE* const pipe = popen(commandLine(command, arguments).c_str(), "r");
  if (pipe == nullptr) {
    libraryLogger().error() << "Failed to execute '" << command << "': " << std::strerror(errno);
    result = -1;
    return "";
  }
  std::string output = readAll(pipe);
  result = pclose(pipe);
  reportStatus(command, result);
  return output;
}

}  // namespace Cradle::Parser
