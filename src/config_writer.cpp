// SPDX-License-Identifier: MIT
#include "config_writer.h"

#include <initializer_list>

#include <sys/stat.h>

#include "base/output_file.h"

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

struct ConfigWriter::Implementation {
  Implementation(const std::string& path, Separator kind)
      : file(createForOwner(path)), separator(kind == Separator::Spaced ? " = " : "=") {}

  void writeLine(std::initializer_list<std::string_view> pieces) {
    line.clear();
    for (const std::string_view piece : pieces) {
      line += piece;
    }
    line += '\n';
    file.write(line);
  }

  OutputFile file;
  std::string_view separator;
  std::string line;  // keeps its memory from line to line
};

ConfigWriter::ConfigWriter(const std::string& path, Separator separator)
    : implementation_(std::make_unique<Implementation>(path, separator)) {}

ConfigWriter::~ConfigWriter() = default;

bool ConfigWriter::isOpen() const {
  return implementation_->file.isOpen();
}

void ConfigWriter::writeComment(std::string_view text) {
  implementation_->writeLine({"# ", text});
}

void ConfigWriter::writeGroup(std::string_view name) {
  implementation_->writeLine({"[", name, "]"});
}

void ConfigWriter::writeEmptyLine() {
  implementation_->writeLine({});
}

void ConfigWriter::writeValue(std::string_view key, std::string_view value) {
  implementation_->writeLine({key, implementation_->separator, value});
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
    implementation_->file.write(text);
  } else {
    implementation_->writeLine({text});
  }
}

}  // namespace Cradle::Parser
