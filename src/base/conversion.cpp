// SPDX-License-Identifier: MIT
#include "base/conversion.h"

#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "base/text.h"

// Stream extraction in the "C" locale is the definition of what a number is here: its treatment of
// white space, signs, prefixes and overflow is what configuration authors rely on. Making a stream
// for every number would cost more than reading the file that it comes from.

namespace Cradle {
namespace {

constexpr std::string_view kHexPrefix = "0x";
constexpr std::string_view kRealCharacters = "+-.0123456789Ee";
constexpr std::string_view kExponentMarks = "eE";

constexpr std::size_t kRealBufferSize = sizeof "-1.23457e+308";
constexpr int kRealDigits = 6;

void report(bool* ok, bool success) {
  if (ok != nullptr) {
    *ok = success;
  }
}

template <typename Number>
Number extractInteger(std::string_view text, bool* ok) {
  using Limits = std::numeric_limits<Number>;
  const bool hexadecimal = text.starts_with(kHexPrefix);
  text = hexadecimal ? text.substr(kHexPrefix.size()) : trimLeft(text);
  const bool hasSign = !hexadecimal && (text.starts_with('-') || text.starts_with('+'));
  const bool negative = hasSign && text.front() == '-';
  text.remove_prefix(hasSign ? 1 : 0);
  std::uint64_t magnitude = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, magnitude, hexadecimal ? 16 : 10);
  const std::uint64_t limit = static_cast<std::uint64_t>(Limits::max()) + (negative ? 1 : 0);
  if (error == std::errc::result_out_of_range || magnitude > limit) {
    report(ok, false);
    return negative ? Limits::min() : Limits::max();
  }
  report(ok, error == std::errc() && stop == end);
  return static_cast<Number>(negative ? 0 - magnitude : magnitude);
}

struct Real {
  double value;
  std::size_t length;  // how much of the text it takes, 0 for no number
};

// Known to the C library from the start: there is nothing to read or to free.
locale_t plainLocale() {
  return newlocale(LC_ALL_MASK, "C", nullptr);
}

// The number at the beginning of `text`, which holds nothing but characters of numbers. An exponent
// without digits spoils the number before it.
Real leadingReal(const std::string& text) {
  char* stop = nullptr;
  const double value = strtod_l(text.c_str(), &stop, plainLocale());
  const std::string_view number(text.c_str(), stop);
  const bool dangling = kExponentMarks.find(*stop) != kExponentMarks.npos &&
                        number.find_first_of(kExponentMarks) == number.npos;
  return {dangling ? 0 : value, number.size()};
}

}  // namespace

bool convertBool(const std::string& text, bool* ok) {
  const bool value = text == "true";
  report(ok, value || text == "false");
  return value;
}

int convertInt(const std::string& text, bool* ok) {
  return extractInteger<int>(text, ok);
}

long convertLong(const std::string& text, bool* ok) {
  return extractInteger<long>(text, ok);
}

double convertDouble(const std::string& text, bool* ok) {
  const std::string_view number = trimLeft(text);
  const auto [value, length] =
      leadingReal(std::string(number.substr(0, number.find_first_not_of(kRealCharacters))));
  report(ok, length > 0 && length == number.size() && std::isfinite(value));
  return std::isfinite(value) ? value : std::copysign(std::numeric_limits<double>::max(), value);
}

std::string formatDouble(double value) {
  // std::to_chars would bring tables with it that are a quarter of the program.
  std::array<char, kRealBufferSize> text{};
  const locale_t chosen = uselocale(plainLocale());
  std::snprintf(text.data(), text.size(), "%.*g", kRealDigits, value);
  uselocale(chosen);
  return text.data();
}

}  // namespace Cradle
