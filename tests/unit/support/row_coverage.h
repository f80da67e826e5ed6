// SPDX-License-Identifier: MIT
// What the golden cases show of the rows of an output table.
//
// A row is covered when some case sets the value that it is made of and has its line, some case
// lacks the value, and, where the value is converted, the cases write it in three ways at least,
// one of them unusual. The same goes for a value that only decides about the row. A case lacks a
// value when its run ends well without it, or complains about it.
#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/conversion.h"
#include "generators/row_formats.h"
#include "support/golden_cases.h"

namespace Cradle::Testing {

class RowCoverage {
 public:
  using ConfigKey = Generators::ConfigKey;
  using OutputRow = Generators::OutputRow;

  RowCoverage(const std::string& type, std::string separator)
      : cases_(goldenCases(type)), separator_(std::move(separator)) {}

  // What no case shows of the row, one line each.
  std::string missing(const OutputRow& row) const {
    std::string gaps;
    if (row.source.group.empty() && row.when.source.group.empty()) {
      gaps += anyCase([&](const GoldenCase& golden) { return shows(golden, row); })
                  ? ""
                  : "no case has the line\n";
    }
    if (!row.source.group.empty()) {
      gaps += missingOf(row, row.source, convertedType(row));
    }
    if (!row.when.source.group.empty()) {
      gaps += missingOf(row, row.when.source, row.when.text == "true" ? "boolean" : "");
    }
    return gaps;
  }

 private:
  static constexpr long kLargestPlainNumber = 2'147'483'647;

  // The type of the row's source, or nothing for a text that is written as it stands.
  static std::string_view convertedType(const OutputRow& row) {
    return row.format == nullptr || row.format == &Generators::kText ? "" : row.format->name;
  }

  std::string missingOf(const OutputRow& row, const ConfigKey& source,
                        std::string_view type) const {
    const std::string name = std::string(source.group) + "/" + std::string(source.key);
    std::string gaps;
    if (!anyCase([&](const GoldenCase& golden) {
          return golden.config().has(source) && shows(golden, row);
        })) {
      gaps += "no case sets " + name + " and has the line\n";
    }
    if (!anyCase([&](const GoldenCase& golden) {
          return !golden.config().has(source) &&
                 (golden.succeeds || golden.complaint.find(name) != std::string::npos);
        })) {
      gaps += "no case lacks " + name + "\n";
    }
    return type.empty() ? gaps : gaps + missingTexts(name, textsOf(source), type);
  }

  static std::string missingTexts(const std::string& name, const std::set<std::string>& texts,
                                  std::string_view type) {
    std::string gaps;
    if (texts.size() < 3) {
      gaps += name + " is written in less than three ways\n";
    }
    if (type == "boolean" && (texts.count("true") == 0 || texts.count("false") == 0)) {
      gaps += name + " is not both true and false\n";
    }
    if (std::none_of(texts.begin(), texts.end(),
                     [&](const std::string& text) { return isUnusual(text, type); })) {
      gaps += name + " has no unusual value\n";
    }
    return gaps;
  }

  // Whether a conversion has to do more than to copy the text. The other types have a few words of
  // their own each, of which three are enough.
  static bool isUnusual(const std::string& text, std::string_view type) {
    if (type == "boolean") {
      return text != "true" && text != "false";
    }
    if (type.starts_with("integer")) {
      return text != std::to_string(std::clamp(convertLong(text), 0L, kLargestPlainNumber));
    }
    if (type == "real number") {
      return text != formatDouble(convertDouble(text)) || text.starts_with('-');
    }
    return true;
  }

  // Every text that some case gives the value; the elements of a list joined.
  std::set<std::string> textsOf(const ConfigKey& source) const {
    std::set<std::string> texts;
    for (const GoldenCase& golden : cases_) {
      if (golden.config().has(source)) {
        texts.insert(join(golden.config().list(source), ";"));
      }
    }
    return texts;
  }

  // Whether the expected file has a line of the row, below the row's comment if it has one.
  bool shows(const GoldenCase& golden, const OutputRow& row) const {
    for (std::size_t i = 0; i < golden.lines.size(); ++i) {
      const bool headed =
          row.comment.empty() || (i != 0 && golden.lines[i - 1] == "# " + std::string(row.comment));
      if (headed && isLineOf(golden, row, golden.lines[i])) {
        return true;
      }
    }
    return false;
  }

  bool isLineOf(const GoldenCase& golden, const OutputRow& row, std::string_view line) const {
    const std::string head = row.key.empty() ? "" : std::string(row.key) + separator_;
    if (!line.starts_with(head)) {
      return false;
    }
    line.remove_prefix(head.size());
    if (row.lines != nullptr && !row.source.group.empty()) {
      return isOfElement(golden, row, line);
    }
    if (row.format == &Generators::kFixed) {
      return line == row.text;
    }
    if (row.format == &Generators::kText) {
      return line == std::string(row.prefix) + golden.config().text(row.source, row.text) +
                         std::string(row.suffix);
    }
    return line.starts_with(row.prefix) && line.ends_with(row.suffix);
  }

  // Whether the line holds an element of the row's list, up to its first wildcard.
  static bool isOfElement(const GoldenCase& golden, const OutputRow& row, std::string_view line) {
    const std::vector<std::string> elements = golden.config().list(row.source);
    return std::any_of(elements.begin(), elements.end(), [&](const std::string& element) {
      return line.find(element.substr(0, element.find_first_of("*?["))) != std::string_view::npos;
    });
  }

  template <typename Predicate>
  bool anyCase(Predicate predicate) const {
    return std::any_of(cases_.begin(), cases_.end(), predicate);
  }

  std::vector<GoldenCase> cases_;
  std::string separator_;
};

}  // namespace Cradle::Testing
