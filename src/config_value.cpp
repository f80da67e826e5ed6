// SPDX-License-Identifier: MIT
#include "config_value.h"

#include <cassert>

#include "library_logger.h"

namespace Cradle::Parser {

ConfigValue::ConfigValue(const ConfigValue& other)
    : text_(other.text_),
      references_(other.references_ ? std::make_unique<References>(*other.references_) : nullptr) {}

ConfigValue& ConfigValue::operator=(const ConfigValue& other) {
  ConfigValue copy(other);
  *this = std::move(copy);
  return *this;
}

std::span<const ValueName> ConfigValue::references() const {
  return references_ ? std::span<const ValueName>(references_->names)
                     : std::span<const ValueName>();
}

void ConfigValue::addReference(std::string group, std::string key, std::size_t offset) {
  if (!references_) {
    references_ = std::make_unique<References>();
  }
  references_->offsets.push_back(offset);
  references_->names.emplace_back(std::move(group), std::move(key));
}

std::string ConfigValue::render(std::span<const std::string> texts) const {
  if (!references_) {
    return text_;
  }
  const std::vector<std::size_t>& offsets = references_->offsets;
  if (texts.size() != offsets.size()) {
    libraryLogger().warning() << "ConfigValue references size " << offsets.size()
                              << " mismatch with resolve list size " << texts.size();
    return text_;
  }
  std::string rendered = text_;
  std::size_t inserted = 0;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    assert(offsets[i] + inserted <= rendered.size());
    rendered.insert(offsets[i] + inserted, texts[i]);
    inserted += texts[i].size();
  }
  return rendered;
}

}  // namespace Cradle::Parser
