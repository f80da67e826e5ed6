// SPDX-License-Identifier: MIT
// What changes from one text to another, as "diff -u" writes it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Cradle::Inspect {

// A line of the result, without its line feed; the first character says what it is.
using DiffLines = std::vector<std::string>;

// Nothing where the texts are equal. Three lines around each change are shown.
DiffLines unifiedDiff(std::string_view before, std::string_view after,
                      const std::string& beforeName, const std::string& afterName);

}  // namespace Cradle::Inspect
