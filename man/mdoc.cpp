// SPDX-License-Identifier: MIT
#include "mdoc.h"

#include "base/text.h"

namespace Cradle::Manual {
namespace {

constexpr std::size_t kWidth = 78;  // of a line

std::string escaped(std::string_view text, bool isLiteral) {
  std::string result;
  for (const char character : text) {
    switch (character) {
      case '\\':
        result += "\\e";
        break;
      case '"':
        result += "\\(dq";
        break;
      case '-':
        result += isLiteral ? "\\-" : "-";
        break;
      default:
        result += character;
    }
  }
  return result;
}

bool isControl(char character) {
  return character == '.' || character == '\'';
}

}  // namespace

std::string argument(std::string_view literal) {
  return '"' + escaped(literal, true) + '"';
}

std::string prose(std::string_view sentences) {
  std::string text;
  std::size_t width = kWidth;
  forEachPart(sentences, ' ', [&](std::string_view word) {
    const std::string written = escaped(word, false);
    const bool fits = width + 1 + written.size() <= kWidth;
    text += fits ? " " : text.empty() ? "" : "\n";
    text += fits || !isControl(word.front()) ? "" : "\\&";
    text += written;
    const bool endsSentence = word.size() > 1 && word.ends_with('.');
    width = endsSentence ? kWidth : (fits ? width + 1 : 0) + written.size();
  });
  return text + "\n";
}

}  // namespace Cradle::Manual
