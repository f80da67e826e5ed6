// SPDX-License-Identifier: MIT
#include "template_evaluator.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/dconf_database.h"
#include "support/environment_variable.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using Testing::DconfDatabase;
using Testing::EnvironmentVariable;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

// The product of a substitution: its text between brackets, <group/key>, or "failed".
std::string evaluated(std::string_view spec, const TemplateContext& context) {
  std::string text;
  ValueName reference;
  switch (evaluate(context, spec, text, reference)) {
    case TemplateResult::Text:
      return "[" + text + "]";
    case TemplateResult::Reference:
      return text + "<" + reference.first + "/" + reference.second + ">";
    default:
      return "failed";
  }
}

std::string evaluated(std::string_view spec) {
  return evaluated(spec, TemplateContext(kNoUser));
}

struct Evaluation {
  std::string_view spec;
  std::string_view product;
};

TEST(TemplateEvaluator, NumbersItsResults) {
  EXPECT_EQ(static_cast<int>(TemplateResult::Text), 0);
  EXPECT_EQ(static_cast<int>(TemplateResult::Failure), 1);
  EXPECT_EQ(static_cast<int>(TemplateResult::Reference), 2);
}

// The table of formats

TEST(TemplateFormats, AreTheSevenOfTheLanguage) {
  std::multiset<std::string_view> names;
  for (const TemplateFormat& format : templateFormats()) {
    names.insert(format.name);
  }
  EXPECT_EQ(names, (std::multiset<std::string_view>{"config", "dconf", "env", "envfile", "prop",
                                                    "realpath", "system"}));
}

TEST(TemplateFormats, HaveNamesThatASubstitutionCanHold) {
  for (const TemplateFormat& format : templateFormats()) {
    EXPECT_FALSE(format.name.empty());
    EXPECT_EQ(format.name.find_first_of(":}"), std::string_view::npos) << format.name;
  }
}

TEST(TemplateFormats, CanAllBeEvaluated) {
  for (const TemplateFormat& format : templateFormats()) {
    EXPECT_NE(format.evaluate, nullptr) << format.name;
  }
}

TEST(TemplateFormats, HaveAVerbAndAnOriginExactlyWhereTheyReadASource) {
  for (const TemplateFormat& format : templateFormats()) {
    const bool hasSource = format.read != nullptr;
    EXPECT_EQ(!format.verb.empty(), hasSource) << format.name;
    EXPECT_EQ(!format.origin.empty(), hasSource) << format.name;
  }
}

TEST(TemplateFormats, ReadEachSourceInOneWay) {
  const auto formats = templateFormats();
  for (const TemplateFormat& format : formats) {
    const auto sameSource = [&](const TemplateFormat& other) { return other.read == format.read; };
    if (format.read != nullptr) {
      EXPECT_EQ(std::count_if(formats.begin(), formats.end(), sameSource), 1) << format.name;
    }
  }
}

// Names and references

TEST(TemplateEvaluator, TakesATextWithoutAColonAsTheNameOfATemplate) {
  TemplateContext context(kNoUser);
  context.addTemplate("HOME", "/home/u");
  context.addTemplate("EMPTY", "");
  context.addTemplate("env", "named like a format");
  context.addTemplate("RAW", "${HOME} $$");
  EXPECT_EQ(evaluated("HOME", context), "[/home/u]");
  EXPECT_EQ(evaluated("EMPTY", context), "[]");
  EXPECT_EQ(evaluated("env", context), "[named like a format]");
  EXPECT_EQ(evaluated("RAW", context), "[${HOME} $$]");
}

TEST(TemplateEvaluator, TurnsAConfigSubstitutionIntoAReference) {
  constexpr Evaluation kReferences[] = {
      {"config:Network/Mode", "<Network/Mode>"},
      {"config: G / K ", "< G / K >"},
      {"config:a:b/c:d", "<a:b/c:d>"},
  };
  const LogCapture log(LogCapture::Level::LogDebug);
  for (const Evaluation& row : kReferences) {
    EXPECT_EQ(evaluated(row.spec), row.product) << row.spec;
  }
  EXPECT_EQ(log.text(), "");
}

// Sources

