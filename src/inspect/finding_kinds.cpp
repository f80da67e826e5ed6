// SPDX-License-Identifier: MIT
#include "inspect/finding_kinds.h"

#include <algorithm>
#include <array>

namespace Cradle::Inspect {
namespace {

constexpr auto kKinds = std::to_array<FindingKind>({
    // Errors
    {FindingId::BadLine, "bad-line", Severity::Error, "{}: '{}'. Every run ends here.",
     R"(A line is "[group]", "key=value", or a comment with "#" or ";" in its first column.)"},
    {FindingId::UnreadableFile, "unreadable-file", Severity::Error,
     "It cannot be read: {}. A run of the same user ends here.",
     "Make it a readable file, or take it away."},
    {FindingId::NoConfiguration, "no-configuration", Severity::Error,
     "There is no *.conf file in {}. Every run ends here.",
     "Name the directories with --config or --configs."},
    {FindingId::UnknownUser, "unknown-user", Severity::Error,
     "There is no user {}. Every run ends here.", "Name another one with --user-id."},
    {FindingId::EndingValue, "ending-value", Severity::Error,
     "'{}' is wrong for {}. A run for {} ends here.", "It must be {}."},
    {FindingId::MissingKey, "missing-key", Severity::Error,
     "{} is not set. A run for {} ends for want of it.", "It must be {}."},
    {FindingId::MountEntry, "mount-entry", Severity::Error, "{}. A run for lxc ends here.",
     "An entry is SOURCE TARGET TYPE OPTIONS 0 0 with single blanks between them{}."},
    {FindingId::RequiredDevice, "required-device", Severity::Error,
     "The required device '{}' is not there. A run for lxc ends here.",
     "Where the device may be absent, name it in Devices/DevNodes instead."},
    {FindingId::UnclosedTemplate, "unclosed-template", Severity::Error,
     "The template in '{}' has no '}'. The value is left out.",
     "Close it, or write '$$' for a dollar sign."},
    {FindingId::SplitTemplate, "split-template", Severity::Error,
     "A ';' splits the template in '{}'. Its beginning is left out, its rest is a value.",
     "A ';' separates values even inside of '${...}'. Call a script instead."},
    {FindingId::StrayDollar, "stray-dollar", Severity::Error,
     "A '$' in '{}' stands before neither '{' nor '$'. The value is left out.",
     "Write '$$' for a dollar sign."},
    {FindingId::UnknownName, "unknown-name", Severity::Error,
     "'${{}}' is not known{}. The value is left out.",
     "The names are HOME, INSTANCE, ODM_DIR, USER and USER_ID. A property run has no ODM_DIR, and "
     "what reads a generated configuration has none."},
    {FindingId::UnknownFormat, "unknown-format", Severity::Error,
     "The format of '${{}}' is not known{}. The value is left out.",
     "The formats are config, dconf, env, envfile, prop, realpath and system."},
    {FindingId::MalformedTemplate, "malformed-template", Severity::Error,
     "'${{}}' is not what its format asks for. The value is left out.",
     "Write '${config:GROUP/KEY}' or '${envfile:FILE:NAME}'."},
    {FindingId::NoTemplateFile, "no-template-file", Severity::Error,
     "'${{}}' cannot be read: {}. The value is not known.", "Name a file."},
    {FindingId::ReferenceCircle, "reference-circle", Severity::Error,
     "{} is empty, because its references go round in a circle: {}.",
     "Give one of these keys a value without a reference."},
    {FindingId::ReferenceDepth, "reference-depth", Severity::Error,
     "{} is empty, because more than 33 values are needed for it.",
     "Shorten the chain of references."},
    {FindingId::HookNotRunnable, "hook-not-runnable", Severity::Error,
     "The shell cannot run this hook: {}. What it should print is missing.",
     "Make it an executable script (chmod +x) of a program that is there, or take it away."},
    {FindingId::UnreadableFragment, "unreadable-fragment", Severity::Error,
     "This fragment cannot be read: {}. No output has it.",
     "Make it a readable file, or take it away."},
    // Warnings
    {FindingId::MissingDirectory, "missing-directory", Severity::Warning,
     "This directory is not there, or not a directory. Runs pass over it.",
     "Look for a mistake in its name."},
    {FindingId::UnreadableDirectory, "unreadable-directory", Severity::Warning,
     "This directory cannot be read: {}. Not all that is in it is seen.",
     "Look at it as the user who starts the runs, or change its mode."},
    {FindingId::UnknownGroup, "unknown-group", Severity::Warning,
     "[{}] is no group that is known{}. Nothing reads its keys.",
     R"("cradle-inspect-config keys" lists the groups.)"},
    {FindingId::UnknownKey, "unknown-key", Severity::Warning,
     "{} is no key that is known{}. Nothing reads it.",
     R"("cradle-inspect-config keys{}" lists the keys.)"},
    {FindingId::UnfitValue, "unfit-value", Severity::Warning, "'{}' is not right for {}.",
     "It should be {}."},
    {FindingId::SplitValue, "split-value", Severity::Warning,
     "A ';' splits the value of {}, which takes one. Only the last part counts: '{}'.",
     "A ';' always separates values; it cannot be part of one."},
    {FindingId::MissingReference, "missing-reference", Severity::Warning,
     "It refers to {}, which is not set{}. Nothing stands in its place.",
     "Set that key, or correct the reference."},
    {FindingId::ChangedByReadingBack, "changed-by-reading-back", Severity::Warning,
     "{} becomes '{}', which changes when a generated configuration is read back: {}.",
     "Avoid such text in fragments and in what templates and hooks give, or do not read the result "
     "back."},
    {FindingId::HookMountEntry, "hook-mount-entry", Severity::Warning,
     "It prints what is no mount entry. {}. The entry is left out.",
     "An entry is SOURCE TARGET TYPE OPTIONS 0 0 with single blanks between them."},
    {FindingId::HookName, "hook-name", Severity::Warning,
     "The shell takes its path apart: {} is special to it.",
     "Use letters, digits, '-', '_', '.' and '/' alone."},
    {FindingId::IgnoredFile, "ignored-file", Severity::Warning, "Nothing reads it: {}{}.",
     "Rename it, or take it away."},
    {FindingId::OthersMayWrite, "others-may-write", Severity::Warning,
     "Others may change it (mode {}), and with it what root runs.", "chmod go-w."},
    {FindingId::ForeignOwner, "foreign-owner", Severity::Warning,
     "It belongs to {}, who can change what root runs.", "chown root."},
    {FindingId::StaleGenerated, "stale-generated", Severity::Warning,
     "This generated configuration lies among its sources and is older than {}, {}.",
     "Generate it again into a directory of its own, and take this one away."},
    {FindingId::GeneratedBesideSources, "generated-beside-sources", Severity::Warning,
     "This generated configuration lies among its sources: a run for config reads all values "
     "twice.",
     "Keep it in a directory of its own, which the runs for lxc and property are given."},
    // Notes
    {FindingId::NoUser, "no-user", Severity::Note,
     "The user of a run is not known: ${HOME}, ${USER} and ${USER_ID} are left as they are.",
     "Name one with --user-id."},
    {FindingId::CommandNotRun, "command-not-run", Severity::Note,
     "'${{}}' is a command, which has not been run.", "See what it gives with --run."},
    {FindingId::NoTemplateValue, "no-template-value", Severity::Note,
     "'${{}}' gives nothing here. The value is left out.", "This is fine where it is optional."},
    {FindingId::ClearedValue, "cleared-value", Severity::Note,
     "{} loses this value: {} clears the key.",
     R"("cradle-inspect-config explain {}" tells more.)"},
    {FindingId::OverriddenValue, "overridden-value", Severity::Note, "{} loses this value to {}.",
     R"("cradle-inspect-config explain {}" tells more.)"},
});

constexpr bool rowsAreInOrder() {
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    if (kKinds.at(i).id != static_cast<FindingId>(i)) {
      return false;
    }
  }
  return true;
}
static_assert(rowsAreInOrder());

}  // namespace

std::string_view nameOf(Severity severity) {
  constexpr std::array<std::string_view, 3> kNames{"error", "warning", "note"};
  return kNames.at(static_cast<std::size_t>(severity));
}

std::span<const FindingKind> findingKinds() {
  return kKinds;
}

const FindingKind& kindOf(FindingId id) {
  return kKinds.at(static_cast<std::size_t>(id));
}

}  // namespace Cradle::Inspect
