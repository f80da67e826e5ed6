// SPDX-License-Identifier: MIT
#include "inspect/journal_reader.h"

#include <cerrno>
#include <cstring>

#include "assigned_parts.h"
#include "config_file_iterator.h"
#include "config_files.h"
#include "inspect/printable.h"
#include "inspect/readability.h"
#include "inspect/substitution.h"
#include "template_scan.h"

namespace Cradle::Inspect {
namespace {

using Parser::ConfigFileIterator;
using Parser::ConfigParser;
using Parser::ConfigValue;
using Parser::ScanResult;

Fate fateOf(ScanResult result, const ConfigValue& value) {
  switch (result) {
    case ScanResult::Complete:
      return value.isEmpty() ? Fate::Empty : Fate::Kept;
    case ScanResult::Unclosed:
      return Fate::Unclosed;
    case ScanResult::StrayDollar:
      return Fate::StrayDollar;
    default:
      return Fate::Failed;
  }
}

class JournalReader {
 public:
  JournalReader(ConfigParser& parser, bool execute) : parser_(parser), execute_(execute) {}

  // Files without an entry are kept as well.
  void readFile(const std::string& path) {
    place_.file = static_cast<std::uint32_t>(journal_.files.size());
    ReadFile& file = journal_.files.emplace_back();
    file.path = path;
    file.fault = whyNoFile(path);
    if (!file.fault.empty()) {
      return;
    }
    Parser::ConfigFileInfo info(path);
    info.rejected = &file.rejected;
    ConfigFileIterator entry(info, false);
    for (; !entry.key().empty(); ++entry) {
      take(entry);
    }
    if (!(entry == ConfigFileIterator(info, true))) {
      const std::string fault = std::strerror(errno);
      const std::string lasting = whyUnreadable(path);
      file.fault = lasting.empty() ? fault : lasting;
    }
  }

  Journal finish() { return std::move(journal_); }

 private:
  void take(const ConfigFileIterator& entry) {
    place_.line = entry.lineNumber();
    // Unlike other names, a refused line may hold anything; it is asked for as it is shown.
    const std::string shown = isRefusedLine(entry.group()) ? printable(entry.group()) : "";
    const std::string_view group = shown.empty() ? entry.group() : shown;
    Assignment& assignment = historyOf(group, entry.key()).emplace_back();
    assignment.place = place_;
    assignment.raw = entry.value();
    const auto clear = [&] { parser_.removeKey(group, entry.key()); };
    Parser::forEachAssignedPart(entry.value(), clear, [&](std::string_view raw) {
      const Part& part = assignment.parts.emplace_back(expand(raw));
      if (part.fate == Fate::Kept) {
        parser_.addValue(group, entry.key(), part.value);
      }
    });
  }

  // The keys of a group stand one after the other.
  History& historyOf(std::string_view group, std::string_view key) {
    if (group_ == nullptr || groupName_ != group) {
      groupName_ = group;
      group_ = &journal_.groups[groupName_];
    }
    const auto next = group_->lower_bound(key);
    const bool isKnown = next != group_->end() && next->first == key;
    return (isKnown ? next : group_->emplace_hint(next, key, History()))->second;
  }

  Part expand(std::string_view raw) const {
    Part part{.raw = std::string(raw)};
    std::string text;
    const auto put = [&](std::string_view spec) {
      part.substitutions.push_back(
          substitute(parser_.templates(), spec, execute_, text, part.value));
      return part.substitutions.back().outcome <= kLastSuccess;
    };
    const ScanResult result = Parser::scanTemplates(raw, text, put);
    part.value.setText(std::move(text));
    part.fate = fateOf(result, part.value);
    return part;
  }

  ConfigParser& parser_;
  bool execute_;
  Journal journal_;
  Place place_;
  std::string groupName_;
  Group* group_ = nullptr;
};

}  // namespace

Journal readJournal(const std::vector<std::string>& directories, ConfigParser& parser,
                    bool execute) {
  JournalReader reader(parser, execute);
  for (const std::string& directory : directories) {
    for (const std::string& file : Parser::configFiles(directory)) {
      reader.readFile(file);
    }
  }
  return reader.finish();
}

}  // namespace Cradle::Inspect
