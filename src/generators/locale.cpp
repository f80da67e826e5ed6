// SPDX-License-Identifier: MIT
#include "generators/locale.h"

#include "environment_file.h"
#include "generators/invalid_value.h"
#include "library_logger.h"

namespace Cradle::Generators {
namespace {

constexpr std::string_view kLocaleVariable = "LANG";
constexpr const char* kHostLocaleFile = "/etc/locale.conf";

}  // namespace

std::optional<Locale> parseLocaleName(std::string_view name) {
  const std::size_t languageEnd = name.find_first_of(kLocaleSeparators);
  if (languageEnd == std::string_view::npos) {
    Parser::libraryLogger().error() << name << ": did not contain language and country";
    return std::nullopt;
  }
  const std::string_view rest = name.substr(languageEnd + 1);
  return Locale{.language = std::string(name.substr(0, languageEnd)),
                .country = std::string(rest.substr(0, rest.find_first_of(kLocaleSeparators)))};
}

std::optional<Locale> readLocaleFile(const std::string& path) {
  const std::optional<std::string> name = Parser::readEnvironmentFile(path, kLocaleVariable, false);
  return name ? parseLocaleName(*name) : std::nullopt;
}

std::optional<Locale> readLocale(const ConfigReader& config) {
  if (config.has(kLanguageOverride)) {
    const std::string name = config.text(kLanguageOverride);
    std::optional<Locale> locale = parseLocaleName(name);
    if (!locale) {
      reportInvalidValue(kLanguageOverride, name);
    }
    return locale;
  }
  const std::string path = config.text(kLanguageFilePath, kHostLocaleFile);
  std::optional<Locale> locale = readLocaleFile(path);
  if (!locale) {
    Parser::libraryLogger().warning() << "Could not parse locale file " << path;
  }
  return locale.value_or(Locale{});
}

}  // namespace Cradle::Generators
