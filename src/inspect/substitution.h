// SPDX-License-Identifier: MIT
// One template substitution, made by the evaluator of the library, and what came of it.
#pragma once

#include <string>
#include <string_view>

#include "config_value.h"
#include "inspect/journal.h"
#include "template_context.h"

namespace Cradle::Inspect {

// The file that the substitution reads, or nothing.
std::string fileOf(std::string_view spec);

// The outcomes up to this one give something.
inline constexpr Outcome kLastSuccess = Outcome::NotRun;

// Evaluates what stands between "${" and "}", appends its text to `text` or its reference to
// `value`. Without `execute` no command is started and the substitution appended as it stands.
Substitution substitute(const Parser::TemplateContext& context, std::string_view spec, bool execute,
                        std::string& text, Parser::ConfigValue& value);

}  // namespace Cradle::Inspect
