// SPDX-License-Identifier: MIT
// Mount entries. The input is an entry.
//
// Properties: an entry is accepted when it obeys the rules of a table that stands here once more,
// written in another way; a rejected one is reported once, with its text and its first broken rule.

#include "mount_entry.h"

#include <algorithm>
#include <string>
#include <vector>

#include "common/check.h"
#include "common/lines.h"
#include "common/target.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

bool isOneOf(const std::string& text, const std::vector<std::string>& words) {
  return std::find(words.begin(), words.end(), text) != words.end();
}

// The message of the first broken rule, without the entry at its end, or the empty text.
std::string brokenRule(const std::string& entry) {
  // A blank at the end of the entry separates nothing.
  const std::vector<std::string> fields = linesOf(entry, ' ');
  if (fields.size() != 6) {
    return "Not enough parts in mount entry: ";
  }
  if (fields[0][0] != '/' && !isOneOf(fields[0], {"tmpfs", "none"})) {
    return "Mount entry must begin with '/' or be 'tmpfs' or 'none': ";
  }
  if (!isOneOf(fields[2], {"none", "tmpfs", "devpts"})) {
    return "File system type must be 'none' or 'tmpfs' instead of '" + fields[2] +
           "' in mount entry: ";
  }
  if (fields[4] != "0") {
    return "Dump value must be '0' instead of '" + fields[4] + "' in mount entry: ";
  }
  if (fields[5] != "0") {
    return "Backup value must be '0' instead of '" + fields[5] + "' in mount entry: ";
  }
  return "";
}

}  // namespace

void checkInput(const std::string& input) {
  const Testing::LogCapture log;
  const bool accepted = Parser::validateMountEntry(input);
  const std::string broken = brokenRule(input);
  require(accepted == broken.empty(), "an entry is accepted when it obeys every rule", broken);
  requireEqual(log.text(), broken.empty() ? "" : "ERROR: " + broken + input + "\n",
               "a rejected entry is reported with the first rule that it breaks");
}

}  // namespace Cradle::Fuzz
