// SPDX-License-Identifier: MIT
#include "template_scanner.h"

#include <string>
#include <utility>

#include "library_logger.h"
#include "template_evaluator.h"
#include "template_scan.h"

namespace Cradle::Parser {
namespace {

// Evaluates one substitution and appends its text, or records its reference at the current offset.
bool substitute(const TemplateContext& context, std::string_view spec, std::string& text,
                ConfigValue& out) {
  std::string produced;
  ValueName reference;
  switch (evaluate(context, spec, produced, reference)) {
    case TemplateResult::Text:
      text += produced;
      return true;
    case TemplateResult::Reference:
      out.addReference(std::move(reference.first), std::move(reference.second), text.size());
      return true;
    default:
      return false;
  }
}

}  // namespace

bool expand(const TemplateContext& context, std::string_view input, ConfigValue& out) {
  std::string text;
  const auto put = [&](std::string_view spec) { return substitute(context, spec, text, out); };
  switch (scanTemplates(input, text, put)) {
    case ScanResult::Complete:
      out.setText(std::move(text));
      return true;
    case ScanResult::Unclosed:
      libraryLogger().error() << "Invalid template substitution, missing '}': " << input;
      return false;
    case ScanResult::StrayDollar:
      libraryLogger().error() << "'$' must be followed by '{' or '$': " << input;
      return false;
    default:
      return false;
  }
}

}  // namespace Cradle::Parser
