// SPDX-License-Identifier: MIT
#include "inspect/unified_diff.h"

#include <algorithm>

#include <dtl/dtl.hpp>

#include "base/text.h"

namespace Cradle::Inspect {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kContext = 3;
constexpr std::string_view kNoLineFeed = "\\ No newline at end of file";

// A step from one text to the other: a line of both, or of one of them.
struct Step {
  char sign;  // ' ', '-' or '+'
  std::string_view line;
};

char signOf(dtl::edit_t type) {
  if (type == dtl::SES_COMMON) {
    return ' ';
  }
  return type == dtl::SES_ADD ? '+' : '-';
}

// A shortest way from one text to the other.
std::vector<Step> stepsBetween(const Lines& before, const Lines& after) {
  dtl::Diff<std::string_view, Lines> diff(before, after);
  diff.onHuge();
  diff.compose();
  std::vector<Step> steps;
  for (const auto& [line, element] : diff.getSes().getSequence()) {
    steps.push_back({signOf(element.type), line});
  }
  return steps;
}

bool isCommon(const Step& step) {
  return step.sign == ' ';
}

// Lets what is taken away stand before what is put into its place.
void sortChanges(std::vector<Step>& steps) {
  for (auto change = steps.begin(); change != steps.end();) {
    const auto end = std::find_if(change, steps.end(), isCommon);
    std::stable_partition(change, end, [](const Step& step) { return step.sign == '-'; });
    change = std::find_if_not(end, steps.end(), isCommon);
  }
}

// Lines with their line feeds, so that one that lacks it differs.
Lines linesOf(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t feed = text.find('\n');
    lines.push_back(text.substr(0, feed == text.npos ? feed : feed + 1));
    text.remove_prefix(lines.back().size());
  }
  return lines;
}

std::string rangeOf(std::size_t first, std::size_t count) {
  return std::to_string(count == 0 ? first : first + 1) + "," + std::to_string(count);
}

void addStep(const Step& step, DiffLines& lines) {
  const bool ended = step.line.ends_with('\n');
  lines.push_back(step.sign + std::string(step.line.substr(0, step.line.size() - (ended ? 1 : 0))));
  if (!ended) {
    lines.emplace_back(kNoLineFeed);
  }
}

// Writes the steps in hunks.
class Hunks {
 public:
  explicit Hunks(const std::vector<Step>& steps) : steps_(steps) {}

  void write(DiffLines& lines) {
    for (std::size_t next = nextChange(0); next < steps_.size(); next = nextChange(next)) {
      const std::size_t begin = next < kContext ? 0 : next - kContext;
      next = endOfHunk(next);
      writeHunk(begin, next, lines);
    }
  }

 private:
  std::size_t nextChange(std::size_t from) const {
    while (from < steps_.size() && steps_[from].sign == ' ') {
      ++from;
    }
    return from;
  }

  // Changes with little between them stand in one hunk.
  std::size_t endOfHunk(std::size_t change) const {
    for (;;) {
      std::size_t end = change;
      while (end < steps_.size() && steps_[end].sign != ' ') {
        ++end;
      }
      change = nextChange(end);
      if (change == steps_.size() || change - end > 2 * kContext) {
        return std::min(end + kContext, steps_.size());
      }
    }
  }

  void writeHunk(std::size_t begin, std::size_t end, DiffLines& lines) {
    count(begin);
    const std::size_t firstBefore = before_;
    const std::size_t firstAfter = after_;
    count(end);
    lines.push_back("@@ -" + rangeOf(firstBefore, before_ - firstBefore) + " +" +
                    rangeOf(firstAfter, after_ - firstAfter) + " @@");
    for (std::size_t i = begin; i < end; ++i) {
      addStep(steps_[i], lines);
    }
  }

  // Counts the lines of both texts up to a step.
  void count(std::size_t end) {
    for (; counted_ < end; ++counted_) {
      before_ += steps_[counted_].sign == '+' ? 0 : 1;
      after_ += steps_[counted_].sign == '-' ? 0 : 1;
    }
  }

  const std::vector<Step>& steps_;
  std::size_t counted_ = 0;
  std::size_t before_ = 0;
  std::size_t after_ = 0;
};

}  // namespace

DiffLines unifiedDiff(std::string_view before, std::string_view after,
                      const std::string& beforeName, const std::string& afterName) {
  DiffLines lines;
  if (before != after) {
    std::vector<Step> steps = stepsBetween(linesOf(before), linesOf(after));
    sortChanges(steps);
    lines = {"--- " + beforeName, "+++ " + afterName};
    Hunks(steps).write(lines);
  }
  return lines;
}

}  // namespace Cradle::Inspect
