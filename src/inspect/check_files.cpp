// SPDX-License-Identifier: MIT
// Findings: what keeps a run from reading its configuration.

#include <sys/stat.h>

#include "base/text.h"
#include "inspect/findings.h"
#include "inspect/readability.h"

namespace Cradle::Inspect {
namespace {

constexpr std::string_view kReasonEnd = " in ";

bool isDirectory(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Whether all that is in it is seen.
bool checkDirectory(const std::string& directory, Findings& findings) {
  const std::string fault = whyNotListed(directory);
  if (!fault.empty()) {
    findings.add(FindingId::UnreadableDirectory, directory, 0, {fault});
  } else if (!isDirectory(directory)) {
    findings.add(FindingId::MissingDirectory, directory, 0, {});
  }
  return fault.empty();
}

void checkFile(const ReadFile& file, Findings& findings) {
  for (const Parser::RejectedLine& line : file.rejected) {
    const std::string_view reason = line.reason.substr(0, line.reason.rfind(kReasonEnd));
    findings.add(FindingId::BadLine, file.path, line.number, {reason, line.text});
  }
  if (!file.fault.empty()) {
    findings.add(FindingId::UnreadableFile, file.path, 0, {file.fault});
  }
}

}  // namespace

void checkFiles(const Inspection& inspection, Findings& findings) {
  bool allIsSeen = true;
  for (const std::string& directory : inspection.directories()) {
    allIsSeen = checkDirectory(directory, findings) && allIsSeen;
  }
  for (const ReadFile& file : inspection.journal.files) {
    checkFile(file, findings);
  }
  if (inspection.journal.files.empty() && allIsSeen) {
    findings.add(FindingId::NoConfiguration, "", 0, {join(inspection.directories(), ", ")});
  }
  const std::uint32_t user = inspection.settings.userId;
  if (!inspection.userIsKnown && user == Generators::kUnknownUser) {
    findings.add(FindingId::NoUser, "", 0, {});
  } else if (!inspection.userIsKnown) {
    findings.add(FindingId::UnknownUser, "", 0, {std::to_string(user)});
  }
}

}  // namespace Cradle::Inspect
