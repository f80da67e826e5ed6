// SPDX-License-Identifier: MIT
#include "inspect/help.h"

#include "inspect/command.h"
#include "inspect/page.h"

namespace Cradle::Inspect {
namespace {

std::string namesOf(const OptionRow& row) {
  std::string names = row.letter == '\0' ? "    " : std::string{'-', row.letter, ',', ' '};
  names.append("--").append(row.name);
  if (!row.placeholder.empty()) {
    names.append(" ").append(row.placeholder);
  }
  return names;
}

}  // namespace

std::string helpText() {
  Page page(false);
  page.line(std::string("Usage: ") + kProgram + " [OPTION]... COMMAND [OPERAND]");
  page.line("Shows where the values of a configuration come from, what is wrong with it, and what");
  page.line("would become of it. Changes nothing, and starts no command or hook without --run.");
  std::vector<Page::Row> rows;
  for (const Command& command : commands()) {
    rows.push_back({{std::string(command.name) + " " + std::string(command.operands)},
                    {std::string(command.help)}});
  }
  page.line("").line("Commands:").table(rows, 2);
  rows.clear();
  for (const OptionRow& row : optionRows()) {
    rows.push_back({{namesOf(row)}, {std::string(row.help)}});
  }
  page.line("").line("Options:").table(rows, 2);
  page.line("").line("Status: 0 fine; 1 findings, differences, or nothing there; 2 trouble.");
  return page.text();
}

std::string versionText() {
  return std::string(kProgram) + " " CRADLE_VERSION "\n";
}

}  // namespace Cradle::Inspect
