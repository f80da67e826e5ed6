// SPDX-License-Identifier: MIT
// Reference resolution. The input is lines such as "a=text@b;@c": the key "a" gets two values, the
// first being "text" and a reference to "b". A key without values is removed.
//
// Properties: a value stands for its text with the final values of its references, unless more than
// 33 values take part in that; then it is empty and reported; a list leaves out what is empty; what
// else the configuration holds, and where, makes no difference.

#include <algorithm>
#include <cctype>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "common/check.h"
#include "common/lines.h"
#include "common/memory_file.h"
#include "common/padding.h"
#include "common/target.h"
#include "config_parser.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using Parser::ConfigParser;

constexpr int kLimit = 33;
constexpr const char* kCircle = "ERROR: Max depth reached, possibly circular reference.\n";

// A piece that begins with "@" is a reference.
using Value = std::vector<std::string>;
using Keys = std::map<char, std::vector<Value>>;

struct Assignment {
  char key;
  std::vector<Value> values;
};

Value valueOf(const std::string& text) {
  Value pieces;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool begins = text[i] == '@';
    if (begins && i + 1 < text.size() && std::islower(static_cast<unsigned char>(text[i + 1]))) {
      pieces.push_back({'@', text[++i]});
    } else if (std::string_view("@$;").find(text[i]) == std::string_view::npos) {
      pieces.emplace_back(1, text[i]);
    }
  }
  return pieces;
}

std::vector<Assignment> assignmentsOf(const std::string& input) {
  std::vector<Assignment> assignments;
  for (const std::string& line : linesOf(input)) {
    if (line.size() < 2 || std::islower(static_cast<unsigned char>(line[0])) == 0 ||
        line[1] != '=') {
      continue;
    }
    Assignment& assignment = assignments.emplace_back(Assignment{line[0], {}});
    for (const std::string& part : linesOf(line.substr(2), ';')) {
      if (const Value value = valueOf(part); !value.empty()) {
        assignment.values.push_back(value);
      }
    }
  }
  return assignments;
}

std::string fileOf(const std::vector<Assignment>& assignments) {
  std::string text = "[Group]\n";
  for (const Assignment& assignment : assignments) {
    text += {assignment.key, '='};
    for (const Value& value : assignment.values) {
      for (const std::string& piece : value) {
        text += piece[0] == '@' ? "${config:Group/" + piece.substr(1) + "}" : piece;
      }
      text += &value == &assignment.values.back() ? "" : ";";
    }
    text += '\n';
  }
  return text;
}

// What resolution has to give, from the final values alone.
class Model {
 public:
  explicit Model(const std::vector<Assignment>& assignments) {
    for (const Assignment& assignment : assignments) {
      std::vector<Value>& values = keys_[assignment.key];
      values.insert(values.end(), assignment.values.begin(), assignment.values.end());
      if (assignment.values.empty()) {
        keys_.erase(assignment.key);
      }
    }
    // After so many rounds every sum that a circle adds to is beyond the limit.
    for (int round = 0; round <= kLimit; ++round) {
      std::map<char, int> sums;
      for (const auto& [key, values] : keys_) {
        sums[key] = sizeOf(values.back());
      }
      sizes_ = sums;
    }
  }

  const Keys& keys() const { return keys_; }

  bool isTooLarge(const Value& value) const { return sizeOf(value) > kLimit; }

  // Only for values that are not too large: these are not in a circle.
  std::string textOf(const Value& value) const {
    std::string text;
    for (const std::string& piece : value) {
      if (piece[0] != '@') {
        text += piece;
      } else if (const auto found = keys_.find(piece[1]); found != keys_.end()) {
        text += textOf(found->second.back());
      }
    }
    return text;
  }

 private:
  // How many values take part, itself included, as far as the rounds before have counted.
  int sizeOf(const Value& value) const {
    int size = 1;
    for (const std::string& piece : value) {
      if (piece[0] == '@' && keys_.count(piece[1]) != 0) {
        const auto counted = sizes_.find(piece[1]);
        size += counted == sizes_.end() ? 1 : counted->second;
      }
    }
    return std::min(size, kLimit + 1);
  }

  Keys keys_;
  std::map<char, int> sizes_;
};

void checkKey(const ConfigParser& parser, const Model& model, char key) {
  const std::string name(1, key);
  const auto found = model.keys().find(key);
  require(parser.hasValue("Group", name) == (found != model.keys().end()),
          "a key exists when it has values");
  if (found == model.keys().end()) {
    return;
  }
  std::string expected;
  std::string complaints;
  for (const Value& value : found->second) {
    const std::string text = model.isTooLarge(value) ? "" : model.textOf(value);
    complaints += model.isTooLarge(value) ? kCircle : "";
    expected += text.empty() ? "" : inQuotes(text);
  }
  const Testing::LogCapture log;
  std::vector<std::string> texts;
  parser.getValue("Group", name, texts);
  std::string actual;
  for (const std::string& text : texts) {
    actual += inQuotes(text);
  }
  requireEqual(actual, expected, "a list holds its values with their references followed");
  requireEqual(log.text(), complaints, "each value of which too many are part is reported");
  std::string last;
  parser.getValue("Group", name, last);
  const Value& value = found->second.back();
  requireEqual(last, model.isTooLarge(value) ? "" : model.textOf(value),
               "the last value is read with its references followed");
}

void checkFile(const std::string& text, const Model& model) {
  static const MemoryFile file;
  file.write(text);
  ConfigParser parser(-1);
  require(parser.loadFile(file.path()), "a file of assignments is read");
  for (char key = 'a'; key <= 'z'; ++key) {
    checkKey(parser, model, key);
  }
}

}  // namespace

void checkInput(const std::string& input) {
  const std::vector<Assignment> assignments = assignmentsOf(input);
  const Model model(assignments);
  const std::string text = fileOf(assignments);
  checkFile(text, model);
  checkFile(unrelatedEntries(choiceFrom(input) % 64) + text, model);
}

}  // namespace Cradle::Fuzz