TEST(TemplateEvaluator, ReadsAVariableOfTheEnvironment) {
  const EnvironmentVariable variable("CRADLE_TEST_VALUE", " a:b ");
  EXPECT_EQ(evaluated("env:CRADLE_TEST_VALUE"), "[ a:b ]");
}

TEST(TemplateEvaluator, ReadsAVariableOfAnEnvironmentFile) {
  const TemporaryDirectory directory;
  const std::string file = directory.write("locale", "LANG=fi_FI\nEMPTY=\na:b=colon\n");
  EXPECT_EQ(evaluated("envfile:" + file + ":LANG"), "[fi_FI]");
  EXPECT_EQ(evaluated("envfile:" + file + ":EMPTY"), "[]");
  EXPECT_EQ(evaluated("envfile:" + file + ":a:b"), "[colon]");
}

TEST(TemplateEvaluator, ResolvesAPath) {
  const TemporaryDirectory directory;
  directory.write("a/file", "");
  const std::string real = std::filesystem::canonical(directory.path("a/file"));
  EXPECT_EQ(evaluated("realpath:" + directory.path("a/./../a//file")), "[" + real + "]");
}

TEST(TemplateEvaluator, RunsACommandAndTrimsItsOutput) {
  constexpr Evaluation kCommands[] = {
      {"system:echo x", "[x]"},     {"system:printf ' \\n\\ta  b\\n\\v\\f\\r '", "[a  b]"},
      {"system:true", "[]"},        {"system:printf ' \\n'", "[]"},
      {"system:echo a:b", "[a:b]"}, {"system:", "[]"},
  };
  const LogCapture log(LogCapture::Level::LogDebug);
  for (const Evaluation& row : kCommands) {
    EXPECT_EQ(evaluated(row.spec), row.product) << row.spec;
  }
  EXPECT_EQ(log.text(), "");
}

TEST(TemplateEvaluator, ReadsADconfKey) {
  const DconfDatabase database("[cradle-test]\nkey='stored'\n");
  EXPECT_EQ(database.visibleTo([] { return evaluated("dconf:/cradle-test/key"); }), "[stored]");
}

TEST(TemplateEvaluator, ReadsDconfForTheUserOfTheContext) {
  const DconfDatabase database("[cradle-test]\nkey='stored'\n");
  const auto userId = static_cast<std::int32_t>(getuid());
  const auto asUser = [&] { return evaluated("dconf:/cradle-test/key", TemplateContext(userId)); };
  EXPECT_EQ(database.visibleTo(asUser), "failed");
}

// Failures

struct Refusal {
  std::string_view spec;
  std::string_view log;
};

// Whatever stands behind the colon of a source is its argument, up to the end.
constexpr Refusal kRefusals[] = {
    {"", "ERROR: No such template ''\n"},
    {"NAME", "ERROR: No such template 'NAME'\n"},
    {"ENV:HOME", "ERROR: Invalid template 'ENV:HOME'\n"},
    {" env:HOME", "ERROR: Invalid template ' env:HOME'\n"},
    {"env :HOME", "ERROR: Invalid template 'env :HOME'\n"},
    {":", "ERROR: Invalid template ':'\n"},
    {":HOME", "ERROR: Invalid template ':HOME'\n"},
    {"conf:a/b", "ERROR: Invalid template 'conf:a/b'\n"},
    {"configs:a/b", "ERROR: Invalid template 'configs:a/b'\n"},
    {"config:", "ERROR: Invalid format '' for conf template 'config:'\n"},
    {"config:a", "ERROR: Invalid format 'a' for conf template 'config:a'\n"},
    {"config:/", "ERROR: Invalid format '/' for conf template 'config:/'\n"},
    {"config:a/", "ERROR: Invalid format 'a/' for conf template 'config:a/'\n"},
    {"config:/b", "ERROR: Invalid format '/b' for conf template 'config:/b'\n"},
    {"config:a//b", "ERROR: Invalid format 'a//b' for conf template 'config:a//b'\n"},
    {"config:a/b/", "ERROR: Invalid format 'a/b/' for conf template 'config:a/b/'\n"},
    {"config:a/b/c", "ERROR: Invalid format 'a/b/c' for conf template 'config:a/b/c'\n"},
    {"envfile:", "ERROR: Invalid envfile definition 'envfile:'\n"},
    {"envfile:/etc/x", "ERROR: Invalid envfile definition 'envfile:/etc/x'\n"},
    {"envfile:/no/file:a:b",
     "DEBUG: Failed to read 'a:b' from environment file '/no/file' for template "
     "'envfile:/no/file:a:b'\n"},
    {"envfile::", "DEBUG: Failed to read '' from environment file '' for template 'envfile::'\n"},
    {"env:NO:SUCH",
     "DEBUG: Failed to read 'NO:SUCH' from environment variables for template 'env:NO:SUCH'\n"},
    {"env:", "DEBUG: Failed to read '' from environment variables for template 'env:'\n"},
    {"realpath:/no:such",
     "DEBUG: Failed to resolve '/no:such' path for template 'realpath:/no:such'\n"},
    {"realpath:", "DEBUG: Failed to resolve '' path for template 'realpath:'\n"},
    {"prop:no.such:property",
     "DEBUG: Failed to read 'no.such:property' from properties for template "
     "'prop:no.such:property'\n"},
    {"system:exit 3",
     "WARNING: exit 3 exited with non-zero status: \x03\n"
     "DEBUG: Failed to resolve 'exit 3' from system for template 'system:exit 3'\n"},
    {"system:echo x: && false",
     "WARNING: echo x: && false exited with non-zero status: \x01\n"
     "DEBUG: Failed to resolve 'echo x: && false' from system for template "
     "'system:echo x: && false'\n"},
    {"system:kill -9 $$",
     "DEBUG: Failed to resolve 'kill -9 $$' from system for template 'system:kill -9 $$'\n"},
};

