// SPDX-License-Identifier: MIT
// Rows of tests on formats: what each makes of a value. The rows of a file are one constexpr table.
#pragma once

#include <span>

#include <gtest/gtest.h>

#include "generators/output_row.h"
#include "support/log_capture.h"
#include "support/output_bench.h"

namespace Cradle::Testing {

struct Written {
  const Generators::Format* format;
  const char* value;  // of the key, as a configuration gives it
  const char* text;
};

// Holds every row to what its format writes, without a message.
inline void expectWritten(std::span<const Written> rows) {
  const LogCapture log;
  for (const Written& written : rows) {
    OutputBench bench(keyLine(written.value));
    EXPECT_EQ(bench.text(*written.format, kKeyRow), written.text)
        << written.format->name << ": " << written.value;
  }
  EXPECT_EQ(log.text(), "");
}

}  // namespace Cradle::Testing
