// SPDX-License-Identifier: MIT
// What a ConfigParser holds; seen only by the files that implement it.
#pragma once

#include "config_parser.h"
#include "config_store.h"
#include "known_keys.h"
#include "template_context.h"

namespace Cradle::Parser {

struct ConfigParser::Implementation {
  explicit Implementation(std::int32_t userId) : templates(userId) {}

  ConfigStore store;
  KnownKeys knownKeys;
  TemplateContext templates;
};

}  // namespace Cradle::Parser
