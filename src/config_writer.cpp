#include "config_writer.h"

#include <locale>

#include <sys/stat.h>

namespace Cradle::Parser {
namespace {

constexpr mode_t kOwnerOnlyMask = 077;

}  // namespace

ConfigWriter::ConfigWriter(const std::string& path, Separator separator)
    : separator_(separator == Separator::Spaced ? " = " : "=") {
  const mode_t callersMask = umask(kOwnerOnlyMask);
  open(path, std::ios::out | std::ios::trunc);
  umask(callersMask);
  imbue(std::locale::classic());
}

void ConfigWriter::writeLine(std::string_view first, std::string_view second,
                             std::string_view third) {
  *this << first << second << third << '\n';
  flush();
}

void ConfigWriter::writeComment(std::string_view text) {
  writeLine("# ", text, "");
}

void ConfigWriter::writeGroup(std::string_view name) {
  writeLine("[", name, "]");
}

void ConfigWriter::writeEmptyLine() {
  writeLine("", "", "");
}

void ConfigWriter::writeValue(std::string_view key, std::string_view value) {
  writeLine(key, separator_, value);
}

void ConfigWriter::writeValue(std::string_view key, const char* value) {
  writeValue(key, std::string(value));
}

void ConfigWriter::writeValue(std::string_view key, bool value) {
  writeLine(key, separator_, value ? "true" : "false");
}

void ConfigWriter::writeValue(std::string_view key, std::int32_t value) {
  writeLine(key, separator_, std::to_string(value));
}

void ConfigWriter::writeContent(std::string_view text) {
  *this << text;
  if (!text.ends_with('\n')) {
    *this << '\n';
  }
  flush();
}

}  // namespace Cradle::Parser
