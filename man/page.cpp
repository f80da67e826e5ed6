// SPDX-License-Identifier: MIT
#include "page.h"

#include <map>
#include <stdexcept>
#include <vector>

#include "base/table.h"
#include "base/text.h"
#include "sections.h"

namespace Cradle::Manual {
namespace {

constexpr std::string_view kBegin = ".\\\" @";
constexpr std::string_view kEnd = "@";

// Takes the next word off the front of `text`.
std::string_view takeWord(std::string_view& text) {
  const std::string_view word = text.substr(0, text.find(' '));
  text.remove_prefix(word.size() == text.size() ? word.size() : word.size() + 1);
  return word;
}

class Filler {
 public:
  std::string fill(std::string_view source) {
    std::string text;
    forEachPart(source, '\n', [&](std::string_view line) {
      const bool isMarker = line.starts_with(kBegin) && line.ends_with(kEnd);
      text +=
          isMarker
              ? replacement(line.substr(kBegin.size(), line.size() - kBegin.size() - kEnd.size()))
              : std::string(line) + "\n";
    });
    text.pop_back();  // the source ends with a line feed, behind which no line begins
    checkThatAllRowsAreShown();
    return text;
  }

 private:
  std::string replacement(std::string_view marker) {
    if (const Section* const section = findRow(sections(), &Section::name, marker)) {
      return section->text();
    }
    std::string_view rest = marker;
    const std::string_view kindName = takeWord(rest);
    const std::string_view row = takeWord(rest);
    const ItemKind* const kind = findRow(itemKinds(), &ItemKind::name, kindName);
    if (kind == nullptr) {
      throw std::runtime_error("nothing is called '" + std::string(marker) + "'");
    }
    const std::vector<std::string_view> rows = kind->rows();
    std::vector<std::string_view>& shown = shown_[kind->name];
    if (shown.size() == rows.size() || rows[shown.size()] != row) {
      throw std::runtime_error("there is no " + std::string(kindName) + " '" + std::string(row) +
                               "' in this place");
    }
    shown.push_back(row);
    return kind->head(row, rest);
  }

  void checkThatAllRowsAreShown() const {
    for (const auto& [kindName, shown] : shown_) {
      const std::vector<std::string_view> rows =
          findRow(itemKinds(), &ItemKind::name, kindName)->rows();
      if (shown.size() != rows.size()) {
        throw std::runtime_error("the " + std::string(kindName) + " '" +
                                 std::string(rows[shown.size()]) + "' is missing");
      }
    }
  }

  std::map<std::string_view, std::vector<std::string_view>> shown_;
};

}  // namespace

std::string filled(std::string_view source) {
  return Filler().fill(source);
}

}  // namespace Cradle::Manual
