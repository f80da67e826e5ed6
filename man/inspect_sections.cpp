// SPDX-License-Identifier: MIT
#include "inspect_sections.h"

#include <cctype>

#include "base/table.h"
#include "inspect/command.h"
#include "inspect/finding_kinds.h"
#include "inspect/options.h"
#include "mdoc.h"

namespace Cradle::Manual {
namespace {

// Help, which neither begins nor ends as a sentence does.
std::string asSentence(std::string_view help) {
  std::string sentence(help);
  sentence.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence.front())));
  return sentence + ".";
}

}  // namespace

std::vector<std::string_view> commandNames() {
  std::vector<std::string_view> names;
  for (const Inspect::Command& command : Inspect::commands()) {
    names.push_back(command.name);
  }
  return names;
}

std::string commandHead(std::string_view name, std::string_view /*rest*/) {
  const Inspect::Command& command = *findRow(Inspect::commands(), &Inspect::Command::name, name);
  const std::string operands = command.operands.empty() ? "" : " Ar " + argument(command.operands);
  return ".It Cm " + argument(name) + operands + "\n" + prose(asSentence(command.help));
}

std::vector<std::string_view> inspectOptionNames() {
  std::vector<std::string_view> names;
  for (const Inspect::OptionRow& row : Inspect::optionRows()) {
    names.emplace_back(row.name);
  }
  return names;
}

std::string inspectOptionHead(std::string_view name, std::string_view /*rest*/) {
  const auto rows = Inspect::optionRows();
  const Inspect::OptionRow& row = *findRow(rows, &Inspect::OptionRow::name, name);
  const std::string letter =
      row.letter == '\0' ? "" : "Fl " + argument(std::string(1, row.letter)) + " , ";
  const std::string value = row.placeholder.empty() ? "" : " Ar " + argument(row.placeholder);
  return ".It " + letter + "Fl " + argument("-" + std::string(name)) + value + "\n" +
         prose(asSentence(row.help));
}

std::string findings() {
  std::string text = ".Bl -tag -width Ds\n";
  for (const Inspect::FindingKind& kind : Inspect::findingKinds()) {
    text += ".It " + argument(kind.name) + " Pq " + std::string(nameOf(kind.severity)) + "\n";
    text += prose(kind.sentence) + prose(kind.advice);
  }
  return text + ".El\n";
}

}  // namespace Cradle::Manual
