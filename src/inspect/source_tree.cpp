// SPDX-License-Identifier: MIT
#include "inspect/source_tree.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include <sys/stat.h>

#include "generators/fragments.h"
#include "generators/user_database.h"
#include "glob_paths.h"
#include "inspect/readability.h"

namespace Cradle::Inspect {
namespace {

using CommandLine::OutputType;

// What a run does in its rounds over the configuration directories; the rows of one round are done
// for the first directory, then for the next one.
struct Stop {
  OutputType type;
  int round;
  const char* pattern;  // appended to the directory
};

constexpr int kRounds = 3;

constexpr std::array<Stop, 10> kStops{{
    {OutputType::Config, 0, Generators::kMountHooks},
    {OutputType::Config, 1, Generators::kPropertyPreHooks},
    {OutputType::Config, 1, Generators::kPropertyPostHooks},
    {OutputType::Config, 1, Generators::kStaticLxc},
    {OutputType::Config, 1, Generators::kStaticRo},
    {OutputType::Lxc, 0, Generators::kMountHooks},
    {OutputType::Lxc, 0, Generators::kStaticLxc},
    {OutputType::Property, 0, Generators::kPropertyPreHooks},
    {OutputType::Property, 1, Generators::kPropertyPostHooks},
    {OutputType::Property, 2, Generators::kStaticRo},
}};

constexpr std::array<SourceKind, 6> kKinds{{
    {"", ".conf", false},
    {"mount-hooks", ".sh", true},
    {"property-pre-hooks", ".sh", true},
    {"property-post-hooks", ".sh", true},
    {"static", ".lxc", false},
    {"static", ".ro", false},
}};

// "/DIRECTORY/*SUFFIX", as the generators name it.
std::string patternOf(const SourceKind& kind) {
  const std::string directory = kind.directory.empty() ? "" : "/" + std::string(kind.directory);
  return directory + "/*" + std::string(kind.suffix);
}

const SourceKind& kindOf(std::string_view pattern) {
  return *std::find_if(kKinds.begin(), kKinds.end(),
                       [&](const SourceKind& kind) { return patternOf(kind) == pattern; });
}

SourceFile lookAt(std::string path, Action action, const SourceKind* kind) {
  SourceFile file{.path = std::move(path), .action = action, .kind = kind};
  struct stat status {};
  if (stat(file.path.c_str(), &status) != 0) {
    return file;
  }
  file.mode = octalMode(status.st_mode);
  file.owner = nameOfUser(status.st_uid);
  constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
  file.modified = status.st_mtim.tv_sec * kNanosecondsPerSecond + status.st_mtim.tv_nsec;
  return file;
}

SourceFile lookAtUsed(const std::string& path, const SourceKind& kind) {
  SourceFile file = lookAt(path, kind.isHook ? Action::Run : Action::Copy, &kind);
  file.fault = kind.isHook ? whyNotRunnable(path) : whyUnreadable(path);
  return file;
}

std::string_view baseName(std::string_view path) {
  path.remove_suffix(path.ends_with('/') ? 1 : 0);
  return path.substr(path.rfind('/') + 1);
}

// The names that count in a directory, as "*.lxc or *.ro".
std::string countingNames(std::string_view directory) {
  std::string names;
  for (const SourceKind& kind : kKinds) {
    if (kind.directory == directory) {
      names += (names.empty() ? "*" : " or *") + std::string(kind.suffix);
    }
  }
  return names;
}

std::string whyPassedOver(std::string_view path, std::string_view directory) {
  if (baseName(path).starts_with('.')) {
    return "its name begins with '.'";
  }
  return path.ends_with('/') ? "nothing is read in this directory"
                             : "its name is not " + countingNames(directory);
}

bool isSourceDirectory(std::string_view path) {
  const std::vector<std::string_view> known = sourceDirectories();
  return path.ends_with('/') &&
         std::find(known.begin(), known.end(), baseName(path)) != known.end();
}

class Search {
 public:
  explicit Search(const Inspection& inspection) : inspection_(inspection) {}

  SourceTree run() {
    for (const ReadFile& file : inspection_.journal.files) {
      tree_.used.push_back(lookAt(file.path, Action::Read, &kKinds.front()));
      tree_.used.back().fault = file.fault;
    }
    findContributions();
    for (const std::string& directory : inspection_.directories()) {
      passOver(directory, "");
      for (const std::string_view below : sourceDirectories()) {
        passOver(directory, below);
      }
    }
    return std::move(tree_);
  }

 private:
  void use(const std::vector<std::string>& paths, const SourceKind& kind) {
    for (const std::string& path : paths) {
      tree_.used.push_back(lookAtUsed(path, kind));
    }
  }

  // A generated configuration holds what property hooks and fragments gave.
  void findContributions() {
    const OutputType type = inspection_.settings.type;
    if (type == OutputType::Property && inspection_.run->fromGenerated) {
      return;
    }
    for (int round = 0; round < kRounds; ++round) {
      for (const std::string& directory : inspection_.directories()) {
        for (const Stop& stop : kStops) {
          if (stop.type == type && stop.round == round) {
            use(Parser::sortedGlobPaths(directory + stop.pattern), kindOf(stop.pattern));
          }
        }
      }
    }
  }

  // What of a directory no run would take.
  void passOver(const std::string& directory, std::string_view below) {
    const std::string place = directory + (below.empty() ? "/" : "/" + std::string(below) + "/");
    std::vector<std::string> paths = Parser::sortedGlobPaths(place + "*");
    const std::vector<std::string> hidden = Parser::sortedGlobPaths(place + ".[!.]*");
    paths.insert(paths.end(), hidden.begin(), hidden.end());
    for (const std::string& path : paths) {
      if (!counts(path, below) && !(below.empty() && isSourceDirectory(path))) {
        SourceFile file = lookAt(path, Action::PassOver, nullptr);
        file.fault = whyPassedOver(path, below);
        tree_.passed.push_back(std::move(file));
      }
    }
  }

  static bool counts(std::string_view path, std::string_view below) {
    const std::string_view name = baseName(path);
    return !name.starts_with('.') &&
           std::any_of(kKinds.begin(), kKinds.end(), [&](const SourceKind& kind) {
             return kind.directory == below && name.ends_with(kind.suffix);
           });
  }

  const Inspection& inspection_;
  SourceTree tree_;
};

}  // namespace

std::string_view nameOf(Action action) {
  constexpr std::array<std::string_view, 4> kNames{"read", "run", "copy", "-"};
  return kNames.at(static_cast<std::size_t>(action));
}

std::vector<std::string_view> sourceDirectories() {
  std::vector<std::string_view> names;
  for (const SourceKind& kind : kKinds) {
    if (!kind.directory.empty() && (names.empty() || names.back() != kind.directory)) {
      names.push_back(kind.directory);
    }
  }
  return names;
}

std::string octalMode(mode_t mode) {
  std::array<char, sizeof "07777"> text{};
  std::snprintf(text.data(), text.size(), "%04o", static_cast<unsigned>(mode) & 07777U);
  return text.data();
}

std::string nameOfUser(uid_t uid) {
  const auto user = Generators::lookupUser(uid);
  return user ? user->name : std::to_string(uid);
}

SourceTree findSources(const Inspection& inspection) {
  return Search(inspection).run();
}

}  // namespace Cradle::Inspect
