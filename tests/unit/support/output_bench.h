// SPDX-License-Identifier: MIT
// Everything that the rows of an output draw on, with a configuration written in the test itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "config_writer.h"
#include "generators/output_row.h"
#include "support/config_text.h"
#include "support/temporary_directory.h"

namespace Cradle::Testing {

struct OutputBench {
  using Separator = Parser::ConfigWriter::Separator;

  explicit OutputBench(std::string_view configuration = "", Separator separator = Separator::Plain)
      : run(static_cast<std::uint32_t>(-1)),
        writer(directory.path("out"), separator),
        context{.run = run, .directories = directories, .writer = writer} {
    EXPECT_TRUE(loadText(run.parser, configuration)) << configuration;
  }

  // What has been written so far.
  std::string written() const { return directory.read("out"); }

  // The text that `format` makes of the row, or "wrong".
  std::string text(const Generators::Format& format, const Generators::OutputRow& row) {
    return format.text(context, row).value_or("wrong");
  }

  bool holds(const Generators::Condition& condition, const Generators::OutputRow& row) const {
    return condition.holds(context, row);
  }

  TemporaryDirectory directory;
  Generators::Run run;
  std::vector<std::string> directories;
  Parser::ConfigWriter writer;
  Generators::OutputContext context;
};

// A configuration that gives the key "Key" of the group "G" this value.
inline std::string keyLine(std::string_view value) {
  return "[G]\nKey=" + std::string(value) + "\n";
}

// A row whose source is that key.
inline constexpr Generators::OutputRow kKeyRow{.source = {"G", "Key"}};

}  // namespace Cradle::Testing
