// SPDX-License-Identifier: MIT
// Findings: hooks and fragments that do not work, files that nothing reads, who may change what
// root runs, and generated configurations where they do not belong.

#include <algorithm>
#include <set>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "base/character_set.h"
#include "inspect/findings.h"
#include "inspect/generated_files.h"
#include "inspect/question.h"
#include "inspect/readability.h"
#include "inspect/source_tree.h"
#include "real_path.h"

namespace Cradle::Inspect {
namespace {

// What the shell takes as it stands.
constexpr CharacterSet kPlainCharacters(
    "%+,-./0123456789:=@ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");

constexpr unsigned kGroupMayWrite = 0020;
constexpr unsigned kOthersMayWrite = 0002;
constexpr unsigned kSticky = 01000;

class SourceCheck {
 public:
  SourceCheck(const Inspection& inspection, Findings& findings)
      : inspection_(inspection), tree_(findSources(inspection)), findings_(findings) {}

  void run() {
    for (const SourceFile& file : tree_.used) {
      checkUse(file);
      checkAccess(file.path, 0);
    }
    for (const SourceFile& file : tree_.passed) {
      checkPassed(file);
    }
    for (const std::string& directory : inspection_.directories()) {
      checkDirectory(directory);
    }
    checkWays();
    checkGenerated();
  }

 private:
  void checkUse(const SourceFile& file) {
    const std::size_t plain = kPlainCharacters.prefixLength(file.path);
    if (file.action == Action::Run && plain < file.path.size()) {
      const std::string special = "'" + file.path.substr(plain, 1) + "'";
      findings_.add(FindingId::HookName, file.path, 0, {special});
    }
    if (file.action == Action::Run && !file.fault.empty()) {
      findings_.add(FindingId::HookNotRunnable, file.path, 0, {file.fault});
    }
    if (file.action == Action::Copy && !file.fault.empty()) {
      findings_.add(FindingId::UnreadableFragment, file.path, 0, {file.fault});
    }
  }

  // Hidden files are passed over by intent.
  void checkPassed(const SourceFile& file) {
    if (file.path.find("/.") == std::string::npos) {
      findings_.add(FindingId::IgnoredFile, file.path, 0, {file.fault, questionFor(file.path)});
    }
  }

  // A directory whose name is nearly one that counts.
  static std::string questionFor(std::string_view path) {
    if (!path.ends_with('/')) {
      return "";
    }
    path.remove_suffix(1);
    return question(path.substr(path.rfind('/') + 1), sourceDirectories());
  }

  // In a directory with the sticky bit nobody can exchange what belongs to another.
  void checkAccess(const std::string& path, unsigned excuse) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 ||
        !checked_.insert({status.st_dev, status.st_ino}).second) {
      return;
    }
    const bool group = (status.st_mode & kGroupMayWrite) != 0 && status.st_gid != 0;
    const bool others = (status.st_mode & kOthersMayWrite) != 0;
    if ((group || others) && (status.st_mode & excuse) == 0) {
      findings_.add(FindingId::OthersMayWrite, path, 0, {octalMode(status.st_mode)});
    }
    if (status.st_uid != 0 && status.st_uid != geteuid()) {
      findings_.add(FindingId::ForeignOwner, path, 0, {nameOfUser(status.st_uid)});
    }
  }

  // The directory and what it holds.
  void checkDirectory(const std::string& directory) {
    const std::string path = Parser::resolvePath(directory);
    if (path.empty()) {
      return;
    }
    checkAccess(path, 0);
    // Of what is in it, nobody could tell more than that.
    if (!whyNotListed(path).empty()) {
      return;
    }
    for (const std::string_view name : sourceDirectories()) {
      const std::string below = path + "/" + std::string(name);
      checkAccess(below, 0);
      checkListing(below);
    }
  }

  void checkListing(const std::string& directory) {
    const std::string fault = whyNotListed(directory);
    if (!fault.empty()) {
      findings_.add(FindingId::UnreadableDirectory, directory, 0, {fault});
    }
  }

  void checkParents(const std::string& path) {
    if (path.empty()) {
      return;
    }
    for (std::size_t end = path.rfind('/'); end != 0; end = path.rfind('/', end - 1)) {
      checkAccess(path.substr(0, end), kSticky);
    }
  }

  // What is above directories and files, by their names and by where links lead: there others might
  // exchange them. A directory of the configuration has been looked at before.
  void checkWays() {
    for (const std::string& directory : inspection_.directories()) {
      checkParents(absolute(directory));
      checkParents(Parser::resolvePath(directory));
    }
    for (const SourceFile& file : tree_.used) {
      checkParents(Parser::resolvePath(file.path));
    }
  }

  static std::string absolute(const std::string& path) {
    return path.starts_with('/') ? path : Parser::resolvePath(".") + "/" + path;
  }

  void checkGenerated() {
    const std::vector<ReadFile>& files = inspection_.journal.files;
    const std::vector<std::uint32_t> generated = generatedFiles(inspection_.journal);
    if (generated.size() == files.size()) {
      return;
    }
    for (const std::uint32_t file : generated) {
      const std::string newer = newerSource(files[file].path);
      if (newer.empty()) {
        findings_.add(FindingId::GeneratedBesideSources, files[file].path, 0, {});
      } else {
        findings_.add(FindingId::StaleGenerated, files[file].path, 0,
                      {newer, effectBeside(file, newer)});
      }
    }
  }

  // What comes of a newer source beside the generated file of that number.
  std::string_view effectBeside(std::uint32_t generated, const std::string& newer) const {
    const std::vector<ReadFile>& files = inspection_.journal.files;
    const auto source = std::find_if(files.begin(), files.end(),
                                     [&](const ReadFile& file) { return file.path == newer; });
    if (source == files.end()) {
      return "but holds what that gave before";
    }
    return source - files.begin() < generated ? "but its values come after those"
                                              : "whose values override it; lists hold both";
  }

  // The newest of the files that a run uses, if it is newer than the one at `path`.
  std::string newerSource(const std::string& path) const {
    const auto age = [](const SourceFile& left, const SourceFile& right) {
      return left.modified < right.modified;
    };
    const auto newest = std::max_element(tree_.used.begin(), tree_.used.end(), age);
    const auto itself = std::find_if(tree_.used.begin(), tree_.used.end(),
                                     [&](const SourceFile& file) { return file.path == path; });
    return itself->modified < newest->modified ? newest->path : "";
  }

  const Inspection& inspection_;
  SourceTree tree_;
  Findings& findings_;
  std::set<std::pair<dev_t, ino_t>> checked_;
};

}  // namespace

void checkSources(const Inspection& inspection, Findings& findings) {
  SourceCheck(inspection, findings).run();
}

}  // namespace Cradle::Inspect
