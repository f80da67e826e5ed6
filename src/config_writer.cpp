#include "config_writer.h"

#include <sys/stat.h>

namespace Cradle::Parser {
namespace {

constexpr mode_t kOwnerOnlyMask = 077;

OutputFile createForOwner(const std::string& path) {
  const mode_t callersMask = umask(kOwnerOnlyMask);
  OutputFile file(path);
  umask(callersMask);
  return file;
}

}  // namespace

ConfigWriter::ConfigWriter(const std::string& path, Separator separator)
    : file_(createForOwner(path)), separator_(separator == Separator::Spaced ? " = " : "=") {}

void ConfigWriter::writeLine(std::initializer_list<std::string_view> pieces) {
  line_.clear();
  for (const std::string_view piece : pieces) {
    line_ += piece;
  }
  line_ += '\n';
  file_.write(line_);
}

void ConfigWriter::writeComment(std::string_view text) {
  writeLine({"# ", text});
}

void ConfigWriter::writeGroup(std::string_view name) {
  writeLine({"[", name, "]"});
}

void ConfigWriter::writeEmptyLine() {
  writeLine({});
}

void ConfigWriter::writeValue(std::string_view key, std::string_view value) {
  writeLine({key, separator_, value});
}

void ConfigWriter::writeValue(std::string_view key, const char* value) {
  writeValue(key, std::string(value));
}

void ConfigWriter::writeValue(std::string_view key, bool value) {
  writeValue(key, value ? std::string_view("true") : std::string_view("false"));
}

void ConfigWriter::writeValue(std::string_view key, std::int32_t value) {
  writeValue(key, std::to_string(value));
}

void ConfigWriter::writeContent(std::string_view text) {
  if (text.ends_with('\n')) {
    file_.write(text);
  } else {
    writeLine({text});
  }
}

}  // namespace Cradle::Parser
