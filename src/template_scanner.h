// SPDX-License-Identifier: MIT
// The template scanner: finds the substitutions in a raw value (see template_scan.h) and puts
// together what they yield.
//
// One failing substitution fails the whole value; the cause has been logged by then.
#pragma once

#include <string_view>

#include "config_value.h"
#include "template_context.h"

namespace Cradle::Parser {

// Expands `input` into `out`, an empty value: its text, and the references to other values at their
// offsets. False when the value must be discarded, whatever `out` then holds.
bool expand(const TemplateContext& context, std::string_view input, ConfigValue& out);

}  // namespace Cradle::Parser
