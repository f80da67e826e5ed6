#include "base/conversion.h"

#include <ios>
#include <locale>
#include <sstream>

namespace Cradle {
namespace {

void report(bool* ok, bool success) {
  if (ok != nullptr) {
    *ok = success;
  }
}

// Stream extraction is the definition of what a number is here: its treatment of signs, prefixes
// and overflow is what configuration authors rely on.
template <typename Number>
Number extract(const std::string& text, bool* ok) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  if (text.starts_with("0x")) {
    stream >> std::hex;
  }
  Number number{};
  stream >> number;
  report(ok, !stream.fail() && stream.eof());
  return number;
}

}  // namespace

bool convertBool(const std::string& text, bool* ok) {
  const bool value = text == "true";
  report(ok, value || text == "false");
  return value;
}

int convertInt(const std::string& text, bool* ok) {
  return extract<int>(text, ok);
}

long convertLong(const std::string& text, bool* ok) {
  return extract<long>(text, ok);
}

double convertDouble(const std::string& text, bool* ok) {
  return extract<double>(text, ok);
}

std::string formatDouble(double value) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream << value;
  return stream.str();
}

}  // namespace Cradle
