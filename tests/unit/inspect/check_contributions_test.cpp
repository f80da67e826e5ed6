// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/findings.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(CheckContributions, FindsLinesOfFragmentsThatDoNotSurvive) {
  const InspectionBench bench({{"1.conf", ""},
                               {"static/a.lxc", "lxc.a = b\n\n# $HOME; x\n"},
                               {"static/b.ro/file", ""},
                               {"static/c.ro", "ro.a=b"}});
  const std::string line = "static/a.lxc:3 changed-by-reading-back The line becomes '# $HOME; x', ";
  EXPECT_EQ(bench.found(checkContributions),
            line +
                "which changes when a generated configuration is read back: ';' separates "
                "values.\n" +
                line +
                "which changes when a generated configuration is read back: '$' begins a "
                "template.\n");
}

TEST(CheckContributions, FindsNothingInOtherCharacters) {
  constexpr std::string_view kText("a\0b\n", 4);
  const InspectionBench bench({{"1.conf", ""}, {"static/a.lxc", kText}});
  EXPECT_EQ(bench.found(checkContributions), "");
}

TEST(CheckContributions, RunsHooksOnlyWhenItMay) {
  InspectionBench bench({{"1.conf", ""}});
  bench.directory.writeScript("mount-hooks/a.sh", "echo /a b none bind 0 0; echo '/a b'\n");
  bench.directory.writeScript("property-pre-hooks/b.sh", "echo \"a=$1;\"; echo b=c\n");
  bench.directory.write("mount-hooks/c.sh", "");
  EXPECT_EQ(bench.found(checkContributions), "");
  bench.lookAgain(true);
  EXPECT_EQ(
      bench.found(checkContributions),
      "mount-hooks/a.sh:0 hook-mount-entry It prints what is no mount entry. Not enough parts "
      "in mount entry: /a b. The entry is left out.\n"
      "property-pre-hooks/b.sh:0 changed-by-reading-back The line becomes 'a=" +
          std::to_string(bench.settings.userId) +
          ";', which changes when a generated configuration is read back: ';' separates "
          "values.\n");
}

}  // namespace
}  // namespace Cradle::Inspect
