// SPDX-License-Identifier: MIT
// Findings: what fragments hold and hooks print that is wrong, or changes when a generated
// configuration is read back. Hooks tell only when they may be run.

#include "base/input_file.h"
#include "base/text.h"
#include "generators/fragments.h"
#include "inspect/findings.h"
#include "inspect/source_tree.h"
#include "inspect/special_text.h"
#include "mount_entry.h"
#include "run_command.h"

namespace Cradle::Inspect {
namespace {

void checkReadingBack(const std::string& path, std::uint32_t number, std::string_view line,
                      Findings& findings) {
  forEachEffect(line, [&](std::string_view effect) {
    findings.add(FindingId::ChangedByReadingBack, path, number, {"The line", line, effect});
  });
}

void checkFragment(const std::string& path, Findings& findings) {
  const std::string text = readWholeFile(path).value_or("");
  std::uint32_t number = 0;
  for (const std::string_view line : split(text, '\n', EmptyParts::DropTrailing)) {
    checkReadingBack(path, ++number, line, findings);
  }
}

bool printsMounts(const SourceFile& hook) {
  return std::string_view(Generators::kMountHooks).substr(1).starts_with(hook.kind->directory);
}

void checkHook(const SourceFile& hook, std::span<const std::string> arguments, Findings& findings) {
  const std::string text = Parser::runCommand(hook.path, arguments);
  for (const std::string_view line : split(text, '\n', EmptyParts::DropTrailing)) {
    const std::string fault = printsMounts(hook) ? Parser::mountEntryFault(std::string(line)) : "";
    if (fault.empty()) {
      checkReadingBack(hook.path, 0, line, findings);
    } else {
      findings.add(FindingId::HookMountEntry, hook.path, 0, {fault});
    }
  }
}

}  // namespace

void checkContributions(const Inspection& inspection, Findings& findings) {
  for (const SourceFile& file : findSources(inspection).used) {
    if (file.action == Action::Copy && file.fault.empty()) {
      checkFragment(file.path, findings);
    } else if (file.action == Action::Run && file.fault.empty() && inspection.execute) {
      checkHook(file, inspection.run->hookArguments, findings);
    }
  }
}

}  // namespace Cradle::Inspect
