// SPDX-License-Identifier: MIT
#include "run_command.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include <sys/wait.h>
#include <unistd.h>

#include "base/uninterrupted.h"
#include "library_logger.h"
#include "side_effects.h"

namespace Cradle::Parser {
namespace {

constexpr std::size_t kBufferSize = 4096;
constexpr std::size_t kPieceSize = 1023;

std::string commandLine(const std::string& command, std::span<const std::string> arguments) {
  std::string line = command;
  for (const std::string& argument : arguments) {
    line += " '";
    line += argument;
    line += '\'';
  }
  return line;
}

// Not by the stream, which loses what it holds when a signal interrupts it.
std::string readAll(std::FILE* pipe) {
  std::string output;
  std::array<char, kBufferSize> buffer;
  for (;;) {
    const ssize_t count =
        uninterrupted([&] { return ::read(fileno(pipe), buffer.data(), buffer.size()); });
    if (count <= 0) {
      return output;
    }
    output.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

// A piece ends behind its line feed, or where it is full.
std::string cutPiecesAtNul(std::string_view output) {
  std::string text;
  while (!output.empty()) {
    const std::size_t feed = output.substr(0, kPieceSize).find('\n');
    const std::string_view piece = output.substr(0, feed == output.npos ? kPieceSize : feed + 1);
    text += piece.substr(0, piece.find('\0'));
    output.remove_prefix(piece.size());
  }
  return text;
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
  if (isRefused(command)) {
    result = -1;
    return "";
  }
  std::FILE* const pipe = popen(commandLine(command, arguments).c_str(), "r");
  if (pipe == nullptr) {
    libraryLogger().error() << "Failed to execute '" << command << "': " << std::strerror(errno);
    result = -1;
    return "";
  }
  std::string output = readAll(pipe);
  result = pclose(pipe);
  reportStatus(command, result);
  if (output.find('\0') != output.npos) {
    output = cutPiecesAtNul(output);
  }
  return output;
}

}  // namespace Cradle::Parser
