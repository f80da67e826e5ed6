// SPDX-License-Identifier: MIT
#include "config_parser.h"

#include <utility>

#include "config_parser_implementation.h"
#include "library_logger.h"

namespace Cradle::Parser {

ConfigParser::ConfigParser(std::int32_t userId)
    : implementation_(std::make_unique<Implementation>(userId)) {}

ConfigParser::~ConfigParser() = default;

void ConfigParser::addTemplate(const std::string& name, const std::string& value) {
  implementation_->templates.addTemplate(name, value);
}

const TemplateContext& ConfigParser::templates() const {
  return implementation_->templates;
}

void ConfigParser::addKnownKey(std::string_view group, std::string_view key, std::uint32_t mode) {
  implementation_->knownKeys.add(group, key, mode);
}

bool ConfigParser::hasGroup(std::string_view group) const {
  return implementation_->store.hasGroup(group);
}

bool ConfigParser::hasValue(std::string_view group, std::string_view key) const {
  return !implementation_->store.find(group, key).empty();
}

bool ConfigParser::hasKey(std::string_view group, std::string_view key) const {
  const KnownKeys& known = implementation_->knownKeys;
  if (!known.empty() && !known.mode(group, key)) {
    libraryLogger().warning() << group << "/" << key << " has not been added to the parser";
  }
  return hasValue(group, key);
}

void ConfigParser::addValue(std::string_view group, std::string_view key, ConfigValue value) {
  implementation_->store.append(group, key, std::move(value));
}

void ConfigParser::removeKey(std::string_view group, std::string_view key) {
  implementation_->store.remove(group, key);
}

void ConfigParser::forEachEntry(const EntryVisitor& visit) const {
  implementation_->store.visitInOrder(visit);
}

}  // namespace Cradle::Parser
