// SPDX-License-Identifier: MIT
#include "logging/log_target.h"

// Without this the journal's functions are macros that add the place of the call in this program.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <array>

#include <systemd/sd-journal.h>

#include "base/systemd_library.h"
#include "base/table.h"
#include "base/text.h"
#include "logging/log_level.h"

namespace Cradle::Parser::Logging {
namespace {

struct NamedTarget {
  std::string_view name;
  Target target;
};

constexpr std::array<NamedTarget, 3> kNamedTargets{{
    {"systemd", Target::TargetSystemd},
    {"stdout", Target::TargetStdout},
    {"stderr", Target::TargetStderr},
}};

std::shared_ptr<OutputFile> unowned(OutputFile& file) {
  return {std::shared_ptr<void>(), &file};
}

void printToJournal(int priority, const std::string& text) {
  static auto* const print = systemdLibrary().find<decltype(sd_journal_print)>("sd_journal_print");
  if (print != nullptr) {
    print(priority, "%s", text.c_str());
  }
}

}  // namespace

LogTarget makeTarget(Target target) {
  switch (target) {
    case Target::TargetStdout:
      return {target, unowned(standardOutput())};
    case Target::TargetStderr:
      return {target, unowned(standardError())};
    default:
      return {target, nullptr};
  }
}

LogTarget convertTargetFromString(std::string value) {
  toLowerCase(value);
  if (const NamedTarget* const named = findRow(kNamedTargets, &NamedTarget::name, value)) {
    return makeTarget(named->target);
  }
  if (value.starts_with('/')) {
    auto file = std::make_shared<OutputFile>(value);
    if (file->good()) {
      return {Target::TargetFile, std::move(file)};
    }
  }
  return {Target::TargetFile, nullptr};
}

bool targetDropsAll(const LogTarget& target) {
  return target.target != Target::TargetSystemd && !target.file;
}

bool targetIsValid(const LogTarget& target) {
  return target.target == Target::TargetSystemd || (target.file && target.file->good());
}

void emitLine(const LogTarget& target, Level level, std::string_view text) {
  const LevelRow& row = levelRow(level);
  if (target.target == Target::TargetSystemd) {
    printToJournal(row.journalPriority, std::string(text));
    return;
  }
  if (!target.file) {
    return;
  }
  std::string line(row.printedName);
  line += ": ";
  line += text;
  line += '\n';
  // One piece, so that the lines of several processes on one terminal or pipe do not mix.
  target.file->write(line);
}

}  // namespace Cradle::Parser::Logging
