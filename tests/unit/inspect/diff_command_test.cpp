// SPDX-License-Identifier: MIT
#include <array>
#include <csignal>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "inspect/command_functions.h"
#include "library_logger.h"
#include "support/child_process.h"
#include "support/inspect_program.h"
#include "support/inspection_bench.h"
#include "support/json_text.h"
#include "support/log_capture.h"

namespace Cradle::Inspect {
namespace {

using Parser::Logging::LoggerConfig;
using Testing::inChildProcess;
using Testing::InspectionBench;
using Testing::InspectProgram;
using Testing::jsonAt;
using Testing::LogCapture;

TEST(DiffCommand, ShowsWhatARunWouldChange) {
  const InspectProgram program;
  program.directory.write("1.conf", "[A]\nK=1\n");
  const std::string old = program.directory.write(
      "old", "# This is an automatically generated file, do not edit\n\n[A]\nK=0\n");
  const Answer answer = program.run({"diff", old, "--color=always"});
  EXPECT_EQ(answer.status, kFindings);
  EXPECT_NE(answer.text.find("\x1b[31m-K=0\x1b[0m\n\x1b[32m+K=1\x1b[0m\n"), std::string::npos)
      << answer.text;
  EXPECT_NE(answer.text.find("\x1b[36m@@ "), std::string::npos);
  EXPECT_TRUE(program.directory.read("old").ends_with("K=0\n"));
}

TEST(DiffCommand, TellsWhatOnlyARunWouldDo) {
  const InspectProgram program;
  program.directory.write("1.conf", "[A]\nK=${system:echo}\n");
  const std::string old = program.directory.write("old", "");
  EXPECT_EQ(program.run({"diff", old}).errors, "not done without --run: run echo\n");
  const std::string document = program.run({"diff", old, "--format=json"}).text;
  EXPECT_EQ(jsonAt(document, "/not_done"), R"(["run echo"])");
  EXPECT_EQ(jsonAt(document, "/diff/0"), "\"--- " + old + '"');
}

TEST(DiffCommand, PassesOnWhatTheRunSaysSafely) {
  const InspectProgram program;
  program.directory.write("1.conf", "[A]\nK=${no\x1b[5m}\n");
  const std::string old = program.directory.write("old", "");
  EXPECT_EQ(program.run({"diff", old}).errors, "ERROR: No such template 'no\\x1b[5m'\n");
  EXPECT_EQ(program.run({"diff", "\xc2\x9b\n"}).errors,
            "cradle-inspect-config: \\u009b\\n: No such file or directory\n");
}

TEST(DiffCommand, ColoursALineByItsFirstCharacter) {
  const InspectProgram program;
  program.directory.write("1.conf", "[A]\nI=me@\nJ=me+\nK=1\n");
  const std::string old = program.directory.write("old", "I=me@\nJ=me+\n");
  const std::string text = program.run({"diff", old, "--color=always"}).text;
  EXPECT_NE(text.find("m\n I=me@\n J=me+\n\x1b[32m+K=1\x1b[0m\n"), std::string::npos) << text;
}

TEST(DiffCommand, LeavesTheLoggerAsTheOtherCommandsNeedIt) {
  const InspectionBench bench({{"1.conf", "[A]\nK=${nothing}\n"}});
  const LogCapture log(LogCapture::Level::LogCritical);
  Options options;
  options.run = bench.settings;
  EXPECT_EQ(runDiff(options, std::array{bench.directory.write("old", "")}).errors,
            "ERROR: No such template 'nothing'\n");
  EXPECT_EQ(Parser::libraryLogger().target(), LoggerConfig::TargetStderr);
  EXPECT_FALSE(Parser::libraryLogger().isEnabled(LoggerConfig::LogError));
}

// Failures

TEST(DiffCommand, NeedsRoomForTheOutputOfTheRun) {
  const InspectProgram program;
  program.directory.write("1.conf", "[A]\nK=1\n");
  const std::string old = program.directory.write("old", "");
  const std::string errors = inChildProcess([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit size{};
    getrlimit(RLIMIT_FSIZE, &size);
    const rlimit nothing{0, size.rlim_max};
    setrlimit(RLIMIT_FSIZE, &nothing);
    std::string said = program.run({"diff", old}).errors;
    setrlimit(RLIMIT_FSIZE, &size);
    return said;
  });
  EXPECT_EQ(errors, "cradle-inspect-config: there is no room for the output of the run\n");
}

TEST(DiffCommand, NeedsAnOutputAndARun) {
  const InspectProgram program;
  program.directory.write("1.conf", "bad\n");
  const std::string none = program.directory.path("none");
  EXPECT_EQ(program.run({"diff", none}).errors,
            "cradle-inspect-config: " + none + ": No such file or directory\n");
  const Answer answer = program.run({"diff", program.directory.write("old", "")});
  EXPECT_EQ(answer.status, kTrouble);
  EXPECT_TRUE(answer.errors.ends_with("cradle-inspect-config: the run would not end well\n"))
      << answer.errors;
}

TEST(DiffCommand, TellsARunThatFailsFromOneThatLacksACommand) {
  const InspectProgram program;
  program.directory.write("1.conf", "[Config]\nAppIdManglingType=${system:echo None}\n");
  const std::string old = program.directory.write("old", "");
  const Answer lacking = program.run({"diff", "--type=property", old});
  EXPECT_EQ(lacking.status, kTrouble);
  EXPECT_TRUE(lacking.errors.ends_with(
      "cradle-inspect-config: the run ends early without what only --run does\n"))
      << lacking.errors;
  program.directory.write("1.conf", "[Config]\nAppIdManglingType=x\n");
  const Answer failing = program.run({"diff", "--type=property", old});
  EXPECT_EQ(failing.status, kTrouble);
  EXPECT_TRUE(failing.errors.ends_with("cradle-inspect-config: the run would fail\n"))
      << failing.errors;
}

TEST(DiffCommand, WaitsForNoWriter) {
  const InspectProgram program;
  const std::string pipe = program.directory.makePipe("old");
  program.directory.write("1.conf", "[A]\nK=1\n");
  EXPECT_EQ(program.run({"diff", pipe}).errors,
            "cradle-inspect-config: " + pipe + ": it is a named pipe\n");
  program.directory.write("static/a.lxc/file", "");
  EXPECT_EQ(program.run({"diff", program.directory.path("1.conf")}).status, kFindings);
  program.directory.makePipe("static/b.lxc");
  const Answer answer = program.run({"diff", program.directory.path("1.conf")});
  EXPECT_EQ(answer.status, kTrouble);
  EXPECT_EQ(answer.errors.find("a.lxc"), std::string::npos);
  EXPECT_NE(answer.errors.find("b.lxc: error: This fragment cannot be read: it is a named pipe"),
            std::string::npos)
      << answer.errors;
}

TEST(DiffCommand, ReadsNoFileWithoutAnEnd) {
  const InspectProgram program;
  program.directory.write("1.conf", "[A]\nK=${envfile:/dev/zero:X}\n");
  const Answer answer = program.run({"diff", program.directory.path("1.conf")});
  EXPECT_EQ(answer.status, kTrouble);
  EXPECT_NE(answer.errors.find(" [no-template-file]\n"), std::string::npos) << answer.errors;
}

}  // namespace
}  // namespace Cradle::Inspect