TEST(TemplateEvaluator, TellsWhyItHasNoProduct) {
  for (const Refusal& refusal : kRefusals) {
    const LogCapture log(LogCapture::Level::LogDebug);
    EXPECT_EQ(evaluated(refusal.spec), "failed") << refusal.spec;
    EXPECT_EQ(log.text(), refusal.log) << refusal.spec;
  }
}

TEST(TemplateEvaluator, TakesAnEmptyVariableAsNoValue) {
  const EnvironmentVariable variable("CRADLE_TEST_VALUE", "");
  const LogCapture log(LogCapture::Level::LogDebug);
  EXPECT_EQ(evaluated("env:CRADLE_TEST_VALUE"), "failed");
  EXPECT_EQ(log.text(),
            "DEBUG: Failed to read 'CRADLE_TEST_VALUE' from environment variables for template "
            "'env:CRADLE_TEST_VALUE'\n");
}

TEST(TemplateEvaluator, TellsOfAVariableThatAFileLacksForDebuggingOnly) {
  const TemporaryDirectory directory;
  const std::string file = directory.write("locale", "LANG=fi_FI\n");
  const LogCapture log(LogCapture::Level::LogDebug);
  EXPECT_EQ(evaluated("envfile:" + file + ":LC_ALL"), "failed");
  EXPECT_EQ(log.text(), "DEBUG: Failed to read 'LC_ALL' from environment file '" + file +
                            "' for template 'envfile:" + file + ":LC_ALL'\n");
}

TEST(TemplateEvaluator, TellsOfAMissingDconfKeyForDebuggingOnly) {
  const DconfDatabase database("[cradle-test]\nkey='stored'\n");
  const std::string logged = database.visibleTo([] {
    const LogCapture log(LogCapture::Level::LogDebug);
    const std::string product = evaluated("dconf:/cradle-test/a:b");
    return product + "\n" + log.text();
  });
  EXPECT_EQ(logged,
            "failed\nDEBUG: Failed to read '/cradle-test/a:b' from dconf for template "
            "'dconf:/cradle-test/a:b'\n");
}

TEST(TemplateEvaluator, PrintsNothingOfASourceWithoutAValueAtTheDefaultLevel) {
  const LogCapture log;
  for (const char* const spec : {"env:NO:SUCH", "envfile:/no/file:x", "realpath:/no/such",
                                 "prop:no.such.property", "system:kill -9 $$"}) {
    EXPECT_EQ(evaluated(spec), "failed") << spec;
  }
  EXPECT_EQ(log.text(), "");
}

}  // namespace
}  // namespace Cradle::Parser
