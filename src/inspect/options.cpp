// SPDX-License-Identifier: MIT
#include "inspect/options.h"

#include <array>

#include <getopt.h>
#include <unistd.h>

#include "base/environment.h"
#include "base/table.h"
#include "inspect/printable.h"
#include "main/command_line.h"

namespace Cradle::Inspect {
namespace {

template <typename Value>
struct Word {
  std::string_view word;
  Value value;
};

constexpr std::array<Word<OutputFormat>, 3> kFormats{
    {{"text", OutputFormat::Text}, {"json", OutputFormat::Json}, {"svg", OutputFormat::Svg}}};

constexpr std::array<Word<ColourMode>, 3> kColourModes{{{"auto", ColourMode::Automatic},
                                                        {"always", ColourMode::Always},
                                                        {"never", ColourMode::Never}}};

template <typename Words, typename Value>
bool applyWord(const Words& words, Value& out, const std::string& value, std::string& errors) {
  const auto* const row = findRow(words, &Word<Value>::word, value);
  if (row == nullptr) {
    errors.append("'").append(printable(value)).append("' is none of:");
    for (const auto& known : words) {
      errors.append(" ").append(known.word);
    }
    errors.append("\n");
    return false;
  }
  out = row->value;
  return true;
}

bool applyFormat(Options& options, const std::string& value, std::string& errors) {
  return applyWord(kFormats, options.format, value, errors);
}

bool applyColour(Options& options, const std::string& value, std::string& errors) {
  return applyWord(kColourModes, options.colour, value, errors);
}

template <bool Options::*Flag>
bool applyFlag(Options& options, const std::string& /*value*/, std::string& /*errors*/) {
  options.*Flag = true;
  return true;
}

constexpr std::array<OptionRow, 13> kOptions{{
    {"config", 'c', "DIR", "read this directory; may be repeated (default /etc/cradle.conf.d)",
     nullptr},
    {"configs", 'C', "A:B", "read these directories", nullptr},
    {"type", 't', "TYPE", "see what a run of this type sees: config (default), lxc or property",
     nullptr},
    {"user-id", 'u', "UID", "the user of the run (default: the active user of seat0)", nullptr},
    {"instance", 'i', "NAME", "the instance of the run (default: default)", nullptr},
    {"base-uid", 'b', "UID", "the base uid of the run (default: 0)", nullptr},
    {"format", 'f', "FORMAT", "text (default) or json; for graph also svg", applyFormat},
    {"color", '\0', "WHEN", "auto (default), always or never", applyColour},
    {"all", 'a', "", "show: also what was overridden or cleared; graph: also keys on their own",
     applyFlag<&Options::all>},
    {"run", '\0', "", "start the commands and hooks that a run would start",
     applyFlag<&Options::execute>},
    {"strict", '\0', "", "check: warnings count as well", applyFlag<&Options::strict>},
    {"help", 'h', "", "show this help", applyFlag<&Options::help>},
    {"version", 'V', "", "show the version", applyFlag<&Options::version>},
}};

bool apply(const OptionRow& row, Options& options, const std::string& value, std::string& errors) {
  if (row.apply != nullptr) {
    return row.apply(options, value, errors);
  }
  const std::string name = std::string("--") + row.name;
  return findRow(CommandLine::options(), &CommandLine::Option::name, name)
      ->apply(options.run, value, errors);
}

// getopt_long's own tables, made of the rows; a long option answers with the index of its row.
struct GetoptTables {
  GetoptTables() {
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
      const OptionRow& row = kOptions.at(i);
      const int argument = row.placeholder.empty() ? no_argument : required_argument;
      longOptions.at(i) = {row.name, argument, nullptr, kFirstIndex + static_cast<int>(i)};
      if (row.letter != '\0') {
        letters += row.letter;
        letters += argument == required_argument ? ":" : "";
      }
    }
  }

  static const OptionRow& rowOf(int answer) {
    if (answer < kFirstIndex) {
      return *findRow(kOptions, &OptionRow::letter, static_cast<char>(answer));
    }
    return kOptions[static_cast<std::size_t>(answer - kFirstIndex)];
  }

  // The option that getopt_long is not content with, as it is written.
  static std::string nameOf(int option) {
    return option >= kFirstIndex ? std::string("--") + rowOf(option).name
                                 : std::string("-") + static_cast<char>(option);
  }

  static constexpr int kFirstIndex = 256;  // no letter is greater
  static constexpr int kMissingValue = ':';
  std::string letters = ":";  // tells missing values from unknown options
  std::array<option, kOptions.size() + 1> longOptions{};
};

// What getopt_long says where its answer is this one.
std::string complaint(int answer, std::span<char*> arguments) {
  if (answer == GetoptTables::kMissingValue) {
    return GetoptTables::nameOf(optopt) + ": its value is missing\n";
  }
  if (optopt >= GetoptTables::kFirstIndex) {
    return GetoptTables::nameOf(optopt) + ": takes no value\n";
  }
  // Of a long option there is no more than the word.
  const std::string name =
      optopt == 0 ? arguments[static_cast<std::size_t>(optind) - 1] : GetoptTables::nameOf(optopt);
  return printable(name) + ": unknown option\n";
}

}  // namespace

std::span<const OptionRow> optionRows() {
  return kOptions;
}

std::optional<Options> parseOptions(std::span<char*> arguments, std::string& errors) {
  const GetoptTables tables;
  Options options;
  optind = 0;  // begins anew
  const int count = static_cast<int>(arguments.size());
  for (;;) {
    const int answer = getopt_long(count, arguments.data(), tables.letters.c_str(),
                                   tables.longOptions.data(), nullptr);
    if (answer < 0) {
      break;
    }
    if (answer == '?' || answer == GetoptTables::kMissingValue) {
      errors += complaint(answer, arguments);
      return std::nullopt;
    }
    if (!apply(GetoptTables::rowOf(answer), options, optarg == nullptr ? "" : optarg, errors)) {
      return std::nullopt;
    }
  }
  const auto operands = arguments.subspan(static_cast<std::size_t>(optind));
  options.words.assign(operands.begin(), operands.end());
  CommandLine::applyDefaults(options.run);
  return options;
}

bool wantsColour(ColourMode mode) {
  if (mode != ColourMode::Automatic) {
    return mode == ColourMode::Always;
  }
  return isatty(STDOUT_FILENO) == 1 && getEnvironment("NO_COLOR", "").empty() &&
         getEnvironment("TERM", "dumb") != "dumb";
}

}  // namespace Cradle::Inspect
