// SPDX-License-Identifier: MIT
#include <chrono>
#include <filesystem>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "inspect/findings.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;
using Testing::OrdinaryUser;

// What is found below the directory: who may write to /tmp is up to the machine.
std::string foundInside(const InspectionBench& bench) {
  std::istringstream lines(bench.found(checkSources));
  std::string inside;
  for (std::string line; std::getline(lines, line);) {
    inside += line.starts_with('/') ? "" : line + "\n";
  }
  return inside;
}

void setMode(const InspectionBench& bench, const char* name, unsigned mode) {
  std::filesystem::permissions(bench.directory.path(name), std::filesystem::perms(mode));
}

TEST(CheckSources, FindsNothingAboutWhatWorks) {
  const InspectionBench bench({{"1.conf", ""}, {"mount-hooks/a.sh", ""}, {"static/.a", ""}});
  setMode(bench, "mount-hooks/a.sh", 0755);
  EXPECT_EQ(foundInside(bench), "");
}

TEST(CheckSources, FindsHooksThatDoNotRun) {
  const InspectionBench bench({{"1.conf", ""}, {"mount-hooks/a b.sh", ""}, {"static/a.ro/x", ""}});
  setMode(bench, "mount-hooks/a b.sh", 0644);
  EXPECT_EQ(foundInside(bench),
            "mount-hooks/a b.sh:0 hook-not-runnable The shell cannot run this hook: Permission "
            "denied. What it should print is missing.\n"
            "static/a.ro/:0 unreadable-fragment This fragment cannot be read: Is a directory. No "
            "output has it.\n"
            "mount-hooks/a b.sh:0 hook-name The shell takes its path apart: ' ' is special to "
            "it.\n");
}

TEST(CheckSources, FindsWhatNothingReads) {
  const InspectionBench bench({{"1.conf", ""}, {"a.txt", ""}, {"mount-hook/a.sh", ""}});
  EXPECT_EQ(
      foundInside(bench),
      "a.txt:0 ignored-file Nothing reads it: its name is not *.conf.\n"
      "mount-hook/:0 ignored-file Nothing reads it: nothing is read in this directory (did you "
      "mean mount-hooks?).\n");
}

TEST(CheckSources, AsksForDirectoriesThatAreNearlyMeant) {
  const InspectionBench bench(
      {{"stttik/a", ""}, {"static_", ""}, {"mount-hook", ""}, {"static.d/a", ""}});
  EXPECT_EQ(
      foundInside(bench),
      "mount-hook:0 ignored-file Nothing reads it: its name is not *.conf.\n"
      "static.d/:0 ignored-file Nothing reads it: nothing is read in this directory (did you mean "
      "static?).\n"
      "static_:0 ignored-file Nothing reads it: its name is not *.conf.\n"
      "stttik/:0 ignored-file Nothing reads it: nothing is read in this directory (did you mean "
      "static?).\n");
}

TEST(CheckSources, FindsEverythingAboutOneHook) {
  const InspectionBench bench({{"mount-hooks/a b.sh", ""}});
  setMode(bench, "mount-hooks/a b.sh", 0777);
  EXPECT_EQ(foundInside(bench),
            "mount-hooks/a b.sh:0 hook-name The shell takes its path apart: ' ' is special to it.\n"
            "mount-hooks/a b.sh:0 others-may-write Others may change it (mode 0777), and with it "
            "what root runs.\n");
}

TEST(CheckSources, FindsWhoMayWrite) {
  const InspectionBench bench({{"1.conf", ""}, {"mount-hooks/.a", ""}});
  setMode(bench, "1.conf", 0646);
  setMode(bench, "mount-hooks", 01777);
  EXPECT_EQ(
      foundInside(bench),
      "1.conf:0 others-may-write Others may change it (mode 0646), and with it what root "
      "runs.\n"
      "mount-hooks:0 others-may-write Others may change it (mode 1777), and with it what root "
      "runs.\n");
}

TEST(CheckSources, FindsWhoMayWriteToADirectoryThoughTheyCannotExchangeFiles) {
  const InspectionBench bench({{"1.conf", ""}});
  setMode(bench, "", 01777);
  EXPECT_NE(bench.found(checkSources).find(bench.directory.path() + ":0 others-may-write "),
            std::string::npos);
}

TEST(CheckSources, FindsWhoMayWriteToADirectoryAboveAnother) {
  InspectionBench bench({{"below/1.conf", ""}});
  setMode(bench, "", 01777);
  const std::string finding = bench.directory.path() + ":0 others-may-write ";
  bench.settings.directories = {bench.directory.path("below"), bench.directory.path()};
  bench.lookAgain();
  EXPECT_NE(bench.found(checkSources).find(":0 others-may-write "), std::string::npos);
  bench.settings.directories.pop_back();
  bench.lookAgain();
  EXPECT_EQ(bench.found(checkSources).find(finding), std::string::npos);
}

