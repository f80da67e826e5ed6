// SPDX-License-Identifier: MIT
#include "generators/property_file.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "support/users.h"

namespace Cradle::Generators {
namespace {

using Testing::LogCapture;
using Testing::TemporaryDirectory;
using Testing::thisUser;

constexpr const char* kBegin = "# generated\n";
constexpr const char* kEnd = "# custom properties\n";
constexpr const char* kConfig = "[Config]\nAppIdManglingType=None\nLanguageOverride=fi_FI\n";
constexpr const char* kStored = "[GeneratedConfig]\nUserId=42\nUser=u\nHome=/h\nBaseUid=0\n";

class PropertyFileTest : public ::testing::Test {
 protected:
  int generate(const std::string& output) {
    const LogCapture log;
    const int status = generateProperties(output, {directory_.path("c"), directory_.path("d")},
                                          thisUser().uid, "inst", 7);
    log_ = log.text();
    return status;
  }

  // The file with its table left out: what stands before it, "...", what stands behind it.
  std::string frame() {
    EXPECT_EQ(generate(directory_.path("out")), 0);
    EXPECT_EQ(log_, "");
    const std::string text = directory_.read("out");
    const std::size_t begin = text.find(kBegin);
    const std::size_t end = text.find(kEnd);
    if (begin == std::string::npos || end == std::string::npos) {
      return text;
    }
    return text.substr(0, begin) + "...\n" + text.substr(end + std::string(kEnd).size());
  }

  std::string framed(const std::string& file, const std::string& text) const {
    const std::string path = directory_.path(file);
    return "\n# " + path + " content\n" + text + "# end of " + path + " content\n";
  }

  void writeHooks() const {
    directory_.writeScript("c/property-pre-hooks/a.sh", "echo \"a=$4 $5\"\necho\necho a=2\n");
    directory_.writeScript("d/property-pre-hooks/a.sh", "printf d=$#\n");
    directory_.writeScript("c/property-post-hooks/b.sh", "echo b=1\n");
    directory_.writeScript("c/property-post-hooks/a.sh", "echo '# a'\n");
    directory_.write("c/static/a.ro", "s=1\n");
    directory_.write("d/static/a.ro", "s=2");
    directory_.write("c/static/a.lxc", "no\n");
  }

  TemporaryDirectory directory_;
  std::string log_;
};

TEST_F(PropertyFileTest, HasTheRowsOfTheTableBetweenItsHooks) {
  directory_.write("c/x.conf", kConfig);
  EXPECT_EQ(frame(), "# pre-hooks\n# end of pre-hooks\n...\n# post-hooks\n# end of post-hooks\n");
  EXPECT_NE(directory_.read("out").find("# generated\n# instance name\nro.quoll.instance=inst\n"),
            std::string::npos);
}

TEST_F(PropertyFileTest, HasTheHooksAndFragmentsOfAllDirectories) {
  directory_.write("c/x.conf", kConfig);
  writeHooks();
  EXPECT_EQ(frame(),
            "# pre-hooks\na=inst 7\n\na=2\nd=5\n# end of pre-hooks\n...\n"
            "# post-hooks\n# a\nb=1\n# end of post-hooks\n" +
                framed("c/static/a.ro", "s=1\n") + framed("d/static/a.ro", "s=2\n"));
}

TEST_F(PropertyFileTest, HasInTheirPlaceWhatAGeneratedConfigurationKeeps) {
  directory_.write("c/x.conf", kConfig + std::string(kStored) +
                                   "PropertyPre=p=1;p=2\nPropertyPost=q\nDefaultRo=#r\n");
  writeHooks();
  EXPECT_EQ(frame(),
            "# generated-config-property-pre\np=1\np=2\n# end of generated-config-property-pre\n"
            "...\n"
            "# generated-config-property-post\nq\n# end of generated-config-property-post\n"
            "# generated-config-default.ro content\n#r\n"
            "# end of generated-config-default.ro content\n");
}

TEST_F(PropertyFileTest, HasStoredBlocksWithoutStoredFactsToo) {
  directory_.write("c/x.conf", kConfig + std::string("[GeneratedConfig]\nPropertyPre=p=1\n"
                                                     "PropertyPost=q=1\nDefaultRo=r=1\n"));
  directory_.write("c/static/a.ro", "s=1\n");
  EXPECT_EQ(frame(),
            "# pre-hooks\n# end of pre-hooks\n"
            "# generated-config-property-pre\np=1\n# end of generated-config-property-pre\n"
            "...\n"
            "# post-hooks\n# end of post-hooks\n"
            "# generated-config-property-post\nq=1\n# end of generated-config-property-post\n" +
                framed("c/static/a.ro", "s=1\n") +
                "# generated-config-default.ro content\nr=1\n"
                "# end of generated-config-default.ro content\n");
}

// Failures

TEST_F(PropertyFileTest, WritesNothingWithoutConfiguration) {
  EXPECT_EQ(generate(directory_.path("out")), 1);
  EXPECT_EQ(log_, "ERROR: No configuration to read in " + directory_.path("c") + ", " +
                      directory_.path("d") + "\n");
  EXPECT_FALSE(std::filesystem::exists(directory_.path("out")));
}

TEST_F(PropertyFileTest, KeepsTheLinesBeforeAWrongValueAndRunsNoMoreHooks) {
  directory_.write("c/x.conf", "[Config]\nAppIdManglingType=Dots\n");
  writeHooks();
  EXPECT_EQ(generate(directory_.path("out")), 1);
  const std::string text = directory_.read("out");
  EXPECT_TRUE(text.starts_with("# pre-hooks\na=inst 7\n")) << text;
  EXPECT_TRUE(text.ends_with("\n# dialogs\nro.quoll.use_dialogs=0\n# wayland app id mangling\n"))
      << text;
  EXPECT_EQ(log_, "ERROR: Invalid value for Config/AppIdManglingType: Dots\n");
}

TEST_F(PropertyFileTest, SucceedsThoughTheFileCannotBeWritten) {
  directory_.write("c/x.conf", kConfig);
  EXPECT_EQ(generate(directory_.path("missing/out")), 0);
  EXPECT_EQ(log_, "");
}

}  // namespace
}  // namespace Cradle::Generators
