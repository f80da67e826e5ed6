// SPDX-License-Identifier: MIT
#include "template_scanner.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/environment_variable.h"
#include "support/log_capture.h"

namespace Cradle::Parser {
namespace {

using Testing::EnvironmentVariable;
using Testing::LogCapture;

using namespace std::string_view_literals;

class TemplateScanner : public ::testing::Test {
 protected:
  TemplateScanner() {
    context_.addTemplate("NAME", "value");
    context_.addTemplate("EMPTY", "");
    context_.addTemplate("a{b", "inner");
    context_.addTemplate(" x ", "spaced");
    context_.addTemplate("DOLLARS", "$ $$ ${NAME} ${");
  }

  // The expanded text with each reference shown as <group/key> where it belongs, or "failed".
  std::string expanded(std::string_view input) const {
    ConfigValue value;
    if (!expand(context_, input, value)) {
      return "failed";
    }
    std::vector<std::string> shown;
    for (const auto& [group, key] : value.references()) {
      shown.push_back("<" + group + "/" + key + ">");
    }
    return value.render(shown);
  }

  TemplateContext context_{kNoUser};
};

struct Expansion {
  std::string_view input;
  std::string_view expanded;
};

constexpr Expansion kExpansions[] = {
    {"", ""},
    {"plain", "plain"},
    {" spaced\t\r ", " spaced\t\r "},
    {"{NAME}", "{NAME}"},
    {"}{", "}{"},
    {"\0\xff"sv, "\0\xff"sv},
    {"cost $$5", "cost $5"},
    {"$$", "$"},
    {"$$$$", "$$"},
    {"$${NAME}", "${NAME}"},
    {"$$$${NAME}", "$${NAME}"},
    {"$$${NAME}", "$value"},
    {"${NAME}", "value"},
    {"a${NAME}b", "avalueb"},
    {"${NAME}${NAME}", "valuevalue"},
    {"${NAME}}", "value}"},
    {"${EMPTY}", ""},
    {"a${EMPTY}b", "ab"},
    {"${a{b}c}", "innerc}"},
    {"${ x }", "spaced"},
    {"${DOLLARS}", "$ $$ ${NAME} ${"},
    {"${DOLLARS}${NAME}", "$ $$ ${NAME} ${value"},
    {"${system:true}", ""},
    {"${config:Network/Mode}", "<Network/Mode>"},
    {"a${config:G/K}b", "a<G/K>b"},
    {"${config:A/B}${config:C/D}", "<A/B><C/D>"},
    {"$$${config:G/K}", "$<G/K>"},
    {"${NAME}${config:G/K}c", "value<G/K>c"},
    {"x${config:A/B}${NAME}y${config:C/D}$$", "x<A/B>valuey<C/D>$"},
};

TEST_F(TemplateScanner, PutsTogetherLiteralTextProducedTextAndReferences) {
  const LogCapture log(LogCapture::Level::LogDebug);
  for (const Expansion& row : kExpansions) {
    EXPECT_EQ(expanded(row.input), row.expanded) << row.input;
  }
  EXPECT_EQ(log.text(), "");
}

TEST_F(TemplateScanner, KeepsReferencesOutOfTheText) {
  ConfigValue value;
  ASSERT_TRUE(expand(context_, "a${config:G/K}b", value));
  EXPECT_EQ(value.text(), "ab");
  EXPECT_EQ(value.kind(), ConfigValue::TextWithReferences);
  EXPECT_FALSE(value.isEmpty());
}

TEST_F(TemplateScanner, MakesPlainTextWhereNothingIsReferred) {
  ConfigValue value;
  ASSERT_TRUE(expand(context_, "a${NAME}b", value));
  EXPECT_EQ(value.kind(), ConfigValue::PlainText);
}

TEST_F(TemplateScanner, DoesNotLookIntoTheValueOfAVariable) {
  const EnvironmentVariable variable("CRADLE_TEST_VALUE", "${x} $$ ${config:G/K}");
  EXPECT_EQ(expanded("[${env:CRADLE_TEST_VALUE}]"), "[${x} $$ ${config:G/K}]");
}

TEST_F(TemplateScanner, JoinsAVariableWithTheTextAroundIt) {
  const EnvironmentVariable home("CRADLE_TEST_HOME", "/home/u");
  EXPECT_EQ(expanded("${env:CRADLE_TEST_HOME}/data"), "/home/u/data");
}

TEST_F(TemplateScanner, CopiesALongTextInWhole) {
  std::string input;
  std::string wanted;
  for (int i = 0; i < 1000; ++i) {
    input += std::to_string(i) + "$$${NAME}${config:G/K}";
    wanted += std::to_string(i) + "$value<G/K>";
  }
  EXPECT_EQ(expanded(input), wanted);
}

// Failures

struct Refusal {
  std::string_view input;
  std::string_view message;
};

constexpr Refusal kRefusals[] = {
    {"abc$", "'$' must be followed by '{' or '$': abc$"},
    {"$", "'$' must be followed by '{' or '$': $"},
    {"$x", "'$' must be followed by '{' or '$': $x"},
    {"a$ {NAME}", "'$' must be followed by '{' or '$': a$ {NAME}"},
    {"$NAME;b", "'$' must be followed by '{' or '$': $NAME;b"},
    {"$}", "'$' must be followed by '{' or '$': $}"},
    {"$$$", "'$' must be followed by '{' or '$': $$$"},
    {"${NAME}$", "'$' must be followed by '{' or '$': ${NAME}$"},
    {"a${env:X", "Invalid template substitution, missing '}': a${env:X"},
    {"${", "Invalid template substitution, missing '}': ${"},
    {"a${NAME}${NAME", "Invalid template substitution, missing '}': a${NAME}${NAME"},
    {"}${NAME", "Invalid template substitution, missing '}': }${NAME"},
    {"${}", "No such template ''"},
    {"${NAME }", "No such template 'NAME '"},
    {"${ NAME}", "No such template ' NAME'"},
    {"${name}", "No such template 'name'"},
    {"${${NAME}}", "No such template '${NAME'"},
    {"a${first}b${second}", "No such template 'first'"},
    {"${config:G/K}${second}$", "No such template 'second'"},
    {"${ENV:HOME}", "Invalid template 'ENV:HOME'"},
    {"${config:a/b/c}", "Invalid format 'a/b/c' for conf template 'config:a/b/c'"},
};

TEST_F(TemplateScanner, RefusesAValueAtItsFirstFault) {
  for (const Refusal& refusal : kRefusals) {
    const LogCapture log;
    EXPECT_EQ(expanded(refusal.input), "failed") << refusal.input;
    EXPECT_EQ(log.text(), "ERROR: " + std::string(refusal.message) + "\n") << refusal.input;
  }
}

TEST_F(TemplateScanner, RefusesAValueWithAnUnsetVariableSilently) {
  const EnvironmentVariable unset("CRADLE_TEST_UNSET", nullptr);
  const LogCapture log;
  EXPECT_EQ(expanded("a${env:CRADLE_TEST_UNSET}b"), "failed");
  EXPECT_EQ(log.text(), "");
}

}  // namespace
}  // namespace Cradle::Parser
