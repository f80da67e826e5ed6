// SPDX-License-Identifier: MIT
// What the tables of cradle-inspect-config have for its manual page, as mdoc.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Cradle::Manual {

std::vector<std::string_view> commandNames();
std::string commandHead(std::string_view name, std::string_view rest);

std::vector<std::string_view> inspectOptionNames();
std::string inspectOptionHead(std::string_view name, std::string_view rest);

// Every kind of findings.
std::string findings();

}  // namespace Cradle::Manual
