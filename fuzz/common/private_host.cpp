// SPDX-License-Identifier: MIT
#include "common/private_host.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/table.h"
#include "common/check.h"

namespace Cradle::Fuzz {
namespace {

constexpr std::array<HostUser, 2> kUsers{{{0, "root", "/root"}, {1000, "alice", "/home/alice"}}};

struct Variable {
  std::string_view name;
  const char* value;
};

constexpr std::array<Variable, 4> kEnvironment{{
    {"HOME", "/home/alice"},
    {"LANG", "fi_FI.UTF-8"},
    {"LIST", "a;b;;$c"},
    {"LINES", "one\ntwo=2\n"},
}};

const PrivateHost* visited = nullptr;
int lookups = 0;
int commandStatus = 0;

// Where a path of the host lies in truth. ".." goes up by name, and not beyond the root.
std::string inside(const char* path) {
  const std::filesystem::path absolute = std::filesystem::path("/") / path;
  return visited->directory().path() + absolute.lexically_normal().string();
}

bool mayLookUp() {
  errno = EACCES;
  return ++lookups <= PrivateHost::kMostLookups;
}

passwd* entryOf(const HostUser* user) {
  static passwd entry;
  if (user == nullptr) {
    return nullptr;
  }
  entry = {};
  entry.pw_name = const_cast<char*>(user->name);
  entry.pw_dir = const_cast<char*>(user->home);
  entry.pw_uid = user->id;
  entry.pw_gid = user->id;
  return &entry;
}

// What the command line would print. The arguments of a hook stand behind its path in quotes.
std::string outputOf(const std::string& commandLine) {
  const std::string path = commandLine.substr(0, commandLine.find(" '"));
  return visited->read(path).value_or(commandLine + "\n");
}

std::FILE* openText(const std::string& text) {
  const int file = memfd_create("command", MFD_CLOEXEC);
  const ssize_t size = pwrite(file, text.data(), text.size(), 0);
  require(size == static_cast<ssize_t>(text.size()), "a file in memory can be written");
  return fdopen(file, "r");
}

}  // namespace

PrivateHost::Visit::Visit(const PrivateHost& host) {
  visited = &host;
  lookups = 0;
}

PrivateHost::Visit::~Visit() {
  visited = nullptr;
}

bool PrivateHost::Visit::isExhausted() const {
  return lookups > kMostLookups;
}

std::optional<std::string> PrivateHost::read(const std::string& path) const {
  const std::string name = path.starts_with('/') ? path.substr(1) : path;
  return std::filesystem::is_regular_file(directory_.path(name))
             ? std::optional(directory_.read(name))
             : std::nullopt;
}

const HostUser* PrivateHost::findUser(std::uint32_t id) {
  return findRow(kUsers, &HostUser::id, id);
}

// The names are the linker's: a call of X goes to __wrap_X, and __real_X is X itself.
extern "C" {

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  return __real_open(visited == nullptr ? path : inside(path).c_str(), flags, mode);
}

DIR* __real_opendir(const char* path);
DIR* __wrap_opendir(const char* path) {
  if (visited == nullptr) {
    return __real_opendir(path);
  }
  return mayLookUp() ? __real_opendir(inside(path).c_str()) : nullptr;
}

int __real_stat(const char* path, struct stat* status);
int __wrap_stat(const char* path, struct stat* status) {
  if (visited == nullptr) {
    return __real_stat(path, status);
  }
  return mayLookUp() ? __real_stat(inside(path).c_str(), status) : -1;
}

int __real_lstat(const char* path, struct stat* status);
int __wrap_lstat(const char* path, struct stat* status) {
  if (visited == nullptr) {
    return __real_lstat(path, status);
  }
  return mayLookUp() ? __real_lstat(inside(path).c_str(), status) : -1;
}

int __real_access(const char* path, int mode);
int __wrap_access(const char* path, int mode) {
  return __real_access(visited == nullptr ? path : inside(path).c_str(), mode);
}

int __real_faccessat(int directory, const char* path, int mode, int flags);
int __wrap_faccessat(int directory, const char* path, int mode, int flags) {
  const std::string place = visited == nullptr ? path : inside(path);
  return __real_faccessat(directory, place.c_str(), mode, flags);
}

int __real_mkdir(const char* path, mode_t mode);
int __wrap_mkdir(const char* path, mode_t mode) {
  return __real_mkdir(visited == nullptr ? path : inside(path).c_str(), mode);
}

// Files keep their owner, because only root can give them away.
int __real_lchown(const char* path, uid_t user, gid_t group);
int __wrap_lchown(const char* path, uid_t user, gid_t group) {
  return visited == nullptr ? __real_lchown(path, user, group) : 0;
}

char* __real_realpath(const char* path, char* resolved);
char* __wrap_realpath(const char* path, char* resolved) {
  if (visited == nullptr) {
    return __real_realpath(path, resolved);
  }
  char* const place = __real_realpath(inside(path).c_str(), resolved);
  if (place != nullptr) {
    // The host's own name for it, which is "/" for its root.
    std::string name = std::string(place).substr(visited->directory().path().size());
    name = name.empty() ? "/" : name;
    name.copy(place, name.size());
    place[name.size()] = '\0';
  }
  return place;
}

char* __real_getenv(const char* name);
char* __wrap_getenv(const char* name) {
  if (visited == nullptr) {
    return __real_getenv(name);
  }
  const Variable* const variable = findRow(kEnvironment, &Variable::name, std::string_view(name));
  return variable == nullptr ? nullptr : const_cast<char*>(variable->value);
}

int __real_setenv(const char* name, const char* value, int overwrite);
int __wrap_setenv(const char* name, const char* value, int overwrite) {
  return visited == nullptr ? __real_setenv(name, value, overwrite) : 0;
}

void* __real_dlopen(const char* name, int flags);
void* __wrap_dlopen(const char* name, int flags) {
  return visited == nullptr ? __real_dlopen(name, flags) : nullptr;
}

passwd* __real_getpwuid(uid_t id);
passwd* __wrap_getpwuid(uid_t id) {
  return visited == nullptr ? __real_getpwuid(id) : entryOf(PrivateHost::findUser(id));
}

passwd* __real_getpwnam(const char* name);
passwd* __wrap_getpwnam(const char* name) {
  if (visited == nullptr) {
    return __real_getpwnam(name);
  }
  return entryOf(findRow(kUsers, &HostUser::name, std::string_view(name)));
}

std::FILE* __real_popen(const char* commandLine, const char* mode);
std::FILE* __wrap_popen(const char* commandLine, const char* mode) {
  if (visited == nullptr) {
    return __real_popen(commandLine, mode);
  }
  commandStatus = std::string_view(commandLine).find('!') == std::string_view::npos ? 0 : 0x100;
  return openText(outputOf(commandLine));
}

int __real_pclose(std::FILE* pipe);
int __wrap_pclose(std::FILE* pipe) {
  if (visited == nullptr) {
    return __real_pclose(pipe);
  }
  std::fclose(pipe);
  return commandStatus;
}
}

}  // namespace Cradle::Fuzz
