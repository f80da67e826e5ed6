// SPDX-License-Identifier: MIT
// What a template in a raw value is, for whoever expands one: "${...}" is a substitution, "$$" a
// literal dollar sign, and "$" stands before nothing else.
//
// A single pass: text that a substitution produced is never scanned again, and braces do not nest.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Cradle::Parser {

enum class ScanResult : std::uint8_t {
  Complete,
  Unclosed,     // a "${" without "}"
  StrayDollar,  // a "$" before anything else
  Failed,       // a substitution has failed
};

// Puts what `input` stands for into `text`, up to the first thing that is wrong. `substitute` gets
// what stands between the braces, appends what it stands for and tells whether there was anything.
template <typename Substitute>
ScanResult scanTemplates(std::string_view input, std::string& text, const Substitute& substitute) {
  std::size_t dollar = input.find('$');
  text = input.substr(0, dollar);
  while (dollar != std::string_view::npos) {
    std::size_t position = dollar + 2;
    const std::string_view rest = input.substr(dollar + 1);
    if (rest.starts_with('$')) {
      text += '$';
    } else if (rest.starts_with('{')) {
      const std::size_t end = rest.find('}');
      if (end == std::string_view::npos) {
        return ScanResult::Unclosed;
      }
      if (!substitute(rest.substr(1, end - 1))) {
        return ScanResult::Failed;
      }
      position = dollar + 1 + end + 1;
    } else {
      return ScanResult::StrayDollar;
    }
    dollar = input.find('$', position);
    text += input.substr(position, dollar - position);
  }
  return ScanResult::Complete;
}

}  // namespace Cradle::Parser
