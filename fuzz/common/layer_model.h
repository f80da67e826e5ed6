// SPDX-License-Identifier: MIT
// The merged configuration as a plain map of lists gives it, for the target of layered loading.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "common/file_tree.h"
#include "common/private_directory.h"
#include "config_parser.h"

namespace Cradle::Fuzz {

struct KnownKey {
  unsigned mode;
  std::string group;
  std::string key;
};

// Those that the file "known" declares, one in each line: the mode, a digit, and "GROUP/KEY".
std::vector<KnownKey> knownKeysOf(const FileTree& files);

class LayerModel {
 public:
  explicit LayerModel(const std::vector<KnownKey>& known);

  // Merges a file up to its first wrong line, of which the message is returned with those about
  // the wrong lines up to the next entry.
  std::string load(const std::string& path, const std::string& text);

  bool hasGroup(const std::string& group) const { return groups_.count(group) != 0; }

  // Every key with its values, in order.
  std::string shown() const;

 private:
  using Name = std::pair<std::string, std::string>;

  void assign(const std::string& group, const std::string& key, const std::string& value);

  std::map<Name, unsigned> modes_;
  std::map<Name, std::vector<std::string>> keys_;
  std::set<std::string> groups_;
};

// What loading all directories has to give and to say.
struct ExpectedLoading {
  LayerModel model;
  Parser::LoadResult result = Parser::LoadResult::NothingToLoad;
  std::string complaints = {};
};

ExpectedLoading loadByHand(const FileTree& files, const PrivateDirectory& place,
                           const std::vector<KnownKey>& known);

}  // namespace Cradle::Fuzz