TEST(CheckSources, FindsTheWayUpFromANameThatBeginsWithTwoSlashes) {
  InspectionBench bench({{"1.conf", ""}});
  setMode(bench, "1.conf", 0646);
  bench.settings.directories = {"/" + bench.directory.path()};
  bench.lookAgain();
  EXPECT_NE(bench.found(checkSources).find("1.conf:0 others-may-write "), std::string::npos);
}

TEST(CheckSources, TrustsOneGroupAlone) {
  const InspectionBench bench({{"1.conf", ""}});
  const gid_t group = geteuid() == 0 ? 1 : getegid();
  EXPECT_EQ(chown(bench.directory.path("1.conf").c_str(), geteuid(), group), 0);
  setMode(bench, "1.conf", 0755);
  EXPECT_EQ(foundInside(bench), "");
  setMode(bench, "1.conf", 0620);
  EXPECT_EQ(foundInside(bench),
            "1.conf:0 others-may-write Others may change it (mode 0620), and with it what root "
            "runs.\n");
  if (geteuid() == 0) {
    EXPECT_EQ(chown(bench.directory.path("1.conf").c_str(), 0, 0), 0);
    EXPECT_EQ(foundInside(bench), "");
  }
}

TEST(CheckSources, FindsWhoMayExchangeLinksAndWhatTheyLeadTo) {
  InspectionBench bench({{"real/1.conf", ""}, {"open/2.conf", ""}, {"way/placeholder", ""}});
  std::filesystem::create_symlink("../open/2.conf", bench.directory.path("real/2.conf"));
  std::filesystem::create_directory_symlink("../real", bench.directory.path("way/link"));
  setMode(bench, "open", 0777);
  setMode(bench, "way", 0777);
  const std::string link = bench.directory.path("way/link");
  const std::filesystem::path here = std::filesystem::current_path();
  for (const std::string& path :
       {link, std::filesystem::path(link).lexically_proximate(here).string()}) {
    bench.settings.directories = {path};
    bench.lookAgain();
    const std::string found = bench.found(checkSources);
    EXPECT_NE(found.find("open:0 others-may-write "), std::string::npos) << found;
    EXPECT_NE(found.find("way:0 others-may-write "), std::string::npos) << found;
  }
}

TEST(CheckSources, FindsWhoMayExchangeWhatALinkLeadsTo) {
  InspectionBench bench({{"open/real/.a", ""}});
  std::filesystem::create_directory_symlink("open/real", bench.directory.path("link"));
  setMode(bench, "open", 0777);
  bench.settings.directories = {bench.directory.path("link")};
  bench.lookAgain();
  EXPECT_EQ(foundInside(bench).substr(0, 24), "open:0 others-may-write ");
}

TEST(CheckSources, TrustsWhoLooks) {
  const InspectionBench bench({{"1.conf", ""}});
  if (geteuid() == 0) {
    for (const char* const name : {"1.conf", ""}) {
      EXPECT_EQ(chown(bench.directory.path(name).c_str(), OrdinaryUser::kDaemon, 0), 0);
    }
    EXPECT_EQ(foundInside(bench),
              "1.conf:0 foreign-owner It belongs to daemon, who can change what root runs.\n");
  }
  const OrdinaryUser user;
  EXPECT_EQ(foundInside(bench), "");
}

TEST(CheckSources, FindsDirectoriesThatTheUserCannotRead) {
  const InspectionBench bench({{"1.conf", ""}, {"mount-hooks/a.sh", ""}});
  setMode(bench, "", 0755);
  setMode(bench, "mount-hooks", 0000);
  {
    const OrdinaryUser user;
    EXPECT_EQ(
        foundInside(bench),
        "mount-hooks:0 unreadable-directory This directory cannot be read: Permission denied. "
        "Not all that is in it is seen.\n");
  }
  setMode(bench, "mount-hooks", 0755);
}

TEST(CheckSources, SaysNothingOfWhatIsInADirectoryThatTheUserCannotRead) {
  InspectionBench bench({{"a/1.conf", ""}});
  setMode(bench, "", 0755);
  setMode(bench, "a", 0444);
  bench.settings.directories = {bench.directory.path("a")};
  {
    const OrdinaryUser user;
    bench.lookAgain();
    EXPECT_EQ(foundInside(bench).find("unreadable-directory"), std::string::npos);
  }
  setMode(bench, "a", 0755);
}

