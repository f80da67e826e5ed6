// SPDX-License-Identifier: MIT
#include "variant_text.h"

#include <array>
#include <string_view>

#include "base/conversion.h"
#include "base/table.h"
#include "dconf_library.h"
#include "library_logger.h"

namespace Cradle::Parser {
namespace {

std::string printBoolean(const DconfLibrary& glib, GVariant* value) {
  return glib.getBoolean(value) != 0 ? "true" : "false";
}

std::string printByte(const DconfLibrary& glib, GVariant* value) {
  return {static_cast<char>(glib.getByte(value))};
}

template <auto Getter>
std::string printInteger(const DconfLibrary& glib, GVariant* value) {
  return std::to_string((glib.*Getter)(value));
}

std::string printDouble(const DconfLibrary& glib, GVariant* value) {
  return formatDouble(glib.getDouble(value));
}

std::string printString(const DconfLibrary& glib, GVariant* value) {
  const char* const text = glib.getString(value, nullptr);
  return text == nullptr ? "" : text;
}

struct PrintedType {
  std::string_view typeString;
  std::string (*print)(const DconfLibrary&, GVariant*);
};

constexpr std::array<PrintedType, 11> kPrintedTypes{{
    {"b", printBoolean},
    {"y", printByte},
    {"n", printInteger<&DconfLibrary::getInt16>},
    {"q", printInteger<&DconfLibrary::getUint16>},
    {"i", printInteger<&DconfLibrary::getInt32>},
    {"h", printInteger<&DconfLibrary::getInt32>},
    {"u", printInteger<&DconfLibrary::getUint32>},
    {"x", printInteger<&DconfLibrary::getInt64>},
    {"t", printInteger<&DconfLibrary::getUint64>},
    {"d", printDouble},
    {"s", printString},
}};

std::string print(const DconfLibrary& glib, GVariant* value) {
  const char* const typeString = glib.typeString(value);
  const std::string_view name = typeString == nullptr ? "" : typeString;
  const PrintedType* const type = findRow(kPrintedTypes, &PrintedType::typeString, name);
  if (type == nullptr) {
    libraryLogger().warning() << "Unsupported GVariant type '" << typeString << "'";
    return "";
  }
  return type->print(glib, value);
}

}  // namespace

std::string variantToString(GVariant* value) {
  const DconfLibrary* const glib = dconfLibrary();
  if (value == nullptr || glib == nullptr) {
    return "";
  }
  std::string text = print(*glib, value);
  glib->variantUnref(value);
  return text;
}

}  // namespace Cradle::Parser
