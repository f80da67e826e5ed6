// SPDX-License-Identifier: MIT
#include "inspect/substitution.h"

#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace Cradle::Inspect {
namespace {

using Testing::LogCapture;

struct Case {
  const char* spec;
  Outcome outcome;
  const char* text;
};

constexpr Case kCases[] = {
    {"NAME", Outcome::Text, "value"},
    {"Name", Outcome::UnknownName, ""},
    {"system", Outcome::UnknownName, ""},
    {"config:A/B", Outcome::Reference, "A/B"},
    {"config:A", Outcome::Malformed, ""},
    {"envfile:/dev/null", Outcome::Malformed, ""},
    {"envfile:/dev/null:X", Outcome::NoValue, ""},
    {"envfile:/dev/zero:X", Outcome::NoFile, "it is a device"},
    {"envfile", Outcome::UnknownName, ""},
    {"env:CRADLE_NOT_SET", Outcome::NoValue, ""},
    {"realpath:/..", Outcome::Text, "/"},
    {"nope:x", Outcome::UnknownFormat, ""},
};

Substitution made(const char* spec, bool execute, std::string& text, Parser::ConfigValue& value) {
  const LogCapture log(LogCapture::Level::LogCritical);
  Parser::TemplateContext context(-1);
  context.addTemplate("NAME", "value");
  return substitute(context, spec, execute, text, value);
}

TEST(Substitution, TellsWhatCameOfIt) {
  for (const Case& each : kCases) {
    std::string text = "<";
    Parser::ConfigValue value;
    const Substitution result = made(each.spec, true, text, value);
    EXPECT_EQ(result.spec, each.spec);
    EXPECT_EQ(result.outcome, each.outcome) << each.spec;
    EXPECT_EQ(result.text, each.text) << each.spec;
    const bool isText = each.outcome == Outcome::Text;
    EXPECT_EQ(text, std::string("<") + (isText ? each.text : "")) << each.spec;
    EXPECT_EQ(value.references().size(), each.outcome == Outcome::Reference ? 1U : 0U);
  }
}

TEST(Substitution, StartsCommandsOnlyWhenItMay) {
  std::string text = "<";
  Parser::ConfigValue value;
  EXPECT_EQ(made("system:echo x", true, text, value).outcome, Outcome::Text);
  EXPECT_EQ(text, "<x");
  EXPECT_EQ(made("system:echo x", false, text, value).outcome, Outcome::NotRun);
  EXPECT_EQ(text, "<x${system:echo x}");
  EXPECT_EQ(made("system:false", true, text, value).outcome, Outcome::NoValue);
}

TEST(Substitution, NamesTheFileOfAnEnvironmentFileAlone) {
  EXPECT_EQ(fileOf("envfile:/a:B"), "/a");
  EXPECT_EQ(fileOf("envfile:/a:"), "/a");
  EXPECT_EQ(fileOf("envfile:/a:B:C"), "/a");
  EXPECT_EQ(fileOf("envfile:/a"), "");
  EXPECT_EQ(fileOf("system:/a:B"), "");
}

}  // namespace
}  // namespace Cradle::Inspect
