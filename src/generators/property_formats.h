// SPDX-License-Identifier: MIT
// The formats and conditions of the properties that need more than a conversion.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "generators/output_row.h"

namespace Cradle::Generators {

// The words that values are compared with.
inline constexpr std::string_view kNoMangling = "None";
inline constexpr std::string_view kNoDots = "NoDots";
inline constexpr std::string_view kFullscreen = "fullscreen";
inline constexpr std::string_view kFreeform = "freeform";
inline constexpr std::string_view kSkippedNetwork = "skip";
inline constexpr std::string_view kDisabledNetwork = "disable";
inline constexpr std::string_view kLogLevelLetters = "VDIWEFS";  // verbose, debug, ..., silent

// Decides beside the mangling type.
inline constexpr ConfigKey kAppIdPrefix{"Config", "AppIdPrefix"};

// "force_on" or "force_off".
std::optional<std::string> formatForced(OutputContext& context, const OutputRow& row);
// The part behind the last "/", the whole text when it has none.
std::optional<std::string> formatBaseName(OutputContext& context, const OutputRow& row);
// The id of the user of that name or, failing that, of that number (getpwnam, getpwuid); 0 where
// there is neither.
std::optional<std::string> formatHostUser(OutputContext& context, const OutputRow& row);
// 1 for "NoDots"; any other text is wrong.
std::optional<std::string> formatManglingType(OutputContext& context, const OutputRow& row);
// 1 where the text is the one that the row requires, 0 for any other.
std::optional<std::string> formatIsRequired(OutputContext& context, const OutputRow& row);
// See parseOpenGlVersion; any other text is wrong.
std::optional<std::string> formatOpenGlVersion(OutputContext& context, const OutputRow& row);
// Of readLocale; a wrong override is wrong here.
std::optional<std::string> formatLanguage(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatCountry(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatLocale(OutputContext& context, const OutputRow& row);
// The first character as a capital.
std::optional<std::string> formatLogLevel(OutputContext& context, const OutputRow& row);
// The guest's window mode: 1 for "fullscreen", 5 for "freeform"; any other text is wrong.
std::optional<std::string> formatLaunchMode(OutputContext& context, const OutputRow& row);

inline constexpr Format kForced{"boolean", formatForced};
inline constexpr Format kBaseName{"path", formatBaseName};
inline constexpr Format kHostUser{"user name or number", formatHostUser};
inline constexpr Format kManglingType{"None or NoDots", formatManglingType};
inline constexpr Format kIsRequired{"word", formatIsRequired};
inline constexpr Format kOpenGlVersion{"version", formatOpenGlVersion};
inline constexpr Format kLanguage{"locale name", formatLanguage};
inline constexpr Format kCountry{"locale name", formatCountry};
inline constexpr Format kLocale{"locale name", formatLocale};
inline constexpr Format kLogLevel{"log level", formatLogLevel};
inline constexpr Format kLaunchMode{"fullscreen or freeform", formatLaunchMode};

bool appIdsAreMangled(const OutputContext& context, const OutputRow& row);
bool manglingTypeIsNotNone(const OutputContext& context, const OutputRow& row);
bool networkIsTheGuests(const OutputContext& context, const OutputRow& row);
// Whether the text begins with a letter of a log level, in any case.
bool isLogLevel(const std::string& text);
bool logLevelIsKnown(const OutputContext& context, const OutputRow& row);

inline constexpr Condition kIfMangled{"unless None with an empty prefix", appIdsAreMangled};
inline constexpr Condition kIfNotNone{"unless None", manglingTypeIsNotNone};
inline constexpr Condition kIfNetworkUsed{"unless skip or disable", networkIsTheGuests};
inline constexpr Condition kIfLogLevel{"if it begins with a letter of VDIWEFS, in any case",
                                       logLevelIsKnown};

// Writes each element of a list as a line as it is.
inline constexpr Format kRawLines{"list of lines", nullptr};
bool writeRawLines(OutputContext& context, const OutputRow& row);

}  // namespace Cradle::Generators
