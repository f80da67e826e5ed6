// SPDX-License-Identifier: MIT
#include "inspect/page.h"

#include <algorithm>
#include <array>

namespace Cradle::Inspect {
namespace {

constexpr std::size_t kWidestColumn = 48;
constexpr std::size_t kGap = 2;

// How a terminal is told of each tone, in the order of their values.
constexpr std::array<std::string_view, 8> kColours{
    "", "\x1b[1m", "\x1b[2m", "\x1b[1;31m", "\x1b[1;33m", "\x1b[36m", "\x1b[32m", "\x1b[31m"};
constexpr std::string_view kEndOfColour = "\x1b[0m";

// How many characters a terminal shows; continuation bytes of UTF-8 take no room.
std::size_t widthOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) {
    return (static_cast<unsigned char>(character) & 0xc0U) != 0x80U;
  }));
}

std::vector<std::size_t> columnWidths(const std::vector<Page::Row>& rows) {
  std::vector<std::size_t> widths;
  for (const Page::Row& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i + 1 < row.size(); ++i) {
      const std::size_t width = widthOf(printable(row[i].text));
      widths[i] = std::max(widths[i], std::min(width, kWidestColumn));
    }
  }
  return widths;
}

}  // namespace

Page& Page::put(std::string_view text, Tone tone) {
  const bool painted = coloured_ && tone != Tone::Plain;
  text_ += painted ? kColours.at(static_cast<std::size_t>(tone)) : "";
  text_ += printable(text);
  text_ += painted ? kEndOfColour : "";
  return *this;
}

Page& Page::endLine() {
  text_ += '\n';
  return *this;
}

Page& Page::line(std::string_view text, Tone tone) {
  return put(text, tone).endLine();
}

Page& Page::table(const std::vector<Row>& rows, std::size_t margin) {
  const std::vector<std::size_t> widths = columnWidths(rows);
  for (const Row& row : rows) {
    text_.append(margin, ' ');
    for (std::size_t i = 0; i < row.size(); ++i) {
      put(row[i].text, row[i].tone);
      if (i + 1 < row.size()) {
        const std::size_t width = widthOf(printable(row[i].text));
        text_.append(kGap + (width < widths[i] ? widths[i] - width : 0), ' ');
      }
    }
    endLine();
  }
  return *this;
}

}  // namespace Cradle::Inspect
