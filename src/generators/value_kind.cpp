// SPDX-License-Identifier: MIT
#include "generators/value_kind.h"

#include <array>

#include "base/conversion.h"
#include "generators/locale.h"
#include "generators/opengl_version.h"
#include "generators/property_formats.h"
#include "mount_entry.h"

namespace Cradle::Generators {
namespace {

bool acceptsAny(const std::string& /*text*/) {
  return true;
}

template <auto Convert>
bool converts(const std::string& text) {
  bool ok = false;
  Convert(text, &ok);
  return ok;
}

bool isVersion(const std::string& text) {
  return parseOpenGlVersion(text).has_value();
}

bool isLocaleName(const std::string& text) {
  return text.find_first_of(kLocaleSeparators) != std::string::npos;
}

bool isMountEntry(const std::string& text) {
  return Parser::mountEntryFault(text).empty();
}

constexpr std::array<ValueKindRow, 16> kKinds{{
    {ValueKind::Text, false, "Any text; it is taken as it stands.", acceptsAny},
    {ValueKind::List, true, "Any number of texts.", acceptsAny},
    {ValueKind::Boolean, false,
     "The word true or the word false. Any other text counts as false, True and TRUE too.",
     converts<convertBool>},
    {ValueKind::Integer, false,
     "A decimal number of 32 bits with an optional sign, or a hexadecimal one behind 0x. Of a text "
     "that only begins with a number the number counts, of any other 0, and of a number that is "
     "too large or too small the nearest one that is not.",
     converts<convertInt>},
    {ValueKind::LongInteger, false, "An integer like that, but of 64 bits.", converts<convertLong>},
    {ValueKind::Real, false,
     "A decimal number with an optional sign, fraction (behind a point) and exponent. Of a text "
     "that only begins with a number the number counts, of any other 0.",
     converts<convertDouble>},
    {ValueKind::Path, false, "A path of the host.", acceptsAny},
    {ValueKind::DeviceName, false,
     "The path of a device node; one that does not begin with / is below /dev.", acceptsAny},
    {ValueKind::DeviceList, true,
     "Any number of device names, each of which may be a pattern for pathname expansion.",
     acceptsAny},
    {ValueKind::MountList, true,
     "Any number of mount entries: six fields with single blanks between them. The source begins "
     "with / or is tmpfs or none, the type is none, tmpfs or devpts, the last two are 0.",
     isMountEntry},
    {ValueKind::UserName, false, "The name of a user of the host or, failing that, its number.",
     acceptsAny},
    {ValueKind::Word, false, "One of a few words, written exactly so.", acceptsAny},
    {ValueKind::Version, false,
     "MAJOR.MINOR, or the integer that holds the major number in its upper 16 bits and the minor "
     "one in its lower 16.",
     isVersion},
    {ValueKind::LocaleName, false,
     "Language and country with _, - or . between them. What follows the country counts for "
     "nothing.",
     isLocaleName},
    {ValueKind::LogLevel, false, "A word that begins with v, d, i, w, e, f or s, in any case.",
     isLogLevel},
    {ValueKind::Lines, true, "Any number of lines, each taken as it stands.", acceptsAny},
}};

}  // namespace

std::span<const ValueKindRow> valueKinds() {
  return kKinds;
}

const ValueKindRow& valueKindRow(ValueKind kind) {
  return kKinds.at(static_cast<std::size_t>(kind));
}

}  // namespace Cradle::Generators
