// SPDX-License-Identifier: MIT
#include "inspect/explain_text.h"

#include <algorithm>
#include <set>

#include "base/text.h"
#include "inspect/page.h"
#include "inspect/question.h"

namespace Cradle::Inspect {
namespace {

constexpr std::size_t kMargin = 2;

std::string_view faultOf(const Part& part) {
  switch (part.fate) {
    case Fate::Unclosed:
      return "a template has no '}'";
    case Fate::StrayDollar:
      return "a '$' begins no template";
    default:
      return "a template failed";
  }
}

std::string remarkOn(const Statement& statement, const Journal& journal) {
  if (statement.part == nullptr) {
    return "clears the key";
  }
  const std::string by = statement.by == nullptr ? "" : journal.nameOf(statement.by->place);
  switch (statement.state) {
    case State::Overridden:
      return "overridden by " + by;
    case State::Cleared:
      return "cleared by " + by;
    case State::Empty:
      return "left out: empty";
    case State::Discarded:
      return "left out: " + std::string(faultOf(*statement.part));
    default:
      return "counts";
  }
}

std::string outcomeOf(const Substitution& made) {
  switch (made.outcome) {
    case Outcome::Text:
      return "gives '" + made.text + "'";
    case Outcome::Reference:
      return "refers to " + made.text;
    case Outcome::NotRun:
      return "has not been run (--run)";
    case Outcome::NoValue:
      return "gives nothing";
    case Outcome::Malformed:
      return "is malformed";
    case Outcome::UnknownName:
      return "has an unknown name";
    case Outcome::NoFile:
      return "cannot be read: " + made.text;
    default:
      return "has an unknown format";
  }
}

class ExplainText {
 public:
  ExplainText(const Inspection& inspection, const Explanation& explanation, bool coloured)
      : inspection_(inspection), explanation_(explanation), page_(coloured) {}

  std::string write() {
    writeHead();
    writeMeaning();
    writeStatements();
    writeReferences();
    writeOutputs();
    return page_.text();
  }

 private:
  void heading(std::string_view text) { page_.line("").line(text, Tone::Strong); }

  void writeHead() {
    const std::string name = explanation_.group + "/" + explanation_.key;
    if (explanation_.values.empty()) {
      page_.line(name + " is not set", Tone::Strong);
    }
    for (const Explanation::Value& value : explanation_.values) {
      page_.put(name + " = ", Tone::Strong).put(value.text);
      if (!value.fits) {
        page_.put("  does not fit its type", Tone::Error);
      }
      page_.endLine();
    }
  }

  void writeMeaning() {
    const Generators::KeyReference* const known = explanation_.known;
    if (known == nullptr) {
      page_.put("  No output reads this key", Tone::Warning)
          .line(questionForKey(explanation_.group, explanation_.key) + ".", Tone::Warning);
      return;
    }
    std::string type = "  Type: " + std::string(known->type);
    // Some types are named after their words.
    if (!known->words.empty() && known->type.find(known->words.front()) == std::string_view::npos) {
      type += " (" + wordsOf(*known, ", ") + ")";
    }
    type.append(". Without the key: ");
    page_.line("  " + std::string(known->meaning)).line(type + known->absent + ".");
  }

  void writeStatements() {
    if (explanation_.statements.empty()) {
      return;
    }
    heading("Assigned, in load order:");
    std::vector<Page::Row> rows;
    for (const Statement& statement : explanation_.statements) {
      addStatement(statement, rows);
    }
    page_.table(rows, kMargin);
  }

  void addStatement(const Statement& statement, std::vector<Page::Row>& rows) const {
    const Journal& journal = inspection_.journal;
    const bool counts = statement.state == State::Effective;
    rows.push_back({{journal.nameOf(statement.assignment->place), Tone::Faint},
                    {statement.part == nullptr ? explanation_.key + "=" : statement.part->raw,
                     counts ? Tone::Plain : Tone::Faint},
                    {"# " + remarkOn(statement, journal), counts ? Tone::Added : Tone::Note}});
    if (statement.part == nullptr) {
      return;
    }
    for (const Substitution& made : statement.part->substitutions) {
      rows.push_back({{""}, {"  ${" + made.spec + "}", Tone::Faint}, {"# " + outcomeOf(made)}});
    }
  }

