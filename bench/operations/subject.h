// A loaded configuration of some size, on which operations are measured.
//
// Every group holds the same special keys for them beside ordinary ones, and the operations go from
// group to group in a shuffled order, so that a large configuration is not measured on a small
// part of it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config_parser.h"
#include "support/temporary_directory.h"

namespace Cradle::Bench {

inline constexpr std::size_t kReferenceChain = 10;
// How many operations are measured at a time.
inline constexpr std::size_t kRoundSize = 1000;

class Subject {
 public:
  explicit Subject(std::size_t keys);

  const Parser::ConfigParser& parser() const { return parser_; }

  // The names of up to 1000 of the groups. Cycling through them visits each equally often.
  const std::vector<std::string>& groups() const { return groups_; }

  // A file that in each of these groups, taken in turns, removes and then sets a key to `value`,
  // 1000 times in all.
  std::string storeFile(const std::string& value) const;
  bool load(const std::string& path) { return parser_.loadFile(path); }

 private:
  void writeConfiguration(const std::string& path, std::size_t keys) const;

  Testing::TemporaryDirectory directory_;
  Parser::ConfigParser parser_{-1};
  std::vector<std::string> groups_;
};

}  // namespace Cradle::Bench
