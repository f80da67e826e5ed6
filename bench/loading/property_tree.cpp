// SPDX-License-Identifier: MIT
// Boost.PropertyTree and its parser of INI files.

#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include "loading/loaders.h"

namespace Cradle::Bench {
namespace {

namespace pt = boost::property_tree;

class PropertyTreeFile : public KeyedFile {
 public:
  explicit PropertyTreeFile(const std::string& path) { pt::read_ini(path, tree_); }

 private:
  std::optional<std::string> value(const Entry& entry) const override {
    const auto text =
        tree_.get_optional<std::string>(pt::ptree::path_type(entry.group + '/' + entry.key, '/'));
    return text ? std::optional(*text) : std::nullopt;
  }

  pt::ptree tree_;
};

}  // namespace

std::unique_ptr<LoadedFile> loadWithPropertyTree(const std::string& path) {
  return std::make_unique<PropertyTreeFile>(path);
}

}  // namespace Cradle::Bench
