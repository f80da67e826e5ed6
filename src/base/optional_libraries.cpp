// SPDX-License-Identifier: MIT
#include "base/optional_libraries.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace Cradle {

constexpr OptionalLibrary kSystemdLibrary{
    .soname = "libsystemd.so.0",
    .feature = "login",
    .description = "Detects the active user of seat0 and logs to the journal",
    .priority = "recommended",
};
constexpr OptionalLibrary kDconfLibrary{
    .soname = "libdconf.so.1",
    .feature = "dconf",
    .description = "Reads the settings that dconf templates name",
    .priority = "suggested",
};
constexpr OptionalLibrary kAndroidPropertiesLibrary{
    .soname = "libandroid-properties.so.1",
    .feature = "prop",
    .description = "Reads the Android properties of the host that prop templates name",
    .priority = "suggested",
};

namespace {

constexpr std::array kLibraries{kSystemdLibrary, kDconfLibrary, kAndroidPropertiesLibrary};

// A text that is put together at compile time.
struct Text {
  consteval void append(std::string_view part) {
    std::copy(part.begin(), part.end(), characters.begin() + size);
    size += part.size();
  }

  std::array<char, 1024> characters{};
  std::size_t size = 0;
};

consteval Text listLibraries() {
  Text json;
  for (const OptionalLibrary& library : kLibraries) {
    json.append(json.size == 0 ? R"([{"feature":")" : R"(,{"feature":")");
    json.append(library.feature);
    json.append(R"(","description":")");
    json.append(library.description);
    json.append(R"(","priority":")");
    json.append(library.priority);
    json.append(R"(","soname":[")");
    json.append(library.soname);
    json.append(R"("]})");
  }
  json.append("]");
  return json;
}

constexpr Text kList = listLibraries();
constexpr std::size_t kListSize = kList.size + 1;  // with its NUL
constexpr std::size_t kNoteAlignment = 4;
constexpr std::uint32_t kDlopenNoteType = 0x407c0c0a;

// As the ELF format lays out a note.
struct Note {
  std::uint32_t ownerSize = sizeof owner;
  std::uint32_t listSize = kListSize;
  std::uint32_t type = kDlopenNoteType;
  std::array<char, 4> owner{'F', 'D', 'O', '\0'};
  std::array<char, (kListSize + kNoteAlignment - 1) / kNoteAlignment * kNoteAlignment> list{};
};

consteval Note makeNote() {
  Note note;
  std::copy_n(kList.characters.begin(), kListSize, note.list.begin());
  return note;
}

[[gnu::section(".note.dlopen"), gnu::used,
  gnu::retain]] alignas(kNoteAlignment) constexpr Note kNote = makeNote();

}  // namespace
}  // namespace Cradle
