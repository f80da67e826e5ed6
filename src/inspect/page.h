// SPDX-License-Identifier: MIT
// Text for people: aligned, in colour where that is wanted, and safe to show on a terminal.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/printable.h"

namespace Cradle::Inspect {

enum class Tone : std::uint8_t { Plain, Strong, Faint, Error, Warning, Note, Added, Removed };

class Page {
 public:
  explicit Page(bool coloured) : coloured_(coloured) {}

  struct Cell {
    std::string text;
    Tone tone = Tone::Plain;
  };
  using Row = std::vector<Cell>;

  // Appends a piece of a line.
  Page& put(std::string_view text, Tone tone = Tone::Plain);
  Page& endLine();

  // Appends a line of one piece.
  Page& line(std::string_view text, Tone tone = Tone::Plain);

  // Appends a line per row behind `margin` blanks; the columns but the last of a row are as wide as
  // the widest of them, up to a limit that keeps one long cell from pushing all others away.
  Page& table(const std::vector<Row>& rows, std::size_t margin = 0);

  const std::string& text() const { return text_; }

 private:
  bool coloured_;
  std::string text_;
};

}  // namespace Cradle::Inspect
