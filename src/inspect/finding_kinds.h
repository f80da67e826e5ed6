// SPDX-License-Identifier: MIT
// The kinds of findings: one table, from which messages, documentation and tests come.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace Cradle::Inspect {

enum class Severity : std::uint8_t {
  Error,    // a run ends, or loses something that was asked for
  Warning,  // a run does something else than what was probably meant
  Note,     // good to know
};

std::string_view nameOf(Severity severity);

enum class FindingId : std::uint8_t {
  BadLine,
  UnreadableFile,
  NoConfiguration,
  UnknownUser,
  EndingValue,
  MissingKey,
  MountEntry,
  RequiredDevice,
  UnclosedTemplate,
  SplitTemplate,
  StrayDollar,
  UnknownName,
  UnknownFormat,
  MalformedTemplate,
  NoTemplateFile,
  ReferenceCircle,
  ReferenceDepth,
  HookNotRunnable,
  UnreadableFragment,
  MissingDirectory,
  UnreadableDirectory,
  UnknownGroup,
  UnknownKey,
  UnfitValue,
  SplitValue,
  MissingReference,
  ChangedByReadingBack,
  HookMountEntry,
  HookName,
  IgnoredFile,
  OthersMayWrite,
  ForeignOwner,
  StaleGenerated,
  GeneratedBesideSources,
  NoUser,
  CommandNotRun,
  NoTemplateValue,
  ClearedValue,
  OverriddenValue,
};

struct FindingKind {
  FindingId id;
  std::string_view name;
  Severity severity;
  std::string_view sentence;  // each "{}" stands for something
  std::string_view advice;
};

// One row per kind, in the order of their values.
std::span<const FindingKind> findingKinds();

const FindingKind& kindOf(FindingId id);

}  // namespace Cradle::Inspect
