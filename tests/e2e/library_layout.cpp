// SPDX-License-Identifier: MIT
// What programs that use the configuration library have compiled in: the sizes of its classes and
// the values of its enumerations. Compiling this file is the test; a change here is a new major
// version.

#include <memory>
#include <string>
#include <vector>

#include <cradle-config/config_parser.h>
#include <cradle-config/config_value.h>
#include <cradle-config/config_writer.h>
#include <cradle-config/library_logger.h>
#include <cradle-config/value_mode.h>

namespace Cradle::Parser {

using Logging::Level;
using Logging::LoggerConfig;
using Logging::LogMessage;
using Logging::LogTarget;
using Logging::Target;

static_assert(sizeof(ConfigParser) == sizeof(void*));
static_assert(sizeof(ConfigValue) == sizeof(std::string) + sizeof(void*));
static_assert(sizeof(ConfigWriter) == sizeof(void*));
static_assert(sizeof(LoggerConfig) == sizeof(void*));
static_assert(sizeof(LogTarget) == sizeof(void*) + sizeof(std::shared_ptr<void>));
static_assert(sizeof(LogMessage) ==
              sizeof(void*) + sizeof(std::vector<std::string>) + sizeof(LogTarget));

static_assert(LoadResult{0} == LoadResult::Loaded);
static_assert(LoadResult{1} == LoadResult::NothingToLoad);
static_assert(LoadResult{2} == LoadResult::InvalidConfiguration);
static_assert(SingleValue == 0 && ValueList == 1);
static_assert(ConfigValue::PlainText == 0 && ConfigValue::TextWithReferences == 1);
static_assert(ConfigWriter::Separator{0} == ConfigWriter::Separator::Plain);
static_assert(ConfigWriter::Separator{1} == ConfigWriter::Separator::Spaced);
static_assert(Level{0} == Level::LogCritical && Level{1} == Level::LogError);
static_assert(Level{2} == Level::LogWarning && Level{3} == Level::LogInfo);
static_assert(Level{4} == Level::LogDebug);
static_assert(Target{0} == Target::TargetSystemd && Target{1} == Target::TargetStdout);
static_assert(Target{2} == Target::TargetStderr && Target{3} == Target::TargetFile);

}  // namespace Cradle::Parser
