// SPDX-License-Identifier: MIT
// Mount entries: lines of six fields, as in an fstab, that become the container's mounts.
//
// The check is strict: bind mounts of absolute paths and the pseudo file systems that the container
// needs, dump and pass numbers 0. Fields are separated by single spaces.
#pragma once

#include <string>

#include "export.h"

namespace Cradle::Parser {

// What is wrong with `entry`: the first rule that it breaks and the entry, or nothing at all.
CRADLE_CONFIG_API std::string mountEntryFault(const std::string& entry);

// Whether `entry` obeys every rule. The first broken one is logged as an error.
CRADLE_CONFIG_API bool validateMountEntry(const std::string& entry);

}  // namespace Cradle::Parser
