// SPDX-License-Identifier: MIT
#include "inspect/graphviz.h"

#include <array>

#include "base/output_file.h"
#include "inspect/journal.h"
#include "inspect/json.h"
#include "inspect/memory_file.h"
#include "inspect/page.h"
#include "run_command.h"

namespace Cradle::Inspect {
namespace {

// A text between the quotes of the language.
std::string literal(std::string_view text) {
  std::string written = "\"";
  for (const char character : printable(text)) {
    if (character == '"' || character == '\\') {
      written += '\\';
    }
    written += character;
  }
  return written + '"';
}

std::string idOf(const Parser::ValueName& name) {
  return literal(name.first + "/" + name.second);
}

// Lines of a label; "\n" ends one.
std::string labelOf(const std::string& key, const GraphKey& node) {
  std::string label = literal(key);
  label.pop_back();
  const auto add = [&](const std::string& before, const std::string& place) {
    const std::string line = literal(before + place.substr(place.rfind('/') + 1));
    label += "\\n" + line.substr(1, line.size() - 2);
  };
  add("", node.isSet ? node.place : "not set");
  for (const std::string& place : node.overridden) {
    add("over ", place);
  }
  return label + '"';
}

void writeFiles(const Graph& graph, std::string& dot) {
  dot += "  subgraph \"cluster files\" {\n    label=\"files, in load order\"; style=dashed;\n";
  for (std::size_t i = 0; i < graph.files.size(); ++i) {
    dot +=
        "    file" + std::to_string(i) + " [shape=note, label=" + literal(graph.files[i]) + "];\n";
  }
  for (std::size_t i = 1; i < graph.files.size(); ++i) {
    dot += "    file" + std::to_string(i - 1) + " -> file" + std::to_string(i) + ";\n";
  }
  dot += "  }\n";
}

// The keys of one group from `key` on, up to the first of the next group.
template <typename Iterator>
Iterator writeGroup(Iterator key, Iterator end, std::string& dot) {
  const std::string group = key->first.first;
  const std::string title = titleOf(group);
  dot += "  subgraph " + literal("cluster " + title) + " {\n    label=" + literal(title) + ";\n";
  for (; key != end && key->first.first == group; ++key) {
    dot += "    " + idOf(key->first) + " [label=" + labelOf(key->first.second, key->second) +
           (key->second.isSet ? "" : ", color=red, style=dashed") + "];\n";
  }
  dot += "  }\n";
  return key;
}

}  // namespace

std::string graphDot(const Graph& graph) {
  std::string dot =
      "digraph configuration {\n"
      "  rankdir=LR;\n"
      "  node [shape=box, fontname=\"sans-serif\", fontsize=10];\n"
      "  graph [fontname=\"sans-serif\", fontsize=12];\n";
  writeFiles(graph, dot);
  for (auto key = graph.keys.begin(); key != graph.keys.end();) {
    key = writeGroup(key, graph.keys.end(), dot);
  }
  for (const GraphReference& reference : graph.references) {
    dot += "  " + idOf(reference.from) + " -> " + idOf(reference.to) +
           (reference.inCircle ? " [color=red, penwidth=2]" : "") + ";\n";
  }
  return dot + "}\n";
}

std::string graphJson(const Graph& graph) {
  const auto nameOf = [](const Parser::ValueName& name) { return name.first + "/" + name.second; };
  const auto keyJson = [&](const auto& key) {
    return JsonObject()
        .with("key", nameOf(key.first))
        .with("set", key.second.isSet)
        .with("place", key.second.place)
        .with("overridden", jsonList(key.second.overridden));
  };
  const auto referenceJson = [&](const GraphReference& reference) {
    return JsonObject()
        .with("from", nameOf(reference.from))
        .with("to", nameOf(reference.to))
        .with("circle", reference.inCircle);
  };
  return dump(JsonObject()
                  .with("files", jsonList(graph.files))
                  .with("keys", jsonList(graph.keys, keyJson))
                  .with("references", jsonList(graph.references, referenceJson)));
}

std::optional<std::string> drawSvg(const std::string& dot) {
  const MemoryFile source;
  OutputFile(source.path()).write(dot);
  std::int32_t status = 0;
  std::string picture = Parser::runCommand("dot -Tsvg", std::array{source.outerPath()}, &status);
  return status == 0 ? std::optional(std::move(picture)) : std::nullopt;
}

}  // namespace Cradle::Inspect
