// SPDX-License-Identifier: MIT
#include "generators/lxc_config.h"

#include "config_writer.h"
#include "generator_helpers.h"
#include "generators/fragments.h"
#include "generators/generated_group.h"
#include "generators/lxc_rows.h"
#include "generators/output_row.h"
#include "generators/run.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigWriter;
namespace GeneratorHelpers = Parser::GeneratorHelpers;

constexpr const char* kMountEntry = "lxc.mount.entry";

void writeHooksAndFragments(OutputContext& context) {
  for (const std::string& directory : context.directories) {
    GeneratorHelpers::runMountHooks(context.writer, directory + kMountHooks, kMountEntry,
                                    context.run.hookArguments);
    GeneratorHelpers::parseDefaults(context.writer, directory + kStaticLxc);
  }
}

}  // namespace

int generateLxc(const std::string& output, const std::vector<std::string>& directories,
                std::uint32_t userId, const std::string& instance, std::uint32_t baseUid) {
  const auto run = prepareRun(kLxcRun, directories,
                              {.userId = userId, .instance = instance, .baseUid = baseUid});
  if (!run) {
    return 1;
  }
  ConfigWriter writer(output, ConfigWriter::Separator::Spaced);
  OutputContext context{.run = *run, .directories = directories, .writer = writer};
  if (!writeRows(context, lxcRows())) {
    return 1;
  }
  writeHooksAndFragments(context);
  writeStoredBlock(context, {GeneratedGroup::kName, GeneratedGroup::kDefaultLxc},
                   "generated-config-default.lxc content",
                   "end of generated-config-default.lxc content");
  return 0;
}

}  // namespace Cradle::Generators
