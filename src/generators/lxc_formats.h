// SPDX-License-Identifier: MIT
// The formats, conditions and lines of the LXC configuration that need more than a conversion.
#pragma once

#include <optional>
#include <string>

#include "generators/output_row.h"

namespace Cradle::Generators {

// Where the guest's crash logs are collected.
inline constexpr const char* kCrashLogDirectory = "/tmp/cradle/crashlogs";

// Decides whether the storage is mounted on its own.
inline constexpr ConfigKey kDataRoot{"Config", "DataRoot"};

// The path of a configured device: a name that begins with "/" as it is, any other below /dev.
std::optional<std::string> formatDevicePath(OutputContext& context, const OutputRow& row);
// Everything before the last "/": "/" where that is the first character, "." where there is none.
std::optional<std::string> formatDirectory(OutputContext& context, const OutputRow& row);

inline constexpr Format kDevicePath{"device name", formatDevicePath};
inline constexpr Format kDirectory{"path", formatDirectory};
inline constexpr Format kDeviceList{"list of device names", nullptr};
inline constexpr Format kMountList{"list of mount entries", nullptr};

// Whether there is a storage path outside the data root, as their texts go.
bool storageIsOutsideDataRoot(const OutputContext& context, const OutputRow& row);

inline constexpr Condition kIfOutsideDataRoot{"if present and not below DataRoot",
                                              storageIsOutsideDataRoot};

// One entry per node of each device in the list. False at the first device without a node.
bool writeRequiredDeviceNodes(OutputContext& context, const OutputRow& row);
// The same for devices that may be absent; directories are bound as such.
bool writeOptionalDeviceNodes(OutputContext& context, const OutputRow& row);
// The entry of the crash-log directory, which is made for the base uid; a failure is warned about.
bool writeCrashLogDirectory(OutputContext& context, const OutputRow& row);
// Every element of the list as an entry. False at the first invalid one.
bool writeMounts(OutputContext& context, const OutputRow& row);

}  // namespace Cradle::Generators
