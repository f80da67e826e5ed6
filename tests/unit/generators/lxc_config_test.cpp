#include "generators/lxc_config.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Generators {
namespace {

// Failures

TEST(LxcConfig, FailsWithAnErrorAndWritesNothing) {
  const Testing::TemporaryDirectory directory;
  const Testing::LogCapture log;
  EXPECT_EQ(generateLxc(directory.path("out"), {directory.path()}, 0, "default", 0), 1);
  EXPECT_EQ(log.text(), "ERROR: Cannot write an LXC configuration yet\n");
  EXPECT_FALSE(std::filesystem::exists(directory.path("out")));
}

}  // namespace
}  // namespace Cradle::Generators
