// SPDX-License-Identifier: MIT
#include "mount_entry.h"

#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace Cradle::Parser {
namespace {

using Testing::LogCapture;

TEST(MountEntry, AcceptsBindMountsAndPseudoFileSystems) {
  const LogCapture log;
  for (const char* const entry : {
           "/home/u/data data none bind,create=dir 0 0",
           "tmpfs dev tmpfs nosuid 0 0",
           "none dev/pts devpts defaults 0 0",
           "/x y tmpfs bind 0 0",
           "tmpfs y none bind 0 0",
           "none y none bind 0 0",
           "/ y devpts bind 0 0",
           "/x  none bind 0 0",
           "/x y none  0 0",
           "/x y none bind 0 0 ",
       }) {
    EXPECT_TRUE(validateMountEntry(entry)) << entry;
  }
  EXPECT_EQ(log.text(), "");
}

// Failures

struct Refusal {
  const char* entry;
  const char* message;
};

constexpr Refusal kRefusals[] = {
    {"", "Not enough parts in mount entry: "},
    {"/x y none bind 0", "Not enough parts in mount entry: /x y none bind 0"},
    {"/x y none bind 0 0 extra", "Not enough parts in mount entry: /x y none bind 0 0 extra"},
    {"/x  y none bind 0 0", "Not enough parts in mount entry: /x  y none bind 0 0"},
    {"/x y none bind 0 0  ", "Not enough parts in mount entry: /x y none bind 0 0  "},
    {" /x y none bind 0 0", "Not enough parts in mount entry:  /x y none bind 0 0"},
    {"/x\ty none bind 0 0", "Not enough parts in mount entry: /x\ty none bind 0 0"},
    {"proc proc proc defaults 0 0",
     "Mount entry must begin with '/' or be 'tmpfs' or 'none': proc proc proc defaults 0 0"},
    {"x y none bind 0 0",
     "Mount entry must begin with '/' or be 'tmpfs' or 'none': x y none bind 0 0"},
    {" y none bind 0 0",
     "Mount entry must begin with '/' or be 'tmpfs' or 'none':  y none bind 0 0"},
    {"tmpfs1 y none bind 0 0",
     "Mount entry must begin with '/' or be 'tmpfs' or 'none': tmpfs1 y none bind 0 0"},
    {"devpts y devpts bind 0 0",
     "Mount entry must begin with '/' or be 'tmpfs' or 'none': devpts y devpts bind 0 0"},
    {"x y ext4 bind 1 2",
     "Mount entry must begin with '/' or be 'tmpfs' or 'none': x y ext4 bind 1 2"},
    {"/x y ext4 bind 0 0",
     "File system type must be 'none' or 'tmpfs' instead of 'ext4' in mount entry: /x y ext4 bind "
     "0 0"},
    {"/x y  bind 0 0",
     "File system type must be 'none' or 'tmpfs' instead of '' in mount entry: /x y  bind 0 0"},
    {"/x y None bind 0 0",
     "File system type must be 'none' or 'tmpfs' instead of 'None' in mount entry: /x y None bind "
     "0 0"},
    {"/x y ext4 bind 1 2",
     "File system type must be 'none' or 'tmpfs' instead of 'ext4' in mount entry: /x y ext4 bind "
     "1 2"},
    {"/x y none bind 1 2",
     "Dump value must be '0' instead of '1' in mount entry: /x y none bind 1 2"},
    {"/x y none bind  0", "Dump value must be '0' instead of '' in mount entry: /x y none bind  0"},
    {"/x y none bind 00 0",
     "Dump value must be '0' instead of '00' in mount entry: /x y none bind 00 0"},
    {"/x y none bind 1 0",
     "Dump value must be '0' instead of '1' in mount entry: /x y none bind 1 0"},
    {"/x y none bind 0 2",
     "Backup value must be '0' instead of '2' in mount entry: /x y none bind 0 2"},
    {"/x y none bind 0  ",
     "Backup value must be '0' instead of '' in mount entry: /x y none bind 0  "},
    {"/x y none bind 0 0\r",
     "Backup value must be '0' instead of '0\r' in mount entry: /x y none bind 0 0\r"},
};

TEST(MountEntry, RefusesTheFirstBrokenRuleWithItsMessage) {
  for (const Refusal& refusal : kRefusals) {
    const LogCapture log;
    EXPECT_FALSE(validateMountEntry(refusal.entry)) << refusal.entry;
    EXPECT_EQ(log.text(), "ERROR: " + std::string(refusal.message) + "\n") << refusal.entry;
    EXPECT_EQ(mountEntryFault(refusal.entry), refusal.message) << refusal.entry;
  }
}

}  // namespace
}  // namespace Cradle::Parser
