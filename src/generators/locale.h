// SPDX-License-Identifier: MIT
// The guest's language and country, taken from the host.
//
// "Config"/"LanguageOverride" comes first and is never combined with a file; then the locale file
// "Config"/"LanguageFilePath"; then /etc/locale.conf. A locale file is an environment file with the
// variable "LANG". A file without a usable locale is warned about and leaves the defaults.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "generators/config_reader.h"

namespace Cradle::Generators {

struct Locale {
  std::string language = "en";
  std::string country = "US";
};

// What separates the pieces of a locale name.
inline constexpr std::string_view kLocaleSeparators = "_-.";

inline constexpr ConfigKey kLanguageOverride{"Config", "LanguageOverride"};
inline constexpr ConfigKey kLanguageFilePath{"Config", "LanguageFilePath"};

// The first two pieces of `name` between "_", "-" and ".", whatever they are. Nothing, with an
// error logged, where it has only one.
std::optional<Locale> parseLocaleName(std::string_view name);

// The locale that the file at `path` names, or nothing.
std::optional<Locale> readLocaleFile(const std::string& path);

// The locale of the configuration or of the host. Nothing, with an error logged, only where the
// override is not a locale name.
std::optional<Locale> readLocale(const ConfigReader& config);

}  // namespace Cradle::Generators
