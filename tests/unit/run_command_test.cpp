// SPDX-License-Identifier: MIT
#include "run_command.h"

#include <csignal>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>

#include "support/child_process.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using Testing::inChildProcess;
using Testing::inChildWithoutDescriptors;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

using Arguments = std::vector<std::string>;

// What is lost with every run and counts as one: the status and the log.
struct Outcome {
  std::string output;
  std::int32_t status = 12345;
  std::string log;
};

Outcome run(const std::string& command, const Arguments& arguments = {}) {
  const LogCapture log(LogCapture::Level::LogDebug);
  Outcome result;
  result.output = runCommand(command, arguments, &result.status);
  result.log = log.text();
  return result;
}

TEST(RunCommand, ReturnsTheOutputUntrimmed) {
  EXPECT_EQ(run("printf ' \\n a\\n\\nb \\n\\n'").output, " \n a\n\nb \n\n");
  EXPECT_EQ(run("printf 'no line feed'").output, "no line feed");
  EXPECT_EQ(run("true").output, "");
}

TEST(RunCommand, ReturnsNothingOfTheErrorOutput) {
  EXPECT_EQ(run("exec 2>/dev/null; echo shown; echo hidden >&2").output, "shown\n");
}

TEST(RunCommand, ReportsSuccessAsStatusZeroInSilence) {
  const Outcome result = run("echo x");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.log, "");
}

TEST(RunCommand, NeedsNoPlaceForTheStatus) {
  EXPECT_EQ(runCommand("echo x", {}), "x\n");
  EXPECT_EQ(runCommand("echo x", {}, nullptr), "x\n");
}

TEST(RunCommand, ReadsOutputLongerThanOnePiece) {
  for (const int length : {1022, 1023, 1024, 1025, 2046, 2047, 5000, 200000}) {
    const std::string command = "printf '%0" + std::to_string(length) + "d' 0";
    EXPECT_EQ(run(command).output, std::string(static_cast<std::size_t>(length), '0')) << length;
  }
}

// A signal every millisecond, each of which interrupts the call that is being made.
class Interruptions {
 public:
  Interruptions() {
    struct sigaction action {};
    action.sa_handler = [](int /*signal*/) { interruptions = interruptions + 1; };
    sigaction(SIGALRM, &action, &before_);
    setTimer(kMicroseconds);
  }
  ~Interruptions() {
    setTimer(0);
    sigaction(SIGALRM, &before_, nullptr);
  }
  Interruptions(const Interruptions&) = delete;
  Interruptions& operator=(const Interruptions&) = delete;

  static int count() { return interruptions; }

 private:
  static constexpr suseconds_t kMicroseconds = 1000;

  static void setTimer(suseconds_t microseconds) {
    const itimerval timer{{0, microseconds}, {0, microseconds}};
    setitimer(ITIMER_REAL, &timer, nullptr);
  }

  inline static volatile std::sig_atomic_t interruptions = 0;
  struct sigaction before_ {};
};

