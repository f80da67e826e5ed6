// SPDX-License-Identifier: MIT
// Conversion between text and typed values, the same for configuration values and log levels.
//
// Each converter takes the text and an optional success flag. It always returns a value: what could
// be read, 0 (or false) where nothing could. Success needs the whole text to be consumed. Numbers
// follow the "C" locale, whichever one a program that uses the library has chosen.
#pragma once

#include <string>

namespace Cradle {

// True only for exactly "true". Succeeds only for exactly "true" or "false".
bool convertBool(const std::string& text, bool* ok = nullptr);

// Decimal, or hexadecimal when the text begins with "0x". Leading white space is skipped; trailing
// characters of any kind and values out of range fail (the latter return the nearest limit).
int convertInt(const std::string& text, bool* ok = nullptr);
long convertLong(const std::string& text, bool* ok = nullptr);

// Decimal floating point; "0x" has no meaning here.
double convertDouble(const std::string& text, bool* ok = nullptr);

// `value` as printf's "%g" writes it: six significant digits, the shorter of fixed and exponent
// notation, no trailing zeros.
std::string formatDouble(double value);

}  // namespace Cradle
