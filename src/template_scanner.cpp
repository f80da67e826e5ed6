#include "template_scanner.h"

#include <string>
#include <utility>

#include "library_logger.h"
#include "template_evaluator.h"

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
  std::size_t dollar = input.find('$');
  std::string text(input.substr(0, dollar));
  while (dollar != std::string_view::npos) {
    std::size_t position = dollar + 2;
    const std::string_view rest = input.substr(dollar + 1);
    if (rest.starts_with('$')) {
      text += '$';
    } else if (rest.starts_with('{')) {
      const std::size_t end = rest.find('}');
      if (end == std::string_view::npos) {
        libraryLogger().error() << "Invalid template substitution, missing '}': " << input;
        return false;
      }
      if (!substitute(context, rest.substr(1, end - 1), text, out)) {
        return false;
      }
      position = dollar + 1 + end + 1;
    } else {
      libraryLogger().error() << "'$' must be followed by '{' or '$': " << input;
      return false;
    }
    dollar = input.find('$', position);
    text += input.substr(position, dollar - position);
  }
  out.setText(std::move(text));
  return true;
}

}  // namespace Cradle::Parser
