// SPDX-License-Identifier: MIT
#include "generators/property_file.h"

#include "config_writer.h"
#include "generator_helpers.h"
#include "generators/fragments.h"
#include "generators/generated_group.h"
#include "generators/output_row.h"
#include "generators/property_rows.h"
#include "generators/run.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigWriter;

// The hooks of every directory between two comments, unless the generated configuration has taken
// up what they print.
void writeHooks(OutputContext& context, std::string_view kind) {
  if (context.run.fromGenerated) {
    return;
  }
  context.writer.writeComment(kind);
  for (const std::string& directory : context.directories) {
    runPropertyHooks(context.writer, directory, kind, context.run.hookArguments);
  }
  context.writer.writeComment(std::string("end of ").append(kind));
}

void writeStaticFragments(OutputContext& context) {
  if (context.run.fromGenerated) {
    return;
  }
  for (const std::string& directory : context.directories) {
    Parser::GeneratorHelpers::parseDefaults(context.writer, directory + kStaticRo);
  }
}

bool writeFile(OutputContext& context) {
  writeHooks(context, "pre-hooks");
  writeStoredBlock(context, {GeneratedGroup::kName, GeneratedGroup::kPropertyPre},
                   "generated-config-property-pre", "end of generated-config-property-pre");
  context.writer.writeComment("generated");
  if (!writeRows(context, propertyRows())) {
    return false;
  }
  writeHooks(context, "post-hooks");
  writeStoredBlock(context, {GeneratedGroup::kName, GeneratedGroup::kPropertyPost},
                   "generated-config-property-post", "end of generated-config-property-post");
  writeStaticFragments(context);
  writeStoredBlock(context, {GeneratedGroup::kName, GeneratedGroup::kDefaultRo},
                   "generated-config-default.ro content",
                   "end of generated-config-default.ro content");
  return true;
}

}  // namespace

int generateProperties(const std::string& output, const std::vector<std::string>& directories,
                       std::uint32_t userId, const std::string& instance, std::uint32_t baseUid) {
  const auto run = prepareRun(kPropertyRun, directories,
                              {.userId = userId, .instance = instance, .baseUid = baseUid});
  if (!run) {
    return 1;
  }
  ConfigWriter writer(output, ConfigWriter::Separator::Plain);
  OutputContext context{.run = *run, .directories = directories, .writer = writer};
  return writeFile(context) ? 0 : 1;
}

}  // namespace Cradle::Generators
