// SPDX-License-Identifier: MIT
// The formats and conditions that output rows share.
#pragma once

#include <optional>
#include <string>

#include "generators/output_row.h"

namespace Cradle::Generators {

// The value of the row's source:
std::optional<std::string> formatText(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatWords(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatInt(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatU64(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatReal(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatBool(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatFlag(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatNotFlag(OutputContext& context, const OutputRow& row);
// No value of the configuration:
std::optional<std::string> formatFixed(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatUserId(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatUserName(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatHome(OutputContext& context, const OutputRow& row);
std::optional<std::string> formatInstance(OutputContext& context, const OutputRow& row);

inline constexpr Format kText{"text", formatText};              // as it stands
inline constexpr Format kWords{"list", formatWords};            // joined with single blanks
inline constexpr Format kInt{"integer", formatInt};             // decimal
inline constexpr Format kU64{"integer of 64 bits", formatU64};  // as an unsigned number
inline constexpr Format kReal{"real number", formatReal};       // six significant digits
inline constexpr Format kBool{"boolean", formatBool};           // "true" or "false"
inline constexpr Format kFlag{"boolean", formatFlag};           // 1 or 0
inline constexpr Format kNotFlag{"boolean", formatNotFlag};     // 0 or 1: the negation of the value
inline constexpr Format kFixed{"boolean", formatFixed};         // the row's own text
inline constexpr Format kUserId{"", formatUserId};
inline constexpr Format kUserName{"", formatUserName};
inline constexpr Format kHome{"", formatHome};
inline constexpr Format kInstance{"", formatInstance};

bool sourceIsPresent(const OutputContext& context, const OutputRow& row);
bool sourceIsNotEmpty(const OutputContext& context, const OutputRow& row);
bool sourceIsPositive(const OutputContext& context, const OutputRow& row);
bool groupIsPresent(const OutputContext& context, const OutputRow& row);
bool requirementIsMet(const OutputContext& context, const OutputRow& row);
bool requirementIsNotMet(const OutputContext& context, const OutputRow& row);

inline constexpr Condition kIfPresent{"if present", sourceIsPresent};
inline constexpr Condition kIfNotEmpty{"if not empty", sourceIsNotEmpty};
inline constexpr Condition kIfPositive{"if greater than 0", sourceIsPositive};
inline constexpr Condition kIfGroupPresent{"if the group is present", groupIsPresent};
inline constexpr Condition kWhen{"when", requirementIsMet};
inline constexpr Condition kUnless{"unless", requirementIsNotMet};

}  // namespace Cradle::Generators
