// SPDX-License-Identifier: MIT
// ConfigParser's getValue family: resolved values as strings, booleans and numbers.

#include <cassert>

#include "base/conversion.h"
#include "config_parser_implementation.h"

namespace Cradle::Parser {
namespace {

using Values = std::span<const ConfigValue>;

template <typename Type>
using Converter = Type (*)(const std::string&, bool*);

std::string keepText(const std::string& text, bool* /*ok*/) {
  return text;
}

// The text of a value: its own where it is plain, otherwise resolved into `buffer`.
const std::string& textOf(const ConfigParser& parser, const ConfigValue& value,
                          std::string& buffer) {
  if (value.kind() == ConfigValue::PlainText) {
    return value.text();
  }
  buffer.clear();
  parser.resolve(value, buffer);
  return buffer;
}

template <typename Type>
void readLast(const ConfigParser& parser, Values values, Converter<Type> convert, Type& out,
              bool* ok) {
  std::string buffer;
  out = convert(textOf(parser, values.back(), buffer), ok);
}

template <typename Type>
void appendAll(const ConfigParser& parser, Values values, Converter<Type> convert,
               std::vector<Type>& out, bool* ok) {
  out.reserve(out.size() + values.size());
  bool allConverted = true;
  std::string buffer;
  for (const ConfigValue& value : values) {
    const std::string& text = textOf(parser, value, buffer);
    if (text.empty() && value.kind() != ConfigValue::PlainText) {
      continue;
    }
    bool converted = true;
    out.push_back(convert(text, &converted));
    allConverted = allConverted && converted;
  }
  if (ok != nullptr) {
    *ok = allConverted;
  }
}

}  // namespace

Values ConfigParser::values(std::string_view group, std::string_view key) const {
  const Values found = implementation_->store.find(group, key);
  assert(!found.empty() && "the key exists");
  return found;
}

void ConfigParser::getValue(std::string_view group, std::string_view key, std::string& out) const {
  readLast(*this, values(group, key), keepText, out, nullptr);
}

void ConfigParser::getValue(std::string_view group, std::string_view key, bool& out,
                            bool* ok) const {
  readLast(*this, values(group, key), convertBool, out, ok);
}

void ConfigParser::getValue(std::string_view group, std::string_view key, int& out,
                            bool* ok) const {
  readLast(*this, values(group, key), convertInt, out, ok);
}

void ConfigParser::getValue(std::string_view group, std::string_view key, long& out,
                            bool* ok) const {
  readLast(*this, values(group, key), convertLong, out, ok);
}

void ConfigParser::getValue(std::string_view group, std::string_view key, double& out,
                            bool* ok) const {
  readLast(*this, values(group, key), convertDouble, out, ok);
}

void ConfigParser::getValue(std::string_view group, std::string_view key,
                            std::vector<std::string>& out) const {
  appendAll(*this, values(group, key), keepText, out, nullptr);
}

void ConfigParser::getValue(std::string_view group, std::string_view key, std::vector<bool>& out,
                            bool* ok) const {
  appendAll(*this, values(group, key), convertBool, out, ok);
}

void ConfigParser::getValue(std::string_view group, std::string_view key, std::vector<int>& out,
                            bool* ok) const {
  appendAll(*this, values(group, key), convertInt, out, ok);
}

void ConfigParser::getValue(std::string_view group, std::string_view key, std::vector<long>& out,
                            bool* ok) const {
  appendAll(*this, values(group, key), convertLong, out, ok);
}

void ConfigParser::getValue(std::string_view group, std::string_view key, std::vector<double>& out,
                            bool* ok) const {
  appendAll(*this, values(group, key), convertDouble, out, ok);
}

}  // namespace Cradle::Parser
