#include "generators/generated_config.h"

#include <span>
#include <string_view>

#include "base/text.h"
#include "config_parser.h"
#include "config_writer.h"
#include "generator_helpers.h"
#include "generators/fragments.h"
#include "generators/generated_group.h"
#include "generators/generated_user.h"
#include "generators/run_facts.h"
#include "generators/seat_user.h"
#include "library_logger.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigParser;
using Parser::ConfigValue;
using Parser::ConfigWriter;

constexpr std::string_view kHeadComment = "This is an automatically generated file, do not edit";
constexpr std::string_view kMountedGroup = "Config";
constexpr const char* kMountsKey = "Mounts";

// All values of a key with their references followed, the empty ones included.
std::string joinedText(const ConfigParser& parser, std::span<const ConfigValue> values) {
  std::vector<std::string> texts(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    parser.resolve(values[i], texts[i]);
  }
  return join(texts, ";");
}

// The user of the run: as given, or detected.
bool settleUser(RunFacts& facts) {
  if (facts.userId == kUnknownUser) {
    facts.userId = waitForActiveSeatUser(kSeatUserTimeout);
  }
  if (facts.userId == kUnknownUser) {
    Parser::libraryLogger().error() << "User id must be defined!";
    return false;
  }
  return lookUpFacts(facts);
}

// One run's output, written top to bottom.
class GeneratedFile {
 public:
  GeneratedFile(const std::string& path, const std::vector<std::string>& directories,
                const RunFacts& facts)
      : writer_(path, ConfigWriter::Separator::Plain),
        directories_(directories),
        facts_(facts),
        arguments_(hookArguments(facts)) {}

  void write(const ConfigParser& parser) {
    writer_.writeComment(kHeadComment);
    writeMergedGroups(parser);
    beginGroup(GeneratedGroup::kName);
    writeContributions();
    writeFacts();
  }

 private:
  void beginGroup(std::string_view name) {
    writer_.writeEmptyLine();
    writer_.writeGroup(name);
  }

  // Entries of the group with the empty name come first and need no header.
  void writeMergedGroups(const ConfigParser& parser) {
    std::string current;
    parser.forEachEntry(
        [&](std::string_view group, std::string_view key, std::span<const ConfigValue> values) {
          if (group != current) {
            current = group;
            beginGroup(group);
            if (group == kMountedGroup) {
              writeHookedMounts();
            }
          }
          writer_.writeValue(key, joinedText(parser, values));
        });
  }

  void writeHookedMounts() {
    for (const std::string& directory : directories_) {
      Parser::GeneratorHelpers::runMountHooks(writer_, directory + kMountHooks, kMountsKey,
                                              arguments_);
    }
  }

  void writeContributions() {
    for (const std::string& directory : directories_) {
      collectPropertyHooks(writer_, directory + kPropertyPreHooks, GeneratedGroup::kPropertyPre,
                           arguments_);
      collectPropertyHooks(writer_, directory + kPropertyPostHooks, GeneratedGroup::kPropertyPost,
                           arguments_);
      collectStatic(writer_, directory + kStaticLxc, GeneratedGroup::kDefaultLxc);
      collectStatic(writer_, directory + kStaticRo, GeneratedGroup::kDefaultRo);
    }
  }

  void writeFacts() {
    writer_.writeValue(GeneratedGroup::kUserId, std::to_string(facts_.userId));
    writer_.writeValue(GeneratedGroup::kUser, facts_.user);
    writer_.writeValue(GeneratedGroup::kHome, facts_.home);
    writer_.writeValue(GeneratedGroup::kInstance, facts_.instance);
    writer_.writeValue(GeneratedGroup::kBaseUid, std::to_string(facts_.baseUid));
  }

  ConfigWriter writer_;
  const std::vector<std::string>& directories_;
  const RunFacts& facts_;
  const std::vector<std::string> arguments_;
};

}  // namespace

int generateConfig(const std::string& output, const std::vector<std::string>& directories,
                   std::uint32_t userId, const std::string& instance, std::uint32_t baseUid) {
  // The parser is for the user as given: where the user is still to be detected, "dconf" templates
  // read in the environment as it is.
  ConfigParser parser(static_cast<std::int32_t>(userId));
  RunFacts facts{userId, "", "", instance, baseUid};
  if (!settleUser(facts)) {
    return 1;
  }
  addNamedTemplates(parser, facts);
  if (!loadConfiguration(parser, directories)) {
    return 1;
  }
  GeneratedFile(output, directories, facts).write(parser);
  return 0;
}

}  // namespace Cradle::Generators