TEST(RunCommand, LosesNothingWhenSignalsInterruptIt) {
  const Interruptions interruptions;
  const Outcome result = run("for i in 1 2 3 4 5; do printf $i; sleep 0.02; echo .; done");
  EXPECT_GT(interruptions.count(), 10);
  EXPECT_EQ(result.output, "1.\n2.\n3.\n4.\n5.\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.log, "");
}

TEST(RunCommand, ReadsManyLines) {
  std::string lines;
  for (int i = 1; i <= 3000; ++i) {
    lines += std::to_string(i) + "\n";
  }
  EXPECT_EQ(run("seq 3000").output, lines);
}

TEST(RunCommand, KeepsBytesThatAreNoText) {
  EXPECT_EQ(run("printf '\\377\\001\\r\\033'").output, "\xff\x01\r\x1b");
}

TEST(RunCommand, LosesTheRestOfALineBehindANul) {
  EXPECT_EQ(run("printf 'a\\000b\\nc\\n\\000d\\ne'").output, "ac\ne");
}

TEST(RunCommand, LosesTheRestOfAPieceBehindANulAndNoMore) {
  EXPECT_EQ(run("printf 'a\\000%01021db' 0").output, "ab");
  EXPECT_EQ(run("printf 'a\\000%01022db' 0").output, "a0b");
}

// Arguments

TEST(RunCommand, AppendsTheArgumentsInOrderAndInQuotes) {
  const Arguments arguments{"one", "", "a  b", "$HOME", "`id`", "\"", ";", "*", "\\n"};
  EXPECT_EQ(run("printf '[%s]'", arguments).output, "[one][][a  b][$HOME][`id`][\"][;][*][\\n]");
}

TEST(RunCommand, AppendsNothingWithoutArguments) {
  EXPECT_EQ(run("set -- a; echo $#").output, "1\n");
}

TEST(RunCommand, SeparatesArgumentsFromAnyCommandByABlank) {
  EXPECT_EQ(run("printf %s:", {"a", "b"}).output, "a:b:");
}

TEST(RunCommand, LetsAQuoteInAnArgumentBreakTheQuoting) {
  EXPECT_EQ(run("printf '[%s]'", {"a' 'b"}).output, "[a][b]");
}

TEST(RunCommand, RunsAScriptByItsPath) {
  const TemporaryDirectory directory;
  const std::string script = directory.writeScript("x.sh", "echo \"$#:$1:$2\"\n");
  EXPECT_EQ(run(script, {"first", "second arg"}).output, "2:first:second arg\n");
}

TEST(RunCommand, RunsTheCommandByTheShell) {
  EXPECT_EQ(run("a=1; if [ $a = 1 ]; then echo one; fi | tr o O").output, "One\n");
}

// Failures

TEST(RunCommand, AppendsTheExitCodeToItsWarningAsOneByte) {
  struct Exit {
    int code;
    char byte;
  };
  for (const Exit& row : {Exit{1, '\x01'}, Exit{2, '\x02'}, Exit{10, '\n'}, Exit{65, 'A'},
                          Exit{200, '\xc8'}, Exit{255, '\xff'}}) {
    const std::string command = "exit " + std::to_string(row.code);
    const Outcome result = run(command);
    EXPECT_EQ(result.log,
              "WARNING: " + command + " exited with non-zero status: " + row.byte + "\n");
    EXPECT_EQ(result.status, row.code * 256) << command;
  }
}

TEST(RunCommand, KeepsTheOutputOfAFailingCommand) {
  const Outcome result = run("echo some; echo more; exit 7");
  EXPECT_EQ(result.output, "some\nmore\n");
  EXPECT_EQ(result.status, 7 * 256);
}

TEST(RunCommand, ShowsTheCommandWithoutItsArguments) {
  EXPECT_EQ(run("test", {"a", "=", "b"}).log, "WARNING: test exited with non-zero status: \x01\n");
}

TEST(RunCommand, SaysNothingOfACommandKilledByASignal) {
  const Outcome result = run("echo before; kill -9 $$");
  EXPECT_EQ(result.output, "before\n");
  EXPECT_EQ(result.status, SIGKILL);
  EXPECT_EQ(result.log, "");
}

TEST(RunCommand, WarnsOfACommandThatDoesNotExist) {
  const Outcome result = run("exec 2>/dev/null; /no/such/command");
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.status, 127 * 256);
  EXPECT_EQ(result.log,
            "WARNING: exec 2>/dev/null; /no/such/command exited with non-zero status: \x7f\n");
}

TEST(RunCommand, TellsWhyACommandCouldNotBeStarted) {
  const std::string told = inChildWithoutDescriptors([] {
    const Outcome result = run("echo", {"x"});
    return result.output + "|" + std::to_string(result.status) + "|" + result.log;
  });
  EXPECT_EQ(told, "|-1|ERROR: Failed to execute 'echo': Too many open files\n");
}

TEST(RunCommand, TellsWhyACommandCouldNotBeWaitedFor) {
  const std::string told = inChildProcess([] {
    // The system then reaps the processes of this one by itself.
    std::signal(SIGCHLD, SIG_IGN);
    const Outcome result = run("echo", {"x"});
    return result.output + "|" + std::to_string(result.status) + "|" + result.log;
  });
  EXPECT_EQ(told, "x\n|-1|ERROR: echo pclose() exited with failure: No child processes\n");
}

}  // namespace
}  // namespace Cradle::Parser
