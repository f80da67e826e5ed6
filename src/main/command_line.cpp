// SPDX-License-Identifier: MIT
#include "main/command_line.h"

#include <optional>

#include "base/table.h"

namespace Cradle::CommandLine {
namespace {

constexpr std::size_t kUsageColumn = 27;  // the width of an option and its placeholder

// One pass over the arguments. Where one is wrong, run() is false and the complaint made.
class Scan {
 public:
  Scan(std::span<const char* const> arguments, Settings& settings, Complaint& complaint)
      : arguments_(arguments), settings_(settings), complaint_(complaint) {}

  bool run() {
    if (arguments_.size() < 2) {
      return failWithUsage("Needs at least one argument!");
    }
    const std::optional<std::size_t> output = takeOptions();
    if (!output) {
      return false;
    }
    if (*output >= arguments_.size()) {
      return failWithUsage("output_file is required! Please specify a file to write.");
    }
    if (*output + 1 < arguments_.size()) {
      return failWithUsage("Too many arguments! Only one output file may be specified.");
    }
    settings_.output = arguments_[*output];
    return true;
  }

 private:
  // The position of the output file, which may lie behind the last argument; nothing on failure.
  std::optional<std::size_t> takeOptions() {
    std::size_t position = 1;
    for (; position < arguments_.size(); position += 2) {
      const std::string_view argument = arguments_[position];
      if (!argument.starts_with("--")) {
        return position;
      }
      if (argument == "--") {
        return position + 1;
      }
      if (!takeOption(argument, position + 1)) {
        return std::nullopt;
      }
    }
    return position;
  }

  bool takeOption(std::string_view name, std::size_t valuePosition) {
    const Option* const option = findRow(options(), &Option::name, name);
    if (option == nullptr) {
      complaint_.errors.append(name).append(": unknown argument\n");
      return false;
    }
    if (valuePosition >= arguments_.size()) {
      return failWithUsage(option->missingValue);
    }
    if (!option->apply(settings_, arguments_[valuePosition], complaint_.errors)) {
      complaint_.usage = usage(program());
      return false;
    }
    return true;
  }

  bool failWithUsage(std::string_view message) {
    complaint_.errors.append(message).append("\n");
    complaint_.usage = usage(program());
    return false;
  }

  std::string_view program() const { return arguments_.empty() ? "" : arguments_.front(); }

  std::span<const char* const> arguments_;
  Settings& settings_;
  Complaint& complaint_;
};

}  // namespace

void applyDefaults(Settings& settings) {
  if (settings.baseUid == static_cast<std::uint32_t>(-1)) {
    settings.baseUid = 0;
  }
  if (settings.directories.empty()) {
    settings.directories.emplace_back(kDefaultDirectory);
  }
}

bool parse(std::span<const char* const> arguments, Settings& settings, Complaint& complaint) {
  if (!Scan(arguments, settings, complaint).run()) {
    return false;
  }
  applyDefaults(settings);
  return true;
}

std::string usage(std::string_view program) {
  std::string text = "USAGE:\n    ";
  text.append(program).append(" [OPTIONS] [--] <output_file>\n\nOPTIONS:\n");
  for (const Option& option : options()) {
    std::string column = std::string(option.name) + ' ' + std::string(option.placeholder);
    column.resize(kUsageColumn, ' ');
    text.append("    ").append(column).append(option.help).append(option.helpDefault).append("\n");
  }
  return text.append("\nARGS:\n    <output_file>              Path to file to write. Required.\n");
}

}  // namespace Cradle::CommandLine