TEST(CheckSources, TellsWhoMayWriteBeforeWhatCannotBeRead) {
  const InspectionBench bench({{"1.conf", ""}, {"mount-hooks/a.sh", ""}});
  setMode(bench, "", 0755);
  setMode(bench, "mount-hooks", 0333);
  std::string found;
  {
    const OrdinaryUser user;
    found = foundInside(bench);
  }
  setMode(bench, "mount-hooks", 0755);
  const std::size_t unreadable = found.find("mount-hooks:0 unreadable-directory ");
  ASSERT_NE(unreadable, std::string::npos) << found;
  EXPECT_LT(found.find("mount-hooks:0 others-may-write "), unreadable) << found;
}

TEST(CheckSources, FindsGeneratedConfigurationsAmongTheirSources) {
  const InspectionBench bench(
      {{"1.conf", "[A]\nK=1\n"}, {"2.conf", "[GeneratedConfig]\nUser=u\n"}});
  const auto now = std::filesystem::last_write_time(bench.directory.path("1.conf"));
  std::filesystem::last_write_time(bench.directory.path("2.conf"), now);
  EXPECT_EQ(
      foundInside(bench),
      "2.conf:0 generated-beside-sources This generated configuration lies among its sources: "
      "a run for config reads all values twice.\n");
  std::filesystem::last_write_time(bench.directory.path("2.conf"), now - std::chrono::hours(1));
  EXPECT_EQ(foundInside(bench),
            "2.conf:0 stale-generated This generated configuration lies among its sources and is "
            "older than 1.conf, but its values come after those.\n");
}

TEST(CheckSources, NamesTheFirstOfTheNewestSources) {
  const InspectionBench bench(
      {{"0.conf", ""}, {"1.conf", ""}, {"2.conf", "[GeneratedConfig]\nUser=u\n"}, {"3.conf", ""}});
  const auto now = std::filesystem::last_write_time(bench.directory.path("2.conf"));
  for (const char* const name : {"1.conf", "3.conf"}) {
    std::filesystem::last_write_time(bench.directory.path(name), now + std::chrono::seconds(1));
  }
  EXPECT_NE(foundInside(bench).find(" is older than 1.conf, "), std::string::npos);
}

TEST(CheckSources, ComparesTimesToTheNanosecond) {
  const InspectionBench bench({{"1.conf", ""}, {"2.conf", "[GeneratedConfig]\nUser=u\n"}});
  const auto second = std::chrono::floor<std::chrono::seconds>(
      std::filesystem::last_write_time(bench.directory.path("1.conf")));
  std::filesystem::last_write_time(bench.directory.path("2.conf"),
                                   second + std::chrono::milliseconds(200));
  std::filesystem::last_write_time(bench.directory.path("1.conf"),
                                   second + std::chrono::milliseconds(700));
  EXPECT_NE(foundInside(bench).find("2.conf:0 stale-generated "), std::string::npos);
}

TEST(CheckSources, TellsWhatComesOfStaleGeneratedConfigurations) {
  const InspectionBench bench(
      {{"1.conf", "[GeneratedConfig]\nUser=u\n"}, {"2.conf", "[A]\nK=1\n"}, {"static/a.lxc", ""}});
  const auto now = std::filesystem::last_write_time(bench.directory.path("2.conf"));
  const std::string head =
      "1.conf:0 stale-generated This generated configuration lies among its sources and is older "
      "than ";
  std::filesystem::last_write_time(bench.directory.path("1.conf"), now - std::chrono::hours(1));
  std::filesystem::last_write_time(bench.directory.path("static/a.lxc"),
                                   now - std::chrono::hours(1));
  EXPECT_EQ(foundInside(bench), head + "2.conf, whose values override it; lists hold both.\n");
  std::filesystem::last_write_time(bench.directory.path("2.conf"), now - std::chrono::hours(2));
  std::filesystem::last_write_time(bench.directory.path("static/a.lxc"), now);
  EXPECT_EQ(foundInside(bench), head + "static/a.lxc, but holds what that gave before.\n");
}

TEST(CheckSources, LikesAGeneratedConfigurationOnItsOwn) {
  EXPECT_EQ(foundInside(InspectionBench({{"2.conf", "[GeneratedConfig]\nUser=u\n"}})), "");
}

TEST(CheckSources, PassesOverADirectoryThatIsNotThere) {
  InspectionBench bench({{"1.conf", ""}});
  bench.settings.directories.push_back(bench.directory.path("none"));
  bench.lookAgain();
  EXPECT_EQ(foundInside(bench), "");
}

}  // namespace
}  // namespace Cradle::Inspect
