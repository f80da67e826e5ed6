// SPDX-License-Identifier: MIT
// Lines counted and taken apart by the standard library's means, to hold the program's reader to.
#pragma once

#include <cctype>
#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Cradle::Fuzz {

inline std::vector<std::string> linesOf(const std::string& text, char separator = '\n') {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line, separator);) {
    lines.push_back(line);
  }
  return lines;
}

inline bool isName(const std::string& text) {
  for (const char character : text) {
    if (std::isalnum(static_cast<unsigned char>(character)) == 0 &&
        std::string_view(" -._").find(character) == std::string_view::npos) {
      return false;
    }
  }
  return true;
}

// What a line of a configuration file is, by the rules at the head of config_file_iterator.h.
struct ConfigLine {
  enum class Kind { Nothing, Group, Entry, Wrong };

  Kind kind = Kind::Nothing;
  std::string name = {};    // of the group or key
  std::string value = {};   // of the entry
  std::string reason = {};  // what is wrong
  std::string group = {};   // that the entry is in
  std::string text = {};    // of the whole line
  std::size_t number = 0;   // of the line
};

inline ConfigLine wrongLine(std::string reason) {
  return {.kind = ConfigLine::Kind::Wrong, .reason = std::move(reason)};
}

inline ConfigLine configLineOf(const std::string& line) {
  if (line.empty() || line[0] == '#' || line[0] == ';') {
    return {};
  }
  if (line[0] == '[') {
    if (line[line.size() - 1] != ']') {
      return wrongLine("Could not parse line as group");
    }
    const std::string name(line.begin() + 1, line.end() - 1);
    return isName(name) ? ConfigLine{.kind = ConfigLine::Kind::Group, .name = name}
                        : wrongLine("Group name contains invalid characters");
  }
  if (line[0] == ' ' || !isName(line.substr(0, 1))) {
    return wrongLine("Unexpected line");
  }
  const std::size_t equals = line.find('=');
  if (equals == std::string::npos) {
    return wrongLine("Could not parse line as key");
  }
  const std::string key = line.substr(0, equals);
  return isName(key) ? ConfigLine{.kind = ConfigLine::Kind::Entry,
                                  .name = key,
                                  .value = line.substr(equals + 1)}
                     : wrongLine("Key contains invalid characters");
}

// The entries and the wrong lines of a file, in their order.
inline std::vector<ConfigLine> configLinesOf(const std::string& text) {
  std::vector<ConfigLine> lines;
  std::string group;
  std::size_t number = 0;
  for (const std::string& line : linesOf(text)) {
    ++number;
    ConfigLine parsed = configLineOf(line);
    if (parsed.kind == ConfigLine::Kind::Group) {
      group = parsed.name;
    } else if (parsed.kind != ConfigLine::Kind::Nothing) {
      parsed.group = group;
      parsed.text = line;
      parsed.number = number;
      lines.push_back(std::move(parsed));
    }
  }
  return lines;
}

// The message about a wrong line.
inline std::string complaintAbout(const ConfigLine& wrong, const std::string& path) {
  return "ERROR: " + wrong.reason + " in " + path + " (" + std::to_string(wrong.number) + "): '" +
         wrong.text + "'\n";
}

}  // namespace Cradle::Fuzz
