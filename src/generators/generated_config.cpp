// SPDX-License-Identifier: MIT
#include "generators/generated_config.h"

#include <span>
#include <string_view>

#include "base/text.h"
#include "config_writer.h"
#include "generator_helpers.h"
#include "generators/fragments.h"
#include "generators/generated_group.h"
#include "generators/run.h"

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

// One run's output, written top to bottom.
class GeneratedFile {
 public:
  GeneratedFile(const std::string& path, const std::vector<std::string>& directories,
                const Run& run)
      : writer_(path, ConfigWriter::Separator::Plain), directories_(directories), run_(run) {}

  void write() {
    writer_.writeComment(kHeadComment);
    writeMergedGroups();
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
  void writeMergedGroups() {
    std::string current;
    run_.parser.forEachEntry(
        [&](std::string_view group, std::string_view key, std::span<const ConfigValue> values) {
          if (group != current) {
            current = group;
            beginGroup(group);
            if (group == kMountedGroup) {
              writeHookedMounts();
            }
          }
          writer_.writeValue(key, joinedText(run_.parser, values));
        });
  }

  void writeHookedMounts() {
    for (const std::string& directory : directories_) {
      Parser::GeneratorHelpers::runMountHooks(writer_, directory + kMountHooks, kMountsKey,
                                              run_.hookArguments);
    }
  }

  void writeContributions() {
    for (const std::string& directory : directories_) {
      collectPropertyHooks(writer_, directory + kPropertyPreHooks, GeneratedGroup::kPropertyPre,
                           run_.hookArguments);
      collectPropertyHooks(writer_, directory + kPropertyPostHooks, GeneratedGroup::kPropertyPost,
                           run_.hookArguments);
      collectStatic(writer_, directory + kStaticLxc, GeneratedGroup::kDefaultLxc);
      collectStatic(writer_, directory + kStaticRo, GeneratedGroup::kDefaultRo);
    }
  }

  void writeFacts() {
    writer_.writeValue(GeneratedGroup::kUserId, std::to_string(run_.facts.userId));
    writer_.writeValue(GeneratedGroup::kUser, run_.facts.user);
    writer_.writeValue(GeneratedGroup::kHome, run_.facts.home);
    writer_.writeValue(GeneratedGroup::kInstance, run_.facts.instance);
    writer_.writeValue(GeneratedGroup::kBaseUid, std::to_string(run_.facts.baseUid));
  }

  ConfigWriter writer_;
  const std::vector<std::string>& directories_;
  const Run& run_;
};

}  // namespace

int generateConfig(const std::string& output, const std::vector<std::string>& directories,
                   std::uint32_t userId, const std::string& instance, std::uint32_t baseUid) {
  const auto run = prepareRun(kConfigRun, directories,
                              {.userId = userId, .instance = instance, .baseUid = baseUid});
  if (!run) {
    return 1;
  }
  GeneratedFile(output, directories, *run).write();
  return 0;
}

}  // namespace Cradle::Generators
