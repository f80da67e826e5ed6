// SPDX-License-Identifier: MIT
// "show": the merged configuration, each value with the line that it comes from.

#include <algorithm>
#include <span>
#include <vector>

#include "inspect/command_functions.h"
#include "inspect/finding_text.h"
#include "inspect/key_table.h"
#include "inspect/printable.h"
#include "inspect/question.h"
#include "inspect/statement_json.h"

namespace Cradle::Inspect {
namespace {

struct ShownKey {
  std::string_view group;
  std::string_view key;
  std::vector<Statement> statements;
};

// The keys that were asked for; those without an effective value only with `all`.
std::vector<ShownKey> keysToShow(const Journal& journal, const KeyPattern* pattern, bool all) {
  std::vector<ShownKey> keys;
  for (const auto& [group, histories] : journal.groups) {
    for (const auto& [key, history] : histories) {
      if (pattern != nullptr && !pattern->matches(group, key)) {
        continue;
      }
      ShownKey shown{group, key, {}};
      for (const Statement& statement : statementsOf(history, takesOne(group, key))) {
        if (all || statement.state == State::Effective) {
          shown.statements.push_back(statement);
        }
      }
      if (!shown.statements.empty()) {
        keys.push_back(std::move(shown));
      }
    }
  }
  return keys;
}

std::string absenceText(const KeyPattern& pattern) {
  if (pattern.key.empty()) {
    return printable(titleOf(pattern.group)) + " has no value" + questionForGroup(pattern.group) +
           "\n";
  }
  const bool isKnown = findKey(pattern.group, pattern.key) != nullptr;
  return printable(nameOfKey(pattern.group, pattern.key)) + " is not set" +
         (isKnown ? "" : questionForKey(pattern.group, pattern.key)) + "\n";
}

std::string headingOf(std::string_view group) {
  if (group.empty()) {
    return "# before the first group";
  }
  return (isRefusedLine(group) ? "# behind " : "") + titleOf(group);
}

// The keys of a group stand together.
std::vector<std::span<const ShownKey>> groupsOf(const std::vector<ShownKey>& keys) {
  std::vector<std::span<const ShownKey>> groups;
  for (auto first = keys.begin(); first != keys.end();) {
    const auto next = std::find_if(first, keys.end(),
                                   [&](const ShownKey& key) { return key.group != first->group; });
    groups.emplace_back(first, next);
    first = next;
  }
  return groups;
}

class Show {
 public:
  Show(const Inspection& inspection, const std::vector<ShownKey>& keys)
      : inspection_(inspection), groups_(groupsOf(keys)) {}

  std::string json() const {
    JsonObject groups;
    for (const std::span<const ShownKey> group : groups_) {
      JsonObject keys;
      for (const ShownKey& key : group) {
        keys.push_back({key.key, toJson(key.statements)});
      }
      groups.push_back({group.front().group, std::move(keys)});
    }
    return dump(JsonObject().with("groups", std::move(groups)));
  }

  // A block per group, as a file would hold it, behind the places.
  std::string text(bool coloured) const {
    Page page(coloured);
    for (const std::span<const ShownKey> group : groups_) {
      std::vector<Page::Row> rows;
      for (const ShownKey& key : group) {
        addRows(key, rows);
      }
      if (!page.text().empty()) {
        page.endLine();
      }
      page.line(headingOf(group.front().group), Tone::Strong).table(rows);
    }
    return page.text();
  }

 private:
  std::string textOf(const Statement& statement) const {
    return statement.part == nullptr ? "" : inspection_.textOf(statement.part->value);
  }

  void addRows(const ShownKey& shown, std::vector<Page::Row>& rows) const {
    for (const Statement& statement : shown.statements) {
      const bool counts = statement.state == State::Effective;
      const std::string text =
          statement.state == State::Discarded ? statement.part->raw : textOf(statement);
      Page::Row row{{inspection_.journal.nameOf(statement.assignment->place), Tone::Faint},
                    {std::string(shown.key) + "=" + text, counts ? Tone::Plain : Tone::Faint}};
      if (!counts) {
        row.push_back({remarkOn(statement), Tone::Note});
      }
      rows.push_back(std::move(row));
    }
  }

  std::string remarkOn(const Statement& statement) const {
    std::string remark = "# " + std::string(nameOf(statement.state));
    if (statement.by != nullptr) {
      remark += " by " + inspection_.journal.nameOf(statement.by->place);
    }
    return remark;
  }

  JsonList toJson(const std::vector<Statement>& statements) const {
    return jsonList(statements, [this](const Statement& statement) {
      return statementJson(inspection_.journal, statement).with("text", textOf(statement));
    });
  }

  const Inspection& inspection_;
  std::vector<std::span<const ShownKey>> groups_;
};

}  // namespace

Answer runShow(const Options& options, std::span<const std::string> operands) {
  const Inspection inspection = inspect(options.run, options.execute);
  const KeyPattern pattern(operands.empty() ? "" : operands.front());
  const std::vector<ShownKey> keys =
      keysToShow(inspection.journal, operands.empty() ? nullptr : &pattern, options.all);
  const Show show(inspection, keys);
  const bool found = operands.empty() || !keys.empty();
  std::string errors = refusalText(inspection) + (found ? "" : absenceText(pattern));
  const int status = errors.empty() ? kFine : kFindings;
  return {
      options.format == OutputFormat::Json ? show.json() : show.text(wantsColour(options.colour)),
      status, std::move(errors)};
}

}  // namespace Cradle::Inspect
