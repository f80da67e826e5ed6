// SPDX-License-Identifier: MIT
#include "inspect/graphviz.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/environment_variable.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Inspect {
namespace {

using Testing::jsonAt;
using Testing::jsonSizeAt;

Graph smallGraph() {
  Graph graph;
  graph.files = {"/c/1.conf", "/c/\"2.conf"};
  graph.keys[{"A", "K"}] = {true, "/c/1.conf:2", {"/c/1.conf:1"}};
  graph.keys[{"B", "L"}] = {};
  graph.keys[{"[C", "M"}] = {true, "/c/1.conf:4", {}};
  graph.references = {{{"A", "K"}, {"B", "L"}, true}, {{"A", "K"}, {"A", "K"}, false}};
  return graph;
}

TEST(Graphviz, IsWrittenGroupByGroup) {
  EXPECT_EQ(graphDot(smallGraph()),
            "digraph configuration {\n"
            "  rankdir=LR;\n"
            "  node [shape=box, fontname=\"sans-serif\", fontsize=10];\n"
            "  graph [fontname=\"sans-serif\", fontsize=12];\n"
            "  subgraph \"cluster files\" {\n"
            "    label=\"files, in load order\"; style=dashed;\n"
            "    file0 [shape=note, label=\"/c/1.conf\"];\n"
            "    file1 [shape=note, label=\"/c/\\\"2.conf\"];\n"
            "    file0 -> file1;\n"
            "  }\n"
            "  subgraph \"cluster [A]\" {\n"
            "    label=\"[A]\";\n"
            "    \"A/K\" [label=\"K\\n1.conf:2\\nover 1.conf:1\"];\n"
            "  }\n"
            "  subgraph \"cluster [B]\" {\n"
            "    label=\"[B]\";\n"
            "    \"B/L\" [label=\"L\\nnot set\", color=red, style=dashed];\n"
            "  }\n"
            "  subgraph \"cluster [C\" {\n"
            "    label=\"[C\";\n"
            "    \"[C/M\" [label=\"M\\n1.conf:4\"];\n"
            "  }\n"
            "  \"A/K\" -> \"B/L\" [color=red, penwidth=2];\n"
            "  \"A/K\" -> \"A/K\";\n"
            "}\n");
}

TEST(Graphviz, IsTheSameForPrograms) {
  const std::string document = graphJson(smallGraph());
  EXPECT_EQ(jsonSizeAt(document, "/files"), 2U);
  EXPECT_EQ(jsonAt(document, "/keys/0/key"), R"("A/K")");
  EXPECT_EQ(jsonAt(document, "/keys/1/set"), "false");
  EXPECT_EQ(jsonAt(document, "/references/0/circle"), "true");
}

// What stands in for Graphviz draws its arguments and what it reads.
TEST(Graphviz, DrawsAPicture) {
  const Testing::TemporaryDirectory directory;
  directory.writeScript("dot", "echo \"$# $1\"\ncat \"$2\"\n");
  const std::string path = directory.path() + ":/usr/bin:/bin";
  const Testing::EnvironmentVariable variable("PATH", path.c_str());
  EXPECT_EQ(drawSvg("graph {}\n"), "2 -Tsvg\ngraph {}\n");
}

// Failures

TEST(Graphviz, DrawsNothingWhereGraphvizFails) {
  const Testing::LogCapture log;
  const Testing::TemporaryDirectory directory;
  directory.writeScript("dot", "echo half\nexit 1\n");
  const Testing::EnvironmentVariable variable("PATH", directory.path().c_str());
  EXPECT_EQ(drawSvg("graph {}\n"), std::nullopt);
}

}  // namespace
}  // namespace Cradle::Inspect
