// SPDX-License-Identifier: MIT
// The group in which a generated configuration records the facts of its run, and its keys.
//
// Written by generateConfig() and read back by the runs that come after it.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace Cradle::Generators::GeneratedGroup {

inline constexpr std::string_view kName = "GeneratedConfig";

inline constexpr std::string_view kUserId = "UserId";
inline constexpr std::string_view kUser = "User";
inline constexpr std::string_view kHome = "Home";
inline constexpr std::string_view kInstance = "Instance";
inline constexpr std::string_view kBaseUid = "BaseUid";

// The facts, one line each.
inline constexpr std::array kFacts{kBaseUid, kHome, kInstance, kUserId, kUser};

// What hooks and static fragments contributed, any number of lines each.
inline constexpr std::string_view kPropertyPre = "PropertyPre";
inline constexpr std::string_view kPropertyPost = "PropertyPost";
inline constexpr std::string_view kDefaultLxc = "DefaultLxc";
inline constexpr std::string_view kDefaultRo = "DefaultRo";

}  // namespace Cradle::Generators::GeneratedGroup
