// SPDX-License-Identifier: MIT
// The writer of every output file: comments, groups, key/value lines and verbatim text, line by
// line in the order of the calls.
//
// Each operation writes to the file at once, so a crash loses at most the line being written. The
// writer reports nothing: where the file cannot be opened or written, all that follows is
// discarded.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "export.h"

namespace Cradle::Parser {

class CRADLE_CONFIG_API ConfigWriter {
 public:
  // What stands between a key and its value.
  enum class Separator : std::uint8_t { Plain, Spaced };  // "=" or " = "

  // Creates the file with mode 0600 whatever the process's mask (umask), or truncates an existing
  // one, which keeps its mode.
  ConfigWriter(const std::string& path, Separator separator);
  ~ConfigWriter();
  ConfigWriter(const ConfigWriter&) = delete;
  ConfigWriter& operator=(const ConfigWriter&) = delete;

  void writeComment(std::string_view text);  // "# " and the text
  void writeGroup(std::string_view name);    // the name in square brackets
  void writeEmptyLine();

  void writeValue(std::string_view key, std::string_view value);
  void writeValue(std::string_view key, const char* value);  // null throws std::logic_error
  void writeValue(std::string_view key, bool value);         // "true" or "false"
  void writeValue(std::string_view key, std::int32_t value);

  // The text as it is; a newline is added unless it ends with one.
  void writeContent(std::string_view text);

  bool isOpen() const;

 private:
  struct Implementation;

  std::unique_ptr<Implementation> implementation_;
};

}  // namespace Cradle::Parser
