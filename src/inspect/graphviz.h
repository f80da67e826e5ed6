// SPDX-License-Identifier: MIT
// A graph as text for Graphviz, as a picture that Graphviz draws, and for programs.
#pragma once

#include <optional>
#include <string>

#include "inspect/graph.h"

namespace Cradle::Inspect {

std::string graphDot(const Graph& graph);
std::string graphJson(const Graph& graph);

// The picture of a graph, or nothing where Graphviz is missing or fails.
std::optional<std::string> drawSvg(const std::string& dot);

}  // namespace Cradle::Inspect
