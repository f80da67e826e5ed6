#include "inspect/unified_diff.h"

#include <algorithm>
#include <cstdint>

#include "base/text.h"

namespace Cradle::Inspect {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kContext = 3;
constexpr std::string_view kNoLineFeed = "\\ No newline at end of file";

// Beyond as many changed lines the search for the shortest way is given up.
constexpr std::int64_t kMostChanges = 2000;

// A step from one text to the other: a line of both, or of one of them.
struct Step {
  char sign;  // ' ', '-' or '+'
  std::string_view line;
};

// Myers' greedy search: the furthest points that d changes reach, for each d.
class ShortestEdit {
 public:
  ShortestEdit(const Lines& before, const Lines& after)
      : before_(before),
        after_(after),
        rows_(static_cast<std::int64_t>(before.size())),
        columns_(static_cast<std::int64_t>(after.size())) {}

  std::vector<Step> run() {
    std::int64_t changes = 0;
    while (!reaches(changes)) {
      if (++changes > kMostChanges) {
        return replaceAll();
      }
    }
    return walkBack(changes);
  }

 private:
  using Front = std::vector<std::int64_t>;  // by diagonal, from -changes on

  static std::int64_t at(const Front& front, std::int64_t diagonal) {
    const auto middle = static_cast<std::int64_t>(front.size() / 2);
    return front[static_cast<std::size_t>(middle + diagonal)];
  }

  // Whether the way down is the one to a diagonal.
  static bool comesFromAbove(const Front& former, std::int64_t diagonal, std::int64_t changes) {
    return diagonal == -changes ||
           (diagonal != changes && at(former, diagonal - 1) < at(former, diagonal + 1));
  }

  bool reaches(std::int64_t changes) {
    Front front(static_cast<std::size_t>(2 * changes + 1));
    for (std::int64_t diagonal = -changes; diagonal <= changes; diagonal += 2) {
      std::int64_t row = 0;
      if (changes > 0) {
        const Front& former = fronts_.back();
        row = comesFromAbove(former, diagonal, changes) ? at(former, diagonal + 1)
                                                        : at(former, diagonal - 1) + 1;
      }
      while (row < rows_ && row - diagonal < columns_ && sameLine(row, row - diagonal)) {
        ++row;
      }
      front[static_cast<std::size_t>(changes + diagonal)] = row;
      if (row >= rows_ && row - diagonal >= columns_) {
        return true;
      }
    }
    fronts_.push_back(std::move(front));
    return false;
  }

  bool sameLine(std::int64_t row, std::int64_t column) const {
    return before_[static_cast<std::size_t>(row)] == after_[static_cast<std::size_t>(column)];
  }

  std::vector<Step> walkBack(std::int64_t changes) {
    std::vector<Step> steps;
    std::int64_t row = rows_;
    std::int64_t column = columns_;
    for (; changes > 0; --changes) {
      const Front& former = fronts_[static_cast<std::size_t>(changes - 1)];
      const bool added = comesFromAbove(former, row - column, changes);
      const std::int64_t start =
          added ? at(former, row - column + 1) : at(former, row - column - 1);
      const std::int64_t stop = added ? start : start + 1;
      for (; row > stop; --row, --column) {
        steps.push_back({' ', before_[static_cast<std::size_t>(row - 1)]});
      }
      if (added) {
        steps.push_back({'+', after_[static_cast<std::size_t>(--column)]});
      } else {
        steps.push_back({'-', before_[static_cast<std::size_t>(--row)]});
      }
    }
    for (; row > 0; --row) {
      steps.push_back({' ', before_[static_cast<std::size_t>(row - 1)]});
    }
    std::reverse(steps.begin(), steps.end());
    return steps;
  }

  std::vector<Step> replaceAll() const {
    std::vector<Step> steps;
    for (const std::string_view line : before_) {
      steps.push_back({'-', line});
    }
    for (const std::string_view line : after_) {
      steps.push_back({'+', line});
    }
    return steps;
  }

  const Lines& before_;
  const Lines& after_;
  std::int64_t rows_;
  std::int64_t columns_;
  std::vector<Front> fronts_;
};

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
    const Lines former = linesOf(before);
    const Lines latter = linesOf(after);
    const std::vector<Step> steps = ShortestEdit(former, latter).run();
    lines = {"--- " + beforeName, "+++ " + afterName};
    Hunks(steps).write(lines);
  }
  return lines;
}

}  // namespace Cradle::Inspect
