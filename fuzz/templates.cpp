// SPDX-License-Identifier: MIT
// The template scanner and evaluator. The input is a raw value.
//
// Properties: a value expands to its text with the values of its sources in their places, which are
// not scanned again, and to its references at their offsets; one that does not is reported, with
// the message that fits. The sources are those of common/value_sources.h.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/table.h"
#include "common/check.h"
#include "common/target.h"
#include "common/value_sources.h"
#include "support/log_capture.h"
#include "template_evaluator.h"
#include "template_scanner.h"

namespace Cradle::Fuzz {
namespace {

using Parser::ConfigValue;
using Parser::TemplateContext;
using Parser::TemplateFormat;

struct NamedTemplate {
  const char* name;
  const char* value;
};

constexpr NamedTemplate kNamedTemplates[] = {
    {"USER", "alice"}, {"EMPTY", ""}, {"ODD", "$${USER};"}};

// How a value has expanded: its text with each reference written as a mark, or the message.
struct Expansion {
  std::string marked = {};
  std::string message = {};
};

Expansion failure(const std::string& message) {
  return {.message = message + "\n"};
}

std::string mark(const std::string& group, const std::string& key) {
  return "<" + inQuotes(group) + inQuotes(key) + ">";
}

Expansion namedByHand(const std::string& name) {
  const NamedTemplate* const named = findRow(kNamedTemplates, &NamedTemplate::name, name);
  return named != nullptr ? Expansion{.marked = named->value}
                          : failure("ERROR: No such template '" + name + "'");
}

Expansion referenceByHand(const std::string& spec, const std::string& argument) {
  const std::size_t slash = argument.find('/');
  if (slash == std::string::npos || slash == 0 || slash + 1 == argument.size() ||
      argument.find('/', slash + 1) != std::string::npos) {
    return failure("ERROR: Invalid format '" + argument + "' for conf template '" + spec + "'");
  }
  return {.marked = mark(argument.substr(0, slash), argument.substr(slash + 1))};
}

Expansion environmentFileByHand(const std::string& spec, const std::string& argument) {
  const std::size_t colon = argument.find(':');
  if (colon == std::string::npos) {
    return failure("ERROR: Invalid envfile definition '" + spec + "'");
  }
  const std::optional<std::string> value = sourceValue("envfile", argument);
  return value ? Expansion{.marked = *value}
               : failure("DEBUG: Failed to read '" + argument.substr(colon + 1) +
                         "' from environment file '" + argument.substr(0, colon) +
                         "' for template '" + spec + "'");
}

Expansion substitutionByHand(const std::string& spec) {
  const std::size_t colon = spec.find(':');
  if (colon == std::string::npos) {
    return namedByHand(spec);
  }
  const std::string name = spec.substr(0, colon);
  const std::string argument = spec.substr(colon + 1);
  const TemplateFormat* const format =
      findRow(Parser::templateFormats(), &TemplateFormat::name, name);
  if (format == nullptr) {
    return failure("ERROR: Invalid template '" + spec + "'");
  }
  if (name == "config") {
    return referenceByHand(spec, argument);
  }
  if (name == "envfile") {
    return environmentFileByHand(spec, argument);
  }
  const std::optional<std::string> value = sourceValue(name, argument);
  return value ? Expansion{.marked = *value}
               : failure("DEBUG: Failed to " + std::string(format->verb) + " '" + argument + "' " +
                         std::string(format->origin) + " for template '" + spec + "'");
}

Expansion expandByHand(const std::string& raw) {
  Expansion whole;
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] != '$') {
      whole.marked += raw[i];
    } else if (raw[i + 1] == '$') {  // behind the last character stands a NUL
      whole.marked += '$';
      ++i;
    } else if (raw[i + 1] == '{') {
      const std::size_t end = raw.find('}', i);
      if (end == std::string::npos) {
        return failure("ERROR: Invalid template substitution, missing '}': " + raw);
      }
      const Expansion part = substitutionByHand(raw.substr(i + 2, end - i - 2));
      if (!part.message.empty()) {
        return part;
      }
      whole.marked += part.marked;
      i = end;
    } else {
      return failure("ERROR: '$' must be followed by '{' or '$': " + raw);
    }
  }
  return whole;
}

Expansion expandByProgram(const std::string& raw) {
  TemplateContext context(kDconfUser);
  for (const NamedTemplate& named : kNamedTemplates) {
    context.addTemplate(named.name, named.value);
  }
  const Testing::LogCapture log(Parser::Logging::LoggerConfig::LogDebug);
  ConfigValue value;
  if (!Parser::expand(context, raw, value)) {
    require(!log.text().empty(), "a value that is discarded is reported");
    return {.message = log.text()};
  }
  std::vector<std::string> marks;
  for (const Parser::ValueName& name : value.references()) {
    marks.push_back(mark(name.first, name.second));
  }
  require(marks.empty() == (value.kind() == ConfigValue::PlainText),
          "a value without references is plain");
  return {.marked = value.render(marks), .message = log.text()};
}

}  // namespace

void checkInput(const std::string& input) {
  const Expansion actual = expandByProgram(input);
  const Expansion expected = expandByHand(input);
  requireEqual(actual.message, expected.message, "a template that fails says why");
  requireEqual(actual.marked, expected.marked, "a value expands to its text and references");
}

}  // namespace Cradle::Fuzz
