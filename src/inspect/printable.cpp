// SPDX-License-Identifier: MIT
#include "inspect/printable.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace Cradle::Inspect {
namespace {

// How characters of one length begin in UTF-8, and which is the first of them.
struct Form {
  std::uint32_t mask;
  std::uint32_t mark;
  std::size_t length;
  std::uint32_t first;
};

constexpr std::array<Form, 4> kForms{{
    {0x80, 0x00, 1, 0x0},
    {0xe0, 0xc0, 2, 0x80},
    {0xf0, 0xe0, 3, 0x800},
    {0xf8, 0xf0, 4, 0x10000},
}};

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

// Control characters, those without a width or with a say in the order of others, and what is no
// character at all.
constexpr std::array<Range, 12> kUnsafe{{
    {0x0, 0x1f},
    {0x7f, 0x9f},
    {0xad, 0xad},
    {0x61c, 0x61c},
    {0x200b, 0x200f},
    {0x2028, 0x202e},
    {0x2060, 0x206f},
    {0xd800, 0xdfff},
    {0xfeff, 0xfeff},
    {0xfff9, 0xfffb},
    {0xe0000, 0xe0fff},
    {0x110000, 0x1fffff},
}};

constexpr std::uint32_t kPayload = 0x3f;  // of a byte that continues a character
constexpr unsigned kPayloadBits = 6;

struct Character {
  std::uint32_t code;
  std::size_t length;
  bool valid;
};

std::uint32_t byteOf(char character) {
  return static_cast<unsigned char>(character);
}

// The character at the beginning of the text; a byte that begins none stands for itself.
Character firstOf(std::string_view text) {
  const std::uint32_t lead = byteOf(text.front());
  const Character single{lead, 1, false};
  const auto* const form = std::find_if(kForms.begin(), kForms.end(), [&](const Form& each) {
    return (lead & each.mask) == each.mark;
  });
  if (form == kForms.end() || text.size() < form->length) {
    return single;
  }
  std::uint32_t code = lead & ~form->mask;
  for (const char next : text.substr(1, form->length - 1)) {
    if ((byteOf(next) & ~kPayload) != 0x80) {
      return single;
    }
    code = (code << kPayloadBits) | (byteOf(next) & kPayload);
  }
  return code < form->first ? single : Character{code, form->length, true};
}

bool isUnsafe(std::uint32_t code) {
  return std::any_of(kUnsafe.begin(), kUnsafe.end(),
                     [&](const Range& range) { return range.first <= code && code <= range.last; });
}

std::string escaped(const Character& character) {
  if (character.code == '\t') {
    return "\\t";
  }
  if (character.code == '\n') {
    return "\\n";
  }
  std::array<char, sizeof "\\u1fffff"> text{};
  std::snprintf(text.data(), text.size(), character.length == 1 ? "\\x%02x" : "\\u%04x",
                character.code);
  return text.data();
}

}  // namespace

std::string printable(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const Character character = firstOf(text);
    if (character.valid && !isUnsafe(character.code)) {
      shown += text.substr(0, character.length);
    } else {
      shown += escaped(character);
    }
    text.remove_prefix(character.length);
  }
  return shown;
}

std::string printableLines(std::string_view lines) {
  std::string shown;
  for (std::size_t feed = lines.find('\n'); feed != lines.npos; feed = lines.find('\n')) {
    shown += printable(lines.substr(0, feed)) + "\n";
    lines.remove_prefix(feed + 1);
  }
  return shown + printable(lines);
}

}  // namespace Cradle::Inspect
