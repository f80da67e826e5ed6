// SPDX-License-Identifier: MIT
// The record of one configuration file being read.
//
// Owned by the loader and shared by reference with every iterator over the file. Setting the flag
// is the way in which the reader reports failure; who wants to know more hands in a list for the
// bad lines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Cradle::Parser {

struct RejectedLine {
  std::uint32_t number;
  std::string_view reason;  // a literal that ends in " in "
  std::string text;
};

struct ConfigFileInfo {
  explicit ConfigFileInfo(std::string filePath) : path(std::move(filePath)) {}

  std::string path;
  bool failed = false;                            // could not be opened or read, or held a bad line
  std::vector<RejectedLine>* rejected = nullptr;  // gets each bad line, unless null
};

}  // namespace Cradle::Parser
