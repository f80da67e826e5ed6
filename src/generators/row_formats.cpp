// SPDX-License-Identifier: MIT
#include "generators/row_formats.h"

#include "base/conversion.h"
#include "base/text.h"

namespace Cradle::Generators {

std::optional<std::string> formatText(OutputContext& context, const OutputRow& row) {
  return context.config.text(row.source, row.text);
}

std::optional<std::string> formatWords(OutputContext& context, const OutputRow& row) {
  return join(context.config.list(row.source), " ");
}

std::optional<std::string> formatInt(OutputContext& context, const OutputRow& row) {
  return std::to_string(context.config.integer(row.source));
}

std::optional<std::string> formatU64(OutputContext& context, const OutputRow& row) {
  return std::to_string(static_cast<unsigned long>(context.config.longInteger(row.source)));
}

std::optional<std::string> formatReal(OutputContext& context, const OutputRow& row) {
  return formatDouble(context.config.real(row.source));
}

std::optional<std::string> formatBool(OutputContext& context, const OutputRow& row) {
  return context.config.flag(row.source) ? "true" : "false";
}

std::optional<std::string> formatFlag(OutputContext& context, const OutputRow& row) {
  return context.config.flag(row.source) ? "1" : "0";
}

std::optional<std::string> formatNotFlag(OutputContext& context, const OutputRow& row) {
  return context.config.flag(row.source) ? "0" : "1";
}

std::optional<std::string> formatFixed(OutputContext& /*context*/, const OutputRow& row) {
  return std::string(row.text);
}

std::optional<std::string> formatUserId(OutputContext& context, const OutputRow& /*row*/) {
  return std::to_string(context.run.facts.userId);
}

std::optional<std::string> formatUserName(OutputContext& context, const OutputRow& /*row*/) {
  return context.run.facts.user;
}

std::optional<std::string> formatHome(OutputContext& context, const OutputRow& /*row*/) {
  return context.run.facts.home;
}

std::optional<std::string> formatInstance(OutputContext& context, const OutputRow& /*row*/) {
  return context.run.facts.instance;
}

bool sourceIsPresent(const OutputContext& context, const OutputRow& row) {
  return context.config.has(row.source);
}

bool sourceIsNotEmpty(const OutputContext& context, const OutputRow& row) {
  return !context.config.text(row.source).empty();
}

bool sourceIsPositive(const OutputContext& context, const OutputRow& row) {
  return context.config.integer(row.source) > 0;
}

bool groupIsPresent(const OutputContext& context, const OutputRow& row) {
  return context.config.hasGroup(row.source.group);
}

bool requirementIsMet(const OutputContext& context, const OutputRow& row) {
  return context.config.text(row.when.source) == row.when.text;
}

bool requirementIsNotMet(const OutputContext& context, const OutputRow& row) {
  return !requirementIsMet(context, row);
}

}  // namespace Cradle::Generators
