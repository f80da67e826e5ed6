// The record of one configuration file being read.
//
// Owned by the loader and shared by reference with every iterator over the file. Setting the flag
// is the only way in which the reader reports failure.
#pragma once

#include <string>
#include <utility>

namespace Cradle::Parser {

struct ConfigFileInfo {
  explicit ConfigFileInfo(std::string filePath) : path(std::move(filePath)) {}

  std::string path;
  bool failed = false;  // could not be opened or read, or held a bad line
};

}  // namespace Cradle::Parser
