// SPDX-License-Identifier: MIT
#include "inspect/substitution.h"

#include "base/table.h"
#include "base/text.h"
#include "inspect/readability.h"
#include "template_evaluator.h"

namespace Cradle::Inspect {
namespace {

using Parser::TemplateContext;
using Parser::TemplateFormat;
using Parser::TemplateResult;

constexpr std::string_view kCommandFormat = "system";
constexpr std::string_view kFileFormat = "envfile";

// Why the evaluator failed: the format and what it was given tell.
Outcome failureOf(const TemplateFormat& format, std::string_view argument) {
  const bool hasSource =
      format.read != nullptr || (format.name == kFileFormat && argument.find(':') != argument.npos);
  return hasSource ? Outcome::NoValue : Outcome::Malformed;
}

Outcome evaluateSpec(const TemplateContext& context, std::string_view spec, bool execute,
                     std::string& produced, Parser::ValueName& reference) {
  const std::size_t colon = spec.find(':');
  const std::string_view name = spec.substr(0, colon);
  if (colon != spec.npos && name == kCommandFormat && !execute) {
    produced.append("${").append(spec).append("}");
    return Outcome::NotRun;
  }
  if (colon != spec.npos && name == kFileFormat) {
    produced = whyNoFile(fileOf(spec));
    if (!produced.empty()) {
      return Outcome::NoFile;
    }
  }
  switch (Parser::evaluate(context, spec, produced, reference)) {
    case TemplateResult::Text:
      return Outcome::Text;
    case TemplateResult::Reference:
      return Outcome::Reference;
    default:
      break;
  }
  if (colon == spec.npos) {
    return Outcome::UnknownName;
  }
  const TemplateFormat* const format =
      findRow(Parser::templateFormats(), &TemplateFormat::name, name);
  return format == nullptr ? Outcome::UnknownFormat : failureOf(*format, spec.substr(colon + 1));
}

}  // namespace

std::string fileOf(std::string_view spec) {
  const auto words = split(spec, ':', EmptyParts::KeepAll, 2);
  return words.size() == 3 && words[0] == kFileFormat ? std::string(words[1]) : "";
}

Substitution substitute(const TemplateContext& context, std::string_view spec, bool execute,
                        std::string& text, Parser::ConfigValue& value) {
  Substitution made{std::string(spec), Outcome::Text, ""};
  Parser::ValueName reference;
  made.outcome = evaluateSpec(context, spec, execute, made.text, reference);
  if (made.outcome == Outcome::Reference) {
    made.text = reference.first + "/" + reference.second;
    value.addReference(std::move(reference.first), std::move(reference.second), text.size());
  } else if (made.outcome <= kLastSuccess) {
    text += made.text;
  }
  return made;
}

}  // namespace Cradle::Inspect
