// SPDX-License-Identifier: MIT
// Actions that change the state of their process, taken in a process of their own.
#pragma once

#include <csignal>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>

#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "library_logger.h"
#include "support/coverage.h"
#include "support/log_capture.h"

namespace Cradle::Testing {

// An exception ends the child and never gets into the parent's code.
[[noreturn]] inline void runAsChild(const std::function<std::string()>& action,
                                    int output) noexcept {
  const std::string result = action();
  const ssize_t sent = write(output, result.data(), result.size());
  keepCounts();
  _exit(sent == static_cast<ssize_t>(result.size()) ? EXIT_SUCCESS : EXIT_FAILURE);
}

// What `action` returned in a child process, which ends with it.
inline std::string inChildProcess(const std::function<std::string()>& action) {
  int ends[2];
  if (pipe(ends) != 0) {
    throw std::runtime_error("cannot make a pipe");
  }
  const pid_t child = fork();
  if (child == 0) {
    runAsChild(action, ends[1]);
  }
  close(ends[1]);
  std::string result;
  char piece[256];
  for (ssize_t count; (count = read(ends[0], piece, sizeof piece)) > 0;) {
    result.append(piece, static_cast<std::size_t>(count));
  }
  close(ends[0]);
  int status = -1;
  if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
    throw std::runtime_error("a child process failed with wait status " + std::to_string(status));
  }
  return result;
}

// From now on a timer interrupts this process every few milliseconds.
inline void interruptOften() {
  struct sigaction interrupt {};
  interrupt.sa_handler = [](int /*signal*/) {};
  sigaction(SIGALRM, &interrupt, nullptr);
  const itimerval often{{0, 5'000}, {0, 5'000}};
  setitimer(ITIMER_REAL, &often, nullptr);
}

// The number that the next file to be opened gets.
inline int nextDescriptor() {
  const int descriptor = dup(STDERR_FILENO);
  close(descriptor);
  return descriptor;
}

// From now on this process can open nothing with that number or a greater one.
inline void limitDescriptors(int number) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = static_cast<rlim_t>(number);
  setrlimit(RLIMIT_NOFILE, &limit);
}

// What `action` returned in a child process that can open nothing: every attempt ends in EMFILE.
// The action begins with a LogCapture, which takes the one number that is left.
inline std::string inChildWithoutDescriptors(const std::function<std::string()>& action) {
  return inChildProcess([&] {
    {
      const LogCapture log;
      Parser::libraryLogger().warning() << "The log is about to be used";
    }
    limitDescriptors(nextDescriptor() + 1);
    return action();
  });
}

}  // namespace Cradle::Testing