  void writeReferences() {
    for (const Explanation::Value& value : explanation_.values) {
      if (!value.walk.steps.empty()) {
        heading("References" +
                (explanation_.values.size() == 1 ? "" : " of " + value.statement->part->raw) + ":");
        writeWalk(value.walk);
      }
    }
  }

  void writeWalk(const ReferenceWalk& walk) {
    std::set<const Part*> followed;
    std::size_t deepest = kMostValues;
    std::vector<Page::Row> rows;
    for (const ReferenceStep& step : walk.steps) {
      if (step.depth > deepest) {
        continue;
      }
      // What a value refers to is told where it is met first.
      const Part* const part = step.value.part;
      const bool isKnown = part != nullptr && !followed.insert(part).second;
      deepest = isKnown ? step.depth : kMostValues;
      rows.push_back(rowOf(step));
      if (isKnown && !part->value.references().empty()) {
        rows.back().push_back({"# as above", Tone::Note});
      }
    }
    page_.table(rows, kMargin);
    if (walk.end == ReferenceWalk::End::Circle) {
      page_.line("  A circle: " + join(walk.circle, " -> ") + ". The value is empty.", Tone::Error);
    } else if (walk.end == ReferenceWalk::End::TooDeep) {
      page_.line("  More than 33 values are needed. The value is empty.", Tone::Error);
    }
  }

  Page::Row rowOf(const ReferenceStep& step) const {
    const std::string indent(kMargin * (step.depth - 1), ' ');
    const std::string name = indent + nameOfKey(step.name->first, step.name->second);
    if (step.value.part == nullptr) {
      return {{name}, {"is not set", Tone::Error}};
    }
    const std::string text = inspection_.textOf(step.value.part->value);
    return {{name},
            {"= " + (text.empty() ? step.value.part->raw : text)},
            {inspection_.journal.nameOf(step.value.assignment->place), Tone::Faint}};
  }

  void writeOutputs() {
    std::vector<Page::Row> rows;
    if (!explanation_.generated.empty()) {
      rows.push_back({{"config"}, {"[" + explanation_.group + "] " + explanation_.generated}});
    }
    for (const ProbedRow& row : explanation_.rows) {
      addOutput(row, rows);
    }
    if (explanation_.known != nullptr && explanation_.rows.empty()) {
      addUses(*explanation_.known, rows);
    }
    if (!rows.empty()) {
      heading("Becomes:");
      page_.table(rows, kMargin);
    }
  }

  // For keys that are read outside of the rows, what the reference tells.
  static void addUses(const Generators::KeyReference& known, std::vector<Page::Row>& rows) {
    for (const Generators::KeyUse& use : known.uses) {
      rows.push_back({{std::string(use.output)}, {use.line.empty() ? use.value : use.line}});
    }
  }

  void addOutput(const ProbedRow& row, std::vector<Page::Row>& rows) const {
    const std::string output(row.output);
    for (const std::string_view line : split(row.text, '\n', EmptyParts::DropTrailing)) {
      rows.push_back({{output}, {std::string(line)}});
    }
    if (row.ends) {
      rows.push_back({{output}, {"the run ends here", Tone::Error}});
    } else if (row.text.empty() && !explanation_.isComplete) {
      rows.push_back({{output}, {"is not known before all values are", Tone::Faint}});
    } else if (row.text.empty()) {
      const std::string place = row.key.empty() ? "" : " in place of " + row.key;
      const std::string condition = row.condition.empty() ? "" : " (written " + row.condition + ")";
      rows.push_back({{output}, {"nothing" + place + condition, Tone::Faint}});
    }
  }

  const Inspection& inspection_;
  const Explanation& explanation_;
  Page page_;
};

}  // namespace

std::string explainText(const Inspection& inspection, const Explanation& explanation,
                        bool coloured) {
  return ExplainText(inspection, explanation, coloured).write();
}

}  // namespace Cradle::Inspect
