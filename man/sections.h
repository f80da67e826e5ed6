// SPDX-License-Identifier: MIT
// The parts of the manual pages that are made of the program's own tables, as mdoc.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Cradle::Manual {

// A kind of rows of which a page must show every one, in its place: a marker "KIND NAME ..." stands
// for the head of its item; what is to say about it follows in the page.
struct ItemKind {
  std::string_view name;
  std::vector<std::string_view> (*rows)();
  // The item's head. `rest` is what the marker holds behind the row's name.
  std::string (*head)(std::string_view row, std::string_view rest);
};

const std::vector<ItemKind>& itemKinds();

// A part that a marker with its name alone stands for.
struct Section {
  std::string_view name;
  std::string (*text)();
};

const std::vector<Section>& sections();

// The tables as lines "KIND NAME", for tests that look for them in the pages.
std::string tables();

}  // namespace Cradle::Manual
