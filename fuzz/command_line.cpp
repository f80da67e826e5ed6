// SPDX-License-Identifier: MIT
// The command line. The input is the arguments behind the program's name, one in each line.
//
// Properties: every argument is taken or complained of; the settings are those of the options in
// order, the last one counting; the usage text follows the complaints that need it and names every
// option.

#include "main/command_line.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "base/table.h"
#include "common/check.h"
#include "common/lines.h"
#include "common/target.h"

namespace Cradle::Fuzz {
namespace {

using CommandLine::Complaint;
using CommandLine::Option;
using CommandLine::OutputType;
using CommandLine::Settings;
using Arguments = std::vector<std::string>;

constexpr const char* kProgram = "./program";

std::string shown(const Settings& settings) {
  std::string text = std::to_string(static_cast<int>(settings.type));
  for (const std::string& directory : settings.directories) {
    text += " " + inQuotes(directory);
  }
  return text + " i " + inQuotes(settings.instance) + " l " + inQuotes(settings.logLevel) + " o " +
         inQuotes(settings.output) + " " + std::to_string(settings.userId) + " " +
         std::to_string(settings.baseUid);
}

// A second reader of command lines, which takes one option at a time off the front.
class Reader {
 public:
  explicit Reader(const Arguments& arguments) : rest_(arguments) {
    settings.directories.clear();
    accepted = read();
    if (settings.baseUid == 0xffffffffU) {
      settings.baseUid = 0;
    }
    if (settings.directories.empty()) {
      settings.directories.push_back(std::string(CommandLine::kDefaultDirectory));
    }
  }

  Settings settings;
  bool accepted = false;
  std::string errors;
  bool needsUsage = false;

 private:
  bool complain(const std::string& message, bool withUsage = true) {
    errors = message + "\n";
    needsUsage = withUsage;
    return false;
  }

  bool read() {
    if (rest_.empty()) {
      return complain("Needs at least one argument!");
    }
    while (!rest_.empty() && rest_[0].substr(0, 2) == "--") {
      const std::string name = take();
      if (name == "--") {
        break;
      }
      if (!readOption(name)) {
        return false;
      }
    }
    if (rest_.empty()) {
      return complain("output_file is required! Please specify a file to write.");
    }
    settings.output = take();
    return rest_.empty() || complain("Too many arguments! Only one output file may be specified.");
  }

  bool readOption(const std::string& name) {
    const Option* const option = findRow(CommandLine::options(), &Option::name, name);
    if (option == nullptr) {
      return complain(name + ": unknown argument", false);
    }
    return rest_.empty() ? complain(std::string(option->missingValue)) : apply(name, take());
  }

  bool apply(const std::string& name, const std::string& value) {
    if (name == "--user-id" || name == "--base-uid") {
      return applyNumber(name, value, name == "--user-id" ? settings.userId : settings.baseUid);
    }
    if (name == "--type") {
      const std::map<std::string, OutputType> types{{"config", OutputType::Config},
                                                    {"property", OutputType::Property},
                                                    {"lxc", OutputType::Lxc}};
      if (types.count(value) == 0) {
        return complain(
            "Invalid value for --type. It must be one of \"config\", \"property\" and \"lxc\".");
      }
      settings.type = types.at(value);
    } else if (name == "--config") {
      settings.directories.push_back(value);
    } else if (name == "--configs") {
      for (const std::string& directory : linesOf(value, ':')) {
        settings.directories.push_back(directory);
      }
    } else {
      require(name == "--instance" || name == "--log-level", "every option is known here", name);
      (name == "--instance" ? settings.instance : settings.logLevel) = value;
    }
    return true;
  }

  // The leading decimal number of 32 bits with a sign.
  bool applyNumber(const std::string& name, const std::string& value, std::uint32_t& id) {
    const auto at = [&](std::size_t position) {
      return position < value.size() ? static_cast<unsigned char>(value[position]) : 0;
    };
    std::size_t position = 0;
    while (std::isspace(at(position)) != 0) {
      ++position;
    }
    const bool negative = at(position) == '-';
    position += negative || at(position) == '+' ? 1 : 0;
    if (std::isdigit(at(position)) == 0) {
      return complain(name + ": " + value + " does not look like an integer.");
    }
    constexpr std::int64_t kBound = std::int64_t{1} << 31;
    std::int64_t number = 0;
    for (; std::isdigit(at(position)) != 0; ++position) {
      number = std::min(number * 10 + (at(position) - '0'), 2 * kBound);
    }
    number = negative ? -number : number;
    if (number < -kBound || number >= kBound) {
      return complain(name + ": " + value + " is too big/small.");
    }
    id = static_cast<std::uint32_t>(number & 0xffffffff);
    return true;
  }

  std::string take() {
    std::string first = rest_[0];
    rest_.erase(rest_.begin());
    return first;
  }

  Arguments rest_;
};

void checkUsage() {
  const std::string usage = CommandLine::usage(kProgram);
  for (const Option& option : CommandLine::options()) {
    require(usage.find("    " + std::string(option.name) + " ") != std::string::npos,
            "the usage text names every option", std::string(option.name));
  }
}

// An argument of a process holds no NUL.
Arguments argumentsOf(const std::string& input) {
  Arguments arguments = linesOf(input);
  for (std::string& argument : arguments) {
    argument.resize(std::strlen(argument.c_str()));
  }
  return arguments;
}

}  // namespace

void checkInput(const std::string& input) {
  const Arguments arguments = argumentsOf(input);
  std::vector<const char*> pointers{kProgram};
  for (const std::string& argument : arguments) {
    pointers.push_back(argument.c_str());
  }
  Settings settings;
  Complaint complaint;
  const bool accepted = CommandLine::parse(pointers, settings, complaint);
  const Reader expected(arguments);
  require(accepted == expected.accepted, "a command line is accepted when nothing is wrong with it",
          expected.errors);
  requireEqual(complaint.errors, expected.errors, "the first wrong argument is complained of");
  requireEqual(complaint.usage, expected.needsUsage ? CommandLine::usage(kProgram) : "",
               "the usage text follows where it helps");
  if (accepted) {
    requireEqual(shown(settings), shown(expected.settings), "every option has its effect");
  }
  checkUsage();
}

}  // namespace Cradle::Fuzz
