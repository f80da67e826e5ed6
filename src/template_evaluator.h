// SPDX-License-Identifier: MIT
// The template evaluator: turns the text between "${" and "}" into text or into a reference.
//
// A text without ":" is the name of a registered template; otherwise the part before the first ":"
// is the format and the rest its argument. Formats and their sources are the rows of one table.
// Syntax errors are logged as errors, a source without a value for debugging only.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "config_value.h"
#include "template_context.h"

namespace Cradle::Parser {

enum class TemplateResult : std::uint8_t {
  Text = 0,       // possibly empty
  Failure = 1,    // a message has been logged
  Reference = 2,  // a group and a key
};

struct Substitution {
  std::string_view spec;      // the whole text between the braces
  std::string_view argument;  // what follows the format's ":"
};

// Where an evaluation puts its product; one of the two, as its result says.
struct TemplateOutput {
  std::string& text;
  ValueName& reference;
};

struct TemplateFormat {
  using Evaluate = TemplateResult (*)(const TemplateFormat&, const TemplateContext&,
                                      const Substitution&, TemplateOutput);
  // Reads `argument` from a value source into `text`; false where it has no value.
  using Read = bool (*)(const TemplateContext&, const std::string& argument, std::string& text);

  std::string_view name;
  Evaluate evaluate;
  Read read;              // for formats with a plain source
  std::string_view verb;  // their message: "Failed to VERB 'argument' ORIGIN for template ..."
  std::string_view origin;
};

// Every format, one row each.
std::span<const TemplateFormat> templateFormats();

// Evaluates `spec` into `text` or `reference`, as the result says; both are empty before.
TemplateResult evaluate(const TemplateContext& context, std::string_view spec, std::string& text,
                        ValueName& reference);

}  // namespace Cradle::Parser
