// SPDX-License-Identifier: MIT
#include "main/standard_streams.h"

#include <csignal>
#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace Cradle::CommandLine {

void fillStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // An open takes the lowest free number, which is this one: those below are taken by now.
    if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", O_RDWR) < 0) {
      return;
    }
  }
}

void surviveBrokenPipes() {
  struct sigaction action {};
  action.sa_handler = [](int /*signal*/) {};
  action.sa_flags = SA_RESTART;
  sigaction(SIGPIPE, &action, nullptr);
}

}  // namespace Cradle::CommandLine
