// SPDX-License-Identifier: MIT
#include "generators/locale.h"

#include <string>

#include <gtest/gtest.h>

#include "support/config_text.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigParser;
using Testing::loadText;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

// "language|country", or "none".
std::string shown(const std::optional<Locale>& locale) {
  return locale ? locale->language + "|" + locale->country : "none";
}

std::string notALocale(const std::string& name) {
  return "ERROR: " + name + ": did not contain language and country\n";
}

class LocaleTest : public ::testing::Test {
 protected:
  // The locale of a configuration whose group "Config" has these lines.
  std::string localeOf(const std::string& lines) {
    ConfigParser parser(-1);
    EXPECT_TRUE(loadText(parser, "[Config]\n" + lines)) << lines;
    const LogCapture log;
    const std::string locale = shown(readLocale(ConfigReader(parser)));
    log_ = log.text();
    return locale;
  }

  std::string fileLine(const std::string& text) const {
    return "LanguageFilePath=" + directory_.write("locale", text) + "\n";
  }

  TemporaryDirectory directory_;
  std::string log_;
};

TEST(LocaleName, IsSplitAtEverySeparator) {
  struct Name {
    const char* name;
    const char* locale;
  };
  const LogCapture log;
  for (const Name& name : std::initializer_list<Name>{
           {"fi_FI.UTF-8", "fi|FI"},
           {"fi_FI", "fi|FI"},
           {"en-GB", "en|GB"},
           {"en.GB", "en|GB"},
           {"C.UTF-8", "C|UTF"},
           {"de__DE", "de|"},
           {"de_", "de|"},
           {"_DE", "|DE"},
           {"_", "|"},
           {"sr_RS@latin", "sr|RS@latin"},
           {"FI_fi", "FI|fi"},
           {"zh_Hans_CN", "zh|Hans"},
       }) {
    EXPECT_EQ(shown(parseLocaleName(name.name)), name.locale) << name.name;
  }
  EXPECT_EQ(log.text(), "");
}

TEST_F(LocaleTest, IsReadFromTheVariableLangOfAFile) {
  const std::string path = directory_.write("locale", "LC_ALL=sv_SE\nLANG=\"fi_FI.UTF-8\"\n");
  EXPECT_EQ(shown(readLocaleFile(path)), "fi|FI");
}

TEST_F(LocaleTest, IsTheOverrideWhateverAFileSays) {
  EXPECT_EQ(localeOf("LanguageOverride=pt_BR\n" + fileLine("LANG=fi_FI\n")), "pt|BR");
  EXPECT_EQ(localeOf("LanguageOverride=pt_BR\nLanguageFilePath=/no/such/file\n"), "pt|BR");
  EXPECT_EQ(log_, "");
}

TEST_F(LocaleTest, IsThatOfTheConfiguredFile) {
  EXPECT_EQ(localeOf(fileLine("LANG=sv_SE.UTF-8\n")), "sv|SE");
  EXPECT_EQ(log_, "");
}

// Failures

TEST(LocaleName, NeedsTwoPieces) {
  for (const char* const name : {"C", "english", "", "sr@latin"}) {
    const LogCapture log;
    EXPECT_EQ(shown(parseLocaleName(name)), "none") << name;
    EXPECT_EQ(log.text(), notALocale(name)) << name;
  }
}

TEST_F(LocaleTest, IsNotInAFileThatIsMissingOrHasNoVariable) {
  const LogCapture log;
  EXPECT_EQ(shown(readLocaleFile(directory_.path("missing"))), "none");
  EXPECT_EQ(shown(readLocaleFile(directory_.write("locale", "LC_ALL=fi_FI\n"))), "none");
  EXPECT_EQ(log.text(), "");
}

TEST_F(LocaleTest, IsNothingForAWrongOverride) {
  EXPECT_EQ(localeOf("LanguageOverride=english\n" + fileLine("LANG=fi_FI\n")), "none");
  EXPECT_EQ(log_,
            notALocale("english") + "ERROR: Invalid value for Config/LanguageOverride: english\n");
}

TEST_F(LocaleTest, IsTheDefaultWithAWarningForAnUnusableFile) {
  const std::string path = directory_.path("locale");
  const std::string warning = "WARNING: Could not parse locale file " + path + "\n";
  EXPECT_EQ(localeOf("LanguageFilePath=" + path + "\n"), "en|US");
  EXPECT_EQ(log_, warning);
  EXPECT_EQ(localeOf(fileLine("LANGUAGE=fi_FI\n")), "en|US");
  EXPECT_EQ(log_, warning);
  EXPECT_EQ(localeOf(fileLine("LANG=C\n")), "en|US");
  EXPECT_EQ(log_, notALocale("C") + warning);
  EXPECT_EQ(localeOf(fileLine("LANG=\n")), "en|US");
  EXPECT_EQ(log_, notALocale("") + warning);
}

}  // namespace
}  // namespace Cradle::Generators
