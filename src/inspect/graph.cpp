// SPDX-License-Identifier: MIT
#include "inspect/graph.h"

#include <algorithm>

#include "inspect/key_table.h"
#include "inspect/reference_walk.h"
#include "inspect/statement.h"

namespace Cradle::Inspect {
namespace {

GraphKey describe(const Journal& journal, const Parser::ValueName& name) {
  GraphKey key;
  const History* const history = journal.find(name.first, name.second);
  const KeptValue value = lastValue(history);
  key.isSet = value.part != nullptr;
  if (history == nullptr) {
    return key;
  }
  key.place = key.isSet ? journal.nameOf(value.assignment->place) : "";
  for (const Statement& statement : statementsOf(*history, takesOne(name.first, name.second))) {
    if (statement.by != nullptr) {
      key.overridden.push_back(journal.nameOf(statement.assignment->place));
    }
  }
  return key;
}

class GraphMaker {
 public:
  GraphMaker(const Inspection& inspection, bool all) : journal_(inspection.journal), all_(all) {}

  Graph make() {
    for (const ReadFile& file : journal_.files) {
      graph_.files.push_back(file.path);
    }
    for (const auto& [group, histories] : journal_.groups) {
      for (const auto& [key, history] : histories) {
        addKey({group, key}, history);
      }
    }
    return std::move(graph_);
  }

 private:
  void addKey(const Parser::ValueName& name, const History& history) {
    if (all_) {
      addNode(name);
    }
    for (const KeptValue& value : keptValues(history)) {
      const ReferenceWalk walk =
          followReferences(journal_, name.first + "/" + name.second, *value.part);
      for (const Parser::ValueName& target : value.part->value.references()) {
        addNode(name);
        addNode(target);
        graph_.references.push_back({name, target, isInCircle(walk, name, target)});
      }
    }
  }

  void addNode(const Parser::ValueName& name) {
    if (!graph_.keys.contains(name)) {
      graph_.keys.emplace(name, describe(journal_, name));
    }
  }

  // Whether both keys stand side by side in the circle.
  static bool isInCircle(const ReferenceWalk& walk, const Parser::ValueName& from,
                         const Parser::ValueName& to) {
    const std::vector<std::string> pair{from.first + "/" + from.second, to.first + "/" + to.second};
    return std::search(walk.circle.begin(), walk.circle.end(), pair.begin(), pair.end()) !=
           walk.circle.end();
  }

  const Journal& journal_;
  bool all_;
  Graph graph_;
};

}  // namespace

Graph makeGraph(const Inspection& inspection, bool all) {
  return GraphMaker(inspection, all).make();
}

}  // namespace Cradle::Inspect
