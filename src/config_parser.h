// SPDX-License-Identifier: MIT
// The layered configuration: every value of every key of every group, from all "*.conf" files of an
// ordered list of directories.
//
// A parser is made empty, optionally told its named templates and known keys, loaded once or
// several times, then read; it is not copied. Templates in values are expanded while loading,
// references to other values when a value is read. Later files win: a single value is the last one
// of its key, an empty assignment removes a key. Nothing throws; what goes wrong is returned and
// logged through libraryLogger().
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config_value.h"
#include "export.h"
#include "value_mode.h"

namespace Cradle::Parser {

class TemplateContext;

enum class LoadResult : std::uint8_t {
  Loaded = 0,
  NothingToLoad = 1,         // no directory held a "*.conf" file
  InvalidConfiguration = 2,  // a file was unreadable or held a bad line
};

class CRADLE_CONFIG_API ConfigParser {
 public:
  // `userId` is the user whose dconf database "dconf" templates read; -1 for none.
  explicit ConfigParser(std::int32_t userId);
  ~ConfigParser();
  ConfigParser(const ConfigParser&) = delete;
  ConfigParser& operator=(const ConfigParser&) = delete;

  // Registers "${name}" for the loads to come. The first value given for a name stays.
  void addTemplate(const std::string& name, const std::string& value);

  // What templates in values draw on; for the programs of this project.
  CRADLE_CONFIG_LOCAL const TemplateContext& templates() const;

  // Declares a key with its ValueMode. The first mode given stays.
  void addKnownKey(std::string_view group, std::string_view key, std::uint32_t mode);

  // Merges one file. False, with an error logged, when it could not be read or held a bad line;
  // what stood before that line stays.
  bool loadFile(const std::string& path);

  // Merges all "*.conf" files of a directory in byte order, also after one has failed. False, with
  // an error logged, when there is none or one failed.
  bool loadDirectory(const std::string& directory);

  // Merges the directories in order, each with its files in byte order, up to the first file that
  // fails. Directories without files are passed over silently.
  LoadResult loadDirectories(const std::vector<std::string>& directories);

  // Whether a value of the group or key has been stored; for the key also that it was not removed.
  bool hasGroup(std::string_view group) const;
  bool hasValue(std::string_view group, std::string_view key) const;

  // The same as hasValue, and a warning where keys are declared and this one is not.
  bool hasKey(std::string_view group, std::string_view key) const;

  // Adds a value behind the earlier ones of its key, as an assignment in a file does.
  void addValue(std::string_view group, std::string_view key, ConfigValue value);

  // Drops a key with all its values, if it is there.
  void removeKey(std::string_view group, std::string_view key);

  // The last value of a key that exists, resolved and converted. `ok`, unless null, tells whether
  // the whole text was a value of that type: "true" or "false"; a decimal number; or for integers a
  // hexadecimal one that begins with "0x". What could be read of it is stored all the same, false
  // or 0 where nothing could.
  void getValue(std::string_view group, std::string_view key, std::string& out) const;
  void getValue(std::string_view group, std::string_view key, bool& out, bool* ok = nullptr) const;
  void getValue(std::string_view group, std::string_view key, int& out, bool* ok = nullptr) const;
  void getValue(std::string_view group, std::string_view key, long& out, bool* ok = nullptr) const;
  void getValue(std::string_view group, std::string_view key, double& out,
                bool* ok = nullptr) const;

  // All values of a key that exists, oldest first, appended to what `out` holds. A value whose
  // references resolve to the empty text is left out. `ok`, unless null, is false when any
  // conversion failed; the element is appended all the same.
  void getValue(std::string_view group, std::string_view key, std::vector<std::string>& out) const;
  void getValue(std::string_view group, std::string_view key, std::vector<bool>& out,
                bool* ok = nullptr) const;
  void getValue(std::string_view group, std::string_view key, std::vector<int>& out,
                bool* ok = nullptr) const;
  void getValue(std::string_view group, std::string_view key, std::vector<long>& out,
                bool* ok = nullptr) const;
  void getValue(std::string_view group, std::string_view key, std::vector<double>& out,
                bool* ok = nullptr) const;

  // The text of a value with its references followed. A resolution covers at most 33 values, itself
  // included; beyond that, as in a circle, an error is logged and the text is empty.
  void resolve(const ConfigValue& value, std::string& out) const;

  // Calls `visit` for every key with its values, oldest first; groups in ascending byte order and
  // the keys of each likewise.
  using EntryVisitor = std::function<void(std::string_view group, std::string_view key,
                                          std::span<const ConfigValue> values)>;
  void forEachEntry(const EntryVisitor& visit) const;

 private:
  struct Implementation;

  CRADLE_CONFIG_LOCAL void storeEntry(std::string_view group, std::string_view key,
                                      std::string_view rawValue);
  CRADLE_CONFIG_LOCAL std::span<const ConfigValue> values(std::string_view group,
                                                          std::string_view key) const;

  std::unique_ptr<Implementation> implementation_;
};

}  // namespace Cradle::Parser
