// SPDX-License-Identifier: MIT
#include "inspect/source_tree.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

using Testing::BenchFile;
using OutputType = InspectionBench::OutputType;

std::string listed(const InspectionBench& bench, const std::vector<SourceFile>& files) {
  std::string text;
  for (const SourceFile& file : files) {
    text.append(nameOf(file.action)).append(" ").append(file.path).append("\n");
  }
  return bench.inner(text);
}

std::vector<BenchFile> everything() {
  return {{"1.conf", ""},
          {"mount-hooks/m.sh", ""},
          {"property-pre-hooks/a.sh", ""},
          {"property-post-hooks/z.sh", ""},
          {"static/l.lxc", ""},
          {"static/r.ro", ""}};
}

TEST(SourceTree, HasTheOrderOfEachRun) {
  const InspectionBench config(everything());
  EXPECT_EQ(listed(config, findSources(config.inspection).used),
            "read 1.conf\nrun mount-hooks/m.sh\nrun property-pre-hooks/a.sh\n"
            "run property-post-hooks/z.sh\ncopy static/l.lxc\ncopy static/r.ro\n");
  const InspectionBench lxc(everything(), OutputType::Lxc);
  EXPECT_EQ(listed(lxc, findSources(lxc.inspection).used),
            "read 1.conf\nrun mount-hooks/m.sh\ncopy static/l.lxc\n");
  const InspectionBench property(everything(), OutputType::Property);
  EXPECT_EQ(listed(property, findSources(property.inspection).used),
            "read 1.conf\nrun property-pre-hooks/a.sh\nrun property-post-hooks/z.sh\ncopy "
            "static/r.ro\n");
}

TEST(SourceTree, GoesThroughAllDirectoriesInEachRound) {
  struct Row {
    OutputType type;
    const char* used;
  };
  for (const Row& row : {
           Row{OutputType::Config,
               "run a/mount-hooks/m.sh\nrun b/mount-hooks/m.sh\n"
               "run a/property-pre-hooks/a.sh\nrun a/property-post-hooks/z.sh\n"
               "copy a/static/l.lxc\ncopy a/static/r.ro\n"
               "run b/property-pre-hooks/a.sh\nrun b/property-post-hooks/z.sh\n"
               "copy b/static/l.lxc\ncopy b/static/r.ro\n"},
           Row{OutputType::Lxc,
               "run a/mount-hooks/m.sh\ncopy a/static/l.lxc\n"
               "run b/mount-hooks/m.sh\ncopy b/static/l.lxc\n"},
           Row{OutputType::Property,
               "run a/property-pre-hooks/a.sh\nrun b/property-pre-hooks/a.sh\n"
               "run a/property-post-hooks/z.sh\nrun b/property-post-hooks/z.sh\n"
               "copy a/static/r.ro\ncopy b/static/r.ro\n"},
       }) {
    InspectionBench bench({}, row.type);
    bench.settings.directories.clear();
    for (const char* const directory : {"a", "b"}) {
      for (const BenchFile& file : everything()) {
        if (!file.name.ends_with(".conf")) {
          bench.directory.write(std::string(directory) + "/" + std::string(file.name), file.text);
        }
      }
      bench.settings.directories.push_back(bench.directory.path(directory));
    }
    bench.lookAgain();
    EXPECT_EQ(listed(bench, findSources(bench.inspection).used), row.used);
  }
}

TEST(SourceTree, KnowsWhatAGeneratedConfigurationReplaces) {
  std::vector<BenchFile> files = everything();
  files[0].text = "[GeneratedConfig]\nUserId=0\nUser=u\nHome=/\nInstance=i\nBaseUid=0\n";
  const InspectionBench bench(files, OutputType::Property);
  EXPECT_EQ(listed(bench, findSources(bench.inspection).used), "read 1.conf\n");
}

TEST(SourceTree, TellsWhatIsPassedOverAndWhy) {
  const InspectionBench bench(
      {{".a.conf", ""}, {"a.txt", ""}, {"static/a.sh", ""}, {"other/a.sh", ""}});
  std::string text;
  for (const SourceFile& file : findSources(bench.inspection).passed) {
    text += bench.inner(file.path) + ": " + file.fault + "\n";
  }
  EXPECT_EQ(text,
            "a.txt: its name is not *.conf\nother/: nothing is read in this directory\n"
            ".a.conf: its name begins with '.'\nstatic/a.sh: its name is not *.lxc or *.ro\n");
}

TEST(SourceTree, PassesOverFilesWithTheNamesOfDirectories) {
  const InspectionBench bench({{"static", ""}, {"mount-hooks", ""}});
  EXPECT_EQ(listed(bench, findSources(bench.inspection).passed), "- mount-hooks\n- static\n");
}

TEST(SourceTree, PassesOverFilesInTheOrderOfTheirNames) {
  const InspectionBench bench({{"e", ""}, {"b", ""}, {"d", ""}, {"a", ""}, {"f", ""}, {"c", ""}});
  EXPECT_EQ(listed(bench, findSources(bench.inspection).passed), "- a\n- b\n- c\n- d\n- e\n- f\n");
  const InspectionBench hidden({{".e", ""}, {".b", ""}, {".d", ""}, {".a", ""}, {".c", ""}});
  EXPECT_EQ(listed(hidden, findSources(hidden.inspection).passed),
            "- .a\n- .b\n- .c\n- .d\n- .e\n");
}

TEST(SourceTree, TellsModeAndOwner) {
  InspectionBench bench({{"1.conf", ""}});
  std::filesystem::permissions(bench.directory.path("1.conf"), std::filesystem::perms(0640));
  std::filesystem::create_symlink("none", bench.directory.path("2.conf"));
  bench.lookAgain();
  const std::vector<SourceFile> used = findSources(bench.inspection).used;
  ASSERT_EQ(used.size(), 2U);
  EXPECT_EQ(used[0].mode, "0640");
  EXPECT_EQ(used[0].owner, Testing::thisUser().name);
  EXPECT_EQ(used[1].mode + used[1].owner, "");
  EXPECT_EQ(used[1].fault, "No such file or directory");
}

TEST(SourceTree, NamesUsersAsFarAsItCan) {
  const std::uint32_t nobody = Testing::unusedUserId();
  EXPECT_EQ(nameOfUser(nobody), std::to_string(nobody));
  EXPECT_EQ(nameOfUser(Testing::thisUser().uid), Testing::thisUser().name);
  EXPECT_EQ(octalMode(0100755), "0755");
  EXPECT_EQ(octalMode(0101777), "1777");
}

}  // namespace
}  // namespace Cradle::Inspect
