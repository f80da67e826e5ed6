// SPDX-License-Identifier: MIT
#include "inspect/finding_text.h"

#include <string>

#include <gtest/gtest.h>

#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(FindingText, IsOneLineAsOfACompiler) {
  const Finding finding{&kindOf(FindingId::HookName), "/a.sh", 3, "A sentence.", "Advice."};
  Page page(false);
  putFinding(page, finding);
  EXPECT_EQ(page.text(), "/a.sh:3: warning: A sentence. [hook-name]\n");
}

TEST(FindingText, LeavesOutAPlaceThatIsNone) {
  Page page(false);
  putFinding(page, {&kindOf(FindingId::NoUser), "", 0, "A.", "B."});
  putFinding(page, {&kindOf(FindingId::NoUser), "/a", 0, "A.", "B."});
  EXPECT_EQ(page.text(), "note: A. [no-user]\n/a: note: A. [no-user]\n");
}

TEST(FindingText, TellsOfARefusalOnlyWhatEndsRuns) {
  InspectionBench bench({{"1.conf", "bad\n[A]\nK=${nope}\n"}});
  bench.settings.directories.push_back(bench.directory.path("none"));
  bench.lookAgain();
  EXPECT_EQ(
      bench.inner(refusalText(bench.inspection)),
      "1.conf:1: error: Could not parse line as key: 'bad'. Every run ends here. [bad-line]\n");
  EXPECT_EQ(refusalText(InspectionBench({{"1.conf", ""}}).inspection), "");
}

TEST(FindingText, TellsWhatARunWouldWaitFor) {
  InspectionBench bench({{"1.conf", ""}, {"static/a.lxc", ""}});
  const std::string pipe = bench.directory.makePipe("static/b.lxc");
  bench.directory.write("1.conf", "[A]\nK=${envfile:" + pipe + ":NAME}\n");
  bench.lookAgain();
  EXPECT_EQ(bench.inner(waitText(bench.inspection)),
            "1.conf:2: error: '${envfile:static/b.lxc:NAME}' cannot be read: it is a named pipe. "
            "The value is not known. [no-template-file]\n"
            "static/b.lxc: error: This fragment cannot be read: it is a named pipe. No output has "
            "it. [unreadable-fragment]\n");
}

}  // namespace
}  // namespace Cradle::Inspect
