// SPDX-License-Identifier: MIT
#include "template_evaluator.h"

#include <array>
#include <optional>

#include "android_property.h"
#include "base/environment.h"
#include "base/table.h"
#include "base/text.h"
#include "dconf_value.h"
#include "environment_file.h"
#include "library_logger.h"
#include "real_path.h"
#include "run_command.h"

namespace Cradle::Parser {
namespace {

bool readVariable(const TemplateContext& /*context*/, const std::string& name, std::string& text) {
  text = getEnvironment(name, "");
  return !text.empty();
}

bool readRealPath(const TemplateContext& /*context*/, const std::string& path, std::string& text) {
  text = resolvePath(path);
  return !text.empty();
}

bool readDconfKey(const TemplateContext& context, const std::string& key, std::string& text) {
  text = readDconf(key, context.dconfUser());
  return !text.empty();
}

bool readAndroidProperty(const TemplateContext& /*context*/, const std::string& name,
                         std::string& text) {
  text = readProperty(name);
  return !text.empty();
}

bool readCommandOutput(const TemplateContext& /*context*/, const std::string& command,
                       std::string& text) {
  std::int32_t status = 0;
  const std::string output = runCommand(command, {}, &status);
  text = trim(output);
  return status == 0;
}

TemplateResult evaluateSource(const TemplateFormat& format, const TemplateContext& context,
                              const Substitution& substitution, TemplateOutput out) {
  if (format.read(context, std::string(substitution.argument), out.text)) {
    return TemplateResult::Text;
  }
  libraryLogger().debug() << "Failed to " << format.verb << " '" << substitution.argument << "' "
                          << format.origin << " for template '" << substitution.spec << "'";
  return TemplateResult::Failure;
}

TemplateResult evaluateEnvironmentFile(const TemplateFormat& /*format*/,
                                       const TemplateContext& /*context*/,
                                       const Substitution& substitution, TemplateOutput out) {
  const auto parts = split(substitution.argument, ':', EmptyParts::KeepAll, 1);
  if (parts.size() != 2) {
    libraryLogger().error() << "Invalid envfile definition '" << substitution.spec << "'";
    return TemplateResult::Failure;
  }
  std::optional<std::string> value = readEnvironmentFile(std::string(parts[0]), parts[1], false);
  if (!value) {
    libraryLogger().debug() << "Failed to read '" << parts[1] << "' from environment file '"
                            << parts[0] << "' for template '" << substitution.spec << "'";
    return TemplateResult::Failure;
  }
  out.text = std::move(*value);
  return TemplateResult::Text;
}

TemplateResult evaluateReference(const TemplateFormat& /*format*/,
                                 const TemplateContext& /*context*/,
                                 const Substitution& substitution, TemplateOutput out) {
  const auto parts = split(substitution.argument, '/', EmptyParts::KeepAll);
  if (parts.size() != 2 || parts[0].empty() || parts[1].empty()) {
    libraryLogger().error() << "Invalid format '" << substitution.argument
                            << "' for conf template '" << substitution.spec << "'";
    return TemplateResult::Failure;
  }
  out.reference = {std::string(parts[0]), std::string(parts[1])};
  return TemplateResult::Reference;
}

constexpr std::array<TemplateFormat, 7> kFormats{{
    // clang-format off
    {"config",   evaluateReference,       nullptr,             "",        ""},
    {"env",      evaluateSource,          readVariable,        "read",    "from environment variables"},
    {"envfile",  evaluateEnvironmentFile, nullptr,             "",        ""},
    {"realpath", evaluateSource,          readRealPath,        "resolve", "path"},
    {"dconf",    evaluateSource,          readDconfKey,        "read",    "from dconf"},
    {"prop",     evaluateSource,          readAndroidProperty, "read",    "from properties"},
    {"system",   evaluateSource,          readCommandOutput,   "resolve", "from system"},
    // clang-format on
}};

TemplateResult evaluateNamed(const TemplateContext& context, std::string_view name,
                             std::string& text) {
  const std::string* const value = context.find(name);
  if (value == nullptr) {
    libraryLogger().error() << "No such template '" << name << "'";
    return TemplateResult::Failure;
  }
  text = *value;
  return TemplateResult::Text;
}

}  // namespace

std::span<const TemplateFormat> templateFormats() {
  return kFormats;
}

TemplateResult evaluate(const TemplateContext& context, std::string_view spec, std::string& text,
                        ValueName& reference) {
  const std::size_t colon = spec.find(':');
  if (colon == std::string_view::npos) {
    return evaluateNamed(context, spec, text);
  }
  const TemplateFormat* const format =
      findRow(kFormats, &TemplateFormat::name, spec.substr(0, colon));
  if (format == nullptr) {
    libraryLogger().error() << "Invalid template '" << spec << "'";
    return TemplateResult::Failure;
  }
  return format->evaluate(*format, context, {spec, spec.substr(colon + 1)}, {text, reference});
}

}  // namespace Cradle::Parser
