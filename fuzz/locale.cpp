// SPDX-License-Identifier: MIT
// Locale names. The input is a name.
//
// Properties: a name with a separator gives its first two pieces, any other is reported; a locale
// file and the configuration's override give the locale of the name that they hold.

#include "generators/locale.h"

#include <array>
#include <optional>
#include <string>

#include "common/check.h"
#include "common/memory_file.h"
#include "common/target.h"
#include "config_parser.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using Generators::Locale;

std::string shown(const std::optional<Locale>& locale) {
  return locale ? inQuotes(locale->language) + inQuotes(locale->country) : "none";
}

std::string localeByHand(const std::string& name) {
  std::array<std::string, 2> pieces;
  std::size_t piece = 0;
  for (const char character : name) {
    if (character != '_' && character != '-' && character != '.') {
      pieces[piece] += character;
    } else if (++piece == 2) {
      break;
    }
  }
  return piece == 0 ? "none" : inQuotes(pieces[0]) + inQuotes(pieces[1]);
}

std::string complaint(const std::string& name) {
  return localeByHand(name) == "none"
             ? "ERROR: " + name + ": did not contain language and country\n"
             : "";
}

void checkName(const std::string& name) {
  const Testing::LogCapture log;
  requireEqual(shown(Generators::parseLocaleName(name)), localeByHand(name),
               "a locale is made of the first two pieces of its name");
  requireEqual(log.text(), complaint(name), "a name with one piece is reported");
}

void checkLocaleFile(const MemoryFile& file, const std::string& name) {
  file.write("LANG=\"" + name + "\"\n");
  const Testing::LogCapture log;
  requireEqual(shown(Generators::readLocaleFile(file.path())), localeByHand(name),
               "a locale file gives the locale that it names");
}

void checkOverride(const MemoryFile& file, const std::string& name) {
  file.write("[Config]\nLanguageOverride=" + name + "\n");
  const Testing::LogCapture log;
  Parser::ConfigParser parser(-1);
  require(parser.loadFile(file.path()), "a file of one entry is read");
  const Generators::ConfigReader config(parser);
  requireEqual(shown(Generators::readLocale(config)), localeByHand(name),
               "an override gives the locale that it names");
  requireEqual(
      log.text(),
      complaint(name) + (localeByHand(name) != "none"
                             ? ""
                             : "ERROR: Invalid value for Config/LanguageOverride: " + name + "\n"),
      "a wrong override is reported");
}

}  // namespace

void checkInput(const std::string& input) {
  static const MemoryFile file;
  checkName(input);
  if (input.find('\n') == std::string::npos) {
    checkLocaleFile(file, input);
  }
  // A text with these characters is not one value of a file, and the empty one none at all.
  if (!input.empty() && input.find_first_of("$;\n") == std::string::npos) {
    checkOverride(file, input);
  }
}

}  // namespace Cradle::Fuzz
