// SPDX-License-Identifier: MIT
// The conversions between text and typed values. The input is a text; its first eight bytes are
// also a number.
//
// Properties: a text converts to what a stream in the "C" locale extracts, and fails where the
// stream fails or leaves something; a value read from a configuration converts in the same way,
// alone and in a list; a number is written as a stream writes it.

#include <array>
#include <cstring>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/conversion.h"
#include "common/check.h"
#include "common/memory_file.h"
#include "common/target.h"
#include "config_parser.h"

namespace Cradle::Fuzz {
namespace {

template <typename Number>
std::string shown(Number value, bool ok) {
  std::ostringstream stream;
  stream.precision(17);
  stream << value << (ok ? " read" : " failed");
  return stream.str();
}

template <typename Number>
std::string byStream(const std::string& text) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  if (text.substr(0, 2) == "0x") {
    stream >> std::hex;
  }
  Number number{};
  stream >> number;
  return shown(number, !stream.fail() && stream.peek() == std::char_traits<char>::eof());
}

template <>
std::string byStream<bool>(const std::string& text) {
  return shown(text == "true", text == "true" || text == "false");
}

template <typename Type>
using Convert = Type (*)(const std::string&, bool*);

template <typename Type>
void checkConversion(Convert<Type> convert, const std::string& text) {
  bool ok = false;
  const Type value = convert(text, &ok);
  requireEqual(shown(value, ok), byStream<Type>(text), "a text converts as a stream extracts it");
  requireEqual(shown(convert(text, nullptr), ok), shown(value, ok),
               "a conversion does not depend on whether its success is asked for");
}

template <typename Type>
void checkAccess(const Parser::ConfigParser& parser, const std::string& text) {
  bool ok = false;
  Type value{};
  parser.getValue("", "key", value, &ok);
  requireEqual(shown(value, ok), byStream<Type>(text), "a value converts as its text does");
  std::vector<Type> values;
  parser.getValue("", "key", values, &ok);
  require(values.size() == 1, "a list has as many elements as its key has values");
  requireEqual(shown(static_cast<Type>(values[0]), ok), byStream<Type>(text),
               "an element converts as its text does");
}

template <typename Type>
void check(Convert<Type> convert, const Parser::ConfigParser& parser, const std::string& text) {
  checkConversion(convert, text);
  if (parser.hasValue("", "key")) {
    checkAccess<Type>(parser, text);
  }
}

void checkFormatting(const std::string& input) {
  double number = 0;
  if (input.size() >= sizeof number) {
    std::memcpy(&number, input.data(), sizeof number);
  }
  std::ostringstream stream;
  stream << number;
  requireEqual(formatDouble(number), stream.str(), "a number is written as a stream writes it");
}

}  // namespace

void checkInput(const std::string& input) {
  static const MemoryFile file;
  Parser::ConfigParser parser(-1);
  // A text with these characters is not one value of a file.
  if (input.find_first_of("$;\n") == std::string::npos) {
    file.write("key=" + input + "\n");
    require(parser.loadFile(file.path()), "a file of one entry is read");
    require(parser.hasValue("", "key") == !input.empty(), "every text but the empty one is kept");
  }
  check<bool>(convertBool, parser, input);
  check<int>(convertInt, parser, input);
  check<long>(convertLong, parser, input);
  check<double>(convertDouble, parser, input);
  checkFormatting(input);
}

}  // namespace Cradle::Fuzz
